#include "label/json_writer.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "base/utf8.h"

namespace barcode::label {
namespace {

std::string Written(std::string_view text) {
  TextWriter json(0);
  AddJsonString(json, text);
  return json.Take();
}

TEST(JsonWriter, TextsAreEscaped) {
  using namespace std::string_literals;
  EXPECT_EQ(Written(""), R"("")");
  EXPECT_EQ(Written("a\"b\\c\n\x01\x1F\x7F/"), R"("a\"b\\c\n\u0001\u001f)"
                                               "\x7F/\"");
  EXPECT_EQ(Written("\0"s), R"("\u0000")");
  EXPECT_EQ(Written("\xE6\xBC\xA2\xF0\x9F\x98\x80"), "\"\xE6\xBC\xA2\xF0\x9F\x98\x80\"");
}

TEST(JsonWriter, WhatIsNoUtf8BecomesAReplacement) {
  EXPECT_EQ(Written("a\xFF"
                    "b\xE6\xBC"),
            "\"a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\"");
  std::mt19937 engine(1);
  for (int i = 0; i < 20'000; ++i) {
    std::string bytes(engine() % 12, '\0');
    for (char& byte : bytes) {
      byte = static_cast<char>(engine() % 4 == 0 ? engine() % 128 : engine());
    }
    const std::string json = Written(bytes);
    ASSERT_TRUE(nlohmann::json::accept(json)) << json;
    if (IsUtf8(bytes)) {
      ASSERT_EQ(nlohmann::json::parse(json).get<std::string>(), bytes);
    }
  }
}

TEST(JsonWriter, CommasStandBetween) {
  JsonWriter json(0);
  json.BeginObject();
  json.Member("a", 1);
  json.Key("b");
  json.BeginArray();
  json.EndArray();
  json.Key("c");
  json.BeginArray();
  json.Value("x");
  json.Value(0.5);
  json.BeginObject();
  json.Member("d", true);
  json.EndObject();
  json.Value(false);
  json.EndArray();
  json.MemberJson("e", "null");
  json.EndObject();
  EXPECT_EQ(json.Take(), R"({"a":1,"b":[],"c":["x",0.5,{"d":true},false],"e":null})");
}

}  // namespace
}  // namespace barcode::label
