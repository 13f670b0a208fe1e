#include "pdf417/error_correction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "pdf417/codeword_decoder.h"

namespace barcode::pdf417 {
namespace {

using ::testing::ElementsAre;

TEST(PDF417ErrorCorrection, CoefficientsOfTheStandard) {
  EXPECT_THAT(Generator(0), ElementsAre(27, 917));
  EXPECT_THAT(Generator(1), ElementsAre(522, 568, 723, 809));
  EXPECT_THAT(Generator(2), ElementsAre(237, 308, 436, 284, 646, 653, 428, 379));
  EXPECT_THAT(Generator(3),
              ElementsAre(274, 562, 232, 755, 599, 524, 801, 132, 295, 116, 442, 428, 295, 42, 176, 65));
}

TEST(PDF417ErrorCorrection, GeneratorHasThePowersOf3AsItsRoots) {
  for (int level = 0; level <= 8; ++level) {
    const auto generator = Generator(level);
    ASSERT_EQ(generator.size(), std::size_t{2} << static_cast<unsigned>(level));
    std::vector<int> highestFirst = {1};
    highestFirst.insert(highestFirst.end(), generator.rbegin(), generator.rend());
    EXPECT_TRUE(test::HasZeroSyndromes(highestFirst, static_cast<int>(generator.size()))) << level;
  }
}

TEST(PDF417ErrorCorrection, ExamplesOfTheStandard) {
  EXPECT_THAT(ErrorCorrection(std::vector{5, 453, 178, 121, 239}, 1), ElementsAre(452, 327, 657, 619));
  EXPECT_THAT(ErrorCorrection(std::vector{3, 900, 900}, 0), ElementsAre(501, 227));
  EXPECT_THAT(ErrorCorrection(std::vector{6, 901, 1, 2, 3, 900}, 2),
              ElementsAre(797, 205, 51, 747, 571, 531, 614, 647));
}

TEST(PDF417ErrorCorrection, DataAndCheckAreAMultipleOfTheGenerator) {
  std::mt19937 random(929);
  for (int level = 0; level <= 8; ++level) {
    std::vector<int> codewords(1 + random() % 400);
    for (int& codeword : codewords) {
      codeword = static_cast<int>(random() % 929);
    }
    const std::vector<int> check = ErrorCorrection(codewords, level);
    codewords.insert(codewords.end(), check.begin(), check.end());
    EXPECT_TRUE(test::HasZeroSyndromes(codewords, static_cast<int>(check.size()))) << level;
    codewords.front() = (codewords.front() + 1) % 929;
    EXPECT_FALSE(test::HasZeroSyndromes(codewords, static_cast<int>(check.size()))) << level;
  }
}

}  // namespace
}  // namespace barcode::pdf417
