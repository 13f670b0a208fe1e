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

constexpr int kL = 0;
constexpr int kM = 1;
constexpr int kQ = 2;
constexpr int kH = 3;

struct Symbol {
  int version;
  int level;
  int mask;
  ModuleMatrix matrix;
};

Symbol Encode(std::string_view text, std::string_view mode = "B", std::uint32_t version = 0,
              std::uint32_t level = kM) {
  QREncoder encoder(mode, version, level);
  encoder.Encode(text);
  return {encoder.Version(), encoder.Level(), encoder.Mask(), encoder.Matrix()};
}

std::vector<std::uint8_t> Codewords(const Symbol& symbol) {
  return qr_reference::ReadCodewords(symbol.matrix, symbol.version, symbol.mask);
}

// The data codewords and a check of the error correction, block by block.
std::string DataBits(const Symbol& symbol) {
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
      EXPECT_EQ(value, 0) << "version " << symbol.version << " level " << symbol.level << " block " << block;
    }
  }
  return bits;
}

std::string ExpectedBits(std::string_view bytes, int version, int level) {
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

TEST(QREncoder, PublishedExampleOfVersion1M) {
  const Symbol symbol = Encode("01234567", "N");
  EXPECT_EQ(symbol.version, 1);
  EXPECT_EQ(symbol.matrix.Columns(), 21);
  EXPECT_EQ(symbol.matrix.Rows(), 21);
  EXPECT_THAT(Codewords(symbol),
              ElementsAre(16, 32, 12, 86, 97, 128, 236, 17, 236, 17, 236, 17, 236, 17, 236, 17,  //
                          165, 36, 212, 193, 237, 54, 199, 135, 44, 85));
}

TEST(QREncoder, NumericModeOnlyForN) {
  EXPECT_THAT(DataBits(Encode("0123456789", "N")), StartsWith("0001"
                                                              "0000001010"));
  for (const char* mode : {"A", "K", "B", "", "X", "n", "NN"}) {
    EXPECT_THAT(DataBits(Encode("0123456789", mode)), StartsWith("0100"
                                                                 "00001010"
                                                                 "00110000"))
        << mode;
  }
}

TEST(QREncoder, NumericGroups) {
  EXPECT_THAT(DataBits(Encode("7", "N")), StartsWith("0001"
                                                     "0000000001"
                                                     "0111"
                                                     "0000"));
  EXPECT_THAT(DataBits(Encode("42", "N")), StartsWith("0001"
                                                      "0000000010"
                                                      "0101010"
                                                      "0000"));
  EXPECT_THAT(DataBits(Encode("999", "N")), StartsWith("0001"
                                                       "0000000011"
                                                       "1111100111"
                                                       "0000"));
  EXPECT_THAT(DataBits(Encode("9991", "N")), StartsWith("0001"
                                                        "0000000100"
                                                        "1111100111"
                                                        "0001"
                                                        "0000"));
  // Count widths of 12 and 14 bits.
  EXPECT_THAT(DataBits(Encode("5", "N", 10)), StartsWith("0001"
                                                         "000000000001"
                                                         "0101"));
  EXPECT_THAT(DataBits(Encode("5", "N", 27)), StartsWith("0001"
                                                         "00000000000001"
                                                         "0101"));
}

TEST(QREncoder, NumericModeDoesNotCheckTheDigits) {
  // 'A' counts 17, ':' counts 10, '/' counts -1; a group keeps its low bits.
  EXPECT_THAT(DataBits(Encode("A", "N")), StartsWith("0001"
                                                     "0000000001"
                                                     "0001"));
  EXPECT_THAT(DataBits(Encode("1A", "N")), StartsWith("0001"
                                                      "0000000010"
                                                      "0011011"));
  EXPECT_THAT(DataBits(Encode("/", "N")), StartsWith("0001"
                                                     "0000000001"
                                                     "1111"));
  EXPECT_THAT(DataBits(Encode("zzz", "N")), StartsWith("0001"
                                                       "0000000011"
                                                       "0000010110"));  // 8214 mod 1024
}

TEST(QREncoder, FirstVersionThatHoldsTheText) {
  for (const int level : {kL, kM, kQ, kH}) {
    for (int version = 1; version <= kQrMaxVersion; ++version) {
      const auto capacity = static_cast<std::size_t>(QrCapacityBits(level, version));
      const std::size_t most = (capacity - (version < 10 ? 12 : 20)) / 8;
      const auto levelOption = static_cast<std::uint32_t>(level);
      EXPECT_EQ(Encode(std::string(most, 'x'), "B", 0, levelOption).version, version);
      if (version < kQrMaxVersion) {
        EXPECT_EQ(Encode(std::string(most + 1, 'x'), "B", 0, levelOption).version, version + 1);
      }
      const std::size_t digitBits = capacity - (version < 10 ? 14 : version < 27 ? 16 : 18);
      const std::size_t rest = digitBits % 10;
      const std::size_t digits = digitBits / 10 * 3 + (rest >= 7 ? 2 : rest >= 4 ? 1 : 0);
      EXPECT_EQ(Encode(std::string(digits, '8'), "N", 0, levelOption).version, version);
      if (version < kQrMaxVersion) {
        EXPECT_EQ(Encode(std::string(digits + 1, '8'), "N", 0, levelOption).version, version + 1);
      }
    }
  }
}

TEST(QREncoder, TooLongForVersion40) {
  const auto message = [](std::size_t length, std::uint32_t level, const char* mode) {
    try {
      Encode(std::string(length, '1'), mode, 0, level);
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  const std::string tooLong =
      "Data too long for QR Code. Data requires more capacity than Version 40 can provide. Reduce data "
      "length "
      "or use a lower error correction level.";
  EXPECT_EQ(message(2953, kL, "B"), "");
  EXPECT_EQ(message(2954, kL, "B"), tooLong);
  EXPECT_EQ(message(1274, kH, "B"), tooLong);
  EXPECT_EQ(message(7089, kL, "N"), "");
  EXPECT_EQ(message(7090, kL, "N"), tooLong);
  EXPECT_EQ(message(100'000'000, kL, "N"), tooLong);
}

TEST(QREncoder, RequestedVersion) {
  EXPECT_EQ(Encode("short", "B", 10).version, 10);
  EXPECT_EQ(Encode("short", "B", 10).matrix.Columns(), 57);
  EXPECT_EQ(Encode("short", "B", 40).matrix.Columns(), 177);
  const std::string needsVersion3(40, 'x');
  EXPECT_EQ(Encode(needsVersion3).version, 3);
  EXPECT_EQ(Encode(needsVersion3, "B", 1).version, 3);
  EXPECT_EQ(Encode(needsVersion3, "B", 41).version, 3);
  EXPECT_EQ(Encode(needsVersion3, "B", 0xFFFFFFFF).version, 3);
}

TEST(QREncoder, LevelOutOfRangeIsM) {
  EXPECT_EQ(Encode("x", "B", 0, 4).level, kM);
  EXPECT_EQ(Encode("x", "B", 0, 0xFFFFFFFF).level, kM);
  EXPECT_EQ(Encode("x", "B", 0, kH).level, kH);
}

TEST(QREncoder, TerminatorIsShortenedAtTheCapacity) {
  // Version 1-H holds 72 bits. Numeric fields of 72, 71 (by 17 + 4 - none), 69 and 68 bits leave 0, 1, 3
  // and 4.
  const auto digits = [](std::size_t count) { return DataBits(Encode(std::string(count, '9'), "N", 1, kH)); };
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

TEST(QREncoder, EveryVersionAndLevelHoldsItsDataAndErrorCorrection) {
  std::mt19937 random(18004);
  for (const int level : {kL, kM, kQ, kH}) {
    for (int version = 1; version <= kQrMaxVersion; ++version) {
      const auto most = static_cast<unsigned>((QrCapacityBits(level, version) - 20) / 8);
      const std::string bytes = RandomBytes(random, 1 + random() % most);
      const Symbol symbol =
          Encode(bytes, "B", static_cast<std::uint32_t>(version), static_cast<std::uint32_t>(level));
      ASSERT_EQ(symbol.version, version);
      ASSERT_EQ(DataBits(symbol), ExpectedBits(bytes, version, level)) << version << ' ' << level;
    }
  }
}

TEST(QREncoder, RemainderBitsAreZero) {
  const Symbol symbol = Encode("x", "B", 2);
  const auto order = qr_reference::DataOrder(2);
  ASSERT_EQ(order.size(), 359U);
  for (std::size_t i = 352; i < order.size(); ++i) {
    const auto [x, y] = order[i];
    EXPECT_EQ(symbol.matrix.At(x, y), qr_reference::Inverts(symbol.mask, x, y));
  }
}

TEST(QREncoder, MaskIsTheOneTheNaiveScoringChooses) {
  std::mt19937 random(8);
  for (int i = 0; i < 400; ++i) {
    const auto level = static_cast<std::uint32_t>(random() % 4);
    const auto version = static_cast<std::uint32_t>(i % 20 == 0 ? random() % 41 : random() % 10);
    const std::size_t length = 1 + random() % 60;
    const std::string text =
        i % 3 == 0 ? std::string(length, static_cast<char>(random())) : RandomBytes(random, length);
    const Symbol symbol = Encode(text, "B", version, level);
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

TEST(QREncoder, FormatInformationInBothPlaces) {
  for (const int level : {kL, kM, kQ, kH}) {
    const Symbol symbol = Encode("format", "B", 3, static_cast<std::uint32_t>(level));
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

TEST(QREncoder, VersionInformationFromVersion7) {
  for (const std::uint32_t version : {7U, 21U, 40U}) {
    const Symbol symbol = Encode("version", "B", version);
    const int n = symbol.matrix.Columns();
    const std::uint32_t bits = QrVersionBits(symbol.version);
    for (int k = 0; k < 18; ++k) {
      const bool dark = (bits >> k & 1U) != 0;
      EXPECT_EQ(symbol.matrix.At(n - 11 + k % 3, k / 3), dark) << version;
      EXPECT_EQ(symbol.matrix.At(k / 3, n - 11 + k % 3), dark) << version;
    }
  }
}

TEST(QREncoder, EmptyTextLeavesTheMatrixEmpty) {
  QREncoder encoder("B", 5, kM);
  encoder.Encode("");
  EXPECT_TRUE(encoder.Matrix().Empty());
  EXPECT_EQ(encoder.Matrix().Columns(), 0);
  encoder.Encode("x");
  EXPECT_EQ(encoder.Matrix().Columns(), 37);
  encoder.Encode("");
  EXPECT_TRUE(encoder.Matrix().Empty());
}

TEST(QREncoder, KnowsTheLengthsInEveryMode) {
  QREncoder encoder("A", 0, kM);
  EXPECT_EQ(encoder.ModeIndicator(), 2);
  EXPECT_EQ(QREncoder("N", 0, kM).ModeIndicator(), 1);
  EXPECT_EQ(QREncoder("K", 0, kM).ModeIndicator(), 4);
  const auto expectBits = [&](const char* text, std::size_t numeric, std::size_t alphanumeric,
                              std::size_t byte) {
    encoder.Encode(text);
    EXPECT_EQ(encoder.Bits().numeric, numeric) << text;
    EXPECT_EQ(encoder.Bits().alphanumeric, alphanumeric) << text;
    EXPECT_EQ(encoder.Bits().byte, byte) << text;
  };
  expectBits("123", 10, 17, 24);
  expectBits("1234", 14, 22, 32);
  expectBits("12345", 17, 28, 40);
}

}  // namespace
}  // namespace barcode
