#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/encoder_lines.h"
#include "datamatrix/options.h"

namespace barcode::datamatrix {

// The data codewords of a text, without padding, for the first symbol size that the options admit and that
// holds them. Empty when no such size holds them, when the scheme cannot hold the text, and for an empty
// text. Time and memory are bounded, however long the text.
std::vector<std::uint8_t> EncodeCodewords(std::string_view text, const Options& options, EncoderLines& lines);

}  // namespace barcode::datamatrix
