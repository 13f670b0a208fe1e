#include "threads/every_function.h"

#include <array>
#include <atomic>
#include <stdexcept>

#include "support/barcode_object.h"
#include "support/symbologies.h"

namespace barcode::test {
namespace {

template <std::size_t Count>
const char* Choose(const std::array<const char*, Count>& words, int variant) {
  return words[static_cast<std::size_t>(variant) % Count];
}

// Setters that an object does not serve change nothing, so that every object gets them all.
void SetEverything(BarcodeHandle code, int variant) {
  const int flag = variant % 2;
  barcode_set_foreground_color(code, variant, 0, 20, 255 - variant);
  barcode_set_background_color(code, 255, 255 - variant, 230, 255);
  barcode_set_fit_width(code, flag);
  barcode_set_px_adjust_black(code, variant % 3);
  barcode_set_px_adjust_white(code, variant % 2);
  barcode_set_show_text(code, 1);
  barcode_set_text_even_spacing(code, variant / 2 % 2);
  barcode_set_text_font_scale(code, 1.0 + 0.1 * variant);
  barcode_set_text_gap(code, 1.0 + 0.2 * variant);
  barcode_set_show_start_stop(code, flag);
  barcode_set_extended_guard(code, flag);
  barcode_set_code_mode(code, Choose(std::array{"AUTO", "A", "B"}, variant));
  barcode_set_string_encoding(code, Choose(std::array{"utf-8", "shift-jis"}, variant));
  barcode_set_version(code, variant);
  barcode_set_error_correction_level(code, Choose(std::array{"L", "M", "Q", "H"}, variant));
  barcode_set_encode_mode(code, Choose(std::array{"AUTO", "BYTE"}, variant));
  barcode_set_code_size(code, Choose(std::array{"AUTO", "48x48"}, variant));
  barcode_set_encode_scheme(code, Choose(std::array{"AUTO", "ASCII", "BASE256"}, variant));
  barcode_set_columns(code, variant);
  barcode_set_rows(code, variant);
  barcode_set_error_level(code, variant % 9);
  barcode_set_aspect_ratio(code, 0.4 + 0.1 * variant);
  barcode_set_y_height(code, 2 + variant % 4);
  barcode_set_symbol_type_14(
      code, Choose(std::array{"OMNIDIRECTIONAL", "STACKED", "STACKED_OMNIDIRECTIONAL"}, variant));
  barcode_set_symbol_type_exp(code, Choose(std::array{"UNSTACKED", "STACKED"}, variant));
  barcode_set_no_of_columns(code, variant % 4);
}

// Every way to draw that the object has. The last one is that of all objects.
void DrawEveryWay(BarcodeHandle code, int type, int variant, int height) {
  const char* const text = ValidText(type);
  const int width = 310 + 10 * variant;
  bool isDrawn = true;
  if (type == BARCODE_GS1_128) {
    isDrawn = barcode_draw_convenience(code, "9191234512345678901234567890123456789012345", 900, height) == 1;
  } else if (type == BARCODE_GS1_DATABAR_14) {
    isDrawn = barcode_encode_14(code, text) == 1;
  } else if (type == BARCODE_GS1_DATABAR_EXPANDED) {
    isDrawn = barcode_draw_stacked(code, text, width, height) == 1;
  } else if (type == BARCODE_YUBIN_CUSTOMER) {
    isDrawn =
        barcode_draw_yubin(code, text, height) + barcode_draw_yubin_with_width(code, text, 1, height) == 2;
  } else if (IsTwoDimensional(type)) {
    // Two characters that are converted where the encoding is Shift-JIS.
    isDrawn = barcode_draw_2d(code, "\xE6\x96\x87\xE5\xAD\x97", 2 * height) +
                  barcode_draw_2d_rect(code, text, width, 2 * height) ==
              2;
  }
  if (!isDrawn || barcode_draw_1d(code, text, width, height) != 1) {
    throw std::runtime_error("a draw of type " + std::to_string(type) + " failed");
  }
}

void UseSymbology(int type, int variant, std::string& fetched) {
  const BarcodeObject code(type);
  SetEverything(code, variant);
  fetched += barcode_get_symbol_type_14(code);
  for (const int height : {60 + 7 * variant, 130 + 7 * variant}) {
    barcode_set_output_format(code, "png");
    DrawEveryWay(code, type, variant, height);
    const auto png = code.Png();
    fetched.append(png.begin(), png.end());
    fetched += barcode_get_base64(code);
    barcode_set_output_format(code, "svg");
    DrawEveryWay(code, type, variant, height);
    fetched += barcode_is_svg_output(code) == 1 ? barcode_get_svg(code) : "";
  }
}

}  // namespace

std::string UseEveryFunction(int variant) {
  std::string fetched;
  for (const int type : EverySymbology()) {
    UseSymbology(type, variant, fetched);
  }
  // The digit is the same in every variant: its string is shared by all threads.
  const char* const digit = barcode_calculate_check_digit_14("2001234567890");
  fetched += __atomic_load_n(digit, __ATOMIC_RELAXED);
  return fetched;
}

}  // namespace barcode::test
