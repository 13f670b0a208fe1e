#pragma once

#include <vector>

#include "mkbarcode/gallery/gallery.h"

namespace barcode::tool {

// The samples of every symbology of barcode.h, those of one type together.
std::vector<Sample> GallerySamples();

}  // namespace barcode::tool
