#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace barcode::tool {

// What --size says: "300x100" is a box in pixels, "200" a single number.
struct Size {
  int width = 0;
  int height = 0;
  bool isSingle = false;  // width and height are then equal

  bool operator==(const Size&) const = default;
};

// Red, green, blue and alpha, 0 to 255 each.
struct Color {
  int red = 0;
  int green = 0;
  int blue = 0;
  int alpha = 255;

  bool operator==(const Color&) const = default;
};

// Each gives nothing when the text is not exactly one such value. None depends on the locale.
std::optional<int> ParseInteger(std::string_view text);
std::optional<double> ParseReal(std::string_view text);  // finite numbers only
std::optional<Size> ParseSize(std::string_view text);    // positive numbers only
std::optional<Color> ParseColor(std::string_view text);  // #rrggbb, #rrggbbaa or r,g,b[,a]

// The output format that the suffix of a file name stands for ("png", "svg", "jpg", "jpeg"), if any.
std::optional<std::string> FormatOfFile(std::string_view file);

// ASCII lower case, whatever the locale.
std::string LowerCase(std::string_view text);

}  // namespace barcode::tool
