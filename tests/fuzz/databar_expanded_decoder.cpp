#include "fuzz/databar_expanded_decoder.h"

#include <array>
#include <cstdint>
#include <stdexcept>

namespace barcode::fuzz {
namespace {

constexpr char kFnc1 = '\x1D';

[[noreturn]] void Refuse(const char* reason) {
  throw std::runtime_error(reason);
}

std::string Padded(std::uint32_t number, std::size_t digits) {
  std::string text = std::to_string(number);
  if (text.size() > digits) {
    Refuse("number too long for its field");
  }
  return std::string(digits - text.size(), '0') + text;
}

class Decoder {
 public:
  explicit Decoder(std::string_view bits) : m_bits(bits) {}

  std::string Run() {
    if (m_bits.size() % 12 != 0) {
      Refuse("not whole characters");
    }
    if (Next(1) != 0) {
      Refuse("linked to another symbol");
    }
    Method();
    while (m_out.ends_with(kFnc1)) {
      m_out.pop_back();
    }
    return m_out;
  }

 private:
  enum class Mode : std::uint8_t { kNumeric, kAlphanumeric, kIso646 };

  std::size_t Left() const { return m_bits.size(); }

  std::uint32_t Peek(std::size_t count) const {
    if (count > Left()) {
      Refuse("bits are missing");
    }
    std::uint32_t value = 0;
    for (const char bit : m_bits.substr(0, count)) {
      value = value * 2 + (bit == '1' ? 1 : 0);
    }
    return value;
  }

  std::uint32_t Next(std::size_t count) {
    const std::uint32_t value = Peek(count);
    m_bits.remove_prefix(count);
    return value;
  }

  bool Take(std::string_view prefix) {
    if (!m_bits.starts_with(prefix)) {
      return false;
    }
    m_bits.remove_prefix(prefix.size());
    return true;
  }

  void Method() {
    if (Take("1")) {
      LengthField();
      Gtin(Next(4));
      GeneralPurpose();
    } else if (Take("00")) {
      LengthField();
      GeneralPurpose();
    } else if (Take("0100")) {
      Gtin(9);
      m_out += "3103" + Padded(Next(15), 6);
    } else if (Take("0101")) {
      Gtin(9);
      const std::uint32_t weight = Next(15);
      m_out += weight < 10000 ? "3202" + Padded(weight, 6) : "3203" + Padded(weight - 10000, 6);
    } else if (Take("01100")) {
      LengthField();
      Gtin(9);
      m_out += "392" + Padded(Next(2), 1);
      GeneralPurpose();
    } else if (Take("01101")) {
      LengthField();
      Gtin(9);
      m_out += "393" + Padded(Next(2), 1);
      m_out += Padded(Next(10), 3);
      GeneralPurpose();
    } else if (Take("0111")) {
      WeightAndDate(Next(3));
    } else {
      Refuse("unknown method");
    }
  }

  // Odd number of symbol characters, and more than fourteen of them; the check character counts.
  void LengthField() {
    const std::size_t characters = m_characters + 1;
    if (Next(1) != characters % 2 || Next(1) != (characters > 14 ? 1U : 0U)) {
      Refuse("wrong length field");
    }
  }

  void Gtin(std::uint32_t first) {
    std::string digits = Padded(first, 1);
    for (int i = 0; i < 4; ++i) {
      digits += Padded(Next(10), 3);
    }
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
      sum += static_cast<std::uint32_t>(digits[i] - '0') * (i % 2 == 0 ? 3 : 1);
    }
    m_out += "01" + digits + Padded((10 - sum % 10) % 10, 1);
  }

  void WeightAndDate(std::uint32_t kind) {
    constexpr std::array<const char*, 4> kDateAis = {"11", "13", "15", "17"};
    Gtin(9);
    const std::uint32_t weight = Next(20);
    m_out += (kind % 2 == 0 ? "310" : "320") + Padded(weight / 100000, 1) + Padded(weight % 100000, 6);
    const std::uint32_t date = Next(16);
    if (date != 38400) {
      m_out += kDateAis[kind / 2] + Padded(date / 32 / 12, 2) + Padded(date / 32 % 12 + 1, 2) +
               Padded(date % 32, 2);
    }
    if (Left() != 0) {
      Refuse("bits behind a method of fixed length");
    }
  }

  void GeneralPurpose() {
    while (Left() > 0) {
      const bool goesOn = m_mode == Mode::kNumeric ? Numeric() : Alphanumeric();
      if (!goesOn) {
        return;
      }
    }
  }

  bool Numeric() {
    if (Left() < 4) {
      return PadEnd();
    }
    if (Take("0000")) {
      m_mode = Mode::kAlphanumeric;
      return true;
    }
    if (Left() < 7) {
      const std::uint32_t digit = Next(4);
      if (digit > 10) {
        Refuse("no digit in four bits");
      }
      m_out += Padded(digit - 1, 1);
      return PadEnd();
    }
    const std::uint32_t pair = Next(7) - 8;
    for (const std::uint32_t digit : {pair / 11, pair % 11}) {
      m_out += static_cast<char>(digit == 10 ? kFnc1 : '0' + digit);
    }
    return true;
  }

  // What is left at the end of the bits: zeros, or the beginning of a pad.
  bool PadEnd() {
    if (!std::string_view("0000").starts_with(m_bits) && !std::string_view("00100").starts_with(m_bits)) {
      Refuse("wrong end of the bits");
    }
    return false;
  }

  bool Alphanumeric() {
    if (Left() < 5) {
      return Left() < 3 || Peek(3) == 0 || m_bits.starts_with("001") ? PadEnd()
                                                                     : (Refuse("cut character"), false);
    }
    if (Take("00100")) {
      m_mode = m_mode == Mode::kIso646 ? Mode::kAlphanumeric : Mode::kIso646;
      return true;
    }
    if (Take("000")) {
      m_mode = Mode::kNumeric;
      return true;
    }
    const std::uint32_t five = Peek(5);
    if (five >= 5 && five <= 14) {
      m_out += static_cast<char>('0' + Next(5) - 5);
    } else if (Take("01111")) {
      m_out += kFnc1;
      m_mode = Mode::kNumeric;
    } else if (m_mode == Mode::kAlphanumeric) {
      SixBits();
    } else {
      SevenOrEightBits();
    }
    return true;
  }

  void SixBits() {
    const std::uint32_t value = Next(6);
    if (value >= 32 && value <= 57) {
      m_out += static_cast<char>('A' + value - 32);
    } else if (value >= 58 && value <= 62) {
      m_out += "*,-./"[value - 58];
    } else {
      Refuse("no character in six bits");
    }
  }

  void SevenOrEightBits() {
    const std::uint32_t seven = Peek(7);
    if (seven >= 64 && seven <= 115) {
      m_out += static_cast<char>(seven < 90 ? 'A' + seven - 64 : 'a' + seven - 90);
      m_bits.remove_prefix(7);
      return;
    }
    const std::uint32_t eight = Next(8);
    if (eight < 232 || eight > 252) {
      Refuse("no character in eight bits");
    }
    m_out += "!\"%&'()*+,-./:;<=>?_ "[eight - 232];
  }

  std::string_view m_bits;
  std::size_t m_characters = m_bits.size() / 12;
  Mode m_mode = Mode::kNumeric;
  std::string m_out;
};

}  // namespace

std::string DecodeExpandedBits(std::string_view bits) {
  return Decoder(bits).Run();
}

}  // namespace barcode::fuzz
