#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/reed_solomon.h"
#include "datamatrix/messages.h"

namespace barcode {

// Fills the data codewords up to the capacity of the size with pads.
void PadCodewords(std::vector<std::uint8_t>& codewords, int sizeIndex, EncoderMessages& messages);

inline constexpr unsigned kDataMatrixPrimitive = 0x12D;  // x^8 + x^5 + x^3 + x^2 + 1

using DataMatrixDivider = ReedSolomonDivider<kDataMatrixPrimitive>;

// The error-correction codewords of one block, as many as `out` takes; false, with a message, for a block
// longer than a code over GF(256) can be.
bool CorrectBlock(const DataMatrixDivider& divider, std::span<const std::uint8_t> data,
                  std::span<std::uint8_t> out, EncoderMessages& messages);

// Appends the Reed-Solomon codewords of all blocks to the data codewords, which fill the size; false, with a
// message, when they do not.
bool AppendErrorCorrection(std::vector<std::uint8_t>& codewords, int sizeIndex, EncoderMessages& messages);

}  // namespace barcode
