#include "datamatrix/error_correction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "datamatrix/symbol_attributes.h"

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Codewords = std::vector<std::uint8_t>;

std::size_t Attribute(SymbolAttribute attribute, int size) {
  return static_cast<std::size_t>(LookUpSymbolAttribute(attribute, size));
}

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
  EncoderMessages messages;
  Codewords codewords = {142};
  PadCodewords(codewords, 1, messages);
  EXPECT_THAT(codewords, ElementsAre(142, 129, 70, 220, 115));
  EXPECT_THAT(messages, IsEmpty());
}

TEST(PadCodewords, FullSymbolHasNone) {
  EncoderMessages messages;
  Codewords codewords = {142, 164, 186};
  PadCodewords(codewords, 0, messages);
  EXPECT_THAT(codewords, ElementsAre(142, 164, 186));
}

TEST(ErrorCorrection, ExampleOfTheStandard) {
  EncoderMessages messages;
  Codewords codewords = {142, 164, 186};
  EXPECT_TRUE(AppendErrorCorrection(codewords, 0, messages));
  EXPECT_THAT(codewords, ElementsAre(142, 164, 186, 114, 25, 5, 88, 102));
  EXPECT_THAT(messages, IsEmpty());
}

TEST(ErrorCorrection, EveryBlockOfEverySizeIsACodeword) {
  for (int size = 0; size < kSymbolSizes; ++size) {
    SCOPED_TRACE(size);
    EncoderMessages messages;
    const std::size_t data = Attribute(SymbolAttribute::kDataCodewords, size);
    const std::size_t blocks = Attribute(SymbolAttribute::kInterleavedBlocks, size);
    const std::size_t checks = Attribute(SymbolAttribute::kBlockErrorCodewords, size);
    Codewords codewords(data);
    for (std::size_t i = 0; i < data; ++i) {
      codewords[i] = static_cast<std::uint8_t>(i * 31 + 7);
    }
    ASSERT_TRUE(AppendErrorCorrection(codewords, size, messages));
    ASSERT_EQ(codewords.size(), data + blocks * checks);
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
  EncoderMessages messages;
  Codewords codewords(1558);
  codewords[8] = 1;  // the ninth block, the only one that is not zero
  ASSERT_TRUE(AppendErrorCorrection(codewords, 23, messages));
  EXPECT_NE(codewords[1558], 0);
  EXPECT_EQ(codewords[1559], 0);
  EXPECT_NE(codewords[1568], 0);
}

TEST(ErrorCorrection, BlockBeyondTheFieldIsTold) {
  EncoderMessages messages;
  const DataMatrixDivider divider(GeneratorPolynomial<kDataMatrixPrimitive>(5, 1));
  Codewords checks(5);
  EXPECT_TRUE(CorrectBlock(divider, Codewords(250, 1), checks, messages));
  EXPECT_THAT(messages, IsEmpty());
  EXPECT_FALSE(CorrectBlock(divider, Codewords(251, 1), checks, messages));
  EXPECT_THAT(messages, ElementsAre("Error generation reed solomon error correction\n"));
}

TEST(ErrorCorrection, WrongNumberOfCodewordsIsTold) {
  EncoderMessages messages;
  Codewords codewords = {142, 164};
  EXPECT_FALSE(AppendErrorCorrection(codewords, 0, messages));
  EXPECT_FALSE(AppendErrorCorrection(codewords, 30, messages));
  EXPECT_THAT(messages, ElementsAre("Error generation error correction code!\n",
                                    "Error generation error correction code!\n"));
}

}  // namespace
}  // namespace barcode
