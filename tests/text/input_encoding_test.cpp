#include "text/input_encoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/processor_time.h"

namespace barcode {
namespace {

using namespace std::string_literals;

constexpr std::string_view kHiraganaAUtf8 = "\xE3\x81\x82";
constexpr std::string_view kHiraganaASjis = "\x82\xA0";

std::string ToUtf8(std::string_view sjis) {
  return ConvertEncoding(sjis, CharacterSet::kShiftJis, CharacterSet::kUtf8);
}

std::string ToSjis(std::string_view utf8) {
  return ConvertEncoding(utf8, CharacterSet::kUtf8, CharacterSet::kShiftJis);
}

TEST(IsValidUtf8, TestsTheShapeOfEverySequence) {
  const std::vector<std::string> valid = {
      "",
      "ABC",
      "\x7F",
      "\0A"s,
      "\xC3\xA9",
      "\xE3\x81\x82",
      "\xF0\x9F\x98\x80",
      "A\xC3\xA9\xE3\x81\x82Z",
      "\xC0\x80",          // overlong
      "\xED\xA0\x80",      // surrogate
      "\xF7\xBF\xBF\xBF",  // above U+10FFFF
  };
  for (const std::string& text : valid) {
    EXPECT_TRUE(IsValidUtf8(text)) << text;
  }
  const std::vector<std::string> invalid = {
      "\x80",         "A\xBF",    "\xC3", "\xC3\x41", "\xE3\x81", "\xE3\x81\x41", "\xF0\x9F\x98",
      "\xF0\x9F\xFF", "\xF8\x88", "\xFF", "\xFE",     "\x82\xA0", "\xC3\xC3"};
  for (const std::string& text : invalid) {
    EXPECT_FALSE(IsValidUtf8(text)) << text;
  }
}

TEST(ConvertInputEncoding, Utf8TargetConvertsWhatIsNotUtf8) {
  EXPECT_EQ(ConvertInputEncoding(kHiraganaASjis, "UTF-8"), kHiraganaAUtf8);
  EXPECT_EQ(ConvertInputEncoding(kHiraganaASjis, "utf-8"), kHiraganaAUtf8);
  EXPECT_EQ(ConvertInputEncoding(kHiraganaAUtf8, "utf-8"), kHiraganaAUtf8);
}

TEST(ConvertInputEncoding, ShiftJisTargetConvertsWhatIsUtf8) {
  for (const char* keyword : {"shift-jis", "Shift-JIS", "shift_jis"}) {
    EXPECT_EQ(ConvertInputEncoding(kHiraganaAUtf8, keyword), kHiraganaASjis) << keyword;
    EXPECT_EQ(ConvertInputEncoding(kHiraganaASjis, keyword), kHiraganaASjis) << keyword;
    EXPECT_EQ(ConvertInputEncoding("ABC", keyword), "ABC") << keyword;
  }
}

TEST(ConvertInputEncoding, AnyOtherKeywordIsUtf8) {
  for (const char* keyword : {"Shift_JIS", "SHIFT-JIS", "sjis", "", " shift-jis", "Utf-8"}) {
    EXPECT_EQ(ConvertInputEncoding(kHiraganaAUtf8, keyword), kHiraganaAUtf8) << keyword;
    EXPECT_EQ(ConvertInputEncoding(kHiraganaASjis, keyword), kHiraganaAUtf8) << keyword;
  }
}

TEST(ConvertInputEncoding, TextInTheWantedEncodingIsUnchanged) {
  const std::string overlong = "\xC0\x80\xED\xA0\x80";
  EXPECT_EQ(ConvertInputEncoding(overlong, "utf-8"), overlong);
  const std::string undefinedSjis = "\x82\xA0\xFF\x81";
  EXPECT_EQ(ConvertInputEncoding(undefinedSjis, "shift-jis"), undefinedSjis);
  EXPECT_EQ(ConvertInputEncoding("A\0B"s, "utf-8"), "A\0B"s);
  EXPECT_EQ(ConvertInputEncoding("", "utf-8"), "");
  EXPECT_EQ(ConvertInputEncoding("", "shift-jis"), "");
}

TEST(ConvertInputEncoding, ConversionEndsAtNul) {
  EXPECT_EQ(ConvertInputEncoding("A\0B"s, "shift-jis"), "A");
  EXPECT_EQ(ConvertInputEncoding("\x82\xA0\0\x82\xA0"s, "utf-8"), kHiraganaAUtf8);
  EXPECT_EQ(ConvertInputEncoding("\0\x82\xA0"s, "utf-8"), "");
}

TEST(ConvertEncoding, CodePage932Characters) {
  struct Pair {
    const char* sjis;
    const char* utf8;
  };
  const Pair pairs[] = {
      {"\x5C\x7E", "\\~"},
      {"\xB1", "\xEF\xBD\xB1"},                          // half-width katakana a
      {"\x8A\xBF\x8E\x9A", "\xE6\xBC\xA2\xE5\xAD\x97"},  // kanji
      {"\x81\x60", "\xEF\xBD\x9E"},                      // full-width tilde, not wave dash
      {"\x87\x40", "\xE2\x91\xA0"},                      // NEC row 13, circled 1
      {"\xFA\x40", "\xE2\x85\xB0"},                      // IBM extension, small roman 1
      {"\xF0\x40", "\xEE\x80\x80"},                      // first user-defined character
      {"\x80", "\xC2\x80"},
      {"\xA0", "\xC2\xA0"},
      {"\xFD", "\xEF\xA3\xB1"},
      {"\xFE", "\xEF\xA3\xB2"},
      {"\xFF", "\xEF\xA3\xB3"},
  };
  for (const Pair& pair : pairs) {
    EXPECT_EQ(ToUtf8(pair.sjis), pair.utf8);
    EXPECT_EQ(ToSjis(pair.utf8), pair.sjis);
  }
}

TEST(ConvertEncoding, DuplicatesGoToJisThenNecRow13ThenIbm) {
  EXPECT_EQ(ToSjis(ToUtf8("\xED\x40")), "\xFA\x5C");  // NEC selected IBM kanji
  EXPECT_EQ(ToSjis(ToUtf8("\xEE\xEF")), "\xFA\x40");
  EXPECT_EQ(ToSjis(ToUtf8("\xFA\x4A")), "\x87\x54");  // roman 1
  EXPECT_EQ(ToSjis(ToUtf8("\x87\x90")), "\x81\xE0");  // approximately equal
}

TEST(ConvertEncoding, CharacterWithoutShiftJisBecomesQuestionMarkPerUtf16Unit) {
  EXPECT_EQ(ToSjis("A\xC3\xA9Z"), "A?Z");
  EXPECT_EQ(ToSjis("A\xF0\x9F\x98\x80Z"), "A??Z");
  EXPECT_EQ(ToSjis("A\xF3\xA0\x81\x81Z"), "A??Z");  // U+E0041, a tag
  EXPECT_EQ(ToSjis("\xEF\xBB\xBFZ"), "?Z");         // U+FEFF is no byte order mark here
}

TEST(ConvertEncoding, UndefinedShiftJisBecomesKatakanaMiddleDot) {
  const std::string dot = "\xE3\x83\xBB";
  EXPECT_EQ(ToUtf8("\x85\x40"
                   "A"),
            dot + "A");
  EXPECT_EQ(ToUtf8("\x81\xFF"
                   "A"),
            dot + "A");
  EXPECT_EQ(ToUtf8("\x81 A"), dot + "A");  // the second byte of an undefined code goes with it
  EXPECT_EQ(ToUtf8("A\x81"), "A" + dot);
  EXPECT_EQ(ToUtf8("A\x81\0B"s), "A" + dot);
}

TEST(ConvertEncoding, MalformedUtf8BecomesReplacementCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  const auto normalised = [](std::string_view text) {
    return ConvertEncoding(text, CharacterSet::kUtf8, CharacterSet::kUtf8);
  };
  for (const char* text : {"\xC1\x81", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                           "\xF7\xBF\xBF\xBF", "\xE3\x81", "\xFF", "\x80"}) {
    EXPECT_EQ(normalised(std::string(text) + "Z"), replacement + "Z");
    EXPECT_EQ(ToSjis(std::string(text) + "Z"), "?Z");
  }
  const std::string valid = "\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  EXPECT_EQ(normalised(valid), valid);
}

TEST(ConvertEncoding, EveryDoubleByteCodeSurvivesWhereverAChunkEnds) {
  // All codes in one text, once with every alignment, must convert as each does alone.
  std::string all;
  std::string expected;
  for (int lead = 0x81; lead <= 0xFC; ++lead) {
    if (lead >= 0xA0 && lead <= 0xDF) {
      continue;
    }
    for (int trail = 0x40; trail <= 0xFC; ++trail) {
      const std::string code = {static_cast<char>(lead), static_cast<char>(trail)};
      all += code;
      expected += ToUtf8(code);
    }
  }
  EXPECT_EQ(ToUtf8(all), expected);
  EXPECT_EQ(ToUtf8("A" + all), "A" + expected);
  std::string back;
  for (std::string_view rest = expected; !rest.empty();) {
    const std::size_t length = static_cast<unsigned char>(rest.front()) < 0xE0 ? 2 : 3;
    back += ToSjis(rest.substr(0, length));
    rest.remove_prefix(length);
  }
  EXPECT_EQ(ToSjis(expected), back);
}

TEST(ConvertEncoding, MegabyteOfBadTextTakesLinearTime) {
  const auto seconds = [](const std::string& text, bool toSjis) {
    return test::ProcessorTime([&] { EXPECT_FALSE((toSjis ? ToSjis(text) : ToUtf8(text)).empty()); });
  };
  std::string unmappable;
  for (int i = 0; i < 500'000; ++i) {
    unmappable += "\xC3\xA9";
  }
  EXPECT_LT(seconds(unmappable, true), 5.0);
  EXPECT_LT(seconds(std::string(1'000'000, '\xFF'), false), 5.0);
  EXPECT_LT(seconds(std::string(1'000'000, '\x85'), false), 5.0);
}

}  // namespace
}  // namespace barcode
