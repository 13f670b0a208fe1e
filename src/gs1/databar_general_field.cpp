#include "gs1/databar_general_field.h"

#include <algorithm>

#include "base/ascii.h"
#include "gs1/gs1_markers.h"

namespace barcode {
namespace {

constexpr std::string_view kAlphanumericSymbols = "*,-./";
constexpr std::string_view kIso646Symbols = "!\"%&'()*+,-./:;<=>?_ ";

// Look-ahead of the mode choice, in characters.
constexpr std::size_t kNumericRun = 6;
constexpr std::size_t kNumericRunAtEnd = 4;
constexpr std::size_t kNumericRunInIso646 = 4;
constexpr std::size_t kAlphanumericRunInIso646 = 5;
constexpr std::size_t kIso646Window = 10;

constexpr std::uint32_t kFnc1InPair = 10;

bool IsUpper(char c) {
  return c >= 'A' && c <= 'Z';
}

bool IsLower(char c) {
  return c >= 'a' && c <= 'z';
}

bool IsNumeric(char c) {
  return IsDigit(c) || c == kGs1Separator;
}

bool IsAlphanumeric(char c) {
  return IsNumeric(c) || IsUpper(c) || kAlphanumericSymbols.find(c) != std::string_view::npos;
}

bool IsIso646(char c) {
  return IsNumeric(c) || IsUpper(c) || IsLower(c) || kIso646Symbols.find(c) != std::string_view::npos;
}

std::uint32_t Offset(char c, char first) {
  return static_cast<std::uint32_t>(c - first);
}

std::uint32_t PairDigit(char c) {
  return c == kGs1Separator ? kFnc1InPair : Offset(c, '0');
}

// True when the text begins with two digits, or a digit and an FNC1.
bool StartsWithPair(std::string_view text) {
  return text.size() >= 2 && IsNumeric(text[0]) && IsNumeric(text[1]) &&
         (IsDigit(text[0]) || IsDigit(text[1]));
}

std::size_t NumericRun(std::string_view text) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsNumeric) - text.begin());
}

class GeneralFieldEncoder {
 public:
  explicit GeneralFieldEncoder(std::string_view text) : m_rest(text) {}

  bool Done() const { return m_rest.empty(); }
  const GeneralField& Field() const { return m_field; }

  // Writes one character, one pair or one latch.
  void Step() {
    switch (m_field.mode) {
      case GeneralFieldMode::kNumeric:
        return NumericStep();
      case GeneralFieldMode::kAlphanumeric:
        return AlphanumericStep();
      case GeneralFieldMode::kIso646:
        return Iso646Step();
    }
  }

 private:
  void NumericStep() {
    if (StartsWithPair(m_rest)) {
      Write(11 * PairDigit(m_rest[0]) + PairDigit(m_rest[1]) + 8, 7, 2);
    } else if (m_rest.size() == 1 && IsDigit(m_rest[0])) {
      m_field.lastDigit = m_rest[0];
      m_rest = {};
    } else {
      // Out of numeric mode the latch has a code of its own.
      Latch(GeneralFieldMode::kAlphanumeric, 0b0000, 4);
    }
  }

  void AlphanumericStep() {
    const char c = m_rest.front();
    if (c == kGs1Separator) {
      return WriteFnc1();
    }
    if (!IsAlphanumeric(c)) {
      return LatchToIso646();
    }
    const std::size_t run = NumericRun(m_rest.substr(0, kNumericRun));
    if (run == kNumericRun || (run >= kNumericRunAtEnd && run == m_rest.size())) {
      return LatchToNumeric();
    }
    if (IsDigit(c)) {
      return WriteDigit();
    }
    if (IsUpper(c)) {
      return Write(0b100000 + Offset(c, 'A'), 6);
    }
    Write(0b111010 + static_cast<std::uint32_t>(kAlphanumericSymbols.find(c)), 6);
  }

  void Iso646Step() {
    const char c = m_rest.front();
    if (c == kGs1Separator) {
      return WriteFnc1();
    }
    const std::string_view window = m_rest.substr(0, kIso646Window);
    if (std::all_of(window.begin(), window.end(), IsAlphanumeric)) {
      if (NumericRun(window) >= kNumericRunInIso646) {
        return LatchToNumeric();
      }
      if (window.size() >= kAlphanumericRunInIso646) {
        return LatchToAlphanumeric();
      }
    }
    if (IsDigit(c)) {
      return WriteDigit();
    }
    if (IsUpper(c)) {
      return Write(0b1000000 + Offset(c, 'A'), 7);
    }
    if (IsLower(c)) {
      return Write(0b1011010 + Offset(c, 'a'), 7);
    }
    Write(0b11101000 + static_cast<std::uint32_t>(kIso646Symbols.find(c)), 8);
  }

  // Digits have the same five bits in both character modes.
  void WriteDigit() { Write(0b00101 + Offset(m_rest.front(), '0'), 5); }

  // In the character modes FNC1 is a latch to numeric mode as well.
  void WriteFnc1() {
    Write(0b01111, 5);
    m_field.mode = GeneralFieldMode::kNumeric;
  }

  void LatchToNumeric() { Latch(GeneralFieldMode::kNumeric, 0b000, 3); }

  // Between the character modes one code latches either way.
  void LatchToAlphanumeric() { Latch(GeneralFieldMode::kAlphanumeric, 0b00100, 5); }
  void LatchToIso646() { Latch(GeneralFieldMode::kIso646, 0b00100, 5); }

  void Latch(GeneralFieldMode mode, std::uint32_t code, std::size_t bitCount) {
    AppendBits(m_field.bits, code, bitCount);
    m_field.mode = mode;
  }

  void Write(std::uint32_t code, std::size_t bitCount, std::size_t characters = 1) {
    AppendBits(m_field.bits, code, bitCount);
    m_rest.remove_prefix(characters);
  }

  std::string_view m_rest;
  GeneralField m_field;
};

}  // namespace

void AppendBits(BitText& bits, std::uint32_t value, std::size_t count) {
  for (std::size_t bit = count; bit-- > 0;) {
    bits += ((value >> bit) & 1U) != 0 ? '1' : '0';
  }
}

bool IsGeneralFieldText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsIso646);
}

GeneralField EncodeGeneralField(std::string_view text, std::size_t limit) {
  GeneralFieldEncoder encoder(text);
  while (!encoder.Done() && encoder.Field().bits.size() <= limit) {
    encoder.Step();
  }
  return encoder.Field();
}

}  // namespace barcode
