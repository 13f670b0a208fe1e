#include "pdf417/text_compaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <tuple>

#include "pdf417/codeword_decoder.h"
#include "pdf417/segments.h"

namespace barcode::pdf417 {
namespace {

using ::testing::ElementsAre;
using namespace std::string_view_literals;

std::vector<int> CompactText(std::string_view text) {
  std::vector<int> codewords;
  AppendText(codewords, text);
  return codewords;
}

std::string Decode(std::vector<int> codewords) {
  codewords.insert(codewords.begin(), static_cast<int>(codewords.size()) + 1);
  return test::DecodePDF417Codewords(codewords).value_or("undecodable");
}

TEST(PDF417TextCompaction, ExampleOfTheStandard) {
  // ISO/IEC 15438: "PDF417" is 15,3 5,28 4,1 7,29.
  EXPECT_THAT(CompactText("PDF417"), ElementsAre(15 * 30 + 3, 5 * 30 + 28, 4 * 30 + 1, 7 * 30 + 29));
}

TEST(PDF417TextCompaction, LatchesAndShifts) {
  EXPECT_THAT(CompactText("A"), ElementsAre(0 * 30 + 29));                              // padded
  EXPECT_THAT(CompactText("ab"), ElementsAre(27 * 30 + 0, 1 * 30 + 29));                // ll
  EXPECT_THAT(CompactText("abC"), ElementsAre(27 * 30 + 0, 1 * 30 + 27, 2 * 30 + 29));  // as for one capital
  EXPECT_THAT(CompactText("abC "), ElementsAre(27 * 30 + 0, 1 * 30 + 27, 2 * 30 + 26));
  EXPECT_THAT(CompactText("A!B"), ElementsAre(0 * 30 + 29, 10 * 30 + 1));  // ps for one mark
  EXPECT_THAT(CompactText("!?!?"),
              ElementsAre(28 * 30 + 25, 10 * 30 + 25, 10 * 30 + 25));     // ml pl for several
  EXPECT_THAT(CompactText("1a"), ElementsAre(28 * 30 + 1, 27 * 30 + 0));  // ll from mixed
}

TEST(PDF417TextCompaction, ByteInsideText) {
  // The codeword before the shift is completed first.
  EXPECT_THAT(CompactText("A\xFF"
                          "B"),
              ElementsAre(0 * 30 + 29, 913, 255, 1 * 30 + 29));
  EXPECT_THAT(CompactText("AB\xFF"
                          "CD"),
              ElementsAre(0 * 30 + 1, 913, 255, 2 * 30 + 3));
}

TEST(PDF417TextCompaction, EveryCharacterFromEverySubMode) {
  for (const std::string before : {"A", "a", "0", ";;;", "AB", "ab", "01", ";;;;"}) {
    for (int first = 0; first < 256; ++first) {
      const std::string once = before + static_cast<char>(first);
      const std::string text = once + once;
      ASSERT_EQ(Decode(CompactText(text)), text);
    }
  }
}

// The fewest codewords, found from the reader's side: a search over every value that a reader could meet.
class FewestCodewords {
 public:
  explicit FewestCodewords(std::string_view text) : m_text(text) {}

  int Find() {
    // Distance in values; a state is left for good once no cheaper one is waiting.
    std::multimap<int, State> waiting = {{0, State{}}};
    while (true) {
      const auto [distance, state] = *waiting.begin();
      waiting.erase(waiting.begin());
      if (state.position == m_text.size()) {
        return (distance + 1) / 2;
      }
      if (!m_best.emplace(state.Key(distance), distance).second) {
        continue;
      }
      for (const auto& [next, cost] : Next(state, distance)) {
        waiting.emplace(distance + cost, next);
      }
    }
  }

 private:
  struct State {
    std::size_t position = 0;
    char mode = 'U';
    char shift = 0;

    std::tuple<std::size_t, char, char, int> Key(int distance) const {
      return {position, mode, shift, distance % 2};
    }
  };

  static std::string_view Characters(char mode) {
    switch (mode) {
      case 'U':
        return "ABCDEFGHIJKLMNOPQRSTUVWXYZ ";
      case 'L':
        return "abcdefghijklmnopqrstuvwxyz ";
      case 'M':
        return "0123456789&\r\t,:#-.$/+%*=^ ";
      default:
        return ";<>@[\\]_`~!\r\t,:\n-.$/\"|*()?{}'";
    }
  }

  // Latches of each sub-mode as the modes they lead to.
  static std::string_view Latches(char mode) {
    switch (mode) {
      case 'U':
        return "LM";
      case 'L':
        return "M";
      case 'M':
        return "PLU";
      default:
        return "U";
    }
  }

  std::vector<std::pair<State, int>> Next(const State& state, int distance) const {
    std::vector<std::pair<State, int>> next;
    const char character = m_text[state.position];
    const char shown = state.shift != 0 ? state.shift : state.mode;
    if (Characters(shown).find(character) != std::string_view::npos) {
      next.push_back({{state.position + 1, state.mode, 0}, 1});
    }
    if (state.shift != 0) {
      return next;
    }
    for (const char latch : Latches(state.mode)) {
      next.push_back({{state.position, latch, 0}, 1});
    }
    if (state.mode != 'P') {
      next.push_back({{state.position, state.mode, 'P'}, 1});
    }
    if (state.mode == 'L') {
      next.push_back({{state.position, state.mode, 'U'}, 1});
    }
    if (!IsText(character)) {
      const bool half = distance % 2 != 0;
      const char mode = half && state.mode == 'P' ? 'U' : state.mode;
      next.push_back({{state.position + 1, mode, 0}, half ? 5 : 4});
    }
    return next;
  }

  std::string_view m_text;
  std::map<std::tuple<std::size_t, char, char, int>, int> m_best;
};

TEST(PDF417TextCompaction, NoSequenceOfLatchesAndShiftsIsShorter) {
  std::mt19937 random(15438);
  for (const std::string_view alphabet :
       {"Aa0;"sv, "Aa0; ,-\xFF"sv, "AAAAaaaaa00;;;;;;"sv, "ABab01;<\n\r\t*^~\xFF\xFE"sv, "A;;;;;\xFF"sv}) {
    for (int i = 0; i < 1500; ++i) {
      std::string text(1 + random() % 14, ' ');
      std::generate(text.begin(), text.end(), [&] { return alphabet[random() % alphabet.size()]; });
      const std::vector<int> codewords = CompactText(text);
      ASSERT_EQ(static_cast<int>(codewords.size()), FewestCodewords(text).Find()) << text;
      ASSERT_EQ(Decode(codewords), text);
    }
  }
}

}  // namespace
}  // namespace barcode::pdf417
