#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace barcode::test {

// Reproducible random texts.
class RandomText {
 public:
  explicit RandomText(std::uint64_t seed) : m_engine(seed) {}

  // A whole number from low to high, both included.
  int Number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }

  // Between minLength and maxLength characters of the alphabet.
  std::string Of(std::string_view alphabet, int minLength, int maxLength) {
    std::string text(static_cast<std::size_t>(Number(minLength, maxLength)), '\0');
    for (char& character : text) {
      character = alphabet[static_cast<std::size_t>(Number(0, static_cast<int>(alphabet.size()) - 1))];
    }
    return text;
  }

  std::string Digits(int minLength, int maxLength) { return Of("0123456789", minLength, maxLength); }

  // Bytes from low to high.
  std::string Bytes(int minLength, int maxLength, int low = 0, int high = 255) {
    std::string text(static_cast<std::size_t>(Number(minLength, maxLength)), '\0');
    for (char& character : text) {
      character = static_cast<char>(Number(low, high));
    }
    return text;
  }

 private:
  std::mt19937_64 m_engine;
};

}  // namespace barcode::test
