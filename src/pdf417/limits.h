#pragma once

namespace barcode::pdf417 {

// ISO/IEC 15438: the grid of a symbol.
inline constexpr int kMaxColumns = 30;
inline constexpr int kMinRows = 3;
inline constexpr int kMaxRows = 90;

inline constexpr int kMaxErrorLevel = 8;

// Error-correction codewords of the levels 0 to kMaxErrorLevel.
constexpr int ErrorCodewords(int level) {
  return 2 << level;
}

// Codewords of the largest symbol, error correction included, and of the data, length descriptor included,
// that leaves room for the smallest error correction.
inline constexpr int kMaxCodewords = 928;
inline constexpr int kMaxDataCodewords = kMaxCodewords - ErrorCodewords(0);

// Height to width.
inline constexpr double kMinAspectRatio = 0.001;
inline constexpr double kMaxAspectRatio = 1000.0;

}  // namespace barcode::pdf417
