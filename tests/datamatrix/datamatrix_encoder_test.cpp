#include "datamatrix/datamatrix_encoder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace barcode::datamatrix {
namespace {

constexpr const char* kFailed = "Failed to encode data. Data may be empty or contain invalid characters.";

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

ModuleMatrix Encode(std::string_view text, const Options& options = {}) {
  EncoderLines lines;
  ModuleMatrix symbol = EncodeDataMatrix(text, options, lines);
  EXPECT_TRUE(lines.Empty());
  return symbol;
}

std::string ErrorOf(std::string_view text, const Options& options = {}) {
  EncoderLines lines;
  try {
    EncodeDataMatrix(text, options, lines);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(DataMatrixSymbol, ExampleOfTheStandard) {
  // ISO/IEC 16022 annex: "123456".
  EXPECT_EQ(Rows(Encode("123456")),
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
  const ModuleMatrix rectangle = Encode("123456", {.size = 24});
  EXPECT_EQ(rectangle.Columns(), 18);
  EXPECT_EQ(rectangle.Rows(), 8);
  EXPECT_EQ(Encode("123456", {.size = 23}).Columns(), 144);
}

TEST(DataMatrixSymbol, WhatDoesNotFitFails) {
  EXPECT_EQ(ErrorOf(""), kFailed);
  EXPECT_EQ(ErrorOf(std::string(50, 'A'), {.size = 0}), kFailed);
  EXPECT_EQ(ErrorOf(std::string(50, 'A'), {.size = 29}), kFailed);
  EXPECT_EQ(ErrorOf(std::string(1559, 'A')), kFailed);
  EXPECT_EQ(ErrorOf("a", {.scheme = Scheme::kX12}), kFailed);
}

TEST(DataMatrixSymbol, LinesAreThereWhenTheTextIsRefused) {
  EncoderLines lines;
  EXPECT_THROW(EncodeDataMatrix(std::string(8193, '1'), {}, lines), std::runtime_error);
  EXPECT_EQ(lines.Text(), "Encoding failed, data length out of range!\n");
}

}  // namespace
}  // namespace barcode::datamatrix
