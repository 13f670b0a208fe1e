#include "base/reed_solomon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace barcode {
namespace {

using ::testing::ElementsAre;

constexpr unsigned kQrField = 0x11D;
constexpr unsigned kDataMatrixField = 0x12D;

TEST(ReedSolomon, QrVersion1MExampleOfTheStandard) {
  // ISO/IEC 18004: "01234567", version 1-M, 16 data and 10 error-correction codewords.
  const std::vector<std::uint8_t> data = {16,  32, 12,  86, 97,  128, 236, 17,
                                          236, 17, 236, 17, 236, 17,  236, 17};
  const auto generator = GeneratorPolynomial<kQrField>(10, 0);
  std::vector<std::uint8_t> check(10);
  ReedSolomonRemainder<kQrField>(data, generator, check);
  EXPECT_THAT(check, ElementsAre(165, 36, 212, 193, 237, 54, 199, 135, 44, 85));
}

TEST(ReedSolomon, DataMatrixExampleOfTheStandard) {
  // ISO/IEC 16022: "123456" in 10x10.
  const std::vector<std::uint8_t> data = {142, 164, 186};
  const auto generator = GeneratorPolynomial<kDataMatrixField>(5, 1);
  std::vector<std::uint8_t> check(5);
  ReedSolomonRemainder<kDataMatrixField>(data, generator, check);
  EXPECT_THAT(check, ElementsAre(114, 25, 5, 88, 102));
}

TEST(ReedSolomon, GeneratorOfDegree7) {
  // ISO/IEC 18004 annex: exponents 87, 229, 146, 149, 238, 102, 21.
  const auto& antilog = GaloisField256<kQrField>::kTables.antilog;
  EXPECT_THAT(GeneratorPolynomial<kQrField>(7, 0),
              ElementsAre(antilog[87], antilog[229], antilog[146], antilog[149], antilog[238], antilog[102],
                          antilog[21]));
}

TEST(ReedSolomon, EveryDegreeLeavesTheRemainderOfTheLongDivision) {
  std::mt19937 random(1);
  for (std::size_t degree = 1; degree <= 68; ++degree) {
    const auto generator = GeneratorPolynomial<kQrField>(degree, 0);
    std::vector<std::uint8_t> data(1 + random() % 160);
    std::generate(data.begin(), data.end(), [&random] { return static_cast<std::uint8_t>(random()); });
    std::vector<std::uint8_t> check(degree);
    ReedSolomonRemainder<kQrField>(data, generator, check);

    std::vector<std::uint8_t> division = data;
    division.resize(data.size() + degree);
    for (std::size_t i = 0; i < data.size(); ++i) {
      for (std::size_t k = 0; k < degree; ++k) {
        division[i + 1 + k] ^= GaloisField256<kQrField>::Multiply(generator[k], division[i]);
      }
    }
    division.erase(division.begin(), division.begin() + static_cast<std::ptrdiff_t>(data.size()));
    EXPECT_EQ(check, division) << "degree " << degree;
  }
}

TEST(ReedSolomon, DegreeZeroLeavesNothing) {
  const std::vector<std::uint8_t> data = {1, 2};
  std::vector<std::uint8_t> check;
  ReedSolomonRemainder<kQrField>(data, GeneratorPolynomial<kQrField>(0, 0), check);
  EXPECT_TRUE(check.empty());
}

TEST(ReedSolomon, LogAndAntilogAreInverse) {
  const auto& tables = GaloisField256<kDataMatrixField>::kTables;
  for (unsigned value = 1; value < 256; ++value) {
    EXPECT_EQ(tables.antilog[tables.log[value]], value);
  }
}

TEST(ReedSolomon, ProductWithZeroIsZero) {
  EXPECT_EQ(GaloisField256<kQrField>::Multiply(0, 200), 0);
  EXPECT_EQ(GaloisField256<kQrField>::Multiply(200, 0), 0);
}

}  // namespace
}  // namespace barcode
