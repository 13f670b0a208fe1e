#include "datamatrix/error_correction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace barcode::datamatrix {
namespace {

using ::testing::ElementsAre;

using Codewords = std::vector<std::uint8_t>;

// Product in GF(256) of ISO/IEC 16022, bit by bit.
unsigned Multiply(unsigned a, unsigned b) {
  unsigned product = 0;
  for (; b != 0; b >>= 1U) {
    product ^= (b & 1U) != 0 ? a : 0;
    a = (a << 1U) ^ ((a & 0x80U) != 0 ? 0x12DU : 0);
  }
  return product;
}

// Is the block a codeword of the code: a multiple of all (x - 2^i), i = 1 .. checks?
bool IsCodeword(const Codewords& block, std::size_t checks) {
  unsigned root = 1;
  for (std::size_t i = 0; i < checks; ++i) {
    root = Multiply(root, 2);
    unsigned value = 0;
    for (const std::uint8_t codeword : block) {
      value = Multiply(value, root) ^ codeword;
    }
    if (value != 0) {
      return false;
    }
  }
  return true;
}

TEST(PadCodewords, FirstPadIsPlainFurtherOnesAreRandomised) {
  Codewords codewords = {142};
  PadCodewords(codewords, kSymbolSizes[1]);
  EXPECT_THAT(codewords, ElementsAre(142, 129, 70, 220, 115));
}

TEST(PadCodewords, FullSymbolHasNone) {
  Codewords codewords = {142, 164, 186};
  PadCodewords(codewords, kSymbolSizes[0]);
  EXPECT_THAT(codewords, ElementsAre(142, 164, 186));
}

TEST(ErrorCorrection, ExampleOfTheStandard) {
  EncoderLines lines;
  Codewords codewords = {142, 164, 186};
  EXPECT_TRUE(AppendErrorCorrection(codewords, kSymbolSizes[0], lines));
  EXPECT_THAT(codewords, ElementsAre(142, 164, 186, 114, 25, 5, 88, 102));
  EXPECT_TRUE(lines.Empty());
}

TEST(ErrorCorrection, EveryBlockOfEverySizeIsACodeword) {
  for (const SymbolSize& size : kSymbolSizes) {
    SCOPED_TRACE(size.dataCodewords);
    EncoderLines lines;
    const std::size_t blocks = size.blocks;
    const std::size_t checks = size.blockErrorCodewords;
    Codewords codewords(size.dataCodewords);
    for (std::size_t i = 0; i < size.dataCodewords; ++i) {
      codewords[i] = static_cast<std::uint8_t>(i * 31 + 7);
    }
    ASSERT_TRUE(AppendErrorCorrection(codewords, size, lines));
    ASSERT_EQ(codewords.size(), size.dataCodewords + blocks * checks);
    for (std::size_t block = 0; block < blocks; ++block) {
      Codewords whole;
      for (std::size_t i = block; i < codewords.size(); i += blocks) {
        whole.push_back(codewords[i]);
      }
      EXPECT_TRUE(IsCodeword(whole, checks)) << "block " << block;
    }
  }
}

TEST(ErrorCorrection, LargestSizeEndsItsDataInTheEighthBlock) {
  EncoderLines lines;
  Codewords codewords(1558);
  codewords[8] = 1;  // the ninth block, the only one that is not zero
  ASSERT_TRUE(AppendErrorCorrection(codewords, kSymbolSizes[23], lines));
  EXPECT_NE(codewords[1558], 0);
  EXPECT_EQ(codewords[1559], 0);
  EXPECT_NE(codewords[1568], 0);
}

TEST(ErrorCorrection, BlockBeyondTheFieldIsTold) {
  EncoderLines lines;
  const Divider divider(GeneratorPolynomial<kPrimitive>(5, 1));
  Codewords checks(5);
  EXPECT_TRUE(CorrectBlock(divider, Codewords(250, 1), checks, lines));
  EXPECT_TRUE(lines.Empty());
  EXPECT_FALSE(CorrectBlock(divider, Codewords(251, 1), checks, lines));
  EXPECT_EQ(lines.Text(), "Error generation reed solomon error correction\n");
}

TEST(ErrorCorrection, WrongNumberOfCodewordsIsTold) {
  EncoderLines lines;
  Codewords codewords = {142, 164};
  EXPECT_FALSE(AppendErrorCorrection(codewords, kSymbolSizes[0], lines));
  EXPECT_EQ(lines.Text(), "Error generation error correction code!\n");
}

}  // namespace
}  // namespace barcode::datamatrix
