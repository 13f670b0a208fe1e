#include "same/options.h"

#include <limits>

#include "same/texts.h"
#include "same/types.h"

namespace barcode::same {
namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr const char* kFormats[] = {"png", "png", "jpg", "jpeg", "svg", "svg", "SVG"};
constexpr const char* kCodeModes[] = {"AUTO", "A", "B", "C"};
constexpr const char* kEncodings[] = {"utf-8", "UTF-8", "shift-jis", "Shift-JIS", "shift_jis", "latin-1"};
constexpr const char* kLevels[] = {"L", "M", "Q", "H"};
constexpr const char* kModes[] = {"AUTO", "BYTE", "NUMERIC", "ALPHANUMERIC", "KANJI"};
constexpr const char* kSizes[] = {"AUTO",  "AUTO",  "AUTO",    "10x10",   "12x12",   "14x14",   "16x16",
                                  "18x18", "20x20", "22x22",   "24x24",   "26x26",   "32x32",   "36x36",
                                  "40x40", "44x44", "48x48",   "52x52",   "64x64",   "72x72",   "80x80",
                                  "88x88", "96x96", "104x104", "120x120", "132x132", "144x144", "8x18",
                                  "8x32",  "12x26", "12x36",   "16x36",   "16x48"};
constexpr const char* kSchemes[] = {"AUTO", "ASCII", "C40", "TEXT", "X12", "EDIFACT", "BASE256"};
constexpr const char* kForms14[] = {"OMNIDIRECTIONAL", "STACKED", "STACKED_OMNIDIRECTIONAL"};
constexpr const char* kFormsExpanded[] = {"UNSTACKED", "STACKED"};
constexpr const char* kUnknown[] = {"",
                                    "PNG",
                                    "Svg",
                                    "gif",
                                    "a",
                                    "auto",
                                    "D",
                                    "11x11",
                                    "144X144",
                                    "x",
                                    "l",
                                    "STACKED ",
                                    "omnidirectional",
                                    "SHIFT-JIS",
                                    "utf8",
                                    "BASE-256",
                                    "MQ"};

}  // namespace

void Options::SetSomething(BarcodeHandle handle) {
  if (OnceIn(m_random, 8)) {
    return SetFormat(handle);
  }
  Set(handle, OnceIn(m_random, m_wild ? 6 : 20) ? AnyOption() : OwnOption());
}

void Options::SetFormat(BarcodeHandle handle) {
  m_format = Word(kFormats);
  Call(handle, "set_output_format", m_host.Functions().setOutputFormat, m_format);
}

Options::Option Options::AnyOption() {
  return static_cast<Option>(m_random.Number(0, static_cast<int>(Option::NoOfColumns)));
}

Options::Option Options::OwnOption() {
  using enum Option;
  static constexpr Option kEvery[] = {Foreground, Background,    FitWidth,
                                      FitWidth,   PxAdjustBlack, PxAdjustWhite};
  static constexpr Option kLinear[] = {ShowText, TextEvenSpacing, TextFontScale, TextFontScale, TextGap};
  static constexpr Option kQr[] = {Version, ErrorCorrectionLevel, EncodeMode, StringEncoding};
  static constexpr Option kDataMatrix[] = {CodeSize, EncodeScheme, EncodeScheme, StringEncoding};
  static constexpr Option kPdf417[] = {Columns,     Rows,    ErrorLevel,    AspectRatio,
                                       AspectRatio, YHeight, StringEncoding};
  static constexpr Option kExpanded[] = {SymbolTypeExp, NoOfColumns};
  if (OnceIn(m_random, 3)) {
    return OneOf(m_random, kEvery);
  }
  const bool special = OnceIn(m_random, 3);
  switch (m_type) {
    case BARCODE_QR:
      return OneOf(m_random, kQr);
    case BARCODE_DATAMATRIX:
      return OneOf(m_random, kDataMatrix);
    case BARCODE_PDF417:
      return OneOf(m_random, kPdf417);
    case BARCODE_CODE39:
    case BARCODE_NW7:
      return special ? ShowStartStop : OneOf(m_random, kLinear);
    case BARCODE_CODE128:
      return special ? CodeMode : OneOf(m_random, kLinear);
    case BARCODE_JAN8:
    case BARCODE_JAN13:
    case BARCODE_UPC_A:
    case BARCODE_UPC_E:
      return special ? ExtendedGuard : OneOf(m_random, kLinear);
    case BARCODE_GS1_DATABAR_14:
      return special ? SymbolType14 : OneOf(m_random, kLinear);
    case BARCODE_GS1_DATABAR_EXPANDED:
      return special ? OneOf(m_random, kExpanded) : OneOf(m_random, kLinear);
    default:
      return OneOf(m_random, kLinear);
  }
}

void Options::Set(BarcodeHandle handle, Option option) {
  const Library& to = m_host.Functions();
  switch (option) {
    case Option::Foreground:
    case Option::Background:
      return SetColour(handle, option);
    case Option::FitWidth:
      return m_host.Set("set_fit_width", to.setFitWidth, handle, Flag());
    case Option::PxAdjustBlack:
      return m_host.Set("set_px_adjust_black", to.setPxAdjustBlack, handle, Adjustment());
    case Option::PxAdjustWhite:
      return m_host.Set("set_px_adjust_white", to.setPxAdjustWhite, handle, Adjustment());
    case Option::ShowText:
      return m_host.Set("set_show_text", to.setShowText, handle, Flag());
    case Option::TextEvenSpacing:
      return m_host.Set("set_text_even_spacing", to.setTextEvenSpacing, handle, Flag());
    case Option::TextFontScale:
      return m_host.Set("set_text_font_scale", to.setTextFontScale, handle, Scale());
    case Option::TextGap:
      return m_host.Set("set_text_gap", to.setTextGap, handle, Scale());
    case Option::ShowStartStop:
      return m_host.Set("set_show_start_stop", to.setShowStartStop, handle, Flag());
    case Option::ExtendedGuard:
      return m_host.Set("set_extended_guard", to.setExtendedGuard, handle, Flag());
    case Option::CodeMode:
      return Call(handle, "set_code_mode", to.setCodeMode, Word(kCodeModes));
    case Option::StringEncoding:
      return Call(handle, "set_string_encoding", to.setStringEncoding, Word(kEncodings));
    case Option::Version:
      return m_host.Set("set_version", to.setVersion, handle,
                        OnceIn(m_random, 4) ? Number(0, 40) : Number(-1, 12));
    case Option::ErrorCorrectionLevel:
      return Call(handle, "set_error_correction_level", to.setErrorCorrectionLevel, Word(kLevels));
    case Option::EncodeMode:
      return Call(handle, "set_encode_mode", to.setEncodeMode, Word(kModes));
    case Option::CodeSize:
      return Call(handle, "set_code_size", to.setCodeSize, Word(kSizes));
    case Option::EncodeScheme:
      return Call(handle, "set_encode_scheme", to.setEncodeScheme, Word(kSchemes));
    case Option::Columns:
      return m_host.Set("set_columns", to.setColumns, handle, Number(-1, 31));
    case Option::Rows:
      return m_host.Set("set_rows", to.setRows, handle, Number(-1, 91));
    case Option::ErrorLevel:
      return m_host.Set("set_error_level", to.setErrorLevel, handle, Number(-1, 9));
    case Option::AspectRatio:
      return m_host.Set("set_aspect_ratio", to.setAspectRatio, handle, Ratio());
    case Option::YHeight:
      return m_host.Set("set_y_height", to.setYHeight, handle, Number(0, 10));
    case Option::SymbolType14:
      return Call(handle, "set_symbol_type_14", to.setSymbolType14, Word(kForms14));
    case Option::SymbolTypeExp:
      return Call(handle, "set_symbol_type_exp", to.setSymbolTypeExp, Word(kFormsExpanded));
    case Option::NoOfColumns:
      return m_host.Set("set_no_of_columns", to.setNoOfColumns, handle, Number(-1, 12));
  }
}

void Options::SetColour(BarcodeHandle handle, Option option) {
  static constexpr int kAlphas[] = {255, 255, 255, 0, 1, 128, 254};
  const int red = Number(0, 255);
  const int green = Number(0, 255);
  const int blue = Number(0, 255);
  const int alpha = Strange(8) ? Number(-300, 600) : OneOf(m_random, kAlphas);
  if (option == Option::Foreground) {
    m_host.Set("set_foreground_color", m_host.Functions().setForegroundColour, handle, red, green, blue,
               alpha);
  } else {
    m_host.Set("set_background_color", m_host.Functions().setBackgroundColour, handle, red, green, blue,
               alpha);
  }
}

// Whether a wild session sets something out of all bounds, once in so many times.
bool Options::Strange(int times) {
  return m_wild && OnceIn(m_random, times);
}

int Options::Flag() {
  static constexpr int kFlags[] = {0, 0, 0, 1, 1, 1, 2, -1, 256, kMin};
  return OneOf(m_random, kFlags);
}

int Options::Adjustment() {
  static constexpr int kUsual[] = {0, 0, 1, -1, 2, -2};
  return OnceIn(m_random, 3) ? Number(-5, 5) : OneOf(m_random, kUsual);
}

int Options::Number(int low, int high) {
  static constexpr int kStrange[] = {kMin, -100000, -1, 0, 1, 64, 1000, 100000, kMax};
  return Strange(8) ? OneOf(m_random, kStrange) : m_random.Number(low, high);
}

double Options::Scale() {
  static constexpr double kUsual[] = {1.0, 1.0, 0.5, 0.75, 0.8, 1.2, 1.25, 1.5, 2.0, 3.0};
  static const double kStrange[] = {
      0.0,   -1.0, 8.0,       1e9,        1e-9,
      1e300, kNan, kInfinity, -kInfinity, std::numeric_limits<double>::denorm_min()};
  if (Strange(4)) {
    return OneOf(m_random, kStrange);
  }
  return OnceIn(m_random, 3) ? m_random.Number(1, 4000) / 1000.0 : OneOf(m_random, kUsual);
}

double Options::Ratio() {
  static constexpr double kUsual[] = {0.5, 0.1, 0.25, 0.3, 0.7, 1.0, 1.5, 2.0, 3.0, 5.0};
  static const double kStrange[] = {0.0, -1.0, 0.0009, 0.001, 0.01, 20.0, 1000.0, 1001.0, kNan, kInfinity};
  if (OnceIn(m_random, 6)) {
    return OneOf(m_random, kStrange);
  }
  return OnceIn(m_random, 2) ? m_random.Number(1, 60000) / 10000.0 : OneOf(m_random, kUsual);
}

template <std::size_t kCount>
std::string Options::Word(const char* const (&words)[kCount]) {
  if (OnceIn(m_random, m_wild ? 8 : 25)) {
    return OnceIn(m_random, 5) ? m_random.Bytes(0, 300, 1) : OneOf(m_random, kUnknown);
  }
  return OneOf(m_random, words);
}

void Options::Call(BarcodeHandle handle, const char* name, void (*function)(BarcodeHandle, const char*),
                   const std::string& word) {
  m_host.Set(name, function, handle, Strange(30) ? static_cast<const char*>(nullptr) : word.c_str());
}

}  // namespace barcode::same
