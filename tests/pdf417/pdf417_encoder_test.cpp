#include "pdf417/pdf417_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <stdexcept>
#include <string>

#include "pdf417/codeword_decoder.h"
#include "pdf417/pdf417_tables.h"
#include "support/mixed_text.h"

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kDefaultProperties =
    "C++ props: Encoding=utf-8, SizeKind=AUTO, CodeColumns=0, CodeRows=0, UseAutoErrorLevel=True, "
    "ErrorLevel(now)=2, AspectRatio=0.5, YHeight=3\n";

// The text of a symbol, read from its modules and checked on the way.
std::string ReadBack(const PDF417Encoder& encoder) {
  const auto symbol = test::ReadPDF417Modules(encoder.Modules());
  if (!symbol) {
    return "unreadable";
  }
  EXPECT_EQ(symbol->codewords, encoder.Codewords());
  EXPECT_EQ(symbol->rows, encoder.Layout().rows);
  EXPECT_EQ(symbol->columns, encoder.Layout().columns);
  EXPECT_EQ(symbol->errorLevel, encoder.Layout().errorLevel);
  const int errorCodewords = 2 << symbol->errorLevel;
  EXPECT_TRUE(test::HasZeroSyndromes(symbol->codewords, errorCodewords));
  const std::span<const int> all = symbol->codewords;
  return test::DecodePDF417Codewords(all.first(all.size() - static_cast<std::size_t>(errorCodewords)))
      .value_or("undecodable");
}

std::string EncodeAndReadBack(std::string_view text, const PDF417Options& options = {}) {
  PDF417Encoder encoder(options);
  encoder.Encode(text);
  return ReadBack(encoder);
}

// What an encode that is refused throws, and what it leaves in the diagnostics.
template <class Error, class Encode>
void ExpectRefused(Encode encode, const std::string& message) {
  PDF417Encoder encoder({});
  try {
    encode(encoder);
    FAIL() << "not refused";
  } catch (const Error& error) {
    EXPECT_EQ(error.what(), message);
  }
  EXPECT_EQ(encoder.Diagnostics(), kDefaultProperties + message + "\n");
  EXPECT_TRUE(encoder.Modules().Empty());
}

TEST(PDF417Encoder, EmptyText) {
  ExpectRefused<std::runtime_error>([](PDF417Encoder& encoder) { encoder.Encode(""); },
                                    "Text cannot be null.");
}

TEST(PDF417Encoder, TextOfMoreThan5420Bytes) {
  // Digits in such number would not be too many codewords for their compaction alone: 1832 of them.
  ExpectRefused<std::out_of_range>([](PDF417Encoder& encoder) { encoder.Encode(std::string(5421, '1')); },
                                   "The text is too big.");
}

TEST(PDF417Encoder, TextOfTooManyCodewords) {
  const auto expectFull = [](const std::string& longest, const std::string& tooLong) {
    EXPECT_EQ(EncodeAndReadBack(longest), longest);
    ExpectRefused<std::out_of_range>([&](PDF417Encoder& encoder) { encoder.Encode(tooLong); },
                                     "The text is too big.");
  };
  // 925 codewords behind the length descriptor: two characters each, or 44 digits in 15, or 6 bytes in 5.
  expectFull(std::string(1850, 'A'), std::string(1851, 'A'));
  expectFull(std::string(61 * 44 + 26, '7'), std::string(61 * 44 + 27, '7'));
  expectFull(std::string(184 * 6 + 4, '\xFF'), std::string(184 * 6 + 5, '\xFF'));
}

TEST(PDF417Encoder, RawCodewords) {
  PDF417Encoder encoder({});
  encoder.EncodeRaw(std::vector{4, 902, 1, 624});
  EXPECT_THAT(std::vector(encoder.Codewords().begin() + 1, encoder.Codewords().begin() + 4),
              ElementsAre(902, 1, 624));
  std::vector<int> full(926, 900);
  full[0] = 926;
  encoder.EncodeRaw(full);
  EXPECT_EQ(encoder.Codewords().size(), 928U);

  for (const std::vector<int>& refused : {std::vector<int>{}, std::vector{3, 1}, std::vector{-1},
                                          [] { return std::vector<int>(927, 927); }()}) {
    ExpectRefused<std::invalid_argument>([&](PDF417Encoder& raw) { raw.EncodeRaw(refused); },
                                         "Invalid codeword size.");
  }
}

TEST(PDF417Encoder, Diagnostics) {
  PDF417Encoder encoder({});
  encoder.Encode("A");
  EXPECT_EQ(encoder.Diagnostics(), std::string(kDefaultProperties) +
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

TEST(PDF417Encoder, PropertyLineShowsTheOptionsAsTheyAreSet) {
  PDF417Options options;
  options.stringEncoding = "Shift_JIS";
  options.codeColumns = 10;
  options.codeRows = 90;
  options.useAutoErrorLevel = false;
  options.errorLevel = -7;
  options.aspectRatio = 1.0 / 3;
  options.yHeight = INT_MAX;
  const auto properties = [&](PDF417SizeKind kind) {
    options.sizeKind = kind;
    PDF417Encoder encoder(options);
    encoder.Encode("A");
    return encoder.Diagnostics();
  };
  EXPECT_THAT(properties(PDF417SizeKind::kAuto),
              StartsWith("C++ props: Encoding=Shift_JIS, SizeKind=AUTO, CodeColumns=10, CodeRows=90, "
                         "UseAutoErrorLevel=False, ErrorLevel(now)=-7, AspectRatio=0.333333333333, "
                         "YHeight=2147483647\n"));
  EXPECT_THAT(properties(PDF417SizeKind::kRows), HasSubstr(", SizeKind=ROWS, "));
  EXPECT_THAT(properties(PDF417SizeKind::kColumns), HasSubstr(", SizeKind=COLUMNS, "));
  EXPECT_THAT(properties(PDF417SizeKind::kColumnsAndRows), HasSubstr(", SizeKind=COLUMNS_AND_ROWS, "));
  EXPECT_THAT(properties(static_cast<PDF417SizeKind>(4)), HasSubstr(", SizeKind=UNKNOWN, "));
}

TEST(PDF417Encoder, PaddingFillsTheDataAndTheDescriptorCountsIt) {
  PDF417Options options;
  options.sizeKind = PDF417SizeKind::kColumns;
  options.codeColumns = 10;
  PDF417Encoder encoder(options);
  encoder.Encode("PDF417 PDF417");
  // 9 data codewords and 8 for level 2 in at least three rows: 30, in which the 16 of level 3 fit.
  EXPECT_EQ(encoder.Layout(), (PDF417Layout{10, 3, 3}));
  EXPECT_EQ(encoder.Codewords().front(), 14);
  EXPECT_THAT(std::vector(encoder.Codewords().begin() + 8, encoder.Codewords().begin() + 14),
              ElementsAre(37, 900, 900, 900, 900, 900));
}

TEST(PDF417Encoder, RowsOfTheSmallestSymbol) {
  PDF417Encoder encoder({});
  encoder.Encode("A");
  const ModuleMatrix& modules = encoder.Modules();
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
    const auto& cluster = kPDF417Clusters[static_cast<std::size_t>(row % 3)];
    EXPECT_EQ(bits(row, 0, 17), 0b11111111010101000U);
    EXPECT_EQ(bits(row, 17, 17), cluster[static_cast<std::size_t>(left)]) << row;
    EXPECT_EQ(bits(row, 34, 17),
              cluster[static_cast<std::size_t>(encoder.Codewords()[static_cast<std::size_t>(row)])]);
    EXPECT_EQ(bits(row, 51, 17), cluster[static_cast<std::size_t>(right)]) << row;
    EXPECT_EQ(bits(row, 68, 18), 0b111111101000101001U);
  }
}

TEST(PDF417Encoder, CodewordsMissingOrUnknownStayBlank) {
  std::string diagnostics;
  const std::vector<int> codewords = {1, 2, 929, -1, 900};
  const ModuleMatrix modules = BuildPDF417Modules(codewords, {2, 3, 0}, diagnostics);
  EXPECT_EQ(diagnostics,
            "[C++] row=0 startCp=0 codeColumns=2 lenCodewords=5\n"
            "[C++] row=1 startCp=2 codeColumns=2 lenCodewords=5\n"
            "[C++] BAD codeword: row=1 col=0 codePtr=2 cw=929 (clusterSize=929 lenCodewords=5)\n"
            "[C++] BAD codeword: row=1 col=1 codePtr=3 cw=-1 (clusterSize=929 lenCodewords=5)\n"
            "[C++] row=2 startCp=4 codeColumns=2 lenCodewords=5\n"
            "[C++] codePtr overflow: row=2 col=1 codePtr=5 lenCodewords=5\n");
  const auto dark = [&](int row, int column) {
    int count = 0;
    for (int x = 0; x < 17; ++x) {
      count += modules.At(34 + 17 * column + x, row) ? 1 : 0;
    }
    return count;
  };
  EXPECT_GT(dark(0, 0), 0);
  EXPECT_EQ(dark(1, 0), 0);
  EXPECT_EQ(dark(1, 1), 0);
  EXPECT_GT(dark(2, 0), 0);
  EXPECT_EQ(dark(2, 1), 0);
  EXPECT_TRUE(modules.At(17 * 4, 2)) << "the right row indicator keeps its place";
}

TEST(PDF417Encoder, NoRowsDrawNothing) {
  std::string diagnostics;
  EXPECT_TRUE(BuildPDF417Modules({}, {}, diagnostics).Empty());
  EXPECT_EQ(diagnostics, "");
}

TEST(PDF417Encoder, EncodersDoNotInfluenceEachOther) {
  PDF417Encoder first({});
  first.Encode("first");
  const ModuleMatrix before = first.Modules();
  PDF417Encoder second({});
  second.Encode("a second and longer text 1234567890123");
  EXPECT_EQ(first.Modules(), before);
  second.Encode("first");
  EXPECT_EQ(second.Modules(), before);
  EXPECT_EQ(second.Diagnostics(), first.Diagnostics());
}

TEST(PDF417Encoder, EveryTextIsReadBackByteForByte) {
  test::RandomText random(7);
  for (int i = 0; i < 40000; ++i) {
    const std::string text = test::MixedText(random, 8);
    PDF417Encoder encoder({});
    encoder.Encode(text);
    const std::span<const int> all = encoder.Codewords();
    ASSERT_EQ(test::DecodePDF417Codewords(all.first(static_cast<std::size_t>(encoder.Layout().DataLength()))),
              text)
        << "text " << i;
  }
}

TEST(PDF417Encoder, EverySymbolIsReadBackFromItsModules) {
  test::RandomText random(8);
  constexpr std::array kKinds = {PDF417SizeKind::kAuto, PDF417SizeKind::kColumns, PDF417SizeKind::kRows,
                                 PDF417SizeKind::kColumnsAndRows};
  constexpr std::array kRatios = {0.001, 0.1, 0.5, 1.0, 4.0, 1000.0};
  for (int i = 0; i < 1500; ++i) {
    PDF417Options options;
    options.sizeKind = kKinds[static_cast<std::size_t>(random.Number(0, 3))];
    options.codeColumns = random.Number(0, 30);
    options.codeRows = random.Number(0, 90);
    options.useAutoErrorLevel = random.Number(0, 1) == 0;
    options.errorLevel = random.Number(0, 8);
    options.aspectRatio = kRatios[static_cast<std::size_t>(random.Number(0, 5))];
    options.yHeight = random.Number(1, 20);
    const std::string text = test::MixedText(random, 8);
    ASSERT_EQ(EncodeAndReadBack(text, options), text) << "text " << i;
  }
}

}  // namespace
}  // namespace barcode
