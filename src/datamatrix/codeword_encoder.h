#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "datamatrix/messages.h"

namespace barcode {

// The data codewords of a text, without padding, for the first symbol size that the size option admits and
// that holds them. Empty when no such size holds them, when the scheme cannot hold the text, and for an empty
// text. schemeOption: an EncodationScheme number for the whole text, kAutomaticScheme for the fewest
// codewords, kNoEncodation for none. Time and memory are bounded, however long the text.
std::vector<std::uint8_t> EncodeCodewords(std::string_view text, int schemeOption, int sizeOption,
                                          EncoderMessages& messages);

}  // namespace barcode
