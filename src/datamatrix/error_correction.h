#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/encoder_lines.h"
#include "base/reed_solomon.h"
#include "datamatrix/symbol_sizes.h"

namespace barcode::datamatrix {

// Fills the data codewords up to the capacity of the size with pads.
void PadCodewords(std::vector<std::uint8_t>& codewords, const SymbolSize& size);

inline constexpr unsigned kPrimitive = 0x12D;  // x^8 + x^5 + x^3 + x^2 + 1

using Divider = ReedSolomonDivider<kPrimitive>;

// The error-correction codewords of one block, as many as `out` takes; false, with a line, for a block
// longer than a code over GF(256) can be.
bool CorrectBlock(const Divider& divider, std::span<const std::uint8_t> data, std::span<std::uint8_t> out,
                  EncoderLines& lines);

// Appends the Reed-Solomon codewords of all blocks to the data codewords, which fill the size; false, with a
// line, when they do not.
bool AppendErrorCorrection(std::vector<std::uint8_t>& codewords, const SymbolSize& size, EncoderLines& lines);

}  // namespace barcode::datamatrix
