#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

constexpr std::string_view kAlphabet = "1234567890ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";

int Modules(const std::string& text) {
  return 16 * static_cast<int>(text.size()) + 31;
}

TEST(Code39RoundTrip, BothReadersSeeTheText) {
  RandomText random(39);
  for (int i = 0; i < 300; ++i) {
    // ZBar wants more than one character.
    const std::string text = random.Of(kAlphabet, 2, 20);
    const auto symbol = DrawnLinear(BARCODE_CODE39, text, Modules(text), random.Number(1, 3));
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZxing(*symbol, "Code39"), (Reading{"Code39", text}));
    EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"CODE-39", text}));
  }
}

TEST(Code39RoundTrip, LowerCaseReadsAsUpperCase) {
  const auto symbol = DrawnLinear(BARCODE_CODE39, "abc-xyz", Modules("abc-xyz"));
  ASSERT_TRUE(symbol);
  EXPECT_EQ(ReadWithZxing(*symbol, "Code39"), (Reading{"Code39", "ABC-XYZ"}));
  EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"CODE-39", "ABC-XYZ"}));
}

TEST(Code39RoundTrip, ASymbolWithItsTextReadsToo) {
  const auto symbol = DrawnSymbol(
      BARCODE_CODE39, 2, [](BarcodeHandle handle) { return barcode_draw_1d(handle, "ABC-123", 300, 100); });
  ASSERT_TRUE(symbol);
  EXPECT_EQ(ReadWithZxing(*symbol), (Reading{"Code39", "ABC-123"}));
  EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"CODE-39", "ABC-123"}));
}

}  // namespace
}  // namespace barcode::test
