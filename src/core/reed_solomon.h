#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace barcode {

// GF(256) over a primitive polynomial of degree 8 with the generator alpha = 2, as log and antilog tables.
// The antilog table is doubled so that a sum of two logs needs no reduction.
template <unsigned Primitive>
struct GaloisField256 {
  struct Tables {
    std::array<std::uint8_t, 510> antilog{};
    std::array<std::uint8_t, 256> log{};
  };

  static constexpr Tables Make() {
    Tables tables;
    unsigned value = 1;
    for (std::size_t power = 0; power < 255; ++power) {
      tables.antilog[power] = static_cast<std::uint8_t>(value);
      tables.antilog[power + 255] = static_cast<std::uint8_t>(value);
      tables.log[value] = static_cast<std::uint8_t>(power);
      value <<= 1U;
      if (value > 255) {
        value ^= Primitive;
      }
    }
    return tables;
  }

  static constexpr Tables kTables = Make();

  static constexpr std::uint8_t Multiply(std::uint8_t a, std::uint8_t b) {
    if (a == 0 || b == 0) {
      return 0;
    }
    return kTables.antilog[static_cast<std::size_t>(kTables.log[a]) + kTables.log[b]];
  }
};

// Generator polynomial prod (x - alpha^(firstRoot + i)), i = 0 .. degree - 1. coefficients[k] belongs to
// x^(degree - 1 - k); the leading 1 is left out.
template <unsigned Primitive>
constexpr std::vector<std::uint8_t> GeneratorPolynomial(std::size_t degree, std::size_t firstRoot) {
  using Field = GaloisField256<Primitive>;
  std::vector<std::uint8_t> coefficients(degree);
  if (degree == 0) {
    return coefficients;
  }
  coefficients.back() = 1;
  for (std::size_t i = 0; i < degree; ++i) {
    const std::uint8_t root = Field::kTables.antilog[(firstRoot + i) % 255];
    for (std::size_t k = 0; k < degree; ++k) {
      coefficients[k] = Field::Multiply(coefficients[k], root);
      if (k + 1 < degree) {
        coefficients[k] ^= coefficients[k + 1];
      }
    }
  }
  return coefficients;
}

// The error-correction codewords of one block: the remainder of data * x^degree divided by the generator,
// highest power first. `out` has generator.size() elements.
template <unsigned Primitive>
constexpr void ReedSolomonRemainder(std::span<const std::uint8_t> data,
                                    std::span<const std::uint8_t> generator, std::span<std::uint8_t> out) {
  using Field = GaloisField256<Primitive>;
  const std::size_t degree = generator.size();
  for (std::uint8_t& codeword : out) {
    codeword = 0;
  }
  if (degree == 0) {
    return;
  }
  for (const std::uint8_t codeword : data) {
    const std::uint8_t factor = codeword ^ out[0];
    for (std::size_t k = 0; k + 1 < degree; ++k) {
      out[k] = out[k + 1] ^ Field::Multiply(generator[k], factor);
    }
    out[degree - 1] = Field::Multiply(generator[degree - 1], factor);
  }
}

}  // namespace barcode
