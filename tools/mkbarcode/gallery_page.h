#pragma once

#include <span>
#include <string>
#include <vector>

#include "mkbarcode/library/draw.h"

namespace barcode::tool {

// One image of a sample and what made it.
struct ExhibitImage {
  std::string file;  // beside the page
  DrawRequest request;
  std::string failure;  // empty when the image was drawn
};

// One sample as the page shows it.
struct Exhibit {
  std::string caption;
  const TypeInfo* type = nullptr;
  std::vector<ExhibitImage> images;

  bool IsComplete() const {
    for (const ExhibitImage& image : images) {
      if (!image.failure.empty()) {
        return false;
      }
    }
    return true;
  }
};

// The HTML page, complete in itself but for the images. Exhibits of one type stand together.
std::string GalleryPage(std::span<const Exhibit> exhibits);

}  // namespace barcode::tool
