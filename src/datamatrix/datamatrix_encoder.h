#pragma once

#include <string_view>

#include "base/encoder_lines.h"
#include "base/module_matrix.h"
#include "datamatrix/options.h"

namespace barcode::datamatrix {

// The modules of the symbol, ECC 200 of ISO/IEC 16022. Throws std::runtime_error when the text is empty,
// cannot be encoded or is too long.
ModuleMatrix EncodeDataMatrix(std::string_view text, const Options& options, EncoderLines& lines);

}  // namespace barcode::datamatrix
