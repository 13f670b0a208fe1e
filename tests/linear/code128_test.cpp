#include "linear/code128.h"

#include <gtest/gtest.h>

#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

RunVector Encoded(std::string_view mode, const std::string& text) {
  Code128 code("png");
  code.SetCodeMode(mode);
  return code.Encode(text);
}

TEST(Code128Encode, IsAutomaticByDefault) {
  EXPECT_EQ(Code128("png").Encode("1234"), ValuesToPattern(EncodeValues("1234", kCode128ModeAuto)));
}

TEST(Code128Encode, KeywordsChooseTheCodeSet) {
  EXPECT_EQ(Encoded("A", "12"), ValuesToPattern(EncodeValues("12", 0)));
  EXPECT_EQ(Encoded("B", "12"), ValuesToPattern(EncodeValues("12", 1)));
  EXPECT_EQ(Encoded("C", "12"), ValuesToPattern(EncodeValues("12", 2)));
}

TEST(Code128Encode, AutoReturnsToTheDefault) {
  Code128 code("png");
  code.SetCodeMode("B");
  code.SetCodeMode("AUTO");
  EXPECT_EQ(code.Encode("1234"), Code128("png").Encode("1234"));
}

TEST(Code128Encode, OtherKeywordsChangeNothing) {
  Code128 code("png");
  code.SetCodeMode("B");
  for (const char* const keyword : {"", "a", "auto", "D", "AUTO "}) {
    code.SetCodeMode(keyword);
    EXPECT_EQ(code.Encode("1234"), Encoded("B", "1234")) << keyword;
  }
}

TEST(Code128Encode, Messages) {
  Code128 code("png");
  EXPECT_EQ(MessageOf([&] { code.Encode(""); }), "Empty string");
  EXPECT_EQ(MessageOf([&] { code.Encode("\xFF"); }), "No valid start");
  code.SetCodeMode(4);
  EXPECT_EQ(MessageOf([&] { code.Encode("A"); }), "Invalid CodeMode");
}

TEST(Code128DisplayText, IsTheTextAsGiven) {
  EXPECT_EQ(Code128("png").DisplayText("a\x01 1"), "a\x01 1");
}

}  // namespace
}  // namespace barcode::test
