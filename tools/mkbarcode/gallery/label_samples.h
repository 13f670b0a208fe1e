#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mkbarcode/library/types.h"

namespace barcode::tool {

// One label of the gallery, made in every format.
struct LabelSample {
  const TypeInfo* type = nullptr;
  std::string caption;
  std::string members;     // of the request behind "type": JSON without braces and without "format"
  bool isRefused = false;  // the library is expected to refuse it
};

// The labels of the gallery, in the order of the symbologies.
std::vector<LabelSample> LabelSamples();

// The request of a sample, as the label library takes it.
std::string RequestText(const LabelSample& sample, std::string_view format);

}  // namespace barcode::tool
