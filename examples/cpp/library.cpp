// Draws one symbol with libbarcode and writes it as PNG or SVG.
//
//     library NUMBER TEXT WIDTH HEIGHT FILE        library 0 ABC-123 300 100 code39.png
//
// NUMBER is a symbology of libbarcode::Symbology, FILE ends in .png or .svg. The library prints what it does
// on standard output, and on standard error why it does not draw. Exit status: 0 written, 1 not drawn or not
// written, 2 wrong usage.
#include <barcode.hpp>
#include <charconv>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using libbarcode::Barcode;
using libbarcode::Symbology;

std::optional<int> WholeNumber(std::string_view text) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) {
    return std::nullopt;
  }
  return number;
}

bool EndsIn(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

int Draw(const std::vector<std::string>& arguments) {
  const std::optional<int> number = WholeNumber(arguments[0]);
  const std::optional<int> width = WholeNumber(arguments[2]);
  const std::optional<int> height = WholeNumber(arguments[3]);
  if (!number || !width || !height) {
    std::cerr << "library: NUMBER, WIDTH and HEIGHT are whole numbers\n";
    return 2;
  }
  Barcode code(static_cast<Symbology>(*number));
  const std::string& path = arguments[4];
  if (EndsIn(path, ".svg")) {
    code.set_output_format("svg");
  }
  if (!code.draw(arguments[1], *width, *height)) {
    std::cerr << "library: the text was not drawn\n";
    return 1;
  }
  libbarcode::save(code.is_svg_output() ? libbarcode::Bytes(code.svg()) : code.png(), path);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 6) {
      std::cerr << "Usage: library NUMBER TEXT WIDTH HEIGHT FILE\n";
      return 2;
    }
    return Draw({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "library: " << error.what() << '\n';
  }
  return 1;
}
