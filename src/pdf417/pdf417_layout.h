#pragma once

#include "pdf417/pdf417_options.h"

namespace barcode {

// Codewords of the largest symbol, error correction included, and of the data that leaves room for the
// smallest error correction.
inline constexpr int kPDF417MaxCodewords = 928;
inline constexpr int kPDF417MaxDataCodewords = 926;

// Error-correction codewords of the levels 0 to 8.
constexpr int PDF417ErrorCodewords(int level) {
  return 2 << level;
}

// The grid of a symbol: columns x rows codewords, of which the last belong to error correction.
struct PDF417Layout {
  int columns = 0;
  int rows = 0;
  int errorLevel = 0;

  int Total() const { return columns * rows; }
  int DataLength() const { return Total() - PDF417ErrorCodewords(errorLevel); }

  bool operator==(const PDF417Layout&) const = default;
};

// The layout for dataLength codewords, the length descriptor included (1 to kPDF417MaxDataCodewords). Its
// DataLength() is dataLength or more.
PDF417Layout LayoutPDF417(int dataLength, const PDF417Options& options);

}  // namespace barcode
