#pragma once

#include <cstdint>
#include <span>

#include "base/module_matrix.h"
#include "datamatrix/messages.h"

namespace barcode {

// The module placement of ISO/IEC 16022 annex F: the codewords, their most significant bits first, in a
// mapping matrix, which is the symbol without the borders of its data regions. Empty, with a message, when
// the codewords are not as many as the matrix holds.
ModuleMatrix PlaceModules(std::span<const std::uint8_t> codewords, int rows, int columns,
                          EncoderMessages& messages);

// The symbol of a size: the mapping matrix divided into data regions, each framed by its finder and clock
// borders. Empty when the mapping matrix is not of that size.
ModuleMatrix FrameRegions(const ModuleMatrix& mapping, int sizeIndex);

}  // namespace barcode
