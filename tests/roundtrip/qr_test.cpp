#include <gtest/gtest.h>

#include <algorithm>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

// Looking for linear symbols as well, ZBar leaks memory over some of these pictures.
constexpr const char* kZbarQr = "qrcode";

constexpr const char* kLevels[] = {"L", "M", "Q", "H"};

int Modules(int version) {
  return 4 * version + 17;
}

struct Options {
  const char* level = "M";
  const char* mode = "AUTO";
  const char* encoding = "utf-8";
  int version = 0;
  bool fitWidth = false;
};

// Drawn into a box of side x side pixels.
std::optional<GreyImage> DrawnQr(const std::string& text, const Options& options, int side) {
  return DrawnSymbol(BARCODE_QR, 4, [&](BarcodeHandle handle) {
    barcode_set_error_correction_level(handle, options.level);
    barcode_set_encode_mode(handle, options.mode);
    barcode_set_string_encoding(handle, options.encoding);
    barcode_set_version(handle, options.version);
    barcode_set_fit_width(handle, options.fitWidth ? 1 : 0);
    return barcode_draw_2d(handle, text.c_str(), side);
  });
}

std::string RandomUtf8(RandomText& random, int characters) {
  static constexpr const char* kCharacters[] = {
      "a", "Z", "0", " ", "~", "\xC3\xA9", "\xE3\x81\x82", "\xE6\xBC\xA2", "\xF0\x9F\x98\x80"};
  std::string text;
  for (int i = 0; i < characters; ++i) {
    text += kCharacters[random.Number(0, std::size(kCharacters) - 1)];
  }
  return text;
}

TEST(QrRoundTrip, BytesInTheVersionThatHoldsThem) {
  RandomText random(16);
  for (int i = 0; i < 200; ++i) {
    const std::string text = random.Bytes(1, 60, 0x20, 0x7E);
    const auto symbol = DrawnQr(text, {.level = kLevels[i % 4]}, Modules(9) * 2 + random.Number(0, 100));
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZxing(*symbol, "QRCode"), (Reading{"QRCode", text}));
    EXPECT_EQ(ReadWithZbar(*symbol, kZbarQr), (Reading{"QR-Code", text}));
  }
}

TEST(QrRoundTrip, EveryVersionAndLevelFullOfBytes) {
  // Capacity in bytes of version 40, roughly that of smaller versions in proportion to their modules.
  constexpr int kMostBytes[] = {2953, 2331, 1663, 1273};
  RandomText random(18);
  for (int level = 0; level < 4; ++level) {
    for (int version = 1; version <= 40; ++version) {
      const int side = Modules(version) * (version > 30 ? 3 : 2);
      const int area = Modules(version) * Modules(version) - 250;
      const int length = std::max(1, kMostBytes[level] * area / (177 * 177) * 8 / 10);
      const std::string text = random.Bytes(length, length, 0x20, 0x7E);
      const auto symbol = DrawnQr(text, {.level = kLevels[level], .version = version}, side);
      ASSERT_TRUE(symbol);
      EXPECT_EQ(ReadWithZxing(*symbol, "QRCode"), (Reading{"QRCode", text})) << level << ' ' << version;
      EXPECT_EQ(ReadWithZbar(*symbol, kZbarQr), (Reading{"QR-Code", text})) << level << ' ' << version;
    }
  }
}

TEST(QrRoundTrip, Digits) {
  RandomText random(17);
  for (int i = 0; i < 100; ++i) {
    const int version = random.Number(1, i % 4 == 0 ? 40 : 12);
    const std::string text = random.Digits(1, 20 * version - 10);
    const auto symbol =
        DrawnQr(text, {.level = kLevels[i % 4], .mode = "NUMERIC", .version = version}, Modules(version) * 3);
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZxing(*symbol, "QRCode"), (Reading{"QRCode", text}));
    EXPECT_EQ(ReadWithZbar(*symbol, kZbarQr), (Reading{"QR-Code", text}));
  }
}

TEST(QrRoundTrip, ModulesOfAFractionOfAPixel) {
  // ZXing misses a few of these, whose modules differ by a pixel; ZBar reads them all.
  RandomText random(20);
  for (int i = 0; i < 60; ++i) {
    const int version = random.Number(1, 20);
    const std::string text = random.Bytes(1, 14, 0x20, 0x7E);
    const int side = Modules(version) * 3 + random.Number(1, Modules(version) - 1);
    const auto symbol = DrawnQr(text, {.level = "L", .version = version, .fitWidth = true}, side);
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZbar(*symbol, kZbarQr), (Reading{"QR-Code", text}));
  }
}

TEST(QrRoundTrip, Utf8) {
  RandomText random(19);
  for (int i = 0; i < 100; ++i) {
    const std::string text = RandomUtf8(random, random.Number(1, 60));
    const auto symbol = DrawnQr(text, {}, Modules(12) * 2);
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZxing(*symbol, "QRCode"), (Reading{"QRCode", text}));
  }
}

TEST(QrRoundTrip, ShiftJis) {
  // The symbol holds the bytes of the chosen character set; no ECI names it, readers guess.
  const std::string utf8 = "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E ABC \xEF\xBD\xB1";
  const std::string sjis = "\x93\xFA\x96\x7B\x8C\xEA ABC \xB1";
  for (const std::string& text : {utf8, sjis}) {
    const auto symbol = DrawnQr(text, {.encoding = "shift-jis"}, 100);
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZxing(*symbol, "QRCode"), (Reading{"QRCode", sjis}));
  }
}

}  // namespace
}  // namespace barcode::test
