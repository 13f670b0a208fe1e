#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/colour.h"

// What a caller asks of a label. Every field is optional: one that holds nothing was not given, and the
// symbology's default applies. Which fields a symbology takes, and their ranges, is one table (fields.h).
namespace barcode::label {

// In the order of the numbers that hosts know them by.
enum class Type : std::uint8_t {
  kCode39,
  kCode93,
  kCode128,
  kGs1_128,
  kNw7,
  kMatrix2of5,
  kNec2of5,
  kJan8,
  kJan13,
  kUpcA,
  kUpcE,
  kItf,
  kDataBar14,
  kDataBarLimited,
  kDataBarExpanded,
  kYubinCustomer,
  kQr,
  kDataMatrix,
  kPdf417,
};
inline constexpr std::size_t kTypeCount = 19;

enum class Form : std::uint8_t { kPayment, kOmnidirectional, kStacked, kStackedOmnidirectional, kRow };

enum class Format : std::uint8_t { kPng, kSvg, kPdf };

// Quarter turns clockwise.
enum class Rotation : std::uint8_t { kNone, kQuarter, kHalf, kThreeQuarters };

// The words of the symbologies' own options are kept as the table of fields writes them.
struct Request {
  std::optional<std::string> type;       // a name or an alias of types.h
  std::optional<std::string> text;       // UTF-8, as given
  std::optional<std::string> textBytes;  // instead of text: bytes as they are
  std::optional<Form> form;
  std::optional<Format> format;

  std::optional<int> module;  // dots
  std::optional<int> height;  // dots: of the bars; beside width: of the picture
  std::optional<int> width;   // dots, of the picture
  std::optional<int> dpi;
  std::optional<double> moduleMm;
  std::optional<double> heightMm;
  std::optional<int> quietZone;  // modules on every side; nothing: the standard's
  std::optional<Rotation> rotate;
  std::optional<Colour> foreground;
  std::optional<Colour> background;  // alpha 0: transparent

  std::optional<bool> showText;
  std::optional<std::string> caption;  // UTF-8
  std::optional<double> textScale;
  std::optional<double> textGap;
  std::optional<bool> evenSpacing;
  std::optional<bool> showStartStop;
  std::optional<bool> extendedGuard;
  std::optional<int> barAdjust;  // dots

  std::optional<std::string> codeMode;
  std::optional<std::string> stringEncoding;
  std::optional<int> qrVersion;
  std::optional<std::string> errorCorrectionLevel;
  std::optional<std::string> encodeMode;
  std::optional<std::string> codeSize;
  std::optional<std::string> encodeScheme;
  std::optional<double> aspectRatio;
  std::optional<int> yHeight;
  std::optional<int> pairsPerRow;

  std::optional<bool> strict;
};

}  // namespace barcode::label
