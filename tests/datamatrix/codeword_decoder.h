#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace barcode::datamatrix {

// The bytes in the data codewords of a symbol, pads included: all six schemes of ISO/IEC 16022, as a reader
// decodes them. Throws std::runtime_error for what a strict reader would refuse. Shares no code with the
// encoder.
std::string DecodeCodewords(std::span<const std::uint8_t> codewords);

}  // namespace barcode::datamatrix
