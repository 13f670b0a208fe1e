#include "pdf417/error_correction.h"

#include <array>
#include <cstddef>

#include "pdf417/limits.h"

namespace barcode::pdf417 {
namespace {

constexpr unsigned kPrime = 929;
constexpr unsigned kAlpha = 3;
constexpr std::size_t kLevels = kMaxErrorLevel + 1;

struct Logarithms {
  std::array<unsigned, kPrime - 1> power{};  // of alpha
  std::array<unsigned, kPrime> log{};        // log[0] is unused
};

constexpr Logarithms MakeLogarithms() {
  Logarithms tables;
  unsigned value = 1;
  for (unsigned i = 0; i < kPrime - 1; ++i) {
    tables.power[i] = value;
    tables.log[value] = i;
    value = value * kAlpha % kPrime;
  }
  return tables;
}

constexpr Logarithms kLogarithms = MakeLogarithms();

constexpr unsigned Power(unsigned exponent) {
  return kLogarithms.power[exponent % (kPrime - 1)];
}

// Quotient of two elements other than 0.
constexpr unsigned Divide(unsigned a, unsigned b) {
  return Power(kLogarithms.log[a] + (kPrime - 1) - kLogarithms.log[b]);
}

constexpr std::size_t Degree(std::size_t level) {
  return static_cast<std::size_t>(ErrorCodewords(static_cast<int>(level)));
}

// The levels lie one behind the other: 2, 4, 8, ... coefficients.
constexpr std::size_t Offset(std::size_t level) {
  return Degree(level) - 2;
}

using Coefficients = std::array<unsigned, Offset(kLevels)>;

// The roots are successive powers of alpha, so that each coefficient follows from the one of the next higher
// power (the q-binomial theorem): c[n-j] = -c[n-j+1] * alpha^j * (alpha^(n-j+1) - 1) / (alpha^j - 1).
constexpr Coefficients MakeCoefficients() {
  Coefficients coefficients{};
  for (std::size_t level = 0; level < kLevels; ++level) {
    const auto degree = static_cast<unsigned>(Degree(level));
    unsigned coefficient = 1;
    for (unsigned j = 1; j <= degree; ++j) {
      const unsigned ratio = Divide(Power(degree - j + 1) - 1, Power(j) - 1);
      coefficient = coefficient * Power(j) % kPrime * ratio % kPrime;
      coefficient = kPrime - coefficient;
      coefficients[Offset(level) + degree - j] = coefficient;
    }
  }
  return coefficients;
}

constexpr Coefficients kCoefficients = MakeCoefficients();
static_assert(kCoefficients[0] == 27 && kCoefficients[1] == 917);
static_assert(kCoefficients[2] == 522 && kCoefficients[3] == 568 && kCoefficients[4] == 723 &&
              kCoefficients[5] == 809);

}  // namespace

std::span<const unsigned> Generator(int level) {
  const auto index = static_cast<std::size_t>(level);
  return std::span(kCoefficients).subspan(Offset(index), Degree(index));
}

std::vector<int> ErrorCorrection(std::span<const int> data, int level) {
  const std::span<const unsigned> generator = Generator(level);
  const std::size_t degree = generator.size();
  // The remainder, lowest power first, with a zero below it to shift in.
  std::vector<unsigned> remainder(degree + 1);
  for (const int codeword : data) {
    const unsigned factor = kPrime - (static_cast<unsigned>(codeword) + remainder[degree]) % kPrime;
    for (std::size_t k = degree; k > 0; --k) {
      remainder[k] = (remainder[k - 1] + factor * generator[k - 1]) % kPrime;
    }
  }
  std::vector<int> codewords(degree);
  for (std::size_t k = 0; k < degree; ++k) {
    codewords[k] = static_cast<int>((kPrime - remainder[degree - k]) % kPrime);
  }
  return codewords;
}

}  // namespace barcode::pdf417
