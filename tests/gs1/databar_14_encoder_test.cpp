#include "gs1/databar_14_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "support/pattern.h"

namespace barcode::test {
namespace {

using testing::ElementsAre;

struct Vector14 {
  std::string input;
  std::string oneRow;
  std::vector<std::string> stacked;
  std::vector<std::string> stackedOmnidirectional;
};

// Complete symbols. In the fourth and fifth the rows differ where the chain of the stacked separator begins;
// the fourth has the lower finder 3, whose dark separator module stands one to the right.
const std::vector<Vector14> kVectors = {
    {"2001234567890",
     "1111331151274111221215125121112112833212123211",
     {"01010001110100000100111111100001010011011011111010",
      "00001110101011011010010101011010101001001001010000",
      "10110000010010100101100000000111000110110110001101"},
     {"01010001110100000100111111100001010011011011111010",
      "00001110001011111010000000010100101100100100000000",
      "00000101010101010101010101010101010101010101010000",
      "00001111101101011010010101010000111001001001110000",
      "10110000010010100101100000000111000110110110001101"}},
    {"0001234567890",
     "1111112181274113211214132111124117332224131111",
     {"01010100100000000100111111100001011100101101111010",
      "00001010101011111010000000111010100011010010000000",
      "10111001010110000101111111000111001100111101110101"},
     {"01010100100000000100111111100001011100101101111010",
      "00001011011111111010000000010100100011010010000000",
      "00000101010101010101010101010101010101010101010000",
      "00000110101001111010000000101000110011000010000000",
      "10111001010110000101111111000111001100111101110101"}},
    {"0082193510642",
     "1111215141274112123311214112231117517111311111",
     {"01010010000010000100111111100001011011000111010010",
      "00001101101101011010000000111110101101101010100000",
      "10100001011001110101111111000001000000010100010101"},
     {"01010010000010000100111111100001011011000111010010",
      "00001101111101111010000000010100100100111000100000",
      "00000101010101010101010101010101010101010101010000",
      "00001110100110001010000000101010111111101011100000",
      "10100001011001110101111111000001000000010100010101"}},
    {"0000000000000",
     "1111112181382117211111111111127119131812111111",
     {"01010100100000000100011111111001011111110010101010",
      "00001011011111111010100000001010100000001101010000",
      "10101010110000000101111111110111011111111011010101"},
     {"01010100100000000100011111111001011111110010101010",
      "00001011011111111010100000000100100000001101010000",
      "00000101010101010101010101010101010101010101010000",
      "00000101001111111010000000000100100000000100100000",
      "10101010110000000101111111110111011111111011010101"}},
    {"9999999999999",
     "1121131341382114121123113611111117513511111311",
     {"01001011101110000100011111111001011110110100111010",
      "00001100010010101010100000101110101001001010100000",
      "10100011111101010101111111000001000111110101011101"},
     {"01001011101110000100011111111001011110110100111010",
      "00000100010001111010100000000100100001001011000000",
      "00000101010101010101010101010101010101010101010000",
      "00001100000010101010000000101010111000001010100000",
      "10100011111101010101111111000001000111110101011101"}},
    {"1234567890123",
     "1113112161238111411511121132222119311212333111",
     {"01011101001000000100111000000001010000101111101010",
      "00001010100110111010000101011110101101010000110000",
      "10110100011001100101111111110001011011000111000101"},
     {"01011101001000000100111000000001010000101111101010",
      "00000010110111111010000101010100101111010000010000",
      "00000101010101010101010101010101010101010101010000",
      "00001011100110011010000000001010100100111000110000",
      "10110100011001100101111111110001011011000111000101"}},
    {"0003456789012",
     "1111112181256111232222121313113112834112213211",
     {"01010100100000000100111110000001010011100110011010",
      "00001010101010111010010101111010101101011001100000",
      "10110111011101000101100000000111000010110010001101"},
     {"01010100100000000100111110000001010011100110011010",
      "00001011011111111010000001010100101100011001100000",
      "00000101010101010101010101010101010101010101010000",
      "00001000100010111010010101010000111101001101110000",
      "10110111011101000101100000000111000010110010001101"}},
};

DataBar14Symbol Encode(std::string_view text, DataBar14Type type) {
  EncoderLines lines;
  return EncodeDataBar14(text, type, lines);
}

std::vector<std::string> ModuleRows(const DataBar14Symbol& symbol) {
  std::vector<std::string> rows;
  for (const StackedRow& row : symbol.rows) {
    rows.push_back(ModuleText(row.widths));
  }
  return rows;
}

std::string ErrorOf(std::string_view text) {
  try {
    Encode(text, DataBar14Type::kOmnidirectional);
  } catch (const std::exception& error) {
    return error.what();
  }
  return "";
}

TEST(DataBar14Encoder, OneRowVectors) {
  for (const Vector14& vector : kVectors) {
    const DataBar14Symbol symbol = Encode(vector.input, DataBar14Type::kOmnidirectional);
    ASSERT_EQ(symbol.rows.size(), 1U);
    EXPECT_EQ(Digits(symbol.rows.front().widths), vector.oneRow) << vector.input;
    EXPECT_EQ(Modules(symbol.rows.front().widths), 96U);
    EXPECT_EQ(symbol.rows.front().height, std::nullopt);
  }
}

TEST(DataBar14Encoder, ByTheStandardOneRowBeginsWithASpace) {
  for (const Vector14& vector : kVectors) {
    const DataBar14Symbol symbol =
        EncodeDataBar14(vector.input, DataBar14Type::kOmnidirectional, DataBar14Start::kSpace);
    ASSERT_EQ(symbol.rows.size(), 1U);
    EXPECT_EQ(Digits(symbol.rows.front().widths), "0" + vector.oneRow) << vector.input;
    EXPECT_EQ(symbol.digits, Encode(vector.input, DataBar14Type::kOmnidirectional).digits);
    // The left half in the standard's colours is the top row of the stacked forms without its right guard.
    EXPECT_EQ(ModuleText(symbol.rows.front().widths).substr(0, 48), vector.stacked.front().substr(0, 48));
  }
}

TEST(DataBar14Encoder, TheStartOfStackedFormsIsTheStandardsAnyway) {
  for (const DataBar14Type type : {DataBar14Type::kStacked, DataBar14Type::kStackedOmnidirectional}) {
    const DataBar14Symbol symbol = EncodeDataBar14("2001234567890", type, DataBar14Start::kSpace);
    EXPECT_EQ(symbol.rows, Encode("2001234567890", type).rows);
  }
}

TEST(DataBar14Encoder, StackedVectors) {
  for (const Vector14& vector : kVectors) {
    const DataBar14Symbol symbol = Encode(vector.input, DataBar14Type::kStacked);
    EXPECT_EQ(ModuleRows(symbol), vector.stacked) << vector.input;
  }
}

TEST(DataBar14Encoder, StackedOmnidirectionalVectors) {
  for (const Vector14& vector : kVectors) {
    const DataBar14Symbol symbol = Encode(vector.input, DataBar14Type::kStackedOmnidirectional);
    EXPECT_EQ(ModuleRows(symbol), vector.stackedOmnidirectional) << vector.input;
  }
}

std::vector<std::optional<int>> Heights(const DataBar14Symbol& symbol) {
  std::vector<std::optional<int>> heights;
  for (const StackedRow& row : symbol.rows) {
    heights.push_back(row.height);
  }
  return heights;
}

TEST(DataBar14Encoder, StackedRowsAreWidthsWithHeights) {
  const DataBar14Symbol stacked = Encode("0000000000000", DataBar14Type::kStacked);
  EXPECT_THAT(Heights(stacked), ElementsAre(5, 1, 7));
  EXPECT_EQ(Digits(stacked.rows[0].widths), "01111112181382117211111111");
  EXPECT_EQ(stacked.rows[2].widths.front(), 1U);
  const DataBar14Symbol omni = Encode("0000000000000", DataBar14Type::kStackedOmnidirectional);
  EXPECT_THAT(Heights(omni), ElementsAre(std::nullopt, 1, 1, 1, std::nullopt));
  for (const StackedRow& row : omni.rows) {
    EXPECT_EQ(Modules(row.widths), 50U);
  }
}

TEST(DataBar14Encoder, PadsToThirteenDigitsAndAppendsTheCheckDigit) {
  const auto digits = [](std::string_view text) {
    return Encode(text, DataBar14Type::kOmnidirectional).digits;
  };
  EXPECT_EQ(digits("2001234567890"), "20012345678909");
  EXPECT_EQ(digits("950110153000"), "09501101530003");
  EXPECT_EQ(digits("1"), "00000000000017");
  EXPECT_EQ(digits(""), "00000000000000");
}

TEST(DataBar14Encoder, RefusesOtherText) {
  EXPECT_EQ(ErrorOf("12345678901A"), "GS1 DataBar requires numeric digits only");
  EXPECT_EQ(ErrorOf("1234567890123\x80"), "GS1 DataBar requires numeric digits only");
  EXPECT_EQ(ErrorOf("-1"), "GS1 DataBar requires numeric digits only");
  EXPECT_EQ(ErrorOf("12345678901231"), "Input too long (max 13 digits)");
  EXPECT_EQ(ErrorOf(std::string(1'000'000, '1')), "Input too long (max 13 digits)");
  EXPECT_EQ(ErrorOf("9999999999999"), "");
}

TEST(DataBar14Encoder, CheckDigit) {
  EXPECT_EQ(CalculateDataBar14CheckDigit("2001234567890"), "9");
  EXPECT_EQ(CalculateDataBar14CheckDigit("0000000000000"), "0");
  EXPECT_EQ(CalculateDataBar14CheckDigit("1000000000000"), "7");
  EXPECT_EQ(CalculateDataBar14CheckDigit("0100000000000"), "9");
  for (const std::string_view bad : {"200123456789", "20012345678909", "", "200123456789A"}) {
    EXPECT_THAT(
        [bad] { CalculateDataBar14CheckDigit(bad); },
        testing::ThrowsMessage<std::invalid_argument>("CalculateCheckDigit requires exactly 13 digits"));
  }
}

}  // namespace
}  // namespace barcode::test
