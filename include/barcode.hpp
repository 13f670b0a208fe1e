// libbarcode for C++: one object per symbol, that frees itself.
//
//     libbarcode::Barcode code(libbarcode::Symbology::kCode39);
//     code.set_show_text(false);
//     if (code.draw("ABC-123", 300, 100)) {
//       libbarcode::save(code.png(), "code39.png");
//     }
//
// Header-only over barcode.h, which is the manual of draws, texts, sizes and of what is printed. C++17 or
// later. Link libbarcode. A member has the name of its function without "barcode_", and does what barcode.h
// says there; four have names of their own: draw (barcode_draw_1d), png (barcode_get_image_data), data_uri
// (barcode_get_base64) and svg (barcode_get_svg). What holds for the whole header:
//
// - Names: everything is in the namespace libbarcode, in both headers for C++; no macro is defined. The
//   namespace is not called after the symbologies, so that a host's own "barcode" is free.
// - Errors of the host are thrown: std::invalid_argument for a text that is null or holds a zero byte, which
//   no function of barcode.h can be handed; std::logic_error for an option or a draw on an empty object;
//   std::bad_alloc. With -fno-exceptions they call std::abort. A draw that the library refuses returns false:
//   its reason is a line on standard error, and no exception could tell more. What is noexcept, moves, swaps,
//   destructors and the results among it, throws nothing.
// - An object that was moved from or released is empty: its results are "" and no bytes, options and draws
//   throw std::logic_error. It may be destroyed and assigned to.
// - An option of another symbology changes nothing, and so do the words and numbers for which barcode.h says
//   so.
// - Threads: one object on one thread at a time; different objects on different threads at the same time.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

#include "barcode.h"
#include "barcode_types.hpp"

namespace libbarcode {

// The symbologies, with the numbers of barcode.h. kCode39 to kYubinCustomer are linear, the rest
// two-dimensional.
enum class Symbology : int {
  kCode39 = BARCODE_CODE39,
  kCode93 = BARCODE_CODE93,
  kCode128 = BARCODE_CODE128,
  kGs1_128 = BARCODE_GS1_128,
  kNw7 = BARCODE_NW7,
  kMatrix2Of5 = BARCODE_MATRIX_2OF5,
  kNec2Of5 = BARCODE_NEC_2OF5,
  kJan8 = BARCODE_JAN8,
  kJan13 = BARCODE_JAN13,
  kUpcA = BARCODE_UPC_A,
  kUpcE = BARCODE_UPC_E,
  kItf = BARCODE_ITF,
  kGs1DataBar14 = BARCODE_GS1_DATABAR_14,
  kGs1DataBarLimited = BARCODE_GS1_DATABAR_LIMITED,
  kGs1DataBarExpanded = BARCODE_GS1_DATABAR_EXPANDED,
  kYubinCustomer = BARCODE_YUBIN_CUSTOMER,
  kQr = BARCODE_QR,
  kDataMatrix = BARCODE_DATAMATRIX,
  kPdf417 = BARCODE_PDF417
};

namespace detail {

// A text as C wants it: one zero byte, at its end. Throws std::invalid_argument for any other,
// std::bad_alloc.
class ZeroEnded {
 public:
  explicit ZeroEnded(const Text& text) {
    if (text.is_null()) {
      raise<std::invalid_argument>("A text is null");
    }
    if (text.view().find('\0') != std::string_view::npos) {
      raise<std::invalid_argument>("A text holds a zero byte");
    }
    if (text.is_zero_ended()) {
      m_text = text.view().data();
    } else {
      m_copy = text.view();
      m_text = m_copy.c_str();
    }
  }
  ZeroEnded(const ZeroEnded&) = delete;
  ZeroEnded& operator=(const ZeroEnded&) = delete;
  ~ZeroEnded() = default;

  [[nodiscard]] const char* get() const noexcept { return m_text; }

 private:
  std::string m_copy;
  const char* m_text = nullptr;
};

struct DestroyBarcode {
  using pointer = BarcodeHandle;
  void operator()(BarcodeHandle handle) const noexcept { barcode_destroy(handle); }
};

}  // namespace detail

// One barcode object with its options, and what was drawn last.
class Barcode {
 public:
  // An empty one.
  Barcode() noexcept = default;

  // An object of one symbology with the output format "png" and default options.
  // Throws std::invalid_argument for what is none of the enumerators, std::bad_alloc.
  explicit Barcode(Symbology symbology) {
    const int number = static_cast<int>(symbology);
    if (number < BARCODE_CODE39 || number > BARCODE_PDF417) {
      detail::raise<std::invalid_argument>("There is no symbology of this number");
    }
    m_handle.reset(barcode_create(number));
    if (m_handle == nullptr) {
      detail::raise<std::bad_alloc>();
    }
  }

  // Takes over a handle that barcode_create returned, and destroys it. Null makes an empty object.
  [[nodiscard]] static Barcode adopt(BarcodeHandle handle) noexcept {
    Barcode result;
    result.m_handle.reset(handle);
    return result;
  }

  // There is an object: it was not moved from, nor released.
  [[nodiscard]] explicit operator bool() const noexcept { return m_handle != nullptr; }

  // ---- Options of every symbology. Each returns the object itself, for the next one.
  // -------------------------------

  // "png" (default), "jpg", "jpeg", "svg", "SVG"; see barcode.h for any other.
  Barcode& set_output_format(Text format) { return set(barcode_set_output_format, format); }
  [[nodiscard]] bool is_svg_output() const noexcept { return barcode_is_svg_output(get()) == 1; }

  // Red, green, blue and alpha, 0 to 255 each (default: black on white, both opaque).
  Barcode& set_foreground_color(int red, int green, int blue, int alpha = 255) {
    barcode_set_foreground_color(present(), red, green, blue, alpha);
    return *this;
  }
  Barcode& set_background_color(int red, int green, int blue, int alpha = 255) {
    barcode_set_background_color(present(), red, green, blue, alpha);
    return *this;
  }

  // The symbol fills its box, with modules of a fraction of a pixel (default false: whole pixels).
  Barcode& set_fit_width(bool flag) { return set(barcode_set_fit_width, flag); }

  // Pixels added to every bar or dark module, and to every space (default 0, may be negative).
  Barcode& set_px_adjust_black(int pixels) { return set(barcode_set_px_adjust_black, pixels); }
  Barcode& set_px_adjust_white(int pixels) { return set(barcode_set_px_adjust_white, pixels); }

  // ---- Options of linear symbologies
  // --------------------------------------------------------------------------------

  // The text under the bars (default true), and whether its characters are spread across them (default true).
  Barcode& set_show_text(bool flag) { return set(barcode_set_show_text, flag); }
  Barcode& set_text_even_spacing(bool flag) { return set(barcode_set_text_even_spacing, flag); }

  // Factors of the text's height and of the gap above it (default 1.0).
  Barcode& set_text_font_scale(double scale) { return set(barcode_set_text_font_scale, scale); }
  Barcode& set_text_gap(double scale) { return set(barcode_set_text_gap, scale); }

  // Code 39, NW-7: start and stop characters in the text (default true).
  Barcode& set_show_start_stop(bool flag) { return set(barcode_set_show_start_stop, flag); }

  // JAN, UPC: guard bars longer than the others (default true).
  Barcode& set_extended_guard(bool flag) { return set(barcode_set_extended_guard, flag); }

  // Code 128: "AUTO" (default), "A", "B", "C".
  Barcode& set_code_mode(Text mode) { return set(barcode_set_code_mode, mode); }

  // ---- Options of two-dimensional symbologies
  // -----------------------------------------------------------------------

  // "utf-8" (default) or "shift-jis", in the spellings of barcode.h.
  Barcode& set_string_encoding(Text encoding) { return set(barcode_set_string_encoding, encoding); }

  // QR: version 1 to 40, 0 for the smallest that does (default); level "L", "M" (default), "Q", "H"; mode
  // "BYTE" (default), "AUTO", "NUMERIC", "ALPHANUMERIC", "KANJI".
  Barcode& set_version(int version) { return set(barcode_set_version, version); }
  Barcode& set_error_correction_level(Text level) { return set(barcode_set_error_correction_level, level); }
  Barcode& set_encode_mode(Text mode) { return set(barcode_set_encode_mode, mode); }

  // Data Matrix: size "AUTO" (default), "10x10" to "144x144", "8x18" to "16x48"; scheme "ASCII" (default),
  // "C40", "TEXT", "X12", "EDIFACT", "BASE256", "AUTO".
  Barcode& set_code_size(Text size) { return set(barcode_set_code_size, size); }
  Barcode& set_encode_scheme(Text scheme) { return set(barcode_set_encode_scheme, scheme); }

  // PDF417: columns 0 to 30, rows 0 to 90 and error level, which are reported only; aspect ratio 0.001 to
  // 1000 (default 0.5); height of a row in modules, above 0 (default 3).
  Barcode& set_columns(int columns) { return set(barcode_set_columns, columns); }
  Barcode& set_rows(int rows) { return set(barcode_set_rows, rows); }
  Barcode& set_error_level(int level) { return set(barcode_set_error_level, level); }
  Barcode& set_aspect_ratio(double ratio) { return set(barcode_set_aspect_ratio, ratio); }
  Barcode& set_y_height(int height) { return set(barcode_set_y_height, height); }

  // ---- Options of GS1 DataBar
  // ---------------------------------------------------------------------------------------

  // "OMNIDIRECTIONAL" (default), "STACKED", "STACKED_OMNIDIRECTIONAL"; the current one is "" for another
  // symbology and for an empty object, and stays for as long as the library is loaded.
  Barcode& set_symbol_type_14(Text type) { return set(barcode_set_symbol_type_14, type); }
  [[nodiscard]] std::string_view symbol_type_14() const noexcept { return barcode_get_symbol_type_14(get()); }

  // GS1 DataBar Expanded: "UNSTACKED" (default), "STACKED"; segment pairs in a row, 1 to 10.
  Barcode& set_symbol_type_exp(Text type) { return set(barcode_set_symbol_type_exp, type); }
  Barcode& set_no_of_columns(int columns) { return set(barcode_set_no_of_columns, columns); }

  // ---- Drawing. True when drawn; see "Draws" in barcode.h for what false means.
  // -------------------------------------

  // Every symbology: into a box of width x height pixels.
  [[nodiscard]] bool draw(Text text, int width, int height) {
    return draw_with(barcode_draw_1d, text, width, height);
  }

  // Two-dimensional symbologies: into a square box, or one of width x height pixels.
  [[nodiscard]] bool draw_2d(Text text, int size) { return draw_with(barcode_draw_2d, text, size); }
  [[nodiscard]] bool draw_2d_rect(Text text, int width, int height) {
    return draw_with(barcode_draw_2d_rect, text, width, height);
  }

  // GS1-128: the payment form of Japanese convenience stores.
  [[nodiscard]] bool draw_convenience(Text text, int width, int height) {
    return draw_with(barcode_draw_convenience, text, width, height);
  }

  // GS1 DataBar Expanded: selects the stacked form, and draws.
  [[nodiscard]] bool draw_stacked(Text text, int width, int height) {
    return draw_with(barcode_draw_stacked, text, width, height);
  }

  // Japanese postal customer barcode: with long bars of height pixels. The second form ignores the width.
  [[nodiscard]] bool draw_yubin(Text text, int height) { return draw_with(barcode_draw_yubin, text, height); }
  [[nodiscard]] bool draw_yubin_with_width(Text text, int width, int height) {
    return draw_with(barcode_draw_yubin_with_width, text, width, height);
  }

  // GS1 DataBar: encodes without drawing; true when the text is valid.
  [[nodiscard]] bool encode_14(Text text) { return draw_with(barcode_encode_14, text); }

  // ---- Results. They belong to the object, wherever it is moved.
  // ----------------------------------------------------

  // The last raster draw as a PNG file; no bytes when there is none. Stays until the next call of png or the
  // object's end, and may be asked for again.
  [[nodiscard]] Bytes png() noexcept {
    int length = 0;
    const unsigned char* const bytes = barcode_get_image_data(get(), &length);
    return {bytes, length < 0 ? 0 : static_cast<std::size_t>(length)};
  }

  // The last raster draw as a data URI. It releases the picture: ask once per draw, and for png before. Stays
  // until the next call of data_uri or svg, or the object's end. See barcode_get_base64 for what it is
  // without a picture.
  [[nodiscard]] std::string_view data_uri() noexcept { return barcode_get_base64(get()); }

  // The document of the last SVG draw that succeeded; "" before it, and while the output format is another.
  // Stays until the next call of data_uri or svg, or the object's end.
  [[nodiscard]] std::string_view svg() noexcept { return barcode_get_svg(get()); }

  // ---- The handle
  // ---------------------------------------------------------------------------------------------------

  // For the functions of barcode.h, still owned by this object; null when it is empty.
  [[nodiscard]] BarcodeHandle get() const noexcept { return m_handle.get(); }

  // Gives the handle away: the caller destroys it with barcode_destroy. This object is empty then.
  [[nodiscard]] BarcodeHandle release() noexcept { return m_handle.release(); }

  void swap(Barcode& other) noexcept { m_handle.swap(other.m_handle); }
  friend void swap(Barcode& first, Barcode& second) noexcept { first.swap(second); }

 private:
  // The handle of an object that is not empty.
  [[nodiscard]] BarcodeHandle present() const {
    if (m_handle == nullptr) {
      detail::raise<std::logic_error>("There is no barcode object: it was moved, released or never made");
    }
    return get();
  }

  Barcode& set(void (*function)(BarcodeHandle, const char*), const Text& word) {
    const BarcodeHandle handle = present();
    function(handle, detail::ZeroEnded(word).get());
    return *this;
  }
  Barcode& set(void (*function)(BarcodeHandle, int), int value) {
    function(present(), value);
    return *this;
  }
  Barcode& set(void (*function)(BarcodeHandle, double), double value) {
    function(present(), value);
    return *this;
  }

  template <class... Sizes>
  bool draw_with(int (*function)(BarcodeHandle, const char*, Sizes...), const Text& text, Sizes... sizes) {
    const BarcodeHandle handle = present();
    return function(handle, detail::ZeroEnded(text).get(), sizes...) == 1;
  }

  std::unique_ptr<BarcodeHandle, detail::DestroyBarcode> m_handle;
};

// GS1 check digit of exactly 13 digits, a text of one character; "" for any other text, null or with zero
// bytes. Any number of threads may call it at the same time. (They must not call
// barcode_calculate_check_digit_14 beside it, which has one result for the process.) Throws std::bad_alloc.
[[nodiscard]] inline std::string calculate_check_digit_14(Text digits) {
  static std::mutex mutex;
  if (digits.view().find('\0') != std::string_view::npos || digits.is_null()) {
    return {};
  }
  const detail::ZeroEnded text(digits);
  const std::lock_guard<std::mutex> lock(mutex);
  return barcode_calculate_check_digit_14(text.get());
}

}  // namespace libbarcode
