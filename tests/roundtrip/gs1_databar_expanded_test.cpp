#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "roundtrip/roundtrip.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

constexpr std::string_view kAlphanumeric = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ*,-./";
constexpr std::string_view kIso646 =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!\"%&'()*+,-./:;<=>?_ ";

class RandomElements {
 public:
  explicit RandomElements(std::uint64_t seed) : m_random(seed) {}

  int Number(int low, int high) { return m_random.Number(low, high); }

  // An element string of any kind, with the byte 0x1D behind fields of variable length.
  std::string Next() {
    switch (Number(0, 5)) {
      case 0:
        return Gtin("9") + Weight();
      case 1:
        return Gtin("9") + Weight() + Date();
      case 2:
        return Gtin("9") + "392" + m_random.Of("0123", 1, 1) + m_random.Digits(1, 15) + Tail();
      case 3:
        return Gtin("9") + "393" + m_random.Of("0123", 1, 1) + m_random.Digits(4, 18) + Tail();
      case 4:
        return Gtin(m_random.Digits(1, 1)) + Fields(1);
      default:
        return Fields(2);
    }
  }

 private:
  std::string Gtin(const std::string& first) {
    const std::string digits = first + m_random.Digits(12, 12);
    return "01" + digits + barcode_calculate_check_digit_14(digits.c_str());
  }

  std::string Weight() {
    static constexpr std::array<const char*, 4> kAis = {"3103", "3202", "3203", "310"};
    const std::string ai = kAis[static_cast<std::size_t>(Number(0, 3))];
    const std::string weight =
        std::to_string(1'000'000 + Number(0, 1) * Number(0, 99'999) + Number(0, 9'999));
    return ai + (ai.size() == 3 ? m_random.Digits(1, 1) : "") + weight.substr(1);
  }

  std::string Date() {
    const std::string ai = m_random.Of("1357", 1, 1);
    return '1' + ai + m_random.Digits(2, 2) + std::to_string(100 + Number(1, 12)).substr(1) +
           std::to_string(100 + Number(0, 31)).substr(1);
  }

  std::string Value() {
    switch (Number(0, 2)) {
      case 0:
        return m_random.Digits(1, 16);
      case 1:
        return m_random.Of(kAlphanumeric, 1, 12);
      default:
        return m_random.Of(kIso646, 1, 7);
    }
  }

  std::string Tail() {
    return Number(0, 1) == 0 ? ""
                             : "\x1D"
                               "10" +
                                   m_random.Of(kAlphanumeric, 1, 6);
  }

  std::string Fields(int mostMore) {
    std::string fields = "10" + Value();
    for (int more = Number(0, mostMore); more > 0; --more) {
      fields += (more == 1 ? "\x1D"
                             "21"
                           : "\x1D"
                             "99") +
                Value();
    }
    return fields;
  }

  RandomText m_random;
};

// The module width of the one-row form is the box's width divided by its modules, whatever comes out. Here it
// is a whole number of pixels: in a wide box the first bar, one module from the left, tells the number of
// modules.
std::optional<GreyImage> OneRow(const std::string& text, int moduleSize) {
  constexpr int kWide = 1'000'000;
  const BarcodeObject probe(BARCODE_GS1_DATABAR_EXPANDED);
  const std::string firstBar = SvgElements(probe.SvgOf(text, kWide, 60), "rect").at(1);
  const int modules = static_cast<int>(std::lround(kWide / std::stod(Attribute(firstBar, "x"))));
  return DrawnLinear(BARCODE_GS1_DATABAR_EXPANDED, text, modules, moduleSize);
}

std::optional<GreyImage> Stacked(const std::string& text, int pairs) {
  return DrawnSymbol(BARCODE_GS1_DATABAR_EXPANDED, 2, [&](BarcodeHandle handle) {
    barcode_set_show_text(handle, 0);
    barcode_set_no_of_columns(handle, pairs);
    const int mostRows = (11 + pairs - 1) / pairs;
    return barcode_draw_stacked(handle, text.c_str(), 2 * (49 * pairs + 4), 60 + 40 * mostRows);
  });
}

TEST(GS1DataBarExpandedRoundTrip, OneRow) {
  RandomElements random(14);
  std::vector<GreyImage> images;
  std::vector<std::string> data;
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Next();
    const auto symbol = OneRow(text, random.Number(2, 3));
    ASSERT_TRUE(symbol) << text;
    images.push_back(*symbol);
    data.push_back(text);
    // ZBar does not know that FNC1 returns to numeric mode.
    if (text.find('\x1D') == std::string::npos) {
      EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"DataBar-Exp", text}));
    }
  }
  const auto readings = ReadWithWasm(images);
  for (std::size_t i = 0; i < readings.size(); ++i) {
    EXPECT_EQ(readings[i], (Reading{"DataBarExp", data[i]}));
  }
}

TEST(GS1DataBarExpandedRoundTrip, Stacked) {
  RandomElements random(15);
  std::vector<GreyImage> images;
  std::vector<std::string> data;
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Next();
    const auto symbol = Stacked(text, random.Number(1, 10));
    ASSERT_TRUE(symbol) << text;
    images.push_back(*symbol);
    data.push_back(text);
  }
  const auto readings = ReadWithWasm(images);
  for (std::size_t i = 0; i < readings.size(); ++i) {
    ASSERT_TRUE(readings[i]) << data[i];
    EXPECT_EQ(readings[i]->data, data[i]);
  }
}

}  // namespace
}  // namespace barcode::test
