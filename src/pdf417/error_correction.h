#pragma once

#include <span>
#include <vector>

namespace barcode::pdf417 {

// The coefficients of the generator polynomial (x - 3)(x - 3^2)...(x - 3^n) over GF(929), n = 2^(level + 1),
// for the error levels 0 to 8: element k belongs to x^k; the leading 1 is left out.
std::span<const unsigned> Generator(int level);

// The error-correction codewords of ISO/IEC 15438 for the data codewords (0 to 928), in their order in the
// symbol.
std::vector<int> ErrorCorrection(std::span<const int> data, int level);

}  // namespace barcode::pdf417
