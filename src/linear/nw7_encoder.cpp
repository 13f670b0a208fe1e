#include "linear/nw7_encoder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "base/ascii.h"

namespace barcode {
namespace {

constexpr std::string_view kCharacters = "ABCD.+:/$-0123456789";

// The seven elements of each character, the first (a bar) in bit 6; a set bit is a wide element (EN 798).
constexpr std::array<std::uint32_t, kCharacters.size()> kMasks = {
    0b0011010, 0b0101001, 0b0001011, 0b0001110, 0b1010100, 0b0010101, 0b1000101,
    0b1010001, 0b0011000, 0b0001100, 0b0000011, 0b0000110, 0b0001001, 0b1100000,
    0b0010010, 0b1000010, 0b0100001, 0b0100100, 0b0110000, 0b1001000,
};
constexpr std::size_t kElements = 7;
constexpr std::uint32_t kFirstElement = 0b1000000;
constexpr std::uint32_t kNarrow = 1;
constexpr std::uint32_t kWide = 3;
constexpr std::uint32_t kGap = 2;
constexpr char kDefaultStartStop = 'C';

std::uint32_t Mask(char character) {
  const std::size_t index = kCharacters.find(character);
  if (index == std::string_view::npos) {
    throw std::runtime_error(std::string("Invalid character in NW7: ") + character);
  }
  return kMasks[index];
}

}  // namespace

RunVector EncodeNw7(std::string_view text) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  const std::string framed = Nw7FramedText(text);
  RunVector pattern;
  pattern.reserve(framed.size() * (kElements + 1));
  for (const char character : framed) {
    const std::uint32_t mask = Mask(character);
    if (!pattern.empty()) {
      pattern.push_back(kGap);
    }
    for (std::uint32_t element = kFirstElement; element != 0; element >>= 1U) {
      pattern.push_back((mask & element) != 0 ? kWide : kNarrow);
    }
  }
  return pattern;
}

bool IsNw7StartStop(char character) {
  const char upper = ToUpper(character);
  return upper >= 'A' && upper <= 'D';
}

std::string Nw7FramedText(std::string_view text) {
  std::string upper = ToUpper(text);
  const bool starts = IsNw7StartStop(upper.front());
  const bool stops = IsNw7StartStop(upper.back());
  if (starts != stops) {
    throw std::runtime_error("Invalid start/stop character combination in NW7: " + upper);
  }
  return starts ? upper : kDefaultStartStop + upper + kDefaultStartStop;
}

std::string Nw7DisplayText(std::string_view text, bool showStartStop) {
  if (showStartStop || text.empty() || !IsNw7StartStop(text.front()) || !IsNw7StartStop(text.back())) {
    return std::string(text);
  }
  // One character is start and stop at once.
  return text.size() == 1 ? std::string() : std::string(text.substr(1, text.size() - 2));
}

}  // namespace barcode
