#include "pdf417/encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <stdexcept>
#include <string>

#include "pdf417/codeword_decoder.h"
#include "pdf417/tables.h"
#include "support/mixed_text.h"

namespace barcode::pdf417 {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

Symbol EncodeSilently(std::string_view text, const Options& options = {}) {
  EncoderLines lines;
  return Encode(text, options, lines);
}

// The text of a symbol, read from its modules and checked on the way.
std::string ReadBack(const Symbol& symbol) {
  const auto read = test::ReadPDF417Modules(symbol.modules);
  if (!read) {
    return "unreadable";
  }
  EXPECT_EQ(read->codewords, symbol.codewords);
  EXPECT_EQ(read->rows, symbol.layout.rows);
  EXPECT_EQ(read->columns, symbol.layout.columns);
  EXPECT_EQ(read->errorLevel, symbol.layout.errorLevel);
  const int errorCodewords = 2 << read->errorLevel;
  EXPECT_TRUE(test::HasZeroSyndromes(read->codewords, errorCodewords));
  const std::span<const int> all = read->codewords;
  return test::DecodePDF417Codewords(all.first(all.size() - static_cast<std::size_t>(errorCodewords)))
      .value_or("undecodable");
}

// What an encode that is refused throws, and what it says before.
template <class Error>
void ExpectRefused(std::string_view text, const std::string& message) {
  EncoderLines lines;
  try {
    (void)Encode(text, {}, lines);
    FAIL() << "not refused";
  } catch (const Error& error) {
    EXPECT_EQ(error.what(), message);
  }
  EXPECT_EQ(lines.Text(), message + "\n");
}

TEST(PDF417Encoder, EmptyText) {
  ExpectRefused<std::runtime_error>("", "Text cannot be null.");
}

TEST(PDF417Encoder, TextOfMoreThan5420Bytes) {
  // Digits in such number would not be too many codewords for their compaction alone: 1832 of them.
  ExpectRefused<std::out_of_range>(std::string(5421, '1'), "The text is too big.");
}

TEST(PDF417Encoder, TextOfTooManyCodewords) {
  const auto expectFull = [](const std::string& longest, const std::string& tooLong) {
    EXPECT_EQ(ReadBack(EncodeSilently(longest)), longest);
    ExpectRefused<std::out_of_range>(tooLong, "The text is too big.");
  };
  // 925 codewords behind the length descriptor: two characters each, or 44 digits in 15, or 6 bytes in 5.
  expectFull(std::string(1850, 'A'), std::string(1851, 'A'));
  expectFull(std::string(61 * 44 + 26, '7'), std::string(61 * 44 + 27, '7'));
  expectFull(std::string(184 * 6 + 4, '\xFF'), std::string(184 * 6 + 5, '\xFF'));
}

TEST(PDF417Encoder, Lines) {
  EncoderLines lines;
  (void)Encode("A", {}, lines);
  EXPECT_EQ(lines.Text(),
            "C++ codewords len=10: [2,29,478,509,903,637,74,490,760,21]\n"
            "[C++] row=0 startCp=0 codeColumns=1 lenCodewords=10\n"
            "[C++] row=1 startCp=1 codeColumns=1 lenCodewords=10\n"
            "[C++] row=2 startCp=2 codeColumns=1 lenCodewords=10\n"
            "[C++] row=3 startCp=3 codeColumns=1 lenCodewords=10\n"
            "[C++] row=4 startCp=4 codeColumns=1 lenCodewords=10\n"
            "[C++] row=5 startCp=5 codeColumns=1 lenCodewords=10\n"
            "[C++] row=6 startCp=6 codeColumns=1 lenCodewords=10\n"
            "[C++] row=7 startCp=7 codeColumns=1 lenCodewords=10\n"
            "[C++] row=8 startCp=8 codeColumns=1 lenCodewords=10\n"
            "[C++] row=9 startCp=9 codeColumns=1 lenCodewords=10\n");
}

TEST(PDF417Encoder, LinesFollowWhatWasSaidBefore) {
  EncoderLines lines;
  lines.Add("before");
  (void)Encode("A", {}, lines);
  EXPECT_THAT(lines.Text(), StartsWith("before\nC++ codewords len=10: ["));
}

TEST(PDF417Encoder, PropertyLineShowsTheOptionsAsTheyAreSet) {
  const auto properties = [](const Options& options, std::string_view stringEncoding) {
    EncoderLines lines;
    AddProperties(options, stringEncoding, lines);
    return lines.Text();
  };
  EXPECT_EQ(properties({}, "utf-8"),
            "C++ props: Encoding=utf-8, SizeKind=AUTO, CodeColumns=0, CodeRows=0, UseAutoErrorLevel=True, "
            "ErrorLevel(now)=2, AspectRatio=0.5, YHeight=3\n");
  EXPECT_EQ(
      properties(
          {.codeColumns = 10, .codeRows = 90, .errorLevel = -7, .aspectRatio = 1.0 / 3, .yHeight = INT_MAX},
          "Shift_JIS"),
      "C++ props: Encoding=Shift_JIS, SizeKind=AUTO, CodeColumns=10, CodeRows=90, "
      "UseAutoErrorLevel=True, ErrorLevel(now)=-7, AspectRatio=0.333333333333, YHeight=2147483647\n");
}

TEST(PDF417Encoder, PaddingFillsTheDataAndTheDescriptorCountsIt) {
  // 9 data codewords and 8 for level 2; at this ratio in ten columns and at least three rows: 30, in which
  // the 16 of level 3 fit.
  const Symbol symbol = EncodeSilently("PDF417 PDF417", {.aspectRatio = 0.038});
  EXPECT_EQ(symbol.layout, (Layout{10, 3, 3}));
  EXPECT_EQ(symbol.codewords.front(), 14);
  EXPECT_THAT(std::vector(symbol.codewords.begin() + 8, symbol.codewords.begin() + 14),
              ElementsAre(37, 900, 900, 900, 900, 900));
}

TEST(PDF417Encoder, RowsOfTheSmallestSymbol) {
  const Symbol symbol = EncodeSilently("A");
  const ModuleMatrix& modules = symbol.modules;
  ASSERT_EQ(modules.Columns(), 17 * 1 + 69);
  ASSERT_EQ(modules.Rows(), 10);
  const auto bits = [&](int row, int x, int length) {
    std::uint32_t value = 0;
    for (int i = 0; i < length; ++i) {
      value = value * 2 + (modules.At(x + i, row) ? 1 : 0);
    }
    return value;
  };
  // Ten rows, one column, level 2. Row 5 is the second of its three and of cluster 6, row 4 of cluster 3.
  struct Row {
    int row, left, right;
  };
  for (const auto& [row, left, right] : {Row{0, 3, 0}, Row{1, 6, 3}, Row{2, 0, 6}, Row{3, 33, 30},
                                         Row{4, 36, 33}, Row{5, 30, 36}, Row{9, 93, 90}}) {
    const auto& cluster = kClusters[static_cast<std::size_t>(row % 3)];
    EXPECT_EQ(bits(row, 0, 17), 0b11111111010101000U);
    EXPECT_EQ(bits(row, 17, 17), cluster[static_cast<std::size_t>(left)]) << row;
    EXPECT_EQ(bits(row, 34, 17),
              cluster[static_cast<std::size_t>(symbol.codewords[static_cast<std::size_t>(row)])]);
    EXPECT_EQ(bits(row, 51, 17), cluster[static_cast<std::size_t>(right)]) << row;
    EXPECT_EQ(bits(row, 68, 18), 0b111111101000101001U);
  }
}

TEST(PDF417Encoder, EveryTextIsReadBackByteForByte) {
  test::RandomText random(7);
  for (int i = 0; i < 40000; ++i) {
    const std::string text = test::MixedText(random, 8);
    const Symbol symbol = EncodeSilently(text);
    const std::span<const int> all = symbol.codewords;
    ASSERT_EQ(test::DecodePDF417Codewords(all.first(static_cast<std::size_t>(symbol.layout.DataLength()))),
              text)
        << "text " << i;
  }
}

TEST(PDF417Encoder, EverySymbolIsReadBackFromItsModules) {
  test::RandomText random(8);
  constexpr std::array kRatios = {0.001, 0.01, 0.03, 0.1, 0.2, 0.5, 1.0, 4.0, 1000.0};
  for (int i = 0; i < 1500; ++i) {
    Options options;
    options.aspectRatio = kRatios[static_cast<std::size_t>(random.Number(0, kRatios.size() - 1))];
    options.yHeight = random.Number(1, 20);
    const std::string text = test::MixedText(random, 8);
    ASSERT_EQ(ReadBack(EncodeSilently(text, options)), text) << "text " << i;
  }
}

}  // namespace
}  // namespace barcode::pdf417
