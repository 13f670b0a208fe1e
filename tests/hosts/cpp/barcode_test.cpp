// barcode.hpp as a host uses it: every member does what its function does.
#include "barcode.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <latch>
#include <string>
#include <string_view>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/capture.h"
#include "support/scratch_folder.h"
#include "support/symbologies.h"

namespace barcode::test {
namespace {

using libbarcode::Barcode;
using libbarcode::Bytes;
using libbarcode::Symbology;

static_assert(std::is_nothrow_move_constructible_v<Barcode> && std::is_nothrow_move_assignable_v<Barcode>);
static_assert(std::is_nothrow_swappable_v<Barcode> && std::is_nothrow_destructible_v<Barcode>);
static_assert(!std::is_copy_constructible_v<Barcode> && !std::is_copy_assignable_v<Barcode>);
static_assert(noexcept(std::declval<Barcode&>().png()) && noexcept(std::declval<Barcode&>().svg()));
static_assert(noexcept(std::declval<Barcode&>().data_uri()) && noexcept(std::declval<Barcode&>().release()));
static_assert(noexcept(std::declval<const Barcode&>().is_svg_output()) && noexcept(
    std::declval<const Barcode&>().symbol_type_14()));

constexpr int kWidth = 400;
constexpr int kHeight = 120;

// What a draw left behind: lines, picture, document.
std::string Results(Barcode& code, const std::function<bool()>& draw) {
  std::string results;
  const Captured captured = Capture([&] {
    results = draw() ? "drawn" : "not drawn";
    results += code.png().chars();
    results += code.svg();
  });
  return results + captured.out + captured.err;
}

// One option, set with the function and with the member, on a symbology for which it makes a difference.
struct Option {
  Symbology type;
  const char* text;
  std::function<void(BarcodeHandle)> function;
  std::function<void(Barcode&)> member;
};

std::vector<Option> Options() {
  using enum Symbology;
  return {
      {kCode39, "A", [](auto h) { barcode_set_output_format(h, "svg"); },
       [](auto& b) { b.set_output_format("svg"); }},
      {kCode39, "A", [](auto h) { barcode_set_foreground_color(h, 1, 2, 3, 4); },
       [](auto& b) { b.set_foreground_color(1, 2, 3, 4); }},
      {kCode39, "A", [](auto h) { barcode_set_foreground_color(h, 9, 2, 3, 255); },
       [](auto& b) { b.set_foreground_color(9, 2, 3); }},
      {kCode39, "A", [](auto h) { barcode_set_background_color(h, 1, 2, 3, 4); },
       [](auto& b) { b.set_background_color(1, 2, 3, 4); }},
      {kCode39, "A", [](auto h) { barcode_set_background_color(h, 9, 2, 3, 255); },
       [](auto& b) { b.set_background_color(9, 2, 3); }},
      {kCode39, "A", [](auto h) { barcode_set_fit_width(h, 1); }, [](auto& b) { b.set_fit_width(true); }},
      {kCode39, "A", [](auto h) { barcode_set_px_adjust_black(h, 2); },
       [](auto& b) { b.set_px_adjust_black(2); }},
      {kCode39, "A", [](auto h) { barcode_set_px_adjust_white(h, 2); },
       [](auto& b) { b.set_px_adjust_white(2); }},
      {kCode39, "A", [](auto h) { barcode_set_show_text(h, 0); }, [](auto& b) { b.set_show_text(false); }},
      {kCode39, "ABC", [](auto h) { barcode_set_text_even_spacing(h, 0); },
       [](auto& b) { b.set_text_even_spacing(false); }},
      {kCode39, "A", [](auto h) { barcode_set_text_font_scale(h, 1.5); },
       [](auto& b) { b.set_text_font_scale(1.5); }},
      {kCode39, "A", [](auto h) { barcode_set_text_gap(h, 3.5); }, [](auto& b) { b.set_text_gap(3.5); }},
      {kCode39, "A", [](auto h) { barcode_set_show_start_stop(h, 0); },
       [](auto& b) { b.set_show_start_stop(false); }},
      {kJan13, "490123456789", [](auto h) { barcode_set_extended_guard(h, 0); },
       [](auto& b) { b.set_extended_guard(false); }},
      {kCode128, "AB", [](auto h) { barcode_set_code_mode(h, "B"); }, [](auto& b) { b.set_code_mode("B"); }},
      {kQr, "\xE6\xBC\xA2", [](auto h) { barcode_set_string_encoding(h, "shift-jis"); },
       [](auto& b) { b.set_string_encoding("shift-jis"); }},
      {kQr, "A", [](auto h) { barcode_set_version(h, 5); }, [](auto& b) { b.set_version(5); }},
      {kQr, "A", [](auto h) { barcode_set_error_correction_level(h, "H"); },
       [](auto& b) { b.set_error_correction_level("H"); }},
      {kQr, "12", [](auto h) { barcode_set_encode_mode(h, "NUMERIC"); },
       [](auto& b) { b.set_encode_mode("NUMERIC"); }},
      {kDataMatrix, "A", [](auto h) { barcode_set_code_size(h, "20x20"); },
       [](auto& b) { b.set_code_size("20x20"); }},
      {kDataMatrix, "abcdefgh", [](auto h) { barcode_set_encode_scheme(h, "TEXT"); },
       [](auto& b) { b.set_encode_scheme("TEXT"); }},
      {kPdf417, "A", [](auto h) { barcode_set_columns(h, 5); }, [](auto& b) { b.set_columns(5); }},
      {kPdf417, "A", [](auto h) { barcode_set_rows(h, 9); }, [](auto& b) { b.set_rows(9); }},
      {kPdf417, "A", [](auto h) { barcode_set_error_level(h, 4); }, [](auto& b) { b.set_error_level(4); }},
      {kPdf417, "A text that is long enough", [](auto h) { barcode_set_aspect_ratio(h, 2.5); },
       [](auto& b) { b.set_aspect_ratio(2.5); }},
      {kPdf417, "A text that is long enough", [](auto h) { barcode_set_y_height(h, 9); },
       [](auto& b) { b.set_y_height(9); }},
      {kGs1DataBar14, "2001234567890", [](auto h) { barcode_set_symbol_type_14(h, "STACKED"); },
       [](auto& b) { b.set_symbol_type_14("STACKED"); }},
      {kGs1DataBarExpanded, "0190012345678908", [](auto h) { barcode_set_symbol_type_exp(h, "STACKED"); },
       [](auto& b) { b.set_symbol_type_exp("STACKED"); }},
      {kGs1DataBarExpanded, "019001234567890810ABCDEF",
       [](auto h) {
         barcode_set_symbol_type_exp(h, "STACKED");
         barcode_set_no_of_columns(h, 1);
       },
       [](auto& b) { b.set_symbol_type_exp("STACKED").set_no_of_columns(1); }},
  };
}

TEST(CppBarcode, OptionsAreThoseOfTheFunctions) {
  int number = 0;
  for (const Option& option : Options()) {
    Barcode plain(option.type);
    Barcode withFunction(option.type);
    Barcode withMember(option.type);
    option.function(withFunction.get());
    option.member(withMember);
    const auto results = [&option](Barcode& code) {
      return Results(code, [&] { return code.draw(option.text, kWidth, kHeight); });
    };
    const std::string wanted = results(withFunction);
    EXPECT_TRUE(results(withMember) == wanted) << number;
    EXPECT_TRUE(results(plain) != wanted) << number << ": the option makes no difference";
    ++number;
  }
}

struct DrawCase {
  Symbology type;
  const char* text;
  std::function<bool(BarcodeHandle, const char*)> function;
  std::function<bool(Barcode&, const char*)> member;
};

TEST(CppBarcode, DrawsAreThoseOfTheFunctions) {
  using enum Symbology;
  const char* const payment = "9191234512345678901234567890122611300012300";
  const std::vector<DrawCase> cases = {
      {kCode39, "A", [](auto h, auto t) { return barcode_draw_1d(h, t, 300, 90) == 1; },
       [](auto& b, auto t) { return b.draw(t, 300, 90); }},
      {kQr, "A", [](auto h, auto t) { return barcode_draw_2d(h, t, 90) == 1; },
       [](auto& b, auto t) { return b.draw_2d(t, 90); }},
      {kQr, "A", [](auto h, auto t) { return barcode_draw_2d_rect(h, t, 90, 70) == 1; },
       [](auto& b, auto t) { return b.draw_2d_rect(t, 90, 70); }},
      {kGs1_128, payment, [](auto h, auto t) { return barcode_draw_convenience(h, t, 500, 90) == 1; },
       [](auto& b, auto t) { return b.draw_convenience(t, 500, 90); }},
      {kGs1DataBarExpanded, "0190012345678908",
       [](auto h, auto t) { return barcode_draw_stacked(h, t, 300, 200) == 1; },
       [](auto& b, auto t) { return b.draw_stacked(t, 300, 200); }},
      {kYubinCustomer, "1234567", [](auto h, auto t) { return barcode_draw_yubin(h, t, 30) == 1; },
       [](auto& b, auto t) { return b.draw_yubin(t, 30); }},
      {kYubinCustomer, "1234567",
       [](auto h, auto t) { return barcode_draw_yubin_with_width(h, t, 9, 40) == 1; },
       [](auto& b, auto t) { return b.draw_yubin_with_width(t, 9, 40); }},
      {kGs1DataBar14, "2001234567890", [](auto h, auto t) { return barcode_encode_14(h, t) == 1; },
       [](auto& b, auto t) { return b.encode_14(t); }},
  };
  int number = 0;
  for (const DrawCase& draw : cases) {
    Barcode withFunction(draw.type);
    Barcode withMember(draw.type);
    const std::string wanted =
        Results(withFunction, [&] { return draw.function(withFunction.get(), draw.text); });
    EXPECT_TRUE(Results(withMember, [&] { return draw.member(withMember, draw.text); }) == wanted) << number;
    EXPECT_EQ(wanted.substr(0, 5), "drawn") << number;
    // The postal barcode alone drops what it does not know.
    const std::string bad = draw.type == kYubinCustomer ? "" : std::string(5000, '\x01');
    Barcode refusing(draw.type);
    const std::string refused = Results(refusing, [&] { return draw.member(refusing, bad.c_str()); });
    EXPECT_EQ(refused.substr(0, 9), "not drawn") << number;
    ++number;
  }
}

TEST(CppBarcode, ResultsAreThoseOfTheFunctions) {
  Barcode code(Symbology::kCode39);
  std::string png;
  std::string uri;
  WithoutOutput([&] {
    EXPECT_TRUE(code.draw("ABC", 300, 90));
    png = code.png().chars();
    // Asked for again.
    EXPECT_TRUE(code.png().chars() == png);
    uri = code.data_uri();
    EXPECT_TRUE(code.png().empty());
  });
  EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
  EXPECT_EQ(uri.substr(0, 26), "data:image/png;base64,iVBO");
  EXPECT_FALSE(code.is_svg_output());
  EXPECT_TRUE(code.set_output_format("svg").is_svg_output());
  WithoutOutput([&] { EXPECT_TRUE(code.draw("ABC", 300, 90)); });
  const std::string svg(code.svg());
  EXPECT_EQ(svg, barcode_get_svg(code.get()));
  EXPECT_EQ(code.svg().substr(0, 5), "<?xml");
  EXPECT_EQ(code.data_uri().substr(0, 7), "Error: ");

  const ScratchFolder folder;
  libbarcode::save(code.svg(), folder.File("code.svg"));
  libbarcode::save(Bytes(reinterpret_cast<const unsigned char*>(png.data()), png.size()),
                   folder.File("code.png"));
  EXPECT_EQ(std::filesystem::file_size(folder.File("code.svg")), code.svg().size());

  EXPECT_EQ(Barcode(Symbology::kGs1DataBar14).symbol_type_14(), "OMNIDIRECTIONAL");
  EXPECT_EQ(code.symbol_type_14(), "");
  EXPECT_EQ(libbarcode::calculate_check_digit_14("0491234567890"), "4");
  for (const char* const text : {"", "049123456789", "04912345678904", "abc"}) {
    EXPECT_EQ(libbarcode::calculate_check_digit_14(text), "") << text;
  }
  EXPECT_EQ(libbarcode::calculate_check_digit_14(nullptr), "");
  EXPECT_EQ(libbarcode::calculate_check_digit_14(std::string_view("0491234567890\0", 14)), "");
}

TEST(CppBarcode, HasEverySymbology) {
  for (const int type : EverySymbology()) {
    Barcode code(static_cast<Symbology>(type));
    ASSERT_TRUE(static_cast<bool>(code)) << type;
    WithoutOutput([&] { EXPECT_TRUE(code.draw(ValidText(type), 400, 200)) << type; });
  }
  EXPECT_EQ(EverySymbology().size(), 19U);
  EXPECT_EQ(static_cast<int>(Symbology::kPdf417), 18);
  for (const int number : {-1, 19, 1000}) {
    EXPECT_THROW(Barcode(static_cast<Symbology>(number)), std::invalid_argument) << number;
  }
}

TEST(CppBarcode, MovesAndIsEmptyThen) {
  Barcode first(Symbology::kCode39);
  WithoutOutput([&] { EXPECT_TRUE(first.draw("A", 100, 50)); });
  const std::string png(first.png().chars());
  Barcode second = std::move(first);
  WithoutOutput([&] { EXPECT_TRUE(second.png().chars() == png); });
  // NOLINTBEGIN(bugprone-use-after-move): what an empty one does is promised.
  EXPECT_FALSE(static_cast<bool>(first));
  EXPECT_TRUE(first.png().empty());
  EXPECT_EQ(first.svg(), "");
  EXPECT_EQ(first.data_uri(), "");
  EXPECT_EQ(first.symbol_type_14(), "");
  EXPECT_FALSE(first.is_svg_output());
  EXPECT_THROW((void)first.draw("A", 10, 10), std::logic_error);
  EXPECT_THROW((void)first.encode_14("A"), std::logic_error);
  EXPECT_THROW(first.set_show_text(true), std::logic_error);
  EXPECT_THROW(first.set_text_gap(1), std::logic_error);
  EXPECT_THROW(first.set_code_mode("A"), std::logic_error);
  EXPECT_THROW(first.set_foreground_color(1, 2, 3), std::logic_error);
  EXPECT_THROW(first.set_background_color(1, 2, 3), std::logic_error);
  swap(first, second);
  EXPECT_TRUE(static_cast<bool>(first));
  EXPECT_FALSE(static_cast<bool>(second));
  second = std::move(first);
  second = Barcode(Symbology::kQr);
  // NOLINTEND(bugprone-use-after-move)

  const BarcodeHandle handle = second.release();
  EXPECT_THROW((void)second.draw("A", 10, 10), std::logic_error);
  EXPECT_EQ(second.release(), nullptr);
  Barcode adopted = Barcode::adopt(handle);
  WithoutOutput([&] { EXPECT_TRUE(adopted.draw_2d("A", 50)); });
  EXPECT_FALSE(static_cast<bool>(Barcode::adopt(nullptr)));
}

TEST(CppBarcode, TakesTextsOfEveryKindAndRefusesHostileOnes) {
  Barcode code(Symbology::kCode39);
  const std::string text = "ABCDEF";
  const auto drawn = [&code](libbarcode::Text shown) {
    return Results(code, [&] { return code.draw(shown, 300, 90); });
  };
  const std::string wanted = drawn("ABC");
  EXPECT_TRUE(drawn(std::string("ABC")) == wanted);
  // Its end is not the string's.
  EXPECT_TRUE(drawn(std::string_view(text).substr(0, 3)) == wanted);
  EXPECT_THROW((void)code.draw(nullptr, 10, 10), std::invalid_argument);
  EXPECT_THROW((void)code.draw(std::string("A\0B", 3), 10, 10), std::invalid_argument);
  EXPECT_THROW((void)code.draw(std::string_view("A\0", 2), 10, 10), std::invalid_argument);
  EXPECT_THROW(code.set_code_mode(nullptr), std::invalid_argument);
  EXPECT_THROW(code.set_output_format(std::string(1, '\0')), std::invalid_argument);
  EXPECT_TRUE(drawn("ABC") == wanted);
  Barcode qr(Symbology::kQr);
  std::string hundredMegabytes;
  hundredMegabytes.resize(100'000'000, 'A');
  Capture([&] { EXPECT_FALSE(qr.draw(hundredMegabytes, 100, 100)); });
  Capture([&] { EXPECT_FALSE(code.draw("\xED\xA0\x80", 100, 100)); });
}

TEST(CppBarcode, DrawsOnManyThreads) {
  constexpr int kThreads = 64;
  std::string usual;
  std::vector<int> failures(kThreads);
  WithoutOutput([&] {
    Barcode one(Symbology::kCode39);
    EXPECT_TRUE(one.draw("ABC", 200, 60));
    usual = one.png().chars();
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int& failure : failures) {
      threads.emplace_back([&] {
        start.arrive_and_wait();
        for (int i = 0; i < 5; ++i) {
          Barcode code(Symbology::kCode39);
          failure += code.draw("ABC", 200, 60) && code.png().chars() == usual ? 0 : 1;
          failure += libbarcode::calculate_check_digit_14("0491234567890") == "4" ? 0 : 1;
          failure += libbarcode::calculate_check_digit_14("0000000000000") == "0" ? 0 : 1;
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
  });
  EXPECT_EQ(failures, std::vector(kThreads, 0));
}

}  // namespace
}  // namespace barcode::test
