#include "base/base64.h"

#include <gtest/gtest.h>

#include <string_view>

namespace barcode {
namespace {

std::string Encode(std::string_view text) {
  return Base64Encode(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

TEST(Base64, VectorsOfRfc4648) {
  EXPECT_EQ(Encode(""), "");
  EXPECT_EQ(Encode("f"), "Zg==");
  EXPECT_EQ(Encode("fo"), "Zm8=");
  EXPECT_EQ(Encode("foo"), "Zm9v");
  EXPECT_EQ(Encode("foob"), "Zm9vYg==");
  EXPECT_EQ(Encode("fooba"), "Zm9vYmE=");
  EXPECT_EQ(Encode("foobar"), "Zm9vYmFy");
}

TEST(Base64, UsesTheWholeStandardAlphabet) {
  std::string bytes;
  for (unsigned value = 0; value < 64; value += 4) {
    const unsigned bits = (value << 18U) | ((value + 1) << 12U) | ((value + 2) << 6U) | (value + 3);
    bytes += static_cast<char>(bits >> 16U);
    bytes += static_cast<char>((bits >> 8U) & 255U);
    bytes += static_cast<char>(bits & 255U);
  }
  EXPECT_EQ(Encode(bytes), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST(Base64, AppendsToWhatIsThere) {
  std::string uri = "data:;base64,";
  const std::uint8_t bytes[] = {0xFB, 0xFF};
  AppendBase64(uri, bytes);
  EXPECT_EQ(uri, "data:;base64,+/8=");
}

TEST(Base64, DecodesWhatItEncodes) {
  std::string bytes;
  for (int length = 0; length < 300; ++length) {
    EXPECT_EQ(Base64Decode(Encode(bytes)), bytes);
    bytes += static_cast<char>(length * 37);
  }
}

TEST(Base64, DecodesNothingElse) {
  using namespace std::string_view_literals;
  for (const std::string_view text :
       {"A"sv, "AA"sv, "AAA"sv, "AAAAA"sv, "AA=A"sv, "AA==AAAA"sv, "===="sv, "A==="sv, "AA= "sv,
        "Zg==\n\n\n\n"sv, "Zh=="sv, "Zm9="sv, "-_-_"sv, "AAA\xFF"sv, "AA\0="sv}) {
    EXPECT_EQ(Base64Decode(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace barcode
