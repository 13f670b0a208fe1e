#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

// What a reader reports: AI 01 and the number with its check digit.
std::string ReadData(const std::string& input) {
  const std::string padded = std::string(13 - input.size(), '0') + input;
  return "01" + padded + barcode_calculate_check_digit_14(padded.c_str());
}

// The one-row symbol as it is drawn, and drawn in white on black.
std::optional<GreyImage> OneRow(const std::string& text, int moduleSize, bool whiteOnBlack) {
  return DrawnSymbol(BARCODE_GS1_DATABAR_14, moduleSize, [&](BarcodeHandle handle) {
    barcode_set_show_text(handle, 0);
    if (whiteOnBlack) {
      barcode_set_foreground_color(handle, 255, 255, 255, 255);
      barcode_set_background_color(handle, 0, 0, 0, 255);
    }
    return barcode_draw_1d(handle, text.c_str(), 96 * moduleSize, 60);
  });
}

std::optional<GreyImage> Stacked(const char* form, const std::string& text, int moduleSize, int height) {
  return DrawnSymbol(BARCODE_GS1_DATABAR_14, moduleSize, [&](BarcodeHandle handle) {
    barcode_set_show_text(handle, 0);
    barcode_set_symbol_type_14(handle, form);
    return barcode_draw_1d(handle, text.c_str(), 50 * moduleSize, height);
  });
}

void ExpectStackedReads(const char* form, std::uint64_t seed, int heightInModules) {
  RandomText random(seed);
  std::vector<GreyImage> images;
  std::vector<std::string> data;
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Digits(0, 13);
    const int moduleSize = random.Number(2, 4);
    const auto symbol = Stacked(form, text, moduleSize, heightInModules * moduleSize);
    ASSERT_TRUE(symbol);
    data.push_back(ReadData(text));
    EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"DataBar", data.back()}));
    images.push_back(*symbol);
  }
  const auto readings = ReadWithWasm(images);
  for (std::size_t i = 0; i < readings.size(); ++i) {
    EXPECT_EQ(readings[i], (Reading{"DataBarStk", data[i]}));
  }
}

// The one-row form is drawn with the standard's colours exchanged. Drawn in white on black it is the
// standard's symbol.
TEST(GS1DataBar14RoundTrip, OneRowInWhiteOnBlackReadsBack) {
  RandomText random(12);
  std::vector<GreyImage> images;
  std::vector<std::string> data;
  for (int i = 0; i < 400; ++i) {
    const std::string text = random.Digits(0, 13);
    const auto symbol = OneRow(text, random.Number(2, 3), true);
    ASSERT_TRUE(symbol);
    data.push_back(ReadData(text));
    EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"DataBar", data.back()}));
    EXPECT_EQ(ReadWithZxing(*symbol, "DataBar"), (Reading{"DataBar", data.back().substr(2)}));
    images.push_back(*symbol);
  }
  const auto readings = ReadWithWasm(images);
  for (std::size_t i = 0; i < readings.size(); ++i) {
    EXPECT_EQ(readings[i], (Reading{"DataBarOmni", data[i]}));
  }
}

// As it is drawn, in black on white, no reader sees the number; now and then one takes the exchanged colours
// for the symbol of a different number. The documentation warns of it.
TEST(GS1DataBar14RoundTrip, OneRowInBlackOnWhiteDoesNotReadAsItsNumber) {
  RandomText random(120);
  std::vector<GreyImage> images;
  std::vector<std::string> data;
  for (int i = 0; i < 100; ++i) {
    const std::string text = random.Digits(13, 13);
    const auto symbol = OneRow(text, 2, false);
    ASSERT_TRUE(symbol);
    data.push_back(ReadData(text));
    images.push_back(*symbol);
    EXPECT_NE(ReadWithZbar(*symbol), (Reading{"DataBar", data.back()}));
    EXPECT_NE(ReadWithZxing(*symbol, "DataBar"), (Reading{"DataBar", data.back().substr(2)}));
  }
  const auto readings = ReadWithWasm(images);
  for (std::size_t i = 0; i < readings.size(); ++i) {
    EXPECT_NE(readings[i], (Reading{"DataBarOmni", data[i]}));
  }
}

TEST(GS1DataBar14RoundTrip, Stacked) {
  ExpectStackedReads("STACKED", 141, 40);
}

TEST(GS1DataBar14RoundTrip, StackedOmnidirectional) {
  ExpectStackedReads("STACKED_OMNIDIRECTIONAL", 142, 90);
}

}  // namespace
}  // namespace barcode::test
