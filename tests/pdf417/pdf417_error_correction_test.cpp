#include "pdf417/pdf417_error_correction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "pdf417/codeword_decoder.h"

namespace barcode {
namespace {

using ::testing::ElementsAre;

TEST(PDF417ErrorCorrection, CoefficientsOfTheStandard) {
  EXPECT_THAT(PDF417Generator(0), ElementsAre(27, 917));
  EXPECT_THAT(PDF417Generator(1), ElementsAre(522, 568, 723, 809));
  EXPECT_THAT(PDF417Generator(2), ElementsAre(237, 308, 436, 284, 646, 653, 428, 379));
  EXPECT_THAT(PDF417Generator(3),
              ElementsAre(274, 562, 232, 755, 599, 524, 801, 132, 295, 116, 442, 428, 295, 42, 176, 65));
}

TEST(PDF417ErrorCorrection, GeneratorHasThePowersOf3AsItsRoots) {
  for (int level = 0; level <= 8; ++level) {
    const auto generator = PDF417Generator(level);
    ASSERT_EQ(generator.size(), std::size_t{2} << static_cast<unsigned>(level));
    std::vector<int> highestFirst = {1};
    highestFirst.insert(highestFirst.end(), generator.rbegin(), generator.rend());
    EXPECT_TRUE(test::HasZeroSyndromes(highestFirst, static_cast<int>(generator.size()))) << level;
  }
}

TEST(PDF417ErrorCorrection, ExamplesOfTheStandard) {
  EXPECT_THAT(PDF417ErrorCorrection(std::vector{5, 453, 178, 121, 239}, 1), ElementsAre(452, 327, 657, 619));
  EXPECT_THAT(PDF417ErrorCorrection(std::vector{3, 900, 900}, 0), ElementsAre(501, 227));
  EXPECT_THAT(PDF417ErrorCorrection(std::vector{6, 901, 1, 2, 3, 900}, 2),
              ElementsAre(797, 205, 51, 747, 571, 531, 614, 647));
}

TEST(PDF417ErrorCorrection, DataAndCheckAreAMultipleOfTheGenerator) {
  std::mt19937 random(929);
  for (int level = 0; level <= 8; ++level) {
    std::vector<int> codewords(1 + random() % 400);
    for (int& codeword : codewords) {
      codeword = static_cast<int>(random() % 929);
    }
    const std::vector<int> check = PDF417ErrorCorrection(codewords, level);
    codewords.insert(codewords.end(), check.begin(), check.end());
    EXPECT_TRUE(test::HasZeroSyndromes(codewords, static_cast<int>(check.size()))) << level;
    codewords.front() = (codewords.front() + 1) % 929;
    EXPECT_FALSE(test::HasZeroSyndromes(codewords, static_cast<int>(check.size()))) << level;
  }
}

TEST(PDF417ErrorCorrection, CodewordsOutsideTheFieldAreTakenModulo929) {
  EXPECT_EQ(PDF417ErrorCorrection(std::vector{2, -1}, 0), PDF417ErrorCorrection(std::vector{2, 928}, 0));
  EXPECT_EQ(PDF417ErrorCorrection(std::vector{2, 929 * 5 + 7}, 0),
            PDF417ErrorCorrection(std::vector{2, 7}, 0));
}

}  // namespace
}  // namespace barcode
