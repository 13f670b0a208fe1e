// What happens when the C library cannot open a converter: its table is missing, or no descriptor or memory
// is left.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "faults/interposed.h"
#include "text/input_encoding.h"

namespace barcode {
namespace {

using test::Failing;
using test::Fault;

constexpr std::string_view kHiraganaAUtf8 = "\xE3\x81\x82";
constexpr std::string_view kHiraganaASjis = "\x82\xA0";

std::string MessageOf(std::string_view text, std::string_view keyword) {
  const Failing failing(Fault::OpenConverter);
  try {
    return "converted to " + ConvertInputEncoding(text, keyword);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(InputEncodingFaults, AConversionWithoutConverterThrows) {
  EXPECT_EQ(MessageOf(kHiraganaASjis, "utf-8"),
            "Character set conversion is not available: cannot read Shift-JIS (CP932).");
  EXPECT_EQ(MessageOf(kHiraganaAUtf8, "shift-jis"),
            "Character set conversion is not available: cannot write Shift-JIS (CP932).");
  // The next one finds a converter again.
  EXPECT_EQ(ConvertInputEncoding(kHiraganaASjis, "utf-8"), kHiraganaAUtf8);
  EXPECT_EQ(ConvertInputEncoding(kHiraganaAUtf8, "shift-jis"), kHiraganaASjis);
}

TEST(InputEncodingFaults, TextThatNeedsNoConverterIsNotAffected) {
  const Failing failing(Fault::OpenConverter);
  EXPECT_EQ(ConvertInputEncoding(kHiraganaAUtf8, "utf-8"), kHiraganaAUtf8);
  EXPECT_EQ(ConvertInputEncoding(kHiraganaASjis, "shift-jis"), kHiraganaASjis);
  EXPECT_EQ(ConvertInputEncoding("ABC", "shift-jis"), "ABC");
  EXPECT_EQ(ConvertInputEncoding("", "shift-jis"), "");
}

}  // namespace
}  // namespace barcode
