#include "label/excerpt.h"

#include <gtest/gtest.h>

#include <string>

#include "label/label.h"

namespace barcode::label {
namespace {

using namespace std::string_literals;

TEST(Excerpt, ShortTextsStayAsTheyAre) {
  EXPECT_EQ(Excerpt(""), "");
  EXPECT_EQ(Excerpt("code39"), "code39");
  EXPECT_EQ(Excerpt(std::string(60, 'a')), std::string(60, 'a'));
}

TEST(Excerpt, LongTextsEndWithAnEllipsis) {
  EXPECT_EQ(Excerpt(std::string(61, 'a')), std::string(60, 'a') + "\u2026");
  EXPECT_EQ(Excerpt(std::string(59, 'a') + "\u00E9"), std::string(59, 'a') + "\u2026");
}

TEST(Excerpt, ControlCharactersAreReplacedInMessages) {
  EXPECT_EQ(Excerpt("a\0b\n"s), "a\0b\n"s);
  EXPECT_EQ(ExcerptForMessage("a\0b\nc\x1F"s), "a\uFFFDb\uFFFDc\uFFFD");
  EXPECT_EQ(ExcerptForMessage("code39 \u00E9"), "code39 \u00E9");
  EXPECT_EQ(ExcerptForMessage(std::string(61, 'a')), std::string(60, 'a') + "\u2026");
}

TEST(Excerpt, MessagesDoNotEndAtAZeroByte) {
  const std::string report = MakeFromJson(R"({"text": "1", "type": "qr\u0000x"})").report;
  EXPECT_NE(report.find("There is no type \\\"qr\uFFFDx\\\"; barcode_label_types() lists the names of all."),
            std::string::npos)
      << report;
  const std::string unknown = MakeFromJson(R"({"a\u0000b": 1})").report;
  EXPECT_NE(
      unknown.find("There is no field \\\"a\uFFFDb\\\"; barcode_label_types() lists those of each type."),
      std::string::npos)
      << unknown;
}

}  // namespace
}  // namespace barcode::label
