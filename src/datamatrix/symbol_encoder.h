#pragma once

#include <cstddef>
#include <string_view>

#include "base/module_matrix.h"
#include "datamatrix/messages.h"

namespace barcode {

// Throws std::runtime_error for a selection without a size and for no codewords.
void CheckSelection(int selectedSize, std::size_t codewordCount, int sizeOption);

// The modules of the symbol. Throws std::runtime_error when the text is empty, cannot be encoded or is too
// long; empty when error correction or placement failed, which `messages` then tells.
ModuleMatrix EncodeDataMatrix(std::string_view text, int schemeOption, int sizeOption,
                              EncoderMessages& messages);

}  // namespace barcode
