#pragma once

#include <cstdint>
#include <span>

#include "base/encoder_lines.h"
#include "base/module_matrix.h"
#include "datamatrix/symbol_sizes.h"

namespace barcode::datamatrix {

// The module placement of ISO/IEC 16022 annex F: the codewords, their most significant bits first, in the
// mapping matrix of the size, which is the symbol without the borders of its data regions. Empty, with a
// line, when the codewords are not as many as the size has.
ModuleMatrix PlaceModules(std::span<const std::uint8_t> codewords, const SymbolSize& size,
                          EncoderLines& lines);

// The symbol of a size: the mapping matrix divided into data regions, each framed by its finder and clock
// borders. Empty when the mapping matrix is not of that size.
ModuleMatrix FrameRegions(const ModuleMatrix& mapping, const SymbolSize& size);

}  // namespace barcode::datamatrix
