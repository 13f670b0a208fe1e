#include "label/text_writer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace barcode::label {
namespace {

std::string Written(std::int64_t value) {
  TextWriter out(0);
  out.Add(value);
  return out.Take();
}

TEST(TextWriter, IntegersOfEveryLength) {
  for (std::int64_t value = -12'000; value <= 12'000; ++value) {
    ASSERT_EQ(Written(value), std::to_string(value));
  }
  for (const std::int64_t value : {std::numeric_limits<std::int64_t>::min(),
                                   std::numeric_limits<std::int64_t>::max(), std::int64_t{1'000'000'007}}) {
    EXPECT_EQ(Written(value), std::to_string(value));
  }
}

TEST(TextWriter, PiecesStandBehindEachOtherWhateverTheFirstGuess) {
  for (const std::size_t likelySize : {0U, 1U, 5U, 1000U}) {
    TextWriter out(likelySize);
    out.Add("a=", 12, ',', std::string_view("text"), ' ', 0.5, ' ', General{25.4 / 3, 8});
    AddUtf8(out, 'z');
    AddUtf8(out, 0x6F22);
    EXPECT_EQ(out.Written(), "a=12,text 0.5 8.4666667z\xE6\xBC\xA2");
    EXPECT_EQ(out.Size(), 27U);
    EXPECT_EQ(out.Take(), "a=12,text 0.5 8.4666667z\xE6\xBC\xA2");
  }
}

TEST(TextWriter, GrowsAndIsShortened) {
  std::mt19937 random(7);
  TextWriter out(3);
  std::string expected;
  for (int i = 0; i < 2'000; ++i) {
    const std::string piece(random() % 40, static_cast<char>('a' + i % 26));
    out.Add(piece);
    expected += piece;
    if (i % 100 == 99) {
      expected.resize(expected.size() / 2);
      out.Shorten(expected.size());
    }
    ASSERT_EQ(out.Written(), expected);
  }
  EXPECT_EQ(out.Take(), expected);
}

}  // namespace
}  // namespace barcode::label
