#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "same/types.h"
#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/symbologies.h"

namespace barcode::test {
namespace {

TEST(Handle, NumbersThatStandForNoSymbology) {
  const auto first = static_cast<int>(EverySymbology().size());
  for (const int type : {-1, first, first + 1, 1000, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(barcode_create(type), nullptr) << type;
  }
}

// A symbology that the recorder lacks would never be compared.
TEST(Handle, TheRecorderKnowsEverySymbology) {
  EXPECT_EQ(static_cast<std::size_t>(same::kTypes), EverySymbology().size());
}

TEST(Handle, EverySymbologyHasAValidTextThatBothOutputsDraw) {
  for (const int type : EverySymbology()) {
    const char* const text = ValidText(type);
    ASSERT_NE(text, nullptr) << type;
    const BarcodeObject object(type);
    (void)Capture([&] {
      EXPECT_EQ(barcode_draw_1d(object, text, 300, 120), 1) << type;
      EXPECT_FALSE(IsBlank(object.Picture())) << type;
      EXPECT_NE(object.SvgOf(text, 300, 120), "") << type;
    });
  }
}

// Usable in #if, as a host uses it.
#if !BARCODE_VERSION_AT_LEAST(1, 0, 0)
#error "the header is older than itself"
#endif

TEST(Header, VersionsCompareAsNumbers) {
  const std::string text = std::to_string(BARCODE_VERSION_MAJOR) + '.' +
                           std::to_string(BARCODE_VERSION_MINOR) + '.' +
                           std::to_string(BARCODE_VERSION_PATCH);
  EXPECT_EQ(text, BARCODE_VERSION_STRING);
  EXPECT_TRUE(BARCODE_VERSION_AT_LEAST(BARCODE_VERSION_MAJOR, BARCODE_VERSION_MINOR, BARCODE_VERSION_PATCH));
  EXPECT_FALSE(
      BARCODE_VERSION_AT_LEAST(BARCODE_VERSION_MAJOR, BARCODE_VERSION_MINOR, BARCODE_VERSION_PATCH + 1));
  EXPECT_FALSE(BARCODE_VERSION_AT_LEAST(BARCODE_VERSION_MAJOR, BARCODE_VERSION_MINOR + 1, 0));
  EXPECT_FALSE(BARCODE_VERSION_AT_LEAST(BARCODE_VERSION_MAJOR + 1, 0, 0));
  EXPECT_TRUE(BARCODE_VERSION_AT_LEAST(0, 999, 999));
}

TEST(Handle, DestroyIgnoresNull) {
  barcode_destroy(nullptr);
}

TEST(Handle, NullHandlesAreHarmless) {
  int length = 7;
  barcode_set_output_format(nullptr, "svg");
  barcode_set_foreground_color(nullptr, 1, 2, 3, 4);
  barcode_set_background_color(nullptr, 1, 2, 3, 4);
  barcode_set_fit_width(nullptr, 1);
  barcode_set_px_adjust_black(nullptr, 1);
  barcode_set_px_adjust_white(nullptr, 1);
  barcode_set_show_text(nullptr, 1);
  barcode_set_text_even_spacing(nullptr, 1);
  barcode_set_text_font_scale(nullptr, 1);
  barcode_set_text_gap(nullptr, 1);
  barcode_set_show_start_stop(nullptr, 1);
  barcode_set_extended_guard(nullptr, 1);
  barcode_set_code_mode(nullptr, "A");
  barcode_set_string_encoding(nullptr, "utf-8");
  barcode_set_version(nullptr, 1);
  barcode_set_error_correction_level(nullptr, "L");
  barcode_set_encode_mode(nullptr, "AUTO");
  barcode_set_code_size(nullptr, "AUTO");
  barcode_set_encode_scheme(nullptr, "AUTO");
  barcode_set_columns(nullptr, 1);
  barcode_set_rows(nullptr, 1);
  barcode_set_error_level(nullptr, 1);
  barcode_set_aspect_ratio(nullptr, 1);
  barcode_set_y_height(nullptr, 1);
  barcode_set_symbol_type_14(nullptr, "STACKED");
  barcode_set_symbol_type_exp(nullptr, "STACKED");
  barcode_set_no_of_columns(nullptr, 1);
  EXPECT_EQ(barcode_is_svg_output(nullptr), 0);
  EXPECT_STREQ(barcode_get_symbol_type_14(nullptr), "");
  EXPECT_EQ(barcode_draw_1d(nullptr, "1", 10, 10), 0);
  EXPECT_EQ(barcode_draw_2d(nullptr, "1", 10), 0);
  EXPECT_EQ(barcode_draw_2d_rect(nullptr, "1", 10, 10), 0);
  EXPECT_EQ(barcode_draw_convenience(nullptr, "1", 10, 10), 0);
  EXPECT_EQ(barcode_draw_stacked(nullptr, "1", 10, 10), 0);
  EXPECT_EQ(barcode_draw_yubin(nullptr, "1", 10), 0);
  EXPECT_EQ(barcode_draw_yubin_with_width(nullptr, "1", 10, 10), 0);
  EXPECT_EQ(barcode_encode_14(nullptr, "1"), 0);
  EXPECT_STREQ(barcode_get_base64(nullptr), "");
  EXPECT_EQ(barcode_get_image_data(nullptr, &length), nullptr);
  EXPECT_EQ(barcode_get_image_data(nullptr, nullptr), nullptr);
  EXPECT_STREQ(barcode_get_svg(nullptr), "");
}

TEST(Handle, NullStringsChangeNothing) {
  const BarcodeObject code(BARCODE_CODE39);
  barcode_set_output_format(code, "svg");
  barcode_set_output_format(code, nullptr);
  EXPECT_EQ(barcode_is_svg_output(code), 1);
  EXPECT_EQ(barcode_draw_1d(code, nullptr, 10, 10), 0);
  EXPECT_STREQ(barcode_calculate_check_digit_14(nullptr), "");
}

TEST(Handle, ATypeThatAFunctionDoesNotServeIsLeftAlone) {
  const BarcodeObject code(BARCODE_CODE39);
  EXPECT_EQ(barcode_draw_2d(code, "1", 100), 0);
  EXPECT_EQ(barcode_draw_2d_rect(code, "1", 100, 100), 0);
  EXPECT_EQ(barcode_draw_convenience(code, "1", 100, 100), 0);
  EXPECT_EQ(barcode_draw_stacked(code, "1", 100, 100), 0);
  EXPECT_EQ(barcode_draw_yubin(code, "1", 100), 0);
  EXPECT_EQ(barcode_draw_yubin_with_width(code, "1", 100, 100), 0);
  EXPECT_EQ(barcode_encode_14(code, "1"), 0);
  EXPECT_STREQ(barcode_get_symbol_type_14(code), "");
}

TEST(Handle, CheckDigitOfThirteenDigits) {
  EXPECT_STREQ(barcode_calculate_check_digit_14("2001234567890"), "9");
  EXPECT_STREQ(barcode_calculate_check_digit_14("0000000000000"), "0");
  EXPECT_STREQ(barcode_calculate_check_digit_14("200123456789"), "");
  EXPECT_STREQ(barcode_calculate_check_digit_14("20012345678909"), "");
  EXPECT_STREQ(barcode_calculate_check_digit_14("200123456789A"), "");
  EXPECT_STREQ(barcode_calculate_check_digit_14(""), "");
}

TEST(Handle, CheckDigitLivesInOneText) {
  const char* const first = barcode_calculate_check_digit_14("2001234567890");
  EXPECT_STREQ(first, "9");
  EXPECT_STREQ(barcode_calculate_check_digit_14("0000000000000"), "0");
  EXPECT_STREQ(first, "0");
}

TEST(Handle, ResultsOfAHandleStayValidUntilTheNextOfTheirKind) {
  const BarcodeObject code(BARCODE_CODE39);
  ASSERT_EQ(barcode_draw_1d(code, "A", 100, 50), 1);
  int length = 0;
  const unsigned char* const bytes = barcode_get_image_data(code, &length);
  const std::string copy(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
  const std::string uri = barcode_get_base64(code);
  barcode_set_output_format(code, "svg");
  ASSERT_EQ(barcode_draw_1d(code, "B", 100, 50), 1);
  const char* const svg = barcode_get_svg(code);
  EXPECT_EQ(std::memcmp(bytes, copy.data(), copy.size()), 0);
  EXPECT_EQ(std::string(svg).find("<?xml"), 0U);
  EXPECT_EQ(uri.find("data:image/png;base64,"), 0U);
}

TEST(Handle, ObjectsDoNotInfluenceEachOther) {
  const BarcodeObject first(BARCODE_CODE39);
  const BarcodeObject second(BARCODE_CODE39);
  barcode_set_show_text(first, 0);
  barcode_set_foreground_color(first, 255, 0, 0, 255);
  const std::string firstSvg = first.SvgOf("A", 100, 50);
  const std::string secondSvg = second.SvgOf("A", 100, 50);
  EXPECT_NE(firstSvg.find("rgb(255,0,0)"), std::string::npos);
  EXPECT_EQ(firstSvg.find("<text"), std::string::npos);
  EXPECT_EQ(secondSvg.find("rgb(255,0,0)"), std::string::npos);
  EXPECT_NE(secondSvg.find("<text"), std::string::npos);
}

}  // namespace
}  // namespace barcode::test
