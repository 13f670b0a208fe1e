#pragma once

#include <vector>

#include "mkbarcode/gallery/label_gallery.h"

namespace barcode::tool {

// The labels of the gallery, in the order of the symbologies.
std::vector<LabelSample> LabelSamples();

}  // namespace barcode::tool
