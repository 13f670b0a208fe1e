#pragma once

#include <cstddef>
#include <span>
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

// A label, delivered or refused.
struct MadeLabel {
  bool ok = false;
  std::string data;
  std::string report;  // JSON
};

struct LabelGalleryResult {
  std::size_t types = 0;              // symbologies shown
  std::size_t made = 0;               // samples that came out as expected, in every format
  std::vector<std::string> failures;  // one line for each label that did not
  std::string pageFile;
};

// The request of a sample, as the label library takes it.
std::string RequestText(const LabelSample& sample, std::string_view format);

// Asks the label library. Throws RunError when memory is exhausted.
MadeLabel MakeLabel(std::string_view request);

// Makes the samples in every format into DIRECTORY/labels and writes labels.html, which shows them, into the
// directory. Both directories are made where they are missing. A label that does not come out as expected is
// recorded, and the others go on. Throws RunError when a file cannot be written.
LabelGalleryResult WriteLabelGallery(std::span<const LabelSample> samples, const std::string& directory);

}  // namespace barcode::tool
