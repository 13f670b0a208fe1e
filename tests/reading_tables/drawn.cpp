#include "reading_tables/drawn.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "label_proof/made_label.h"
#include "label_proof/picture.h"
#include "support/barcode_object.h"
#include "support/capture.h"

namespace barcode::test {
namespace {

struct Option {
  std::string name;   // without dashes
  std::string value;  // empty: none
};

struct Command {
  bool isLibrary = false;
  const SymbologyInfo* type = nullptr;
  std::vector<Option> options;
};

std::string NextWord(std::istringstream& words) {
  std::string word;
  words >> word;
  return word;
}

const SymbologyInfo& TypeNamed(const std::string& name) {
  for (const SymbologyInfo& info : EverySymbologyInfo()) {
    if (info.name == name) {
      return info;
    }
  }
  throw std::runtime_error("no such type: " + name);
}

Command Parsed(const std::string& command) {
  std::istringstream words(command);
  if (NextWord(words) != "mkbarcode") {
    throw std::runtime_error("no command of mkbarcode: " + command);
  }
  Command parsed;
  std::string word = NextWord(words);
  if (word == "library") {
    parsed.isLibrary = true;
    word = NextWord(words);
  }
  parsed.type = &TypeNamed(word);
  if (NextWord(words) != "TEXT") {
    throw std::runtime_error("TEXT is missing: " + command);
  }
  while (words >> word) {
    if (word.starts_with("--")) {
      parsed.options.push_back({word.substr(2), ""});
    } else if (!parsed.options.empty()) {
      parsed.options.back().value = word;
    }
  }
  return parsed;
}

// ---- The library ------------------------------------------------------------------------------------------

struct Size {
  int width = 0;
  int height = 0;
};

using Draw = std::function<int(BarcodeHandle, const std::string&, const Size&)>;

Size DefaultSize(const SymbologyInfo& type) {
  if (type.symbology == Symbology::kYubinCustomer) {
    return {24, 24};
  }
  return type.family == Family::kMatrix ? Size{200, 200} : Size{300, 100};
}

Size SizeOf(const std::string& value) {
  const std::size_t cross = value.find('x');
  const int width = std::stoi(value);
  return {width, cross == std::string::npos ? width : std::stoi(value.substr(cross + 1))};
}

Draw DrawOf(const Command& command) {
  const auto has = [&](std::string_view name) {
    return std::ranges::any_of(command.options, [&](const Option& option) { return option.name == name; });
  };
  if (has("convenience")) {
    return [](BarcodeHandle handle, const std::string& text, const Size& size) {
      return barcode_draw_convenience(handle, text.c_str(), size.width, size.height);
    };
  }
  if (has("stacked")) {
    return [](BarcodeHandle handle, const std::string& text, const Size& size) {
      return barcode_draw_stacked(handle, text.c_str(), size.width, size.height);
    };
  }
  return [](BarcodeHandle handle, const std::string& text, const Size& size) {
    return barcode_draw_1d(handle, text.c_str(), size.width, size.height);
  };
}

using ColourSetter = void (*)(BarcodeHandle, int, int, int, int);

void SetColour(ColourSetter set, BarcodeHandle handle, const std::string& value) {
  constexpr std::size_t kLength = 7;
  if (value.size() != kLength || value.front() != '#') {
    throw std::runtime_error("no colour: " + value);
  }
  const int rgb = std::stoi(value.substr(1), nullptr, 16);
  set(handle, rgb >> 16, rgb >> 8 & 0xFF, rgb & 0xFF, 255);
}

void Set(BarcodeHandle handle, const Option& option) {
  using Setter = std::function<void(BarcodeHandle, const std::string&)>;
  static const std::map<std::string, Setter> kSetters = {
      {"fg", [](auto h, auto& value) { SetColour(barcode_set_foreground_color, h, value); }},
      {"bg", [](auto h, auto& value) { SetColour(barcode_set_background_color, h, value); }},
      {"fit-width", [](auto h, auto&) { barcode_set_fit_width(h, 1); }},
      {"no-show-text", [](auto h, auto&) { barcode_set_show_text(h, 0); }},
      {"text-font-scale", [](auto h, auto& value) { barcode_set_text_font_scale(h, std::stod(value)); }},
      {"code-mode", [](auto h, auto& value) { barcode_set_code_mode(h, value.c_str()); }},
      {"encode-mode", [](auto h, auto& value) { barcode_set_encode_mode(h, value.c_str()); }},
      {"encode-scheme", [](auto h, auto& value) { barcode_set_encode_scheme(h, value.c_str()); }},
      {"symbol-type-14", [](auto h, auto& value) { barcode_set_symbol_type_14(h, value.c_str()); }},
      // How it is drawn, see DrawOf and SizeOf.
      {"convenience", [](auto, auto&) {}},
      {"stacked", [](auto, auto&) {}},
      {"size", [](auto, auto&) {}},
  };
  const auto setter = kSetters.find(option.name);
  if (setter == kSetters.end()) {
    throw std::runtime_error("unknown option: " + option.name);
  }
  setter->second(handle, option.value);
}

std::optional<GreyImage> DrawnByLibrary(const Command& command, const std::string& text, int margin) {
  const BarcodeObject object(static_cast<int>(command.type->symbology));
  Size size = DefaultSize(*command.type);
  for (const Option& option : command.options) {
    Set(object, option);
    size = option.name == "size" ? SizeOf(option.value) : size;
  }
  int result = 0;
  Capture([&] { result = DrawOf(command)(object, text, size); });
  if (result != 1) {
    return std::nullopt;
  }
  Image picture;
  Capture([&] { picture = object.Picture(); });
  return WithQuietZone(picture, margin);
}

// ---- Labels -----------------------------------------------------------------------------------------------

// A value as its option would take it: numbers, and flags.
void SetField(Json& request, const Option& option) {
  std::string name = option.name;
  const bool isNegated = name.starts_with("no-");
  name.erase(0, isNegated ? 3 : 0);
  std::ranges::replace(name, '-', '_');
  if (isNegated || option.value.empty()) {
    request[name] = !isNegated;
    return;
  }
  char* end = nullptr;
  const long number = std::strtol(option.value.c_str(), &end, 10);
  if (*end == '\0') {
    request[name] = number;
  } else {
    request[name] = option.value;
  }
}

std::optional<GreyImage> DrawnAsLabel(const Command& command, const std::string& text) {
  Json request = {{"type", command.type->name}, {"text", text}};
  for (const Option& option : command.options) {
    SetField(request, option);
  }
  const MadeLabel label = MakeLabel(request.dump());
  return label.ok ? std::optional(GreyOfPng(label.data)) : std::nullopt;
}

}  // namespace

Symbology SymbologyOf(const std::string& command) {
  return Parsed(command).type->symbology;
}

std::optional<GreyImage> Drawn(const std::string& command, const std::string& text, int margin) {
  const Command parsed = Parsed(command);
  return parsed.isLibrary ? DrawnByLibrary(parsed, text, margin) : DrawnAsLabel(parsed, text);
}

}  // namespace barcode::test
