#include "mkbarcode/gallery/counterpart.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

// Fields of a request and the options that stand for them.
struct FieldOption {
  std::string_view field;
  OptionId option;
};
constexpr std::array kFieldOptions = {
    FieldOption{"foreground", OptionId::kForegroundColor},
    FieldOption{"background", OptionId::kBackgroundColor},
    FieldOption{"bar_adjust", OptionId::kPxAdjustBlack},
    FieldOption{"show_text", OptionId::kShowText},
    FieldOption{"even_spacing", OptionId::kTextEvenSpacing},
    FieldOption{"text_scale", OptionId::kTextFontScale},
    FieldOption{"text_gap", OptionId::kTextGap},
    FieldOption{"show_start_stop", OptionId::kShowStartStop},
    FieldOption{"extended_guard", OptionId::kExtendedGuard},
    FieldOption{"code_mode", OptionId::kCodeMode},
    FieldOption{"string_encoding", OptionId::kStringEncoding},
    FieldOption{"qr_version", OptionId::kVersion},
    FieldOption{"error_correction_level", OptionId::kErrorCorrectionLevel},
    FieldOption{"encode_mode", OptionId::kEncodeMode},
    FieldOption{"code_size", OptionId::kCodeSize},
    FieldOption{"encode_scheme", OptionId::kEncodeScheme},
    FieldOption{"aspect_ratio", OptionId::kAspectRatio},
    FieldOption{"y_height", OptionId::kYHeight},
    FieldOption{"pairs_per_row", OptionId::kNoOfColumns},
};

// Colours of requests have shorter forms, too.
std::string OptionColor(std::string_view value) {
  if (value == "transparent") {
    return "#ffffff00";
  }
  constexpr std::size_t kShortLength = 4;
  if (value.size() != kShortLength) {
    return std::string(value);
  }
  std::string color = "#";
  for (const char digit : value.substr(1)) {
    color.append(2, digit);
  }
  return color;
}

std::string OptionValue(OptionId option, const ordered_json& value) {
  if (value.is_boolean()) {
    return value.get<bool>() ? "on" : "off";
  }
  if (!value.is_string()) {
    return value.dump();
  }
  const auto text = value.get<std::string>();
  const bool isColor = option == OptionId::kForegroundColor || option == OptionId::kBackgroundColor;
  return isColor ? OptionColor(text) : text;
}

// What a bar gains, the space behind it loses; matrix codes have the one option for both.
void AddWhiteAdjustment(DrawRequest& drawing, const ordered_json& request) {
  const auto adjust = request.find("bar_adjust");
  if (adjust != request.end() && !drawing.type->IsTwoDimensional()) {
    drawing.settings.push_back(MakeSetting(OptionId::kPxAdjustWhite, std::to_string(-adjust->get<int>())));
  }
}

void AddSettings(DrawRequest& drawing, const ordered_json& request) {
  for (const FieldOption& row : kFieldOptions) {
    const auto value = request.find(row.field);
    if (value != request.end() && drawing.type->Serves(row.option)) {
      drawing.settings.push_back(MakeSetting(row.option, OptionValue(row.option, *value)));
    }
  }
  AddWhiteAdjustment(drawing, request);
}

void SetForm(DrawRequest& drawing, std::string_view form) {
  if (form == "payment") {
    drawing.form = Form::kConvenience;
  } else if (form == "stacked" && drawing.type->number == BARCODE_GS1_DATABAR_EXPANDED) {
    drawing.form = Form::kStacked;
  } else if (form == "stacked") {
    drawing.settings.push_back(MakeSetting(OptionId::kSymbolType14, "STACKED"));
  } else if (form == "stacked-omnidirectional") {
    drawing.settings.push_back(MakeSetting(OptionId::kSymbolType14, "STACKED_OMNIDIRECTIONAL"));
  }
}

// JAN and UPC have digits beside the bars.
bool HasDigitsOutside(const DrawRequest& drawing, const ordered_json& request) {
  return drawing.type->Serves(OptionId::kExtendedGuard) && request.value("extended_guard", true) &&
         request.value("show_text", true);
}

// The box of symbol and text; that of a symbol that has no text under it is the symbol's.
Size Box(const DrawRequest& drawing, const ordered_json& request, const json& report) {
  const int module = report["module"];
  const json& modules = report["modules"];
  const json& quietZone = report["quiet_zone"];
  const bool isTurned = request.value("rotate", 0) % 180 != 0;
  const int pictureWidth = report[isTurned ? "height" : "width"];
  const int pictureHeight = report[isTurned ? "width" : "height"];
  const int columns = modules["columns"];
  const int rows = modules["rows"];
  if (drawing.type->number == BARCODE_YUBIN_CUSTOMER) {
    constexpr int kHeightOfLongBars = 6;  // modules
    return {kHeightOfLongBars * module, kHeightOfLongBars * module, true};
  }
  if (drawing.type->IsTwoDimensional()) {
    const bool isSingle = rows == columns && drawing.type->number != BARCODE_PDF417;
    return {columns * module, rows * module, isSingle};
  }
  const int width = HasDigitsOutside(drawing, request) ? pictureWidth : columns * module;
  return {width, pictureHeight - (quietZone["top"].get<int>() + quietZone["bottom"].get<int>()) * module,
          false};
}

// The first digits of the identifiers whose fields have a predefined length, so that no FNC1 ends them.
bool HasPredefinedLength(std::string_view identifier) {
  constexpr std::array<std::string_view, 22> kIdentifiers = {"00", "01", "02", "03", "04", "11", "12", "13",
                                                             "14", "15", "16", "17", "18", "19", "20", "31",
                                                             "32", "33", "34", "35", "36", "41"};
  return std::find(kIdentifiers.begin(), kIdentifiers.end(), identifier.substr(0, 2)) != kIdentifiers.end();
}

// DataBar Omnidirectional and Limited take a GTIN without identifier and check digit.
std::string WithoutIdentifier(std::string_view text) {
  constexpr std::string_view kIdentifier = "(01)";
  constexpr std::size_t kDigits = 13;
  return std::string(text.starts_with(kIdentifier) ? text.substr(kIdentifier.size(), kDigits) : text);
}

std::string LibraryText(const DrawRequest& drawing, const std::string& text) {
  switch (drawing.type->number) {
    case BARCODE_GS1_128:
      return text.starts_with('(') ? WithMarkers(text, true) : text;
    case BARCODE_GS1_DATABAR_EXPANDED:
      return text.starts_with('(') ? WithMarkers(text, false) : text;
    case BARCODE_GS1_DATABAR_14:
    case BARCODE_GS1_DATABAR_LIMITED:
      return WithoutIdentifier(text);
    default:
      return text;
  }
}

}  // namespace

std::string WithMarkers(std::string_view elements, bool startsWithFnc1) {
  constexpr std::string_view kFnc1 = "{FNC1}";
  std::string text = startsWithFnc1 ? std::string(kFnc1) : std::string();
  while (elements.starts_with('(')) {
    const std::size_t close = elements.find(')');
    const std::string_view identifier = elements.substr(1, close - 1);
    const std::string_view rest = elements.substr(close + 1);
    const std::size_t end = std::min(rest.find('('), rest.size());
    text += Concat({identifier, rest.substr(0, end)});
    elements = rest.substr(end);
    if (!elements.empty()) {
      text += HasPredefinedLength(identifier) ? "{AI}" : kFnc1;
    }
  }
  return text;
}

std::optional<DrawRequest> LibraryCounterpart(const TypeInfo& type, const ordered_json& request,
                                              const json& report) {
  if (!request.contains("text")) {
    return std::nullopt;
  }
  DrawRequest drawing;
  drawing.type = &type;
  drawing.text = LibraryText(drawing, request["text"]);
  AddSettings(drawing, request);
  SetForm(drawing, request.value("form", ""));
  drawing.size = Box(drawing, request, report);
  return drawing;
}

}  // namespace barcode::tool
