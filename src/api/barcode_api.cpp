#include <array>
#include <atomic>
#include <limits>

#include "api/handle.h"
#include "api/symbology_factory.h"
#include "barcode.h"
#include "base/numeric.h"
#include "core/barcode_base_1d.h"
#include "core/barcode_base_2d.h"
#include "datamatrix/datamatrix.h"
#include "gs1/gs1_128.h"
#include "gs1/gs1_databar_14.h"
#include "gs1/gs1_databar_expanded.h"
#include "linear/code128.h"
#include "linear/code39.h"
#include "linear/guard_bar_symbology.h"
#include "linear/nw7.h"
#include "linear/yubin_customer.h"
#include "pdf417/pdf417.h"
#include "qr/qr.h"

using barcode::BarcodeBase;
using barcode::BarcodeBase1D;
using barcode::BarcodeBase2D;
using barcode::Code128;
using barcode::Code39;
using barcode::DataMatrix;
using barcode::GS1_128;
using barcode::GS1DataBar14;
using barcode::GS1DataBarExpanded;
using barcode::GuardBarSymbology;
using barcode::NW7;
using barcode::PDF417;
using barcode::QR;
using barcode::Set;
using barcode::SetText;
using barcode::With;
using barcode::YubinCustomer;

namespace {

// Returned where a string result is not available.
constexpr const char* kNoText = "";

// Colour components and sizes arrive as ints: the low byte, and the same bits as unsigned.
std::uint8_t Byte(int value) {
  return static_cast<std::uint8_t>(value);
}

std::uint32_t Size(int pixels) {
  return static_cast<std::uint32_t>(pixels);
}

// Copies a string result into the handle.
template <class Fetch>
const char* FetchText(BarcodeHandle handle, Fetch fetch) {
  return With<BarcodeBase>(handle, kNoText, [&](BarcodeBase& object) {
    handle->resultText = fetch(object);
    return handle->resultText.c_str();
  });
}

}  // namespace

BarcodeHandle barcode_create(int type) {
  return barcode::Guarded<BarcodeHandle>(nullptr, [&]() -> BarcodeHandle {
    auto object = barcode::CreateSymbology(type);
    if (object == nullptr) {
      return nullptr;
    }
    auto record = std::make_unique<BarcodeHandleRecord>();
    record->object = std::move(object);
    record->type = type;
    return record.release();
  });
}

void barcode_destroy(BarcodeHandle handle) {
  const barcode::CallInProgress inProgress;
  const std::unique_ptr<BarcodeHandleRecord> owner(handle);
}

void barcode_set_output_format(BarcodeHandle handle, const char* format) {
  SetText<BarcodeBase>(handle, format,
                       [](BarcodeBase& object, const char* text) { object.SetOutputFormat(text); });
}

int barcode_is_svg_output(BarcodeHandle handle) {
  return With<BarcodeBase>(handle, 0, [](BarcodeBase& object) { return object.IsSvgOutput() ? 1 : 0; });
}

void barcode_set_foreground_color(BarcodeHandle handle, int r, int g, int b, int a) {
  Set<BarcodeBase>(
      handle, [&](BarcodeBase& object) { object.SetForegroundColor(Byte(r), Byte(g), Byte(b), Byte(a)); });
}

void barcode_set_background_color(BarcodeHandle handle, int r, int g, int b, int a) {
  Set<BarcodeBase>(
      handle, [&](BarcodeBase& object) { object.SetBackgroundColor(Byte(r), Byte(g), Byte(b), Byte(a)); });
}

void barcode_set_fit_width(BarcodeHandle handle, int flag) {
  Set<BarcodeBase>(handle, [&](BarcodeBase& object) { object.SetFitWidth(flag != 0); });
}

void barcode_set_px_adjust_black(BarcodeHandle handle, int pixels) {
  Set<BarcodeBase>(handle, [&](BarcodeBase& object) { object.SetPxAdjustBlack(pixels); });
}

void barcode_set_px_adjust_white(BarcodeHandle handle, int pixels) {
  Set<BarcodeBase>(handle, [&](BarcodeBase& object) { object.SetPxAdjustWhite(pixels); });
}

void barcode_set_show_text(BarcodeHandle handle, int flag) {
  Set<BarcodeBase1D>(handle, [&](BarcodeBase1D& object) { object.SetShowText(flag != 0); });
}

void barcode_set_text_even_spacing(BarcodeHandle handle, int flag) {
  Set<BarcodeBase1D>(handle, [&](BarcodeBase1D& object) { object.SetTextEvenSpacing(flag != 0); });
}

void barcode_set_text_font_scale(BarcodeHandle handle, double scale) {
  Set<BarcodeBase1D>(handle,
                     [&](BarcodeBase1D& object) { object.SetTextFontScale(barcode::ToFloat(scale)); });
}

void barcode_set_text_gap(BarcodeHandle handle, double scale) {
  Set<BarcodeBase1D>(handle, [&](BarcodeBase1D& object) { object.SetTextGap(barcode::ToFloat(scale)); });
}

void barcode_set_show_start_stop(BarcodeHandle handle, int flag) {
  Set<Code39, NW7>(handle, [&](auto& object) { object.SetShowStartStop(flag != 0); });
}

void barcode_set_extended_guard(BarcodeHandle handle, int flag) {
  Set<GuardBarSymbology>(handle, [&](GuardBarSymbology& object) { object.SetExtendedGuard(flag != 0); });
}

void barcode_set_code_mode(BarcodeHandle handle, const char* mode) {
  SetText<Code128>(handle, mode,
                   [](Code128& object, const char* text) { object.SetCodeMode(std::string_view(text)); });
}

void barcode_set_string_encoding(BarcodeHandle handle, const char* encoding) {
  SetText<BarcodeBase2D>(handle, encoding,
                         [](BarcodeBase2D& object, const char* text) { object.SetStringEncoding(text); });
}

void barcode_set_version(BarcodeHandle handle, int version) {
  Set<QR>(handle, [&](QR& object) { object.SetVersion(static_cast<std::uint32_t>(version)); });
}

void barcode_set_error_correction_level(BarcodeHandle handle, const char* level) {
  SetText<QR>(handle, level, [](QR& object, const char* text) { object.SetErrorCorrectionLevel(text); });
}

void barcode_set_encode_mode(BarcodeHandle handle, const char* mode) {
  SetText<QR>(handle, mode, [](QR& object, const char* text) { object.SetEncodeMode(text); });
}

void barcode_set_code_size(BarcodeHandle handle, const char* size) {
  SetText<DataMatrix>(handle, size, [](DataMatrix& object, const char* text) { object.SetCodeSize(text); });
}

void barcode_set_encode_scheme(BarcodeHandle handle, const char* scheme) {
  SetText<DataMatrix>(handle, scheme,
                      [](DataMatrix& object, const char* text) { object.SetEncodeScheme(text); });
}

void barcode_set_columns(BarcodeHandle handle, int columns) {
  Set<PDF417>(handle, [&](PDF417& object) { object.SetCodeColumns(columns); });
}

void barcode_set_rows(BarcodeHandle handle, int rows) {
  Set<PDF417>(handle, [&](PDF417& object) { object.SetCodeRows(rows); });
}

void barcode_set_error_level(BarcodeHandle handle, int level) {
  Set<PDF417>(handle, [&](PDF417& object) { object.SetErrorLevel(level); });
}

void barcode_set_aspect_ratio(BarcodeHandle handle, double ratio) {
  Set<PDF417>(handle, [&](PDF417& object) { object.SetAspectRatio(ratio); });
}

void barcode_set_y_height(BarcodeHandle handle, int height) {
  Set<PDF417>(handle, [&](PDF417& object) { object.SetYHeight(height); });
}

void barcode_set_symbol_type_14(BarcodeHandle handle, const char* type) {
  SetText<GS1DataBar14>(handle, type,
                        [](GS1DataBar14& object, const char* text) { object.SetSymbolType(text); });
}

const char* barcode_get_symbol_type_14(BarcodeHandle handle) {
  return With<GS1DataBar14>(handle, kNoText, [](GS1DataBar14& object) { return object.SymbolType(); });
}

void barcode_set_symbol_type_exp(BarcodeHandle handle, const char* type) {
  SetText<GS1DataBarExpanded>(
      handle, type, [](GS1DataBarExpanded& object, const char* text) { object.SetSymbolType(text); });
}

void barcode_set_no_of_columns(BarcodeHandle handle, int columns) {
  Set<GS1DataBarExpanded>(handle, [&](GS1DataBarExpanded& object) { object.SetPairsPerRow(columns); });
}

int barcode_draw_1d(BarcodeHandle handle, const char* text, int width, int height) {
  return barcode::DrawText<BarcodeBase>(handle, text, [&](BarcodeBase& object, const std::string& data) {
    return object.Draw(data, 0, 0, Size(width), Size(height));
  });
}

int barcode_draw_2d(BarcodeHandle handle, const char* text, int size) {
  return barcode::DrawText<BarcodeBase2D>(handle, text, [&](BarcodeBase2D& object, const std::string& data) {
    return object.DrawSquare(data, 0, 0, Size(size));
  });
}

int barcode_draw_2d_rect(BarcodeHandle handle, const char* text, int width, int height) {
  return barcode::DrawText<BarcodeBase2D>(handle, text, [&](BarcodeBase2D& object, const std::string& data) {
    return object.Draw(data, 0, 0, Size(width), Size(height));
  });
}

int barcode_draw_convenience(BarcodeHandle handle, const char* text, int width, int height) {
  return barcode::DrawText<GS1_128>(handle, text, [&](GS1_128& object, const std::string& data) {
    return object.DrawConvenience(data, Size(width), Size(height));
  });
}

int barcode_draw_stacked(BarcodeHandle handle, const char* text, int width, int height) {
  return barcode::DrawText<GS1DataBarExpanded>(handle, text,
                                               [&](GS1DataBarExpanded& object, const std::string& data) {
                                                 object.SetStacked(true);
                                                 return object.Draw(data, 0, 0, Size(width), Size(height));
                                               });
}

int barcode_draw_yubin(BarcodeHandle handle, const char* text, int height) {
  return barcode::DrawText<YubinCustomer>(handle, text, [&](YubinCustomer& object, const std::string& data) {
    return object.DrawPostal(data, 0, 0, Size(height));
  });
}

int barcode_draw_yubin_with_width(BarcodeHandle handle, const char* text, int width, int height) {
  return barcode::DrawText<YubinCustomer>(handle, text, [&](YubinCustomer& object, const std::string& data) {
    return object.Draw(data, 0, 0, Size(width), Size(height));
  });
}

int barcode_encode_14(BarcodeHandle handle, const char* text) {
  return barcode::DrawText<GS1DataBar14>(
      handle, text, [](const GS1DataBar14& object, const std::string& data) { return object.Encode(data); });
}

const char* barcode_calculate_check_digit_14(const char* text) {
  if (text == nullptr) {
    return kNoText;
  }
  return barcode::Guarded(kNoText, [&]() -> const char* {
    const std::string digit = GS1DataBar14::CalculateCheckDigit(text);
    // One result for all callers, replaced by each call; its one character is stored atomically.
    static std::array<char, 2> result{};
    std::atomic_ref(result[0]).store(digit.front());
    return result.data();
  });
}

const char* barcode_get_base64(BarcodeHandle handle) {
  return FetchText(handle, [](BarcodeBase& object) { return object.GetImageBase64(); });
}

const unsigned char* barcode_get_image_data(BarcodeHandle handle, int* length) {
  if (length == nullptr) {
    return nullptr;
  }
  *length = 0;
  return With<BarcodeBase>(handle, static_cast<const unsigned char*>(nullptr),
                           [&](BarcodeBase& object) -> const unsigned char* {
                             handle->resultBytes = object.GetImageData();
                             const std::size_t size = handle->resultBytes.size();
                             if (size == 0 || size > std::numeric_limits<int>::max()) {
                               return nullptr;
                             }
                             *length = static_cast<int>(size);
                             return handle->resultBytes.data();
                           });
}

const char* barcode_get_svg(BarcodeHandle handle) {
  return FetchText(handle, [](BarcodeBase& object) { return object.GetSvg(); });
}
