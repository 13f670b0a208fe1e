#include "linear/code39_encoder.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "base/ascii.h"
#include "linear/code39_tables.h"

namespace barcode {
namespace {

constexpr std::uint32_t kNarrow = 1;
constexpr std::uint32_t kWide = 3;
constexpr std::uint32_t kFirstElement = 0x100;
constexpr std::size_t kElements = 9;

void AppendCharacter(RunVector& pattern, char character) {
  if (!pattern.empty()) {
    pattern.push_back(kNarrow);  // gap between characters
  }
  const std::uint32_t mask = kCode39Patterns[kCode39Characters.find(character)];
  for (std::uint32_t element = kFirstElement; element != 0; element >>= 1U) {
    pattern.push_back((mask & element) != 0 ? kWide : kNarrow);
  }
}

}  // namespace

RunVector EncodeCode39(std::string_view text) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  const std::string upper = ToUpper(text);
  for (std::size_t i = 0; i < upper.size(); ++i) {
    if (upper[i] == '*') {
      throw std::runtime_error("Invalid character in CODE39: '*' is reserved for start/stop code");
    }
    if (kCode39Characters.find(upper[i]) == std::string_view::npos) {
      throw std::runtime_error(std::string("Invalid character in CODE39: ") + text[i]);
    }
  }
  RunVector pattern;
  pattern.reserve((upper.size() + 2) * (kElements + 1));
  AppendCharacter(pattern, '*');
  for (const char character : upper) {
    AppendCharacter(pattern, character);
  }
  AppendCharacter(pattern, '*');
  return pattern;
}

std::string Code39DisplayText(std::string_view text, bool showStartStop) {
  std::string display(text);
  return showStartStop ? '*' + display + '*' : display;
}

}  // namespace barcode
