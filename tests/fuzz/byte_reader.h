#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace barcode::fuzz {

// Values taken from the bytes of an input, front to back; zeros when they have run out.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

  bool Empty() const { return m_bytes.empty(); }

  std::uint8_t Byte() {
    if (m_bytes.empty()) {
      return 0;
    }
    const std::uint8_t byte = m_bytes.front();
    m_bytes = m_bytes.subspan(1);
    return byte;
  }

  // A number from 0 to bound - 1; bound at most 256.
  std::size_t Below(std::size_t bound) { return Byte() % bound; }

  // False when the bytes have run out.
  bool OneIn(std::size_t bound) { return Below(bound) == bound - 1; }

  bool Flag() { return (Byte() & 1U) != 0; }

  template <class Value, std::size_t Size>
  const Value& Of(const std::array<Value, Size>& values) {
    return values[Below(Size)];
  }

  // Any number of the type.
  template <class Number>
  Number Any() {
    std::array<std::uint8_t, sizeof(Number)> raw{};
    std::ranges::generate(raw, [this] { return Byte(); });
    return std::bit_cast<Number>(raw);
  }

  // Up to `longest` bytes; their number stands in front.
  std::string Bytes(std::size_t longest) {
    const std::size_t size = std::min({std::size_t{Byte()}, longest, m_bytes.size()});
    return Take(size);
  }

  // All that is left.
  std::string Rest() { return Take(m_bytes.size()); }

 private:
  std::string Take(std::size_t size) {
    std::string text(size, '\0');
    if (size != 0) {
      std::memcpy(text.data(), m_bytes.data(), size);
    }
    m_bytes = m_bytes.subspan(size);
    return text;
  }

  std::span<const std::uint8_t> m_bytes;
};

// Every byte of the text as one of the alphabet.
inline std::string InAlphabet(std::string text, std::string_view alphabet) {
  for (char& character : text) {
    character = alphabet[static_cast<unsigned char>(character) % alphabet.size()];
  }
  return text;
}

}  // namespace barcode::fuzz
