#pragma once

#include "pdf417/limits.h"
#include "pdf417/options.h"

namespace barcode::pdf417 {

// The grid of a symbol: columns x rows codewords, of which the last belong to error correction.
struct Layout {
  int columns = 0;
  int rows = 0;
  int errorLevel = 0;

  int Total() const { return columns * rows; }
  int DataLength() const { return Total() - ErrorCodewords(errorLevel); }

  bool operator==(const Layout&) const = default;
};

// The layout for dataLength codewords, the length descriptor included (1 to kMaxDataCodewords). Its
// DataLength() is dataLength or more.
Layout ChooseLayout(int dataLength, const Options& options);

}  // namespace barcode::pdf417
