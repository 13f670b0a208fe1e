#include <gtest/gtest.h>

#include <array>
#include <numeric>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

// Bars of one digit and the narrow spaces between them, in modules.
constexpr std::array<std::array<int, 5>, 10> kDigits = {{{3, 1, 1, 1, 1},
                                                         {1, 1, 1, 1, 3},
                                                         {1, 1, 3, 1, 3},
                                                         {1, 1, 3, 1, 1},
                                                         {1, 1, 1, 1, 3},
                                                         {1, 1, 1, 1, 1},
                                                         {1, 1, 3, 1, 1},
                                                         {3, 1, 1, 1, 3},
                                                         {3, 1, 1, 1, 1},
                                                         {3, 1, 3, 1, 1}}};

// The runs of a row, in modules, from the first bar to the last.
std::vector<int> ExpectedRuns(const std::string& digits) {
  std::vector<int> runs = {3, 1, 3};
  for (const char digit : digits) {
    runs.push_back(1);
    const auto& bars = kDigits[static_cast<std::size_t>(digit - '0')];
    runs.insert(runs.end(), bars.begin(), bars.end());
  }
  runs.insert(runs.end(), {1, 3});
  return runs;
}

class TwoOfFiveRoundTrip : public ::testing::TestWithParam<int> {};

// The spaces of a digit carry nothing here, and digits share patterns: no reader of the public symbologies
// can read such a symbol. What is drawn is checked bar by bar, and that no reader takes it for something
// else.
TEST_P(TwoOfFiveRoundTrip, BarsAreThoseOfTheDigitsAndNoReaderReadsThem) {
  RandomText random(250 + static_cast<std::uint64_t>(GetParam()));
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Digits(1, 30);
    const BarcodeObject object(GetParam());
    barcode_set_show_text(object, 0);
    std::vector<int> expected = ExpectedRuns(text);
    const int lastBar = std::accumulate(expected.begin(), expected.end(), 0);
    const int moduleSize = random.Number(1, 3);
    ASSERT_EQ(barcode_draw_1d(object, text.c_str(), (lastBar + 3) * moduleSize, 40), 1);
    for (int& run : expected) {
      run *= moduleSize;
    }
    expected.push_back(3 * moduleSize);  // the wide space at the end
    EXPECT_EQ(RunsOfRow(object.Picture(), 20), expected) << text;
    const GreyImage image = WithQuietZone(object.Picture(), kQuietModules * moduleSize);
    EXPECT_EQ(ReadWithZxing(image), std::nullopt) << text;
    EXPECT_EQ(ReadWithZbar(image), std::nullopt) << text;
  }
}

INSTANTIATE_TEST_SUITE_P(BothSymbologies, TwoOfFiveRoundTrip,
                         ::testing::Values(BARCODE_MATRIX_2OF5, BARCODE_NEC_2OF5));

}  // namespace
}  // namespace barcode::test
