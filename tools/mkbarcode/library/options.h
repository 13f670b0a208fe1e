#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "barcode.h"
#include "mkbarcode/library/parse.h"
#include "mkbarcode/library/shared_library.h"
#include "mkbarcode/library/types.h"

namespace barcode::tool {

// The kinds of setter, each with what it accepts.
struct FlagSetter {
  LibraryFunction<void(BarcodeHandle, int)> set;
};
struct IntegerSetter {
  LibraryFunction<void(BarcodeHandle, int)> set;
  int lowest;
  int highest;
};
struct RealSetter {
  LibraryFunction<void(BarcodeHandle, double)> set;
  double lowest;
  double highest;
};
struct WordSetter {
  LibraryFunction<void(BarcodeHandle, const char*)> set;
  std::span<const std::string_view> words;
};
struct ColorSetter {
  LibraryFunction<void(BarcodeHandle, int, int, int, int)> set;
};
using Setter = std::variant<FlagSetter, IntegerSetter, RealSetter, WordSetter, ColorSetter>;

// One option of the command line and the setter it stands for. A flag NAME has the opposite "no-NAME".
struct OptionInfo {
  OptionId id;
  std::string_view name;   // without the leading dashes
  std::string_view alias;  // a second name, or empty
  Setter setter;
  std::string_view help;

  std::string_view SetterName() const {
    return std::visit([](const auto& kind) { return std::string_view(kind.set.name); }, setter);
  }
  bool IsFlag() const { return std::holds_alternative<FlagSetter>(setter); }
};

// Every option, in the order of OptionId.
std::span<const OptionInfo> AllOptions();
const OptionInfo& OptionOf(OptionId id);

// What values an option takes, in words for the help: "A, B or C", "0 to 40". Empty for flags.
std::string AcceptedValues(const OptionInfo& option);

// An option with a checked value. A keyword is the one of the setter's words, and as these are literals, a
// terminated string.
struct Setting {
  OptionId option;
  std::variant<int, double, std::string_view, Color> value;

  bool operator==(const Setting&) const = default;
};

// Checks a value as the command line gives it (flags: "on" or "off"). Keywords are accepted in any case and
// kept in the library's spelling. Throws UsageError with a message that names what is accepted.
Setting MakeSetting(OptionId id, std::string_view value);

// Hands the setting to the library.
void Apply(BarcodeHandle handle, const Setting& setting);

// The setting as it is written on the command line and in C: "--rows 5", "barcode_set_rows(h, 5);".
std::string CommandText(const Setting& setting);
std::string CallText(const Setting& setting);

}  // namespace barcode::tool
