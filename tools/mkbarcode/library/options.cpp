#include "mkbarcode/library/options.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <limits>

#include "mkbarcode/errors.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

template <class... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

using Word = std::string_view;
constexpr std::array kCodeModes = {Word("AUTO"), Word("A"), Word("B"), Word("C")};
constexpr std::array kStringEncodings = {Word("utf-8"), Word("shift-jis"), Word("shift_jis")};
constexpr std::array kCorrectionLevels = {Word("L"), Word("M"), Word("Q"), Word("H")};
constexpr std::array kEncodeModes = {Word("AUTO"), Word("BYTE"), Word("NUMERIC"), Word("ALPHANUMERIC"),
                                     Word("KANJI")};
constexpr std::array kCodeSizes = {
    Word("AUTO"),    Word("10x10"), Word("12x12"), Word("14x14"),   Word("16x16"),   Word("18x18"),
    Word("20x20"),   Word("22x22"), Word("24x24"), Word("26x26"),   Word("32x32"),   Word("36x36"),
    Word("40x40"),   Word("44x44"), Word("48x48"), Word("52x52"),   Word("64x64"),   Word("72x72"),
    Word("80x80"),   Word("88x88"), Word("96x96"), Word("104x104"), Word("120x120"), Word("132x132"),
    Word("144x144"), Word("8x18"),  Word("8x32"),  Word("12x26"),   Word("12x36"),   Word("16x36"),
    Word("16x48")};
constexpr std::array kEncodeSchemes = {Word("AUTO"), Word("ASCII"),   Word("C40"),    Word("TEXT"),
                                       Word("X12"),  Word("EDIFACT"), Word("BASE256")};
constexpr std::array kSymbolTypes14 = {Word("OMNIDIRECTIONAL"), Word("STACKED"),
                                       Word("STACKED_OMNIDIRECTIONAL")};
constexpr std::array kSymbolTypesExp = {Word("UNSTACKED"), Word("STACKED")};

constexpr int kLowestInt = std::numeric_limits<int>::min();
constexpr int kHighestInt = std::numeric_limits<int>::max();
constexpr double kHighestScale = 100.0;

template <class Function>
constexpr LibraryFunction<Function> Named(const char* name) {
  return {name};
}

const std::array kOptions = {
    OptionInfo{OptionId::kForegroundColor, "foreground-color", "fg",
               ColorSetter{Named<decltype(barcode_set_foreground_color)>("barcode_set_foreground_color")},
               "Colour of bars, modules and text (default black)"},
    OptionInfo{OptionId::kBackgroundColor, "background-color", "bg",
               ColorSetter{Named<decltype(barcode_set_background_color)>("barcode_set_background_color")},
               "Colour of the background (default white)"},
    OptionInfo{OptionId::kFitWidth, "fit-width", "",
               FlagSetter{Named<decltype(barcode_set_fit_width)>("barcode_set_fit_width")},
               "Modules a fraction of a pixel wide, so that the symbol fills the box (default off)"},
    OptionInfo{OptionId::kPxAdjustBlack, "px-adjust-black", "",
               IntegerSetter{Named<decltype(barcode_set_px_adjust_black)>("barcode_set_px_adjust_black"),
                             kLowestInt, kHighestInt},
               "Pixels added to the width of every bar or dark module (default 0)"},
    OptionInfo{OptionId::kPxAdjustWhite, "px-adjust-white", "",
               IntegerSetter{Named<decltype(barcode_set_px_adjust_white)>("barcode_set_px_adjust_white"),
                             kLowestInt, kHighestInt},
               "Pixels added to the width of every space (default 0)"},
    OptionInfo{OptionId::kShowText, "show-text", "",
               FlagSetter{Named<decltype(barcode_set_show_text)>("barcode_set_show_text")},
               "Human-readable text under the bars (default on)"},
    OptionInfo{OptionId::kTextEvenSpacing, "text-even-spacing", "",
               FlagSetter{Named<decltype(barcode_set_text_even_spacing)>("barcode_set_text_even_spacing")},
               "Characters spread evenly across the bars, not one centred line (default on)"},
    OptionInfo{OptionId::kTextFontScale, "text-font-scale", "",
               RealSetter{Named<decltype(barcode_set_text_font_scale)>("barcode_set_text_font_scale"), 0.0,
                          kHighestScale},
               "Multiplies the height of the text (default 1)"},
    OptionInfo{OptionId::kTextGap, "text-gap", "",
               RealSetter{Named<decltype(barcode_set_text_gap)>("barcode_set_text_gap"), 0.0, kHighestScale},
               "Multiplies the gap between bars and text (default 1)"},
    OptionInfo{OptionId::kShowStartStop, "show-start-stop", "",
               FlagSetter{Named<decltype(barcode_set_show_start_stop)>("barcode_set_show_start_stop")},
               "Start and stop characters in the text (default on)"},
    OptionInfo{OptionId::kExtendedGuard, "extended-guard", "",
               FlagSetter{Named<decltype(barcode_set_extended_guard)>("barcode_set_extended_guard")},
               "Long guard bars with the digits grouped between them (default on)"},
    OptionInfo{OptionId::kCodeMode, "code-mode", "",
               WordSetter{Named<decltype(barcode_set_code_mode)>("barcode_set_code_mode"), kCodeModes},
               "Code set (default AUTO)"},
    OptionInfo{OptionId::kStringEncoding, "string-encoding", "",
               WordSetter{Named<decltype(barcode_set_string_encoding)>("barcode_set_string_encoding"),
                          kStringEncodings},
               "Character set in which the text is encoded (default utf-8)"},
    // --version is the tool's own version.
    OptionInfo{OptionId::kVersion, "qr-version", "",
               IntegerSetter{Named<decltype(barcode_set_version)>("barcode_set_version"), 0, 40},
               "Smallest version to use, 0: as the text needs (default 0)"},
    OptionInfo{
        OptionId::kErrorCorrectionLevel, "error-correction-level", "ecl",
        WordSetter{Named<decltype(barcode_set_error_correction_level)>("barcode_set_error_correction_level"),
                   kCorrectionLevels},
        "Error correction (default M)"},
    OptionInfo{OptionId::kEncodeMode, "encode-mode", "",
               WordSetter{Named<decltype(barcode_set_encode_mode)>("barcode_set_encode_mode"), kEncodeModes},
               "NUMERIC encodes digits, every other word bytes (default BYTE)"},
    OptionInfo{OptionId::kCodeSize, "code-size", "",
               WordSetter{Named<decltype(barcode_set_code_size)>("barcode_set_code_size"), kCodeSizes},
               "Rows x columns of the symbol, AUTO: the smallest square (default AUTO)"},
    OptionInfo{
        OptionId::kEncodeScheme, "encode-scheme", "",
        WordSetter{Named<decltype(barcode_set_encode_scheme)>("barcode_set_encode_scheme"), kEncodeSchemes},
        "Encodation scheme, AUTO: the fewest codewords (default ASCII)"},
    OptionInfo{OptionId::kColumns, "columns", "",
               IntegerSetter{Named<decltype(barcode_set_columns)>("barcode_set_columns"), 0, 30},
               "Data columns, reported only: the aspect ratio decides (default 0)"},
    OptionInfo{OptionId::kRows, "rows", "",
               IntegerSetter{Named<decltype(barcode_set_rows)>("barcode_set_rows"), 0, 90},
               "Rows, reported only: the aspect ratio decides (default 0)"},
    OptionInfo{OptionId::kErrorLevel, "error-level", "",
               IntegerSetter{Named<decltype(barcode_set_error_level)>("barcode_set_error_level"), 0, 8},
               "Error level, reported only: it is chosen automatically (default 2)"},
    OptionInfo{
        OptionId::kAspectRatio, "aspect-ratio", "",
        RealSetter{Named<decltype(barcode_set_aspect_ratio)>("barcode_set_aspect_ratio"), 0.001, 1000.0},
        "Height to width (default 0.5)"},
    OptionInfo{OptionId::kYHeight, "y-height", "",
               IntegerSetter{Named<decltype(barcode_set_y_height)>("barcode_set_y_height"), 1, kHighestInt},
               "Row height in modules, shapes the columns (default 3)"},
    OptionInfo{
        OptionId::kSymbolType14, "symbol-type-14", "",
        WordSetter{Named<decltype(barcode_set_symbol_type_14)>("barcode_set_symbol_type_14"), kSymbolTypes14},
        "Form (default OMNIDIRECTIONAL)"},
    OptionInfo{OptionId::kSymbolTypeExp, "symbol-type-exp", "",
               WordSetter{Named<decltype(barcode_set_symbol_type_exp)>("barcode_set_symbol_type_exp"),
                          kSymbolTypesExp},
               "Form (default UNSTACKED)"},
    OptionInfo{OptionId::kNoOfColumns, "no-of-columns", "pairs-per-row",
               IntegerSetter{Named<decltype(barcode_set_no_of_columns)>("barcode_set_no_of_columns"), 0, 10},
               "Segment pairs per row of the stacked form, 0: two (default 0)"},
};

std::string Number(double value) {
  std::array<char, 32> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end};
}

std::string HexColor(const Color& color) {
  std::array<char, 16> buffer{};
  const int length = color.alpha == 255 ? std::snprintf(buffer.data(), buffer.size(), "#%02x%02x%02x",
                                                        color.red, color.green, color.blue)
                                        : std::snprintf(buffer.data(), buffer.size(), "#%02x%02x%02x%02x",
                                                        color.red, color.green, color.blue, color.alpha);
  return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string Joined(std::span<const std::string_view> words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) {
      text += i + 1 == words.size() ? " or " : ", ";
    }
    text += words[i];
  }
  return text;
}

std::optional<Setting> ParseFlag(OptionId id, std::string_view value) {
  if (value == "on") {
    return Setting{id, 1};
  }
  if (value == "off") {
    return Setting{id, 0};
  }
  return std::nullopt;
}

std::optional<Setting> ParseWord(OptionId id, const WordSetter& setter, std::string_view value) {
  const std::string lower = LowerCase(value);
  for (const std::string_view word : setter.words) {
    if (LowerCase(word) == lower) {
      return Setting{id, word};
    }
  }
  return std::nullopt;
}

// The number when it lies in the setter's range.
template <class T>
std::optional<Setting> InRange(OptionId id, std::optional<T> number, const auto& setter) {
  if (!number || *number < setter.lowest || *number > setter.highest) {
    return std::nullopt;
  }
  return Setting{id, *number};
}

std::optional<Setting> ParseSetting(const OptionInfo& option, std::string_view value) {
  using Result = std::optional<Setting>;
  return std::visit(
      Overloaded{
          [&](const FlagSetter&) { return ParseFlag(option.id, value); },
          [&](const IntegerSetter& setter) { return InRange(option.id, ParseInteger(value), setter); },
          [&](const RealSetter& setter) { return InRange(option.id, ParseReal(value), setter); },
          [&](const WordSetter& setter) { return ParseWord(option.id, setter, value); },
          [&](const ColorSetter&) {
            const std::optional<Color> color = ParseColor(value);
            return color ? Result(Setting{option.id, *color}) : std::nullopt;
          },
      },
      option.setter);
}

}  // namespace

std::span<const OptionInfo> AllOptions() {
  return kOptions;
}

const OptionInfo& OptionOf(OptionId id) {
  return kOptions.at(static_cast<std::size_t>(id));
}

std::string AcceptedValues(const OptionInfo& option) {
  return std::visit(
      Overloaded{
          [](const FlagSetter&) { return std::string(); },
          [](const IntegerSetter& setter) {
            if (setter.lowest == kLowestInt) {
              return std::string("a whole number");
            }
            if (setter.highest == kHighestInt) {
              return Concat({std::to_string(setter.lowest), " or more"});
            }
            return Concat({std::to_string(setter.lowest), " to ", std::to_string(setter.highest)});
          },
          [](const RealSetter& setter) {
            return Concat({Number(setter.lowest), " to ", Number(setter.highest)});
          },
          [](const WordSetter& setter) { return Joined(setter.words); },
          [](const ColorSetter&) { return std::string("#rrggbb, #rrggbbaa or r,g,b[,a]"); },
      },
      option.setter);
}

Setting MakeSetting(OptionId id, std::string_view value) {
  const OptionInfo& option = OptionOf(id);
  if (const std::optional<Setting> setting = ParseSetting(option, value)) {
    return *setting;
  }
  const std::string accepted = option.IsFlag() ? "on or off" : AcceptedValues(option);
  throw UsageError(Concat({"--", option.name, ": '", value, "' is not accepted; it takes ", accepted}));
}

void Apply(BarcodeHandle handle, const Setting& setting) {
  std::visit(Overloaded{
                 [&](const FlagSetter& setter) { setter.set(handle, std::get<int>(setting.value)); },
                 [&](const IntegerSetter& setter) { setter.set(handle, std::get<int>(setting.value)); },
                 [&](const RealSetter& setter) { setter.set(handle, std::get<double>(setting.value)); },
                 [&](const WordSetter& setter) {
                   setter.set(handle, std::get<std::string_view>(setting.value).data());
                 },
                 [&](const ColorSetter& setter) {
                   const auto& color = std::get<Color>(setting.value);
                   setter.set(handle, color.red, color.green, color.blue, color.alpha);
                 },
             },
             OptionOf(setting.option).setter);
}

std::string CommandText(const Setting& setting) {
  const OptionInfo& option = OptionOf(setting.option);
  if (option.IsFlag()) {
    return Concat({std::get<int>(setting.value) != 0 ? "--" : "--no-", option.name});
  }
  const std::string value = std::visit(Overloaded{
                                           [](int number) { return std::to_string(number); },
                                           [](double number) { return Number(number); },
                                           [](std::string_view word) { return std::string(word); },
                                           [](const Color& color) { return HexColor(color); },
                                       },
                                       setting.value);
  return Concat({"--", option.name, " ", ShellQuoted(value)});
}

std::string CallText(const Setting& setting) {
  const std::string argument =
      std::visit(Overloaded{
                     [](int number) { return std::to_string(number); },
                     [](double number) { return Number(number); },
                     [](std::string_view word) { return CLiteral(word); },
                     [](const Color& color) {
                       return Concat({std::to_string(color.red), ", ", std::to_string(color.green), ", ",
                                      std::to_string(color.blue), ", ", std::to_string(color.alpha)});
                     },
                 },
                 setting.value);
  return Concat({OptionOf(setting.option).SetterName(), "(h, ", argument, ");"});
}

}  // namespace barcode::tool
