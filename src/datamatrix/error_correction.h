#pragma once

#include <cstdint>
#include <vector>

#include "datamatrix/messages.h"

namespace barcode {

// Fills the data codewords up to the capacity of the size with pads.
void PadCodewords(std::vector<std::uint8_t>& codewords, int sizeIndex, EncoderMessages& messages);

// Appends the Reed-Solomon codewords to the data codewords, which fill the size; false, with a message, when
// they do not.
bool AppendErrorCorrection(std::vector<std::uint8_t>& codewords, int sizeIndex, EncoderMessages& messages);

}  // namespace barcode
