#pragma once

#include <span>
#include <string>
#include <vector>

#include "mkbarcode/library/types.h"

namespace barcode::tool {

// One label in one format, and what made it.
struct LabelImage {
  std::string file;  // as the page names it
  std::string request;
  std::string report;   // as the library wrote it
  bool isMade = false;  // otherwise it was refused and there is no file
};

// One sample as the page shows it. What is told of it is that of its first image.
struct LabelExhibit {
  std::string caption;
  const TypeInfo* type = nullptr;
  std::vector<LabelImage> images = {};
};

// The HTML page, complete in itself but for the images and documents. Exhibits of one type stand together.
std::string LabelPage(std::span<const LabelExhibit> exhibits);

}  // namespace barcode::tool
