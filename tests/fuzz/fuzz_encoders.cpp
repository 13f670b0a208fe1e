// The first byte of the input chooses an encoder, a converter or a layout, the others are its text and
// options. What it encodes is read back by a decoder of the tests' own; texts are refused exactly where the
// rules say so; no layout is broken by any size or scale.
#include <array>
#include <cstdint>

#include "fuzz/checks.h"

namespace barcode::fuzz {
namespace {

using Check = void (*)(ByteReader&);

constexpr auto kChecks = std::to_array<Check>({CheckCode39,          CheckCode93,
                                               CheckCode128,         CheckNw7,
                                               CheckTwoOfFive,       CheckRetail,
                                               CheckYubin,           CheckGs1_128,
                                               CheckDataBar14,       CheckDataBarLimited,
                                               CheckDataBarExpanded, CheckElementString,
                                               CheckPaymentForm,     CheckQr,
                                               CheckDataMatrix,      CheckPdf417,
                                               CheckInputEncoding,   CheckNumbers,
                                               CheckBase64,          CheckLinearLayout,
                                               CheckGuardBarLayout,  CheckStackedLayout,
                                               CheckFourStateLayout, CheckPaymentFormLayout,
                                               CheckMatrixLayout});

}  // namespace
}  // namespace barcode::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  barcode::fuzz::ByteReader reader({data, size});
  reader.Of(barcode::fuzz::kChecks)(reader);
  return 0;
}
