#pragma once

#include <string>

namespace barcode::test {

// Calls every function of the library with objects of its own, one of each symbology, and returns everything
// that was fetched: pictures and documents with texts of two sizes, check digits, words. Another variant has
// other sizes, options and texts. Throws std::runtime_error when a draw fails.
std::string UseEveryFunction(int variant);

}  // namespace barcode::test
