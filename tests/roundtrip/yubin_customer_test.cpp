// No independent reader at hand knows the postal customer barcode: these tests read the picture themselves,
// with the tables of the postal service's manual.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

constexpr std::array<std::string_view, 19> kCodes = {"144", "114", "132", "312", "123", "141", "321",
                                                     "213", "231", "411", "414", "324", "342", "234",
                                                     "432", "243", "423", "441", "111"};

// The bar at an x as one of the four types, by its ink in the upper, middle and lower third.
char BarAt(const Image& image, int x) {
  const auto dark = [&](int sixths) { return image.At(x, image.height * sixths / 6).r < 128; };
  if (!dark(3)) {
    return '?';
  }
  if (dark(1)) {
    return dark(5) ? '1' : '2';
  }
  return dark(5) ? '3' : '4';
}

std::string BarsOf(const Image& image) {
  std::string bars;
  for (int i = 0; i < 67; ++i) {
    // Near the middle of a bar, which is a sixth of the height wide and may start a pixel early.
    bars += BarAt(image, static_cast<int>(i * image.height / 3.0 + image.height / 12.0 - 0.5));
  }
  return bars;
}

// The text of a symbol; empty when start, stop, a code or the check sum is wrong.
std::string TextOf(const std::string& bars) {
  if (bars.substr(0, 2) != "13" || bars.substr(65) != "31") {
    return {};
  }
  std::string text;
  std::size_t sum = 0;
  std::size_t control = 0;
  for (std::size_t at = 2; at < 65; at += 3) {
    const auto found = std::find(kCodes.begin(), kCodes.end(), bars.substr(at, 3));
    if (found == kCodes.end()) {
      return {};
    }
    const auto value = static_cast<std::size_t>(found - kCodes.begin());
    sum += value;
    if (at == 62 || value >= 14) {
      continue;  // check character, filling
    }
    if (value > 10) {
      control = value - 10;
      continue;
    }
    text += control == 0 ? (value == 10 ? '-' : static_cast<char>('0' + value))
                         : static_cast<char>('A' + 10 * (control - 1) + value);
    control = 0;
  }
  return sum % 19 == 0 ? text : std::string();
}

TEST(YubinCustomerRoundTrip, ThePictureHoldsTheText) {
  RandomText random(15);
  for (int i = 0; i < 400; ++i) {
    // Up to 18 positions: seven of the postal code, two letters among the rest.
    std::string text = random.Digits(7, 7) + random.Of("0123456789-", 0, 7);
    for (int letters = random.Number(0, 2); letters > 0; --letters) {
      text.insert(static_cast<std::size_t>(random.Number(7, static_cast<int>(text.size()))),
                  random.Of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 1, 1));
    }
    const BarcodeObject object(BARCODE_YUBIN_CUSTOMER);
    ASSERT_EQ(barcode_draw_yubin(object, text.c_str(), random.Number(12, 120)), 1);
    const std::string bars = BarsOf(object.Picture());
    ASSERT_EQ(TextOf(bars), text) << bars;
  }
}

TEST(YubinCustomerRoundTrip, OddHeightsKeepTheBarsApart) {
  for (int height = 12; height < 120; ++height) {
    const BarcodeObject object(BARCODE_YUBIN_CUSTOMER);
    ASSERT_EQ(barcode_draw_yubin(object, "26300233-30-8-403", height), 1);
    ASSERT_EQ(TextOf(BarsOf(object.Picture())), "26300233-30-8-403") << height;
  }
}

}  // namespace
}  // namespace barcode::test
