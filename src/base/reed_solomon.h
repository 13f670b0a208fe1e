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

// Divides blocks of codewords by one generator polynomial. The products of the generator with all factors are
// looked up in two tables, one for each half of the factor's bits, so that a codeword costs a few 64-bit
// operations.
template <unsigned Primitive>
class ReedSolomonDivider {
 public:
  // The generator as GeneratorPolynomial returns it.
  constexpr explicit ReedSolomonDivider(std::span<const std::uint8_t> generator)
      : m_degree(generator.size()), m_words((m_degree + 7) / 8), m_products(2 * kHalf * m_words) {
    for (unsigned bit = 0; bit < 8; ++bit) {
      const std::size_t half = bit < 4 ? 0 : kHalf;
      const std::size_t power = std::size_t{1} << (bit % 4);
      SetProduct(half + power, static_cast<std::uint8_t>(1U << bit), generator);
      // The products of the factors up to 2 * power follow by addition.
      for (std::size_t i = 1; i < power; ++i) {
        for (std::size_t word = 0; word < m_words; ++word) {
          Product(half + power + i)[word] = Product(half + power)[word] ^ Product(half + i)[word];
        }
      }
    }
  }

  // The error-correction codewords of one block: the remainder of data * x^degree, highest power first. `out`
  // has as many elements as the generator.
  constexpr void Remainder(std::span<const std::uint8_t> data, std::span<std::uint8_t> out) const {
    if (m_degree == 0) {
      return;
    }
    std::vector<std::uint64_t> remainder(m_words + 1);  // the highest power in the lowest byte
    for (const std::uint8_t codeword : data) {
      const auto factor = static_cast<std::size_t>(codeword ^ (remainder[0] & 0xFFU));
      const std::uint64_t* low = Product(factor % kHalf);
      const std::uint64_t* high = Product(kHalf + factor / kHalf);
      for (std::size_t word = 0; word < m_words; ++word) {
        remainder[word] = (remainder[word] >> 8U | remainder[word + 1] << 56U) ^ low[word] ^ high[word];
      }
    }
    for (std::size_t k = 0; k < m_degree; ++k) {
      out[k] = static_cast<std::uint8_t>(remainder[k / 8] >> (8 * (k % 8)));
    }
  }

 private:
  static constexpr std::size_t kHalf = 16;

  constexpr std::uint64_t* Product(std::size_t row) { return m_products.data() + row * m_words; }
  constexpr const std::uint64_t* Product(std::size_t row) const { return m_products.data() + row * m_words; }

  constexpr void SetProduct(std::size_t row, std::uint8_t factor, std::span<const std::uint8_t> generator) {
    for (std::size_t k = 0; k < m_degree; ++k) {
      const std::uint64_t product = GaloisField256<Primitive>::Multiply(generator[k], factor);
      Product(row)[k / 8] |= product << (8 * (k % 8));
    }
  }

  std::size_t m_degree;
  std::size_t m_words;                    // of eight codewords each
  std::vector<std::uint64_t> m_products;  // rows 0..15: factors 0..15, rows 16..31: factors 0, 16, .., 240
};

// The error-correction codewords of a single block.
template <unsigned Primitive>
constexpr void ReedSolomonRemainder(std::span<const std::uint8_t> data,
                                    std::span<const std::uint8_t> generator, std::span<std::uint8_t> out) {
  ReedSolomonDivider<Primitive>(generator).Remainder(data, out);
}

}  // namespace barcode
