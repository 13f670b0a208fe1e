#include "qr/qr_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bitset>
#include <numeric>
#include <string>
#include <vector>

#include "qr/qr_reference.h"

namespace barcode {
namespace {

using qr_reference::kLevels;

// The published tables of ISO/IEC 18004, against which the derived numbers are checked.
const std::vector<std::vector<int>> kCapacityBits = {
    {152,   272,   440,   640,   864,   1088,  1248,  1552,  1856,  2192,  2592,  2960,  3424,  3688,
     4184,  4712,  5176,  5768,  6360,  6888,  7456,  8048,  8752,  9392,  10208, 10960, 11744, 12248,
     13048, 13880, 14744, 15640, 16568, 17528, 18448, 19472, 20528, 21616, 22496, 23648},
    {128,   224,   352,   512,   688,   864,   992,   1232,  1456,  1728,  2032,  2320, 2672, 2920,
     3320,  3624,  4056,  4504,  5016,  5352,  5712,  6256,  6880,  7312,  8000,  8496, 9024, 9544,
     10136, 10984, 11640, 12328, 13048, 13800, 14496, 15312, 15936, 16816, 17728, 18672},
    {104,  176,  272,  384,  496,  608,  704,   880,   1056,  1232,  1440,  1648, 1952, 2088,
     2360, 2600, 2936, 3176, 3560, 3880, 4096,  4544,  4912,  5312,  5744,  6032, 6464, 6968,
     7288, 7880, 8264, 8920, 9368, 9848, 10288, 10832, 11408, 12016, 12656, 13328},
    {72,   128,  208,  288,  368,  480,  528,  688,  800,  976,  1120, 1264, 1440, 1576,
     1784, 2024, 2264, 2504, 2728, 3080, 3248, 3536, 3712, 4112, 4304, 4768, 5024, 5288,
     5608, 5960, 6344, 6760, 7208, 7688, 7888, 8432, 8768, 9136, 9776, 10208}};

const std::vector<int> kRemainderBits = {0, 7, 7, 7, 7, 7, 0, 0, 0, 0, 0, 0, 0, 3, 3, 3, 3, 3, 3, 3,
                                         4, 4, 4, 4, 4, 4, 4, 3, 3, 3, 3, 3, 3, 3, 0, 0, 0, 0, 0, 0};

const std::vector<std::string> kFormatStrings = {
    "111011111000100", "111001011110011", "111110110101010", "111100010011101", "110011000101111",
    "110001100011000", "110110001000001", "110100101110110", "101010000010010", "101000100100101",
    "101111001111100", "101101101001011", "100010111111001", "100000011001110", "100111110010111",
    "100101010100000", "011010101011111", "011000001101000", "011111100110001", "011101000000110",
    "010010010110100", "010000110000011", "010111011011010", "010101111101101", "001011010001001",
    "001001110111110", "001110011100111", "001100111010000", "000011101100010", "000001001010101",
    "000110100001100", "000100000111011"};

const std::vector<std::string> kVersionStrings = {  // from version 7
    "000111110010010100", "001000010110111100", "001001101010011001", "001010010011010011",
    "001011101111110110", "001100011101100010", "001101100001000111", "001110011000001101",
    "001111100100101000", "010000101101111000", "010001010001011101", "010010101000010111",
    "010011010100110010", "010100100110100110", "010101011010000011", "010110100011001001",
    "010111011111101100", "011000111011000100", "011001000111100001", "011010111110101011",
    "011011000010001110", "011100110000011010", "011101001100111111", "011110110101110101",
    "011111001001010000", "100000100111010101", "100001011011110000", "100010100010111010",
    "100011011110011111", "100100101100001011", "100101010000101110", "100110101001100100",
    "100111010101000001", "101000110001101001"};

// With the capacity, the codewords of a block fix the number of blocks.
const std::vector<std::vector<int>> kErrorCorrectionPerBlock = {
    {7,  10, 15, 20, 26, 18, 20, 24, 30, 18, 20, 24, 26, 30, 22, 24, 28, 30, 28, 28,
     28, 28, 30, 30, 26, 28, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
    {10, 16, 26, 18, 24, 16, 18, 22, 22, 26, 30, 22, 22, 24, 24, 28, 28, 26, 26, 26,
     26, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28},
    {13, 22, 18, 26, 18, 24, 18, 22, 20, 24, 28, 26, 24, 20, 30, 24, 28, 28, 26, 30,
     28, 30, 30, 30, 30, 28, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
    {17, 28, 22, 16, 22, 28, 26, 26, 24, 28, 24, 28, 22, 24, 24, 30, 28, 28, 26, 28,
     30, 24, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30}};

const std::vector<std::vector<int>> kAlignmentCentres = {{},
                                                         {6, 18},
                                                         {6, 22},
                                                         {6, 26},
                                                         {6, 30},
                                                         {6, 34},
                                                         {6, 22, 38},
                                                         {6, 24, 42},
                                                         {6, 26, 46},
                                                         {6, 28, 50},
                                                         {6, 30, 54},
                                                         {6, 32, 58},
                                                         {6, 34, 62},
                                                         {6, 26, 46, 66},
                                                         {6, 26, 48, 70},
                                                         {6, 26, 50, 74},
                                                         {6, 30, 54, 78},
                                                         {6, 30, 56, 82},
                                                         {6, 30, 58, 86},
                                                         {6, 34, 62, 90},
                                                         {6, 28, 50, 72, 94},
                                                         {6, 26, 50, 74, 98},
                                                         {6, 30, 54, 78, 102},
                                                         {6, 28, 54, 80, 106},
                                                         {6, 32, 58, 84, 110},
                                                         {6, 30, 58, 86, 114},
                                                         {6, 34, 62, 90, 118},
                                                         {6, 26, 50, 74, 98, 122},
                                                         {6, 30, 54, 78, 102, 126},
                                                         {6, 26, 52, 78, 104, 130},
                                                         {6, 30, 56, 82, 108, 134},
                                                         {6, 34, 60, 86, 112, 138},
                                                         {6, 30, 58, 86, 114, 142},
                                                         {6, 34, 62, 90, 118, 146},
                                                         {6, 30, 54, 78, 102, 126, 150},
                                                         {6, 24, 50, 76, 102, 128, 154},
                                                         {6, 28, 54, 80, 106, 132, 158},
                                                         {6, 32, 58, 84, 110, 136, 162},
                                                         {6, 26, 54, 82, 110, 138, 166},
                                                         {6, 30, 58, 86, 114, 142, 170}};

TEST(QrTables, BlocksOfEveryVersionAndLevel) {
  for (const QrLevel level : kLevels) {
    for (int version = 1; version <= kQrMaxVersion; ++version) {
      const auto& expected = kErrorCorrectionPerBlock[static_cast<std::size_t>(level)];
      EXPECT_EQ(QrBlocksOf(level, version).ecPerBlock, expected[static_cast<std::size_t>(version - 1)])
          << "level " << qr_reference::Name(level) << " version " << version;
    }
  }
}

TEST(QrTables, AlignmentCentresOfEveryVersion) {
  for (int version = 1; version <= kQrMaxVersion; ++version) {
    const auto& centres = QrAlignmentCentres(version);
    const std::vector<int> listed(centres.begin(), centres.begin() + QrAlignmentCentreCount(version));
    EXPECT_EQ(listed, kAlignmentCentres[static_cast<std::size_t>(version - 1)]) << version;
  }
}

TEST(QrTables, CapacityOfEveryVersionAndLevel) {
  for (const QrLevel level : kLevels) {
    for (int version = 1; version <= kQrMaxVersion; ++version) {
      const auto& expected = kCapacityBits[static_cast<std::size_t>(level)];
      EXPECT_EQ(QrCapacityBits(level, version), expected[static_cast<std::size_t>(version - 1)])
          << "level " << qr_reference::Name(level) << " version " << version;
    }
  }
}

TEST(QrTables, RemainderBits) {
  for (int version = 1; version <= kQrMaxVersion; ++version) {
    EXPECT_EQ(QrDataModules(version) % 8, kRemainderBits[static_cast<std::size_t>(version - 1)]) << version;
  }
}

TEST(QrTables, CountWidths) {
  const auto widths = [](int version) {
    return std::pair(QrCountBits(QrMode::kNumeric, version), QrCountBits(QrMode::kByte, version));
  };
  for (int version = 1; version <= kQrMaxVersion; ++version) {
    const auto expected = version <= 9    ? std::pair(10, 8)
                          : version <= 26 ? std::pair(12, 16)
                                          : std::pair(14, 16);
    EXPECT_EQ(widths(version), expected) << version;
  }
}

TEST(QrTables, FormatInformation) {
  for (const QrLevel level : kLevels) {
    for (int mask = 0; mask < 8; ++mask) {
      EXPECT_EQ(std::bitset<15>(QrFormatBits(level, mask)).to_string(),
                kFormatStrings[static_cast<std::size_t>(static_cast<int>(level) * 8 + mask)]);
    }
  }
}

TEST(QrTables, VersionInformation) {
  EXPECT_FALSE(QrHasVersionInformation(6));
  for (int version = 7; version <= kQrMaxVersion; ++version) {
    EXPECT_TRUE(QrHasVersionInformation(version));
    EXPECT_EQ(std::bitset<18>(QrVersionBits(version)).to_string(),
              kVersionStrings[static_cast<std::size_t>(version - 7)]);
  }
}

TEST(QrTables, AlignmentCentresRunFromTheTimingPatternToTheFarEdgeInEvenSteps) {
  EXPECT_EQ(QrAlignmentCentreCount(1), 0);
  for (int version = 2; version <= kQrMaxVersion; ++version) {
    const auto& centres = QrAlignmentCentres(version);
    const int count = QrAlignmentCentreCount(version);
    EXPECT_EQ(count, version / 7 + 2);
    EXPECT_EQ(centres[0], 6);
    EXPECT_EQ(centres[static_cast<std::size_t>(count - 1)], QrSize(version) - 7);
    for (int i = 2; i < count; ++i) {
      const auto at = static_cast<std::size_t>(i);
      EXPECT_EQ(centres[at] - centres[at - 1], centres[2] - centres[1]) << "version " << version;
    }
  }
  EXPECT_THAT(QrAlignmentCentres(32), ::testing::ElementsAre(6, 34, 60, 86, 112, 138, 0));
  EXPECT_THAT(QrAlignmentCentres(40), ::testing::ElementsAre(6, 30, 58, 86, 114, 142, 170));
}

}  // namespace
}  // namespace barcode
