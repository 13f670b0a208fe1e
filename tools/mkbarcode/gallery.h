#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "mkbarcode/library/draw.h"

namespace barcode::tool {

// One symbol of the gallery, drawn as PNG and as SVG.
struct Sample {
  std::string caption;
  DrawRequest request;  // its format is the gallery's business
};

struct GalleryResult {
  std::size_t types = 0;              // symbologies shown
  std::size_t drawn = 0;              // samples of which both images were written
  std::vector<std::string> failures;  // one line for each image that could not be made
  std::string indexFile;
};

// Draws the samples whose type the library offers into the directory, which is made where it is missing, and
// writes index.html beside the images. A draw that fails is recorded, and the others go on. Throws RunError
// when a file cannot be written and when the library offers nothing that could be shown.
GalleryResult WriteGallery(std::span<const Sample> samples, const std::string& directory, bool verbose);

}  // namespace barcode::tool
