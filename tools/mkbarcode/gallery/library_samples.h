#pragma once

#include <string>
#include <vector>

#include "mkbarcode/library/draw.h"

namespace barcode::tool {

// One picture that the gallery draws through the functions of barcode.h.
struct LibrarySample {
  std::string caption;
  DrawRequest request;  // its format is the gallery's business
};

// The samples of every symbology, those of one type together.
std::vector<LibrarySample> LibrarySamples();

}  // namespace barcode::tool
