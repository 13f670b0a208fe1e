#ifndef BARCODE_TOOLS_MKBARCODE_GALLERY_SAMPLES_H
#define BARCODE_TOOLS_MKBARCODE_GALLERY_SAMPLES_H

#include <vector>

#include "gallery.h"

namespace barcode::tool {

/* The samples of every symbology of barcode.h, those of one type together. */
std::vector<Sample> GallerySamples();

}  // namespace barcode::tool

#endif
