#include "qr/qr_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bitset>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/reed_solomon.h"
#include "qr/qr_reference.h"

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

using qr_reference::kLevels;

constexpr QrOptions kNumeric = {.mode = QrMode::kNumeric};

std::vector<std::uint8_t> Codewords(const QrSymbol& symbol) {
  return qr_reference::ReadCodewords(symbol.matrix, symbol.version, symbol.mask);
}

// The data codewords and a check of the error correction, block by block.
std::string DataBits(const QrSymbol& symbol) {
  const auto codewords = Codewords(symbol);
  const QrBlocks layout = QrBlocksOf(symbol.level, symbol.version);
  const auto blocks = static_cast<std::size_t>(layout.blocks);
  const auto ecLength = static_cast<std::size_t>(layout.ecPerBlock);
  const auto dataTotal = static_cast<std::size_t>(QrDataCodewords(symbol.level, symbol.version));
  const std::size_t shortLength = dataTotal / blocks;
  const std::size_t shortBlocks = blocks - dataTotal % blocks;
  std::string bits;
  for (std::size_t block = 0; block < blocks; ++block) {
    // Column by column; the longer blocks stand last and have one codeword more.
    std::vector<std::uint8_t> message;
    message.reserve(shortLength + 1 + ecLength);
    for (std::size_t i = 0; i < shortLength; ++i) {
      message.push_back(codewords[i * blocks + block]);
    }
    if (block >= shortBlocks) {
      message.push_back(codewords[shortLength * blocks + block - shortBlocks]);
    }
    for (const std::uint8_t codeword : message) {
      bits += std::bitset<8>(codeword).to_string();
    }
    for (std::size_t i = 0; i < ecLength; ++i) {
      message.push_back(codewords[dataTotal + i * blocks + block]);
    }
    // A whole block is a multiple of the generator: zero at each of its roots.
    using Field = GaloisField256<0x11D>;
    for (std::size_t root = 0; root < ecLength; ++root) {
      std::uint8_t value = 0;
      for (const std::uint8_t codeword : message) {
        value = Field::Multiply(value, Field::kTables.antilog[root]) ^ codeword;
      }
      EXPECT_EQ(value, 0) << "version " << symbol.version << " level " << qr_reference::Name(symbol.level)
                          << " block " << block;
    }
  }
  return bits;
}

std::string ExpectedBits(std::string_view bytes, int version, QrLevel level) {
  std::string bits = "0100" + std::bitset<16>(bytes.size()).to_string().substr(version < 10 ? 8 : 0);
  for (const char c : bytes) {
    bits += std::bitset<8>(static_cast<unsigned char>(c)).to_string();
  }
  const auto capacity = static_cast<std::size_t>(QrCapacityBits(level, version));
  bits += std::string(std::min<std::size_t>(4, capacity - bits.size()), '0');
  bits += std::string((8 - bits.size() % 8) % 8, '0');
  for (int i = 0; bits.size() < capacity; ++i) {
    bits += i % 2 == 0 ? "11101100" : "00010001";
  }
  return bits;
}

std::string RandomBytes(std::mt19937& random, std::size_t length) {
  std::string bytes(length, '\0');
  std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random()); });
  return bytes;
}

TEST(EncodeQr, PublishedExampleOfVersion1M) {
  const QrSymbol symbol = EncodeQr("01234567", kNumeric);
  EXPECT_EQ(symbol.version, 1);
  EXPECT_EQ(symbol.matrix.Columns(), 21);
  EXPECT_EQ(symbol.matrix.Rows(), 21);
  EXPECT_THAT(Codewords(symbol),
              ElementsAre(16, 32, 12, 86, 97, 128, 236, 17, 236, 17, 236, 17, 236, 17, 236, 17,  //
                          165, 36, 212, 193, 237, 54, 199, 135, 44, 85));
}

TEST(EncodeQr, DigitsAreBytesUnlessDeclaredNumeric) {
  EXPECT_THAT(DataBits(EncodeQr("0123456789", kNumeric)), StartsWith("0001"
                                                                     "0000001010"));
  EXPECT_THAT(DataBits(EncodeQr("0123456789", {})), StartsWith("0100"
                                                               "00001010"
                                                               "00110000"));
}

TEST(EncodeQr, NumericGroups) {
  EXPECT_THAT(DataBits(EncodeQr("7", kNumeric)), StartsWith("0001"
                                                            "0000000001"
                                                            "0111"
                                                            "0000"));
  EXPECT_THAT(DataBits(EncodeQr("42", kNumeric)), StartsWith("0001"
                                                             "0000000010"
                                                             "0101010"
                                                             "0000"));
  EXPECT_THAT(DataBits(EncodeQr("999", kNumeric)), StartsWith("0001"
                                                              "0000000011"
                                                              "1111100111"
                                                              "0000"));
  EXPECT_THAT(DataBits(EncodeQr("9991", kNumeric)), StartsWith("0001"
                                                               "0000000100"
                                                               "1111100111"
                                                               "0001"
                                                               "0000"));
  // Count widths of 12 and 14 bits.
  EXPECT_THAT(DataBits(EncodeQr("5", {.minVersion = 10, .mode = QrMode::kNumeric})), StartsWith("0001"
                                                                                                "000000000001"
                                                                                                "0101"));
  EXPECT_THAT(DataBits(EncodeQr("5", {.minVersion = 27, .mode = QrMode::kNumeric})),
              StartsWith("0001"
                         "00000000000001"
                         "0101"));
}

TEST(EncodeQr, NumericModeDoesNotCheckTheDigits) {
  // 'A' counts 17, ':' counts 10, '/' counts -1; a group keeps its low bits.
  EXPECT_THAT(DataBits(EncodeQr("A", kNumeric)), StartsWith("0001"
                                                            "0000000001"
                                                            "0001"));
  EXPECT_THAT(DataBits(EncodeQr("1A", kNumeric)), StartsWith("0001"
                                                             "0000000010"
                                                             "0011011"));
  EXPECT_THAT(DataBits(EncodeQr("/", kNumeric)), StartsWith("0001"
                                                            "0000000001"
                                                            "1111"));
  EXPECT_THAT(DataBits(EncodeQr("zzz", kNumeric)), StartsWith("0001"
                                                              "0000000011"
                                                              "0000010110"));  // 8214 mod 1024
}

TEST(EncodeQr, FirstVersionThatHoldsTheText) {
  for (const QrLevel level : kLevels) {
    const auto versionOf = [&](QrMode mode, std::size_t length) {
      return EncodeQr(std::string(length, '8'), {.level = level, .mode = mode}).version;
    };
    for (int version = 1; version <= kQrMaxVersion; ++version) {
      const auto capacity = static_cast<std::size_t>(QrCapacityBits(level, version));
      const std::size_t bytes = (capacity - (version < 10 ? 12 : 20)) / 8;
      const std::size_t digitBits = capacity - (version < 10 ? 14 : version < 27 ? 16 : 18);
      const std::size_t rest = digitBits % 10;
      const std::size_t digits = digitBits / 10 * 3 + (rest >= 7 ? 2 : rest >= 4 ? 1 : 0);
      EXPECT_EQ(versionOf(QrMode::kByte, bytes), version);
      EXPECT_EQ(versionOf(QrMode::kNumeric, digits), version);
      if (version < kQrMaxVersion) {
        EXPECT_EQ(versionOf(QrMode::kByte, bytes + 1), version + 1);
        EXPECT_EQ(versionOf(QrMode::kNumeric, digits + 1), version + 1);
      }
    }
  }
}

TEST(EncodeQr, TooLongForVersion40) {
  const auto message = [](std::size_t length, QrLevel level, QrMode mode) {
    try {
      EncodeQr(std::string(length, '1'), {.level = level, .mode = mode});
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  const std::string tooLong =
      "Data too long for QR Code. Data requires more capacity than Version 40 can provide. Reduce data "
      "length "
      "or use a lower error correction level.";
  EXPECT_EQ(message(2953, QrLevel::kL, QrMode::kByte), "");
  EXPECT_EQ(message(2954, QrLevel::kL, QrMode::kByte), tooLong);
  EXPECT_EQ(message(1274, QrLevel::kH, QrMode::kByte), tooLong);
  EXPECT_EQ(message(7089, QrLevel::kL, QrMode::kNumeric), "");
  EXPECT_EQ(message(7090, QrLevel::kL, QrMode::kNumeric), tooLong);
  EXPECT_EQ(message(100'000'000, QrLevel::kL, QrMode::kNumeric), tooLong);
}

TEST(EncodeQr, RequestedVersionIsALowerBound) {
  EXPECT_EQ(EncodeQr("short", {.minVersion = 10}).version, 10);
  EXPECT_EQ(EncodeQr("short", {.minVersion = 10}).matrix.Columns(), 57);
  EXPECT_EQ(EncodeQr("short", {.minVersion = 40}).matrix.Columns(), 177);
  const std::string needsVersion3(40, 'x');
  EXPECT_EQ(EncodeQr(needsVersion3, {}).version, 3);
  for (const int version : {-1, 0, 1, 2, 3}) {
    EXPECT_EQ(EncodeQr(needsVersion3, {.minVersion = version}).version, 3) << version;
  }
}

TEST(EncodeQr, ThereIsNoVersionAbove40) {
  EXPECT_THROW(EncodeQr("x", {.minVersion = 41}), std::invalid_argument);
  EXPECT_THROW(EncodeQr("", {.minVersion = 41}), std::invalid_argument);
}

TEST(EncodeQr, LevelIsTheOneAskedFor) {
  EXPECT_EQ(EncodeQr("x", {}).level, QrLevel::kM);
  for (const QrLevel level : kLevels) {
    EXPECT_EQ(EncodeQr("x", {.level = level}).level, level);
  }
}

TEST(EncodeQr, TerminatorIsShortenedAtTheCapacity) {
  // Version 1-H holds 72 bits. Numeric fields of 72, 71 (by 17 + 4 - none), 69 and 68 bits leave 0, 1, 3
  // and 4.
  const auto digits = [](std::size_t count) {
    return DataBits(EncodeQr(std::string(count, '9'), {.level = QrLevel::kH, .mode = QrMode::kNumeric}));
  };
  EXPECT_EQ(digits(17),
            "0001"
            "0000010001"
            "1111100111"
            "1111100111"
            "1111100111"
            "1111100111"
            "1111100111"
            "1100011"
            "0");  // 71 bits, a terminator of one
  EXPECT_EQ(digits(16),
            "0001"
            "0000010000"
            "1111100111"
            "1111100111"
            "1111100111"
            "1111100111"
            "1111100111"
            "1001"
            "0000");  // 68 bits, the whole terminator
  EXPECT_EQ(digits(15),
            "0001"
            "0000001111"
            "1111100111"
            "1111100111"
            "1111100111"
            "1111100111"
            "1111100111"
            "0000"
            "0000");  // 64 bits, the terminator and zeros up to the codeword
  EXPECT_EQ(digits(12),
            "0001"
            "0000001100"
            "1111100111"
            "1111100111"
            "1111100111"
            "1111100111"
            "0000"
            "000000"
            "11101100");
}

TEST(EncodeQr, EveryVersionAndLevelHoldsItsDataAndErrorCorrection) {
  std::mt19937 random(18004);
  for (const QrLevel level : kLevels) {
    for (int version = 1; version <= kQrMaxVersion; ++version) {
      const auto most = static_cast<unsigned>((QrCapacityBits(level, version) - 20) / 8);
      const std::string bytes = RandomBytes(random, 1 + random() % most);
      const QrSymbol symbol = EncodeQr(bytes, {.level = level, .minVersion = version});
      ASSERT_EQ(symbol.version, version);
      ASSERT_EQ(DataBits(symbol), ExpectedBits(bytes, version, level))
          << version << ' ' << qr_reference::Name(level);
    }
  }
}

TEST(EncodeQr, RemainderBitsAreZero) {
  const QrSymbol symbol = EncodeQr("x", {.minVersion = 2});
  const auto order = qr_reference::DataOrder(2);
  ASSERT_EQ(order.size(), 359U);
  for (std::size_t i = 352; i < order.size(); ++i) {
    const auto [x, y] = order[i];
    EXPECT_EQ(symbol.matrix.At(x, y), qr_reference::Inverts(symbol.mask, x, y));
  }
}

TEST(EncodeQr, MaskIsTheOneTheNaiveScoringChooses) {
  std::mt19937 random(8);
  for (int i = 0; i < 400; ++i) {
    const QrLevel level = kLevels[random() % kLevels.size()];
    const auto version = static_cast<int>(i % 20 == 0 ? random() % 41 : random() % 10);
    const std::size_t length = 1 + random() % 60;
    const std::string text =
        i % 3 == 0 ? std::string(length, static_cast<char>(random())) : RandomBytes(random, length);
    const QrSymbol symbol = EncodeQr(text, {.level = level, .minVersion = version});
    int best = 0;
    int lowest = 0;
    for (int mask = 0; mask < 8; ++mask) {
      const int penalty =
          qr_reference::Penalty(qr_reference::Remasked(symbol.matrix, symbol.version, symbol.mask, mask),
                                QrDataModules(symbol.version));
      if (mask == 0 || penalty < lowest) {
        best = mask;
        lowest = penalty;
      }
    }
    EXPECT_EQ(symbol.mask, best) << "version " << symbol.version << " text " << i;
  }
}

TEST(EncodeQr, FormatInformationInBothPlaces) {
  for (const QrLevel level : kLevels) {
    const QrSymbol symbol = EncodeQr("format", {.level = level, .minVersion = 3});
    const int n = symbol.matrix.Columns();
    const std::vector<std::pair<int, int>> upperLeft = {{0, 8}, {1, 8}, {2, 8}, {3, 8}, {4, 8},
                                                        {5, 8}, {7, 8}, {8, 8}, {8, 7}, {8, 5},
                                                        {8, 4}, {8, 3}, {8, 2}, {8, 1}, {8, 0}};
    const std::vector<std::pair<int, int>> others = {
        {8, n - 1}, {8, n - 2}, {8, n - 3}, {8, n - 4}, {8, n - 5}, {8, n - 6}, {8, n - 7}, {n - 8, 8},
        {n - 7, 8}, {n - 6, 8}, {n - 5, 8}, {n - 4, 8}, {n - 3, 8}, {n - 2, 8}, {n - 1, 8}};
    const std::uint32_t format = QrFormatBits(level, symbol.mask);
    for (std::size_t i = 0; i < 15; ++i) {
      const bool dark = (format >> (14 - i) & 1U) != 0;
      EXPECT_EQ(symbol.matrix.At(upperLeft[i].first, upperLeft[i].second), dark);
      EXPECT_EQ(symbol.matrix.At(others[i].first, others[i].second), dark);
    }
    EXPECT_TRUE(symbol.matrix.At(8, n - 8));  // the dark module
  }
}

TEST(EncodeQr, VersionInformationFromVersion7) {
  for (const int version : {7, 21, 40}) {
    const QrSymbol symbol = EncodeQr("version", {.minVersion = version});
    const int n = symbol.matrix.Columns();
    const std::uint32_t bits = QrVersionBits(symbol.version);
    for (int k = 0; k < 18; ++k) {
      const bool dark = (bits >> k & 1U) != 0;
      EXPECT_EQ(symbol.matrix.At(n - 11 + k % 3, k / 3), dark) << version;
      EXPECT_EQ(symbol.matrix.At(k / 3, n - 11 + k % 3), dark) << version;
    }
  }
}

TEST(EncodeQr, EmptyTextLeavesTheMatrixEmpty) {
  const QrSymbol symbol = EncodeQr("", {.minVersion = 5});
  EXPECT_TRUE(symbol.matrix.Empty());
  EXPECT_EQ(symbol.matrix.Columns(), 0);
  EXPECT_EQ(symbol.version, 0);
}

}  // namespace
}  // namespace barcode
