// What LabelRequest writes, read by another JSON library.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "barcode_label.hpp"

namespace barcode::test {
namespace {

using libbarcode::Label;
using libbarcode::LabelError;
using libbarcode::LabelRequest;
using nlohmann::json;

template <class Value, class = void>
struct Takes : std::false_type {};
template <class Value>
struct Takes<Value, std::void_t<decltype(std::declval<LabelRequest&>().set("", std::declval<Value>()))>>
    : std::true_type {};

// A value of a wrong type is the compiler's error.
static_assert(Takes<int>::value);
static_assert(Takes<bool>::value);
static_assert(Takes<double>::value);
static_assert(Takes<std::uint64_t>::value);
static_assert(Takes<std::string>::value);
static_assert(Takes<const char*>::value);
static_assert(Takes<std::nullptr_t>::value);
static_assert(!Takes<char>::value);
static_assert(!Takes<char32_t>::value);
static_assert(!Takes<wchar_t>::value);
static_assert(!Takes<int*>::value);
static_assert(!Takes<const void*>::value);
static_assert(!Takes<json>::value);

json Written(const LabelRequest& request) {
  return json::parse(request.json());
}

TEST(CppLabelRequest, HasEachKindOfValue) {
  LabelRequest request("qr", "hello");
  request.set("module", 4)
      .set("strict", true)
      .set("show_text", false)
      .set("module_mm", 0.33)
      .set("a", std::string("b"))
      .set("c", std::string_view("d"))
      .set("nothing", nullptr)
      .set("least", std::numeric_limits<std::int64_t>::min())
      .set("most", std::numeric_limits<std::uint64_t>::max())
      .set("small", static_cast<signed char>(-5));
  EXPECT_EQ(request.json(),
            R"({"type":"qr","text":"hello","module":4,"strict":true,"show_text":false,"module_mm":0.33,)"
            R"("a":"b","c":"d","nothing":null,"least":-9223372036854775808,"most":18446744073709551615,)"
            R"("small":-5})");
}

TEST(CppLabelRequest, ReplacesAFieldInItsPlace) {
  LabelRequest request("qr", "A");
  request.set("module", 4).set("caption", "x").set("module", 6).set("type", "code39");
  EXPECT_EQ(request.json(), R"({"type":"code39","text":"A","module":6,"caption":"x"})");
}

TEST(CppLabelRequest, EscapesWhatJsonEscapes) {
  std::string text;
  for (int byte = 0; byte < 0x80; ++byte) {
    text.push_back(static_cast<char>(byte));
  }
  text += "\xC3\xA9 \xE6\xBC\xA2 \xF0\x9F\x98\x80";
  EXPECT_EQ(Written(LabelRequest("qr", text))["text"], text);
  EXPECT_EQ(Written(LabelRequest("qr", "A").set(text, "B"))[text], "B");
}

TEST(CppLabelRequest, RandomNumbersComeBack) {
  std::mt19937_64 random(15);
  for (int i = 0; i < 20'000; ++i) {
    const std::uint64_t bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isfinite(value)) {
      EXPECT_EQ(Written(LabelRequest("qr", "A").set("n", value))["n"].get<double>(), value);
    }
  }
  for (const long double value :
       {std::numeric_limits<long double>::max(), -1.0L / 3, std::numeric_limits<long double>::denorm_min()}) {
    EXPECT_GT(LabelRequest("qr", "A").set("n", value).json().size(), 30U);
  }
}

TEST(CppLabelRequest, WhatIsNoNumberIsRefusedByName) {
  for (const double value :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), 1e300}) {
    for (const char* const field : {"module", "text_scale", "module_mm", "caption", "strict"}) {
      const Label label = Label::try_make(LabelRequest("qr", "A").set(field, value));
      EXPECT_FALSE(label.ok()) << value;
      EXPECT_EQ(label.error().code(), "bad_value") << value;
      EXPECT_EQ(label.error().field(), field) << value;
    }
  }
}

TEST(CppLabelRequest, OfBytes) {
  // RFC 4648, section 10.
  const std::pair<std::string_view, std::string_view> cases[] = {{"", ""},
                                                                 {"f", "Zg=="},
                                                                 {"fo", "Zm8="},
                                                                 {"foo", "Zm9v"},
                                                                 {"foob", "Zm9vYg=="},
                                                                 {"fooba", "Zm9vYmE="},
                                                                 {"foobar", "Zm9vYmFy"}};
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(Written(LabelRequest::of_bytes("qr", bytes.data(), bytes.size()))["text_base64"], text);
  }
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all.push_back(static_cast<char>(byte));
  }
  const LabelRequest request = LabelRequest::of_bytes("qr", all.data(), all.size());
  EXPECT_FALSE(Written(request).contains("text"));
  EXPECT_TRUE(Label(request).ok());
  EXPECT_EQ(Label::try_make(LabelRequest::of_bytes("qr", nullptr, 5)).error().code(), "bad_text");
}

}  // namespace
}  // namespace barcode::test
