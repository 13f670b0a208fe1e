#include "linear/code93_encoder.h"

#include <stdexcept>
#include <string>

#include "base/ascii.h"
#include "linear/code93_tables.h"
#include "linear/width_string.h"

namespace barcode {
namespace {

constexpr std::size_t kMaxWeightC = 20;
constexpr std::size_t kMaxWeightK = 15;

std::size_t CharacterValue(char character) {
  const int value = kCode93Values[static_cast<unsigned char>(character)];
  if (value < 0) {
    throw std::runtime_error(std::string("Invalid character in CODE93: ") + character);
  }
  return static_cast<std::size_t>(value);
}

}  // namespace

std::size_t Code93CheckIndex(std::string_view text, std::size_t maxWeight) {
  std::size_t sum = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t weight = (text.size() - i - 1) % maxWeight + 1;
    sum += CharacterValue(text[i]) * weight;
  }
  return sum % kCode93Characters.size();
}

RunVector EncodeCode93(std::string_view text) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  std::string characters = ToUpper(text);
  characters += kCode93Characters[Code93CheckIndex(characters, kMaxWeightC)];
  characters += kCode93Characters[Code93CheckIndex(characters, kMaxWeightK)];

  RunVector pattern;
  pattern.reserve(6 * characters.size() + kCode93Start.size() + kCode93Stop.size());
  AppendWidths(pattern, kCode93Start);
  for (const char character : characters) {
    AppendWidths(pattern, kCode93Widths[CharacterValue(character)]);
  }
  AppendWidths(pattern, kCode93Stop);
  return pattern;
}

}  // namespace barcode
