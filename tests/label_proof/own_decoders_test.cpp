#include "label_proof/own_decoders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "label_proof/picture.h"

namespace barcode::test {
namespace {

// A picture by rows of text, '#' dark, each character a square of `module` pixels.
GreyImage Painted(const std::vector<std::string>& rows, int module) {
  GreyImage image{static_cast<int>(rows.front().size()), static_cast<int>(rows.size()), {}};
  for (const std::string& row : rows) {
    for (const char character : row) {
      image.pixels.push_back(character == '#' ? 20 : 240);
    }
  }
  return Enlarged(image, module);
}

// Rows of bars from their widths in modules, bar first, between light margins.
GreyImage Bars(std::string_view widths, int module, int quiet = 10) {
  std::string row(static_cast<std::size_t>(quiet), ' ');
  char ink = '#';
  for (const char width : widths) {
    row.append(static_cast<std::size_t>(width - '0'), ink);
    ink = ink == '#' ? ' ' : '#';
  }
  row.append(static_cast<std::size_t>(quiet), ' ');
  return Painted(std::vector<std::string>(12, row), module);
}

// Each bar made wider by so many pixels, at the expense of the space behind it.
GreyImage Spread(const GreyImage& image, int pixels) {
  GreyImage spread = image;
  for (std::size_t i = 0; i < image.pixels.size(); ++i) {
    for (std::size_t back = 0; back <= static_cast<std::size_t>(pixels) && back <= i; ++back) {
      spread.pixels[i] = std::min(spread.pixels[i], image.pixels[i - back]);
    }
  }
  return spread;
}

// By the table of the standard; wide: modules of a wide element.
std::string MatrixSymbol(std::string_view digits, int wide) {
  constexpr std::string_view kBits[] = {"00110", "10001", "01001", "11000", "00101",
                                        "10100", "01100", "00011", "10010", "01010"};
  const auto append = [&](std::string& widths, std::string_view bits) {
    for (const char bit : bits) {
      widths += static_cast<char>('0' + (bit == '1' ? wide : 1));
    }
  };
  std::string widths;
  append(widths, "10000");
  for (const char digit : digits) {
    widths += '1';
    append(widths, kBits[digit - '0']);
  }
  widths += '1';
  append(widths, "10000");
  return widths;
}

std::string NecSymbol(std::string_view digits, int wide) {
  constexpr std::string_view kBits[] = {"11000", "00011", "00101", "00110", "01001",
                                        "01010", "01100", "10001", "10010", "10100"};
  const auto append = [&](std::string& widths, std::string_view bits) {
    for (const char bit : bits) {
      widths += static_cast<char>('0' + (bit == '1' ? wide : 1));
    }
  };
  std::string widths;
  append(widths, "1010");
  for (const char digit : digits) {
    append(widths, kBits[digit - '0']);
    widths += '1';
  }
  append(widths, "011");
  return widths;
}

TEST(OwnDecoders, Matrix2of5InEveryTurn) {
  for (const int wide : {2, 3}) {
    for (const int module : {1, 3}) {
      const GreyImage image = Bars(MatrixSymbol("0123456789", wide), module);
      for (int quarters = 0; quarters < 4; ++quarters) {
        EXPECT_EQ(DecodeMatrix2of5(Turned(image, quarters)), "0123456789") << wide << module << quarters;
      }
    }
  }
}

TEST(OwnDecoders, Nec2of5InEveryTurn) {
  for (const int wide : {2, 3}) {
    for (const int module : {1, 3}) {
      const GreyImage image = Bars(NecSymbol("0123456789", wide), module);
      for (int quarters = 0; quarters < 4; ++quarters) {
        EXPECT_EQ(DecodeNec2of5(Turned(image, quarters)), "0123456789") << wide << module << quarters;
      }
    }
  }
}

TEST(OwnDecoders, DigitsWithoutAWideSpace) {
  EXPECT_EQ(DecodeMatrix2of5(Bars(MatrixSymbol("55555", 3), 2)), "55555");
  EXPECT_EQ(DecodeNec2of5(Bars(NecSymbol("99999", 3), 2)), "99999");
}

TEST(OwnDecoders, InkThatSpreads) {
  EXPECT_EQ(DecodeMatrix2of5(Spread(Bars(MatrixSymbol("4017", 3), 4), 1)), "4017");
  EXPECT_EQ(DecodeNec2of5(Spread(Bars(NecSymbol("4017", 3), 4), 1)), "4017");
}

TEST(OwnDecoders, OneSymbologyIsNotTheOther) {
  EXPECT_EQ(DecodeNec2of5(Bars(MatrixSymbol("0123456789", 3), 2)), std::nullopt);
  EXPECT_EQ(DecodeMatrix2of5(Bars(NecSymbol("0123456789", 3), 2)), std::nullopt);
}

TEST(OwnDecoders, QuietZonesAreWanted) {
  EXPECT_EQ(DecodeMatrix2of5(Bars(MatrixSymbol("12", 3), 2, 9)), std::nullopt);
  EXPECT_EQ(DecodeNec2of5(Bars(NecSymbol("12", 3), 2, 9)), std::nullopt);
}

TEST(OwnDecoders, AChangedElementIsNoDigit) {
  std::string widths = MatrixSymbol("12", 3);
  widths[8] = widths[8] == '3' ? '1' : '3';
  EXPECT_EQ(DecodeMatrix2of5(Bars(widths, 2)), std::nullopt);
}

// The bars of a postal symbol, 1 to 4, as a picture.
GreyImage PostalBars(std::string_view bars, int module, int quiet = 4) {
  std::vector<std::string> thirds(3);
  for (const char bar : bars) {
    thirds[0] += bar == '1' || bar == '2' ? "# " : "  ";
    thirds[1] += "# ";
    thirds[2] += bar == '1' || bar == '3' ? "# " : "  ";
  }
  const std::string margin(static_cast<std::size_t>(quiet), ' ');
  const std::string light(bars.size() * 2 - 1 + 2 * margin.size(), ' ');
  std::vector<std::string> rows(static_cast<std::size_t>(quiet), light);
  for (std::string& third : thirds) {
    third.pop_back();
    third.insert(0, margin).append(margin);
    rows.insert(rows.end(), 2, third);
  }
  rows.insert(rows.end(), static_cast<std::size_t>(quiet), light);
  return Painted(rows, module);
}

// 26300233-30-8-403, the worked example of the postal service's manual: its bars and its check digit 5.
std::string ManualExample() {
  std::string bars = "13";
  for (const char* const code : {"132", "321", "312", "144", "144", "132", "312", "312", "414", "312",
                                 "144", "414", "231", "414", "123", "144", "312", "432", "432", "432"}) {
    bars += code;
  }
  return bars;
}

TEST(OwnDecoders, PostalInEveryTurn) {
  for (const int module : {1, 2, 5}) {
    // Values 2+6+3+0+0+2+3+3+10+3+0+10+8+10+4+0+3+14+14+14 = 109; 114 is a multiple of 19.
    const GreyImage image = PostalBars(ManualExample() + "141" + "31", module);
    for (int quarters = 0; quarters < 4; ++quarters) {
      EXPECT_EQ(DecodePostal(Turned(image, quarters)), "26300233-30-8-403") << module << quarters;
    }
  }
}

TEST(OwnDecoders, PostalLettersTakeTwoPositions) {
  std::string bars = "13";
  // 1234567 A J K T U Z, filled with one CC4.
  for (const char* const code : {"114", "132", "312", "123", "141", "321", "213", "324", "144", "324",
                                 "411", "342", "144", "342", "411", "234", "144", "234", "141", "432"}) {
    bars += code;
  }
  // 28 + 11+0+11+9+12+0+12+9+13+0+13+5 + 14 = 137; 152 is a multiple of 19: CC5.
  EXPECT_EQ(DecodePostal(PostalBars(bars + "243" + "31", 2)), "1234567AJKTUZ");
}

TEST(OwnDecoders, PostalCheckCharacterAndQuietZoneAreWanted) {
  EXPECT_EQ(DecodePostal(PostalBars(ManualExample() + "123" + "31", 2)), std::nullopt);
  EXPECT_EQ(DecodePostal(PostalBars(ManualExample() + "141" + "31", 2, 3)), std::nullopt);
  EXPECT_EQ(DecodePostal(PostalBars(ManualExample() + "141" + "13", 2)), std::nullopt);
}

}  // namespace
}  // namespace barcode::test
