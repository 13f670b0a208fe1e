// A host that passes anything it can to the exported functions. Whatever happens, no call may crash, hang,
// leak or return what its documentation does not promise, and the object stays usable.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/random_text.h"
#include "support/symbologies.h"

namespace barcode::test {
namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();

class Host {
 public:
  explicit Host(std::uint64_t seed) : m_random(seed) {}

  int Number() {
    static constexpr int kNumbers[] = {kMin, -100000, -2, -1, 0,  1,   2,   3,   7,      10,  11,
                                       40,   41,      49, 50, 64, 100, 128, 200, 100000, kMax};
    return kNumbers[m_random.Number(0, std::size(kNumbers) - 1)];
  }

  double Scale() {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    static const double kScales[] = {
        0.0,   -1.0, 0.5,       1.0,        2.0,
        30.0,  1e9,  1e-9,      1e300,      -1e300,
        0.001, kNan, kInfinity, -kInfinity, std::numeric_limits<double>::denorm_min()};
    return kScales[m_random.Number(0, std::size(kScales) - 1)];
  }

  // Boxes are small, or far beyond what a canvas can be: large ones would only take time.
  std::pair<int, int> Box() {
    static constexpr int kHuge[] = {kMin, -100000, -1, 100000, kMax};
    if (m_random.Number(0, 7) == 0) {
      return {kHuge[m_random.Number(0, 4)], kHuge[m_random.Number(0, 4)]};
    }
    static constexpr int kSmall[] = {-1, 0, 1, 2, 5, 9, 17, 33, 49, 50, 64, 100, 120, 200, 201, 300};
    return {kSmall[m_random.Number(0, std::size(kSmall) - 1)],
            kSmall[m_random.Number(0, std::size(kSmall) - 1)]};
  }

  std::string Keyword() {
    static constexpr const char* kKeywords[] = {"png",
                                                "jpg",
                                                "jpeg",
                                                "svg",
                                                "SVG",
                                                "PNG",
                                                "",
                                                "A",
                                                "B",
                                                "C",
                                                "AUTO",
                                                "L",
                                                "H",
                                                "x",
                                                "NUMERIC",
                                                "ALPHANUMERIC",
                                                "KANJI",
                                                "utf-8",
                                                "shift-jis",
                                                "10x10",
                                                "144x144",
                                                "16x48",
                                                "C40",
                                                "X12",
                                                "TEXT",
                                                "EDIFACT",
                                                "BASE256",
                                                "ASCII",
                                                "STACKED",
                                                "UNSTACKED",
                                                "STACKED_OMNIDIRECTIONAL",
                                                "OMNIDIRECTIONAL"};
    if (m_random.Number(0, 9) == 0) {
      return m_random.Bytes(0, 300, 1);
    }
    return kKeywords[m_random.Number(0, std::size(kKeywords) - 1)];
  }

  std::string Text(int type) {
    switch (m_random.Number(0, 8)) {
      case 0:
        return m_random.Bytes(0, 60, 1);
      case 1:
        return m_random.Digits(0, 60);
      case 2:
        return m_random.Of("0123456789ABCXYZ{}FNCAI1-. $/+%abc\r\n\t", 0, 40);
      case 3:
        return m_random.Bytes(0, 2000, 1);
      case 4:
        return m_random.Of(m_random.Bytes(1, 1, 1), 0, 3000);
      case 5:
        return std::string(ValidText(type)) + m_random.Bytes(0, 3, 1);
      case 6:
        return "\xE6\x97\xA5\xE6\x9C\xAC" + m_random.Bytes(0, 9, 1);
      default:
        return ValidText(type);
    }
  }

  // PDF417 aspect ratios, their limits included.
  double Ratio() {
    static constexpr double kRatios[] = {0.001, 0.0009, 0.5, 3.0, 1000.0, 1001.0};
    return m_random.Number(0, 1) == 0 ? Scale() : kRatios[m_random.Number(0, std::size(kRatios) - 1)];
  }

  void SetSomething(BarcodeHandle handle) {
    const std::string keyword = Keyword();
    const char* const word = m_random.Number(0, 19) == 0 ? nullptr : keyword.c_str();
    switch (m_random.Number(0, 26)) {
      case 0:
        return barcode_set_output_format(handle, word);
      case 1:
        return barcode_set_foreground_color(handle, Number(), Number(), Number(), Number());
      case 2:
        return barcode_set_background_color(handle, Number(), Number(), Number(), Number());
      case 3:
        return barcode_set_fit_width(handle, Number());
      case 4:
        return barcode_set_px_adjust_black(handle, Number());
      case 5:
        return barcode_set_px_adjust_white(handle, Number());
      case 6:
        return barcode_set_show_text(handle, Number());
      case 7:
        return barcode_set_text_even_spacing(handle, Number());
      case 8:
        return barcode_set_text_font_scale(handle, Scale());
      case 9:
        return barcode_set_text_gap(handle, Scale());
      case 10:
        return barcode_set_show_start_stop(handle, Number());
      case 11:
        return barcode_set_extended_guard(handle, Number());
      case 12:
        return barcode_set_code_mode(handle, word);
      case 13:
        return barcode_set_string_encoding(handle, word);
      case 14:
        return barcode_set_version(handle, Number());
      case 15:
        return barcode_set_error_correction_level(handle, word);
      case 16:
        return barcode_set_encode_mode(handle, word);
      case 17:
        return barcode_set_code_size(handle, word);
      case 18:
        return barcode_set_encode_scheme(handle, word);
      case 19:
        return barcode_set_columns(handle, Number());
      case 20:
        return barcode_set_rows(handle, Number());
      case 21:
        return barcode_set_error_level(handle, Number());
      case 22:
        return barcode_set_aspect_ratio(handle, Ratio());
      case 23:
        return barcode_set_y_height(handle, Number());
      case 24:
        return barcode_set_symbol_type_14(handle, word);
      case 25:
        return barcode_set_symbol_type_exp(handle, word);
      default:
        return barcode_set_no_of_columns(handle, Number());
    }
  }

  int DrawSomething(BarcodeHandle handle, int type) {
    const std::string text = Text(type);
    const auto [width, height] = Box();
    switch (m_random.Number(0, 9)) {
      case 0:
        return barcode_draw_2d(handle, text.c_str(), width);
      case 1:
        return barcode_draw_2d_rect(handle, text.c_str(), width, height);
      case 2:
        return barcode_draw_convenience(handle, text.c_str(), width, height);
      case 3:
        return barcode_draw_stacked(handle, text.c_str(), width, height);
      case 4:
        return barcode_draw_yubin(handle, text.c_str(), height);
      case 5:
        return barcode_draw_yubin_with_width(handle, text.c_str(), width, height);
      case 6:
        return barcode_encode_14(handle, text.c_str());
      case 7:
        return barcode_draw_1d(handle, m_random.Number(0, 9) == 0 ? nullptr : text.c_str(), width, height);
      default:
        return barcode_draw_1d(handle, text.c_str(), width, height);
    }
  }

  void FetchSomething(BarcodeHandle handle) {
    switch (m_random.Number(0, 3)) {
      case 0:
        EXPECT_NE(barcode_get_base64(handle), nullptr);
        break;
      case 1:
        EXPECT_NE(barcode_get_svg(handle), nullptr);
        break;
      case 2:
        EXPECT_NE(barcode_get_symbol_type_14(handle), nullptr);
        break;
      default: {
        int length = -1;
        const unsigned char* const bytes = barcode_get_image_data(handle, &length);
        EXPECT_EQ(bytes == nullptr, length == 0);
        if (bytes != nullptr) {
          EXPECT_EQ(std::memcmp(bytes, "\x89PNG", 4), 0);
        }
      }
    }
  }

 private:
  RandomText m_random;
};

// Back to sensible options: a valid text draws again.
void ExpectStillUsable(BarcodeHandle handle, int type) {
  barcode_set_output_format(handle, "png");
  barcode_set_px_adjust_black(handle, 0);
  barcode_set_px_adjust_white(handle, 0);
  barcode_set_text_font_scale(handle, 1);
  barcode_set_text_gap(handle, 1);
  barcode_set_code_mode(handle, "AUTO");
  barcode_set_encode_mode(handle, "AUTO");
  barcode_set_code_size(handle, "AUTO");
  barcode_set_encode_scheme(handle, "AUTO");
  EXPECT_EQ(barcode_draw_1d(handle, ValidText(type), 300, 120), 1) << "type " << type;
  int length = 0;
  EXPECT_NE(barcode_get_image_data(handle, &length), nullptr) << "type " << type;
}

class HostileHost : public ::testing::TestWithParam<int> {
 protected:
  void SetUp() override { ASSERT_NE(ValidText(GetParam()), nullptr) << "type " << GetParam(); }
};

TEST_P(HostileHost, RandomCalls) {
  const int type = GetParam();
  const std::size_t types = EverySymbology().size();
  for (std::uint64_t seed = 0; seed < 60; ++seed) {
    BarcodeHandle const handle = barcode_create(type);
    Captured captured = Capture([&] {
      Host host(seed * types + static_cast<std::uint64_t>(type));
      for (int i = 0; i < 40; ++i) {
        host.SetSomething(handle);
        const int drawn = host.DrawSomething(handle, type);
        EXPECT_TRUE(drawn == 0 || drawn == 1) << drawn;
        host.FetchSomething(handle);
      }
      ExpectStillUsable(handle, type);
      barcode_destroy(handle);
    });
    ASSERT_FALSE(HasFailure()) << "seed " << seed << "\n" << captured.err.substr(0, 2000);
  }
}

TEST_P(HostileHost, AMegabyteOfText) {
  const int type = GetParam();
  BarcodeHandle const handle = barcode_create(type);
  RandomText random(static_cast<std::uint64_t>(type));
  const std::string texts[] = {std::string(1'000'000, '7'), std::string(1'000'001, 'A'),
                               random.Bytes(1'000'000, 1'000'000, 1),
                               random.Bytes(1'000'000, 1'000'000, 1, 126), random.Digits(999'999, 999'999)};
  (void)Capture([&] {
    for (const std::string& text : texts) {
      for (const char* const format : {"png", "svg"}) {
        barcode_set_output_format(handle, format);
        const int drawn = barcode_draw_1d(handle, text.c_str(), 200, 60);
        EXPECT_TRUE(drawn == 0 || drawn == 1);
        barcode_draw_2d(handle, text.c_str(), 100);
        barcode_draw_stacked(handle, text.c_str(), 200, 60);
        barcode_draw_convenience(handle, text.c_str(), 200, 60);
        barcode_draw_yubin(handle, text.c_str(), 60);
        barcode_encode_14(handle, text.c_str());
      }
    }
    ExpectStillUsable(handle, type);
    barcode_destroy(handle);
  });
}

INSTANTIATE_TEST_SUITE_P(EverySymbology, HostileHost, ::testing::ValuesIn(EverySymbology()));

}  // namespace
}  // namespace barcode::test
