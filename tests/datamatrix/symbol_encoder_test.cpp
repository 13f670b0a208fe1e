#include "datamatrix/symbol_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "datamatrix/encodation.h"
#include "datamatrix/symbol_attributes.h"

namespace barcode {
namespace {

constexpr const char* kFailed = "Failed to encode data. Data may be empty or contain invalid characters.";
constexpr int kAscii = 0;

std::string Rows(const ModuleMatrix& symbol) {
  std::string rows;
  for (int y = 0; y < symbol.Rows(); ++y) {
    for (int x = 0; x < symbol.Columns(); ++x) {
      rows.push_back(symbol.At(x, y) ? '#' : '.');
    }
    rows.push_back('\n');
  }
  return rows;
}

ModuleMatrix Encode(std::string_view text, int scheme, int size) {
  EncoderMessages messages;
  ModuleMatrix symbol = EncodeDataMatrix(text, scheme, size, messages);
  EXPECT_TRUE(messages.empty());
  return symbol;
}

std::string ErrorOf(std::string_view text, int scheme, int size) {
  EncoderMessages messages;
  try {
    EncodeDataMatrix(text, scheme, size, messages);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(DataMatrixSymbol, ExampleOfTheStandard) {
  // ISO/IEC 16022 annex: "123456".
  EXPECT_EQ(Rows(Encode("123456", kAscii, kAutomaticSquareSize)),
            "#.#.#.#.#.\n"
            "##..#.##.#\n"
            "##.....#..\n"
            "##...###.#\n"
            "##....#...\n"
            "#.....####\n"
            "###.##....\n"
            "####.##..#\n"
            "#..###.#..\n"
            "##########\n");
}

TEST(DataMatrixSymbol, SizeOption) {
  const ModuleMatrix rectangle = Encode("123456", kAscii, 24);
  EXPECT_EQ(rectangle.Columns(), 18);
  EXPECT_EQ(rectangle.Rows(), 8);
  const ModuleMatrix automatic = Encode("123456", kAscii, kAutomaticRectangularSize);
  EXPECT_EQ(automatic, rectangle);
  EXPECT_EQ(Encode("123456", kAscii, 23).Columns(), 144);
}

TEST(DataMatrixSymbol, WhatDoesNotFitFails) {
  EXPECT_EQ(ErrorOf("", kAscii, kAutomaticSquareSize), kFailed);
  EXPECT_EQ(ErrorOf("123456", kNoEncodation, kAutomaticSquareSize), kFailed);
  EXPECT_EQ(ErrorOf(std::string(50, 'A'), kAscii, 0), kFailed);
  EXPECT_EQ(ErrorOf(std::string(50, 'A'), kAscii, 30), kFailed);
  EXPECT_EQ(ErrorOf(std::string(1559, 'A'), kAscii, kAutomaticSquareSize), kFailed);
  EXPECT_EQ(ErrorOf(std::string(50, 'A'), kAscii, kAutomaticRectangularSize), kFailed);
  EXPECT_EQ(ErrorOf("a", static_cast<int>(EncodationScheme::kX12), kAutomaticSquareSize), kFailed);
}

TEST(CheckSelection, MessageForASelectionThatIsNoSize) {
  for (const int selected : {kAutomaticSquareSize, kAutomaticRectangularSize}) {
    try {
      CheckSelection(selected, 12, 0);
      FAIL();
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(),
                   "Data too long for specified symbol size. Data requires 12 codewords, but symbol only "
                   "supports 3 codewords. Use 'AUTO' or reduce data length.");
    }
  }
  EXPECT_NO_THROW(CheckSelection(0, 3, 0));
  EXPECT_THROW(CheckSelection(kNoSize, 3, 0), std::runtime_error);
  EXPECT_THROW(CheckSelection(0, 0, 0), std::runtime_error);
}

}  // namespace
}  // namespace barcode
