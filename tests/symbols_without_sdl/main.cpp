// One text of each symbology, encoded and laid out in a process that has no SDL, neither headers nor
// libraries.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <iostream>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/encoder_lines.h"
#include "datamatrix/datamatrix_encoder.h"
#include "gs1/databar_14_encoder.h"
#include "gs1/databar_expanded_encoder.h"
#include "gs1/databar_limited_encoder.h"
#include "gs1/gs1_128_encoder.h"
#include "gs1/payment_form_layout.h"
#include "layout/four_state_layout.h"
#include "layout/guard_bar_layout.h"
#include "layout/linear_layout.h"
#include "layout/matrix_layout.h"
#include "layout/stacked_layout.h"
#include "linear/code128_encoder.h"
#include "linear/code39_encoder.h"
#include "linear/code93_encoder.h"
#include "linear/ean_upc_encoder.h"
#include "linear/itf_encoder.h"
#include "linear/nw7_encoder.h"
#include "linear/two_of_five_encoder.h"
#include "linear/yubin_customer_encoder.h"
#include "pdf417/encoder.h"
#include "qr/qr_encoder.h"

#if __has_include(<SDL.h>)
#error "This program is compiled without SDL's include path."
#endif

namespace barcode {
namespace {

constexpr Box kBox = {.width = 300, .height = 100};

// ---- symbols of bars ----

std::optional<TextExtent> Unknown(const std::string& /*text*/, int /*size*/) {
  return std::nullopt;
}

Drawing Plain(const RunVector& pattern, std::string text) {
  return LayoutLinear(pattern, std::move(text), kBox, {}, PixelGrid::kFractional);
}

Drawing Guarded(const GuardBarStyle& style, const RunVector& pattern, const std::string& code) {
  return LayoutGuardBarSymbol(style, pattern, code, kBox, {}, PixelGrid::kWhole, Unknown);
}

// Rows across a box of their own width, in modules of so many pixels.
Drawing Rows(std::span<const StackedRow> rows, std::uint32_t module) {
  const auto modules = static_cast<std::uint32_t>(WidestRow(rows));
  const Box box = {.width = modules * module, .height = kBox.height};
  const ElementScale scale = ScaleFor(static_cast<float>(box.width), modules, {});
  const StackedRoom room = StackedRoom::Of(box.height, 1.0F, 1.0F);
  return LayoutRows(rows, SharedHeights(rows, room, scale.moduleWidth, 1.0F), scale, box);
}

Drawing DataBarStackedOmnidirectional() {
  EncoderLines lines;
  return Rows(EncodeDataBar14("2001234567890", DataBar14Type::kStackedOmnidirectional, lines).rows, 4);
}

Drawing DataBarOmnidirectional() {
  EncoderLines lines;
  const DataBar14Symbol symbol = EncodeDataBar14("2001234567890", DataBar14Type::kOmnidirectional, lines);
  return Plain(symbol.rows.front().widths, "(01)" + symbol.digits);
}

Drawing DataBarLimited() {
  const DataBarLimitedSymbol symbol = EncodeDataBarLimited("0012345678901");
  return Rows(std::array<StackedRow, 1>{{{symbol.widths, std::nullopt}}}, 4);
}

Drawing DataBarExpanded() {
  return Rows(EncodeDataBarExpanded("{AI}0190012345678908", kUnstacked).value().rows, 2);
}

Drawing Postal() {
  return LayoutFourState(EncodeYubinCustomer("1234567").bars, {.height = 30}, 0);
}

Drawing PaymentForm() {
  return LayoutPaymentForm("91912345000000000012345678901234567890123455", {.width = 600, .height = 100}, {},
                           PixelGrid::kFractional, Unknown);
}

struct BarNumbers {
  std::size_t bars = 0;
  float drawnWidth = 0;
  std::size_t tops = 1;  // different upper edges of bars
  std::string texts;

  bool operator==(const BarNumbers&) const = default;
};

std::ostream& operator<<(std::ostream& out, const BarNumbers& numbers) {
  return out << numbers.bars << " bars from " << numbers.tops << " upper edges, " << numbers.drawnWidth
             << " pixels wide, text \"" << numbers.texts << '"';
}

BarNumbers NumbersOf(const Drawing& drawing) {
  std::set<float> tops;
  for (const RectF& bar : drawing.bars) {
    tops.insert(bar.y);
  }
  BarNumbers numbers = {drawing.bars.size(), drawing.drawnWidth, tops.size(), ""};
  for (const TextRun& run : drawing.texts) {
    numbers.texts += run.text;
  }
  return numbers;
}

// Prints a line about a symbol that is not as expected.
template <class Numbers>
bool IsAsExpected(const char* name, const Numbers& actual, const Numbers& expected) {
  if (actual == expected) {
    return true;
  }
  std::cerr << name << ": " << actual << "; expected: " << expected << '\n';
  return false;
}

bool CheckBars() {
  bool good = true;
  const auto check = [&](const char* name, const Drawing& drawing, const BarNumbers& expected) {
    good = IsAsExpected(name, NumbersOf(drawing), expected) && good;
  };
  // Widths are modules times whole pixels.
  check("Code 39", Plain(EncodeCode39("ABC"), Code39DisplayText("ABC", true)), {25, 79 * 3, 1, "*ABC*"});
  check("Code 93", Plain(EncodeCode93("ABC"), "ABC"), {22, 64 * 4, 1, "ABC"});
  check("Code 128", Plain(EncodeCode128("ABC", Code128Mode::kAuto), "ABC"), {19, 68 * 4, 1, "ABC"});
  constexpr auto kGtin = "{FNC1}0104912345678904";
  check("GS1-128", Plain(EncodeGs1_128(kGtin), Gs1_128DisplayText(kGtin)),
        {37, 134 * 2, 1, "(01)04912345678904"});
  check("NW-7", Plain(EncodeNw7("A12345B"), Nw7DisplayText("A12345B", false)), {28, 93 * 3, 1, "12345"});
  check("Matrix 2 of 5", Plain(EncodeMatrix2of5("79"), "79"), {9, 34 * 8, 1, "79"});
  check("NEC 2 of 5", Plain(EncodeNec2of5("79"), "79"), {9, 34 * 8, 1, "79"});
  check("ITF", Plain(EncodeItf("123"), ItfDisplayText("123")), {14, 45 * 6, 1, "0123"});
  const std::string jan13 = CompleteJan13("490123456789");
  check("JAN-13", Guarded(kJan13Style, EncodeJan13(jan13), jan13), {30, 19 + 95 * 2, 1, "4901234567894"});
  const std::string jan8 = CompleteJan8("4901234");
  check("JAN-8", Guarded(kJan8Style, EncodeJan8(jan8), jan8), {22, 67 * 4, 1, "49012347"});
  const std::string upcA = CompleteUpcA("03600029145");
  check("UPC-A", Guarded(kUpcAStyle, EncodeUpcA(upcA), upcA), {30, 16 + 95 * 2, 1, "036000291452"});
  const std::string upcE = CompleteUpcE("654321");
  check("UPC-E", Guarded(kUpcEStyle, EncodeUpcE(upcE), upcE), {17, 16 + 51 * 5, 1, "06543217"});
  check("GS1 DataBar", DataBarOmnidirectional(), {23, 96 * 3, 1, "(01)20012345678909"});
  check("GS1 DataBar Stacked Omnidirectional", DataBarStackedOmnidirectional(), {69, 50 * 4, 5, ""});
  check("GS1 DataBar Limited", DataBarLimited(), {23, 74 * 4, 1, ""});
  check("GS1 DataBar Expanded", DataBarExpanded(), {29, 134 * 2, 1, ""});
  check("Postal customer barcode", Postal(), {67, 67 * 10, 2, ""});
  check("Payment form", PaymentForm(),
        {79, 288 * 2, 1, "(91)912345-0000000000123456789012345678-9-012345-5"});
  return good;
}

// ---- matrix symbols ----

struct MatrixNumbers {
  int columns = 0;
  int rows = 0;
  ModuleSize module;
  bool hasPattern = false;  // part of a finder or start pattern stands where it must

  bool operator==(const MatrixNumbers& other) const {
    return columns == other.columns && rows == other.rows && module.width == other.module.width &&
           module.height == other.module.height && hasPattern == other.hasPattern;
  }
};

std::ostream& operator<<(std::ostream& out, const MatrixNumbers& numbers) {
  return out << numbers.columns << " x " << numbers.rows << " modules of " << numbers.module.width << " x "
             << numbers.module.height << " pixels, " << (numbers.hasPattern ? "with" : "without")
             << " its pattern";
}

// In a box of 360 x 240 pixels. pattern: a row of dark modules between light ones.
MatrixNumbers NumbersOf(const ModuleMatrix& matrix, const ModuleRect& pattern) {
  const MatrixDrawing drawing = LayoutStretched(matrix, 360, 240, false, PixelGrid::kWhole, {});
  std::vector<ModuleRect> rects;
  LayoutDarkArea(matrix, drawing.grid, drawing.rule.adjust,
                 [&](const ModuleRect& rect) { rects.push_back(rect); });
  const bool hasPattern = std::find(rects.begin(), rects.end(), pattern) != rects.end();
  return {matrix.Columns(), matrix.Rows(), drawing.module, hasPattern};
}

bool CheckMatrices() {
  EncoderLines lines;
  bool good = true;
  const auto check = [&](const char* name, const ModuleMatrix& matrix, const ModuleRect& pattern,
                         const MatrixNumbers& expected) {
    good = IsAsExpected(name, NumbersOf(matrix, pattern), expected) && good;
  };
  // The patterns: the upper edge of a finder, the lower edge of the symbol, the first bar of the start
  // pattern.
  check("QR Code", EncodeQr("HELLO", {}).matrix, {0, 0, 7 * 17, 11}, {21, 21, {17, 11}, true});
  check("Data Matrix", datamatrix::EncodeDataMatrix("HELLO", {}, lines), {0, 11 * 20, 12 * 30, 20},
        {12, 12, {30, 20}, true});
  check("PDF417", pdf417::Encode("HELLO", {}, lines).modules, {0, 0, 8 * 4, 20}, {86, 12, {4, 20}, true});
  return good;
}

}  // namespace
}  // namespace barcode

int main() {
  try {
    const bool bars = barcode::CheckBars();
    const bool matrices = barcode::CheckMatrices();
    return bars && matrices ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
