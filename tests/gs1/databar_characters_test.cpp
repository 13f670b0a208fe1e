#include "gs1/databar_characters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <set>
#include <vector>

#include "gs1/databar_tables.h"

namespace barcode {
namespace {

using testing::ElementsAre;

struct SetCase {
  const DataBarCharacterSet& set;
  std::size_t halfElements;
  std::size_t modules;
  std::uint32_t values;
};

const std::vector<SetCase> kSets = {
    {kDataBar14Outside, 4, 16, 2841},
    {kDataBar14Inside, 4, 15, 1597},
    {kDataBarLimitedCharacters, 7, 26, 2013571},
    {kDataBarExpandedCharacters, 4, 17, 4192},
};

TEST(DataBarCharacters, GroupsCoverTheValuesWithoutGaps) {
  for (const SetCase& c : kSets) {
    std::uint32_t next = 0;
    for (const DataBarGroup& group : c.set.groups) {
      EXPECT_EQ(group.firstValue, next);
      EXPECT_EQ(group.oddModules + group.evenModules, static_cast<int>(c.modules));
      next += group.oddCount * group.evenCount;
    }
    EXPECT_EQ(next, c.values);
  }
}

// Four odd sets of the inside and the Expanded characters have more splits than they use: those that begin
// with an element of at most four modules.
TEST(DataBarCharacters, CountsAreTheNumbersOfSplits) {
  const std::set<std::uint32_t> partlyUsed = {48, 81, 87, 52};
  for (const SetCase& c : kSets) {
    for (const DataBarGroup& g : c.set.groups) {
      const bool oddNarrow = c.set.narrow == DataBarNarrow::kOdd;
      const std::uint32_t odd = CountDataBarWidths(g.oddModules, c.halfElements, g.oddWidest, oddNarrow);
      const std::uint32_t even = CountDataBarWidths(g.evenModules, c.halfElements, g.evenWidest, !oddNarrow);
      EXPECT_EQ(even, g.evenCount);
      if (partlyUsed.contains(g.oddCount)) {
        EXPECT_GT(odd, g.oddCount);
      } else {
        EXPECT_EQ(odd, g.oddCount);
      }
    }
  }
}

// All splits in order, written down without counting.
void Enumerate(std::size_t modules, std::size_t widest, std::vector<std::uint8_t>& widths,
               std::size_t position, std::vector<std::vector<std::uint8_t>>& out) {
  if (position == widths.size()) {
    if (modules == 0) {
      out.push_back(widths);
    }
    return;
  }
  for (std::size_t width = 1; width <= std::min(widest, modules); ++width) {
    widths[position] = static_cast<std::uint8_t>(width);
    Enumerate(modules - width, widest, widths, position + 1, out);
  }
}

TEST(DataBarCharacters, ElementWidthsAreInLexicographicOrder) {
  for (const bool needsNarrow : {false, true}) {
    std::vector<std::uint8_t> widths(4);
    std::vector<std::vector<std::uint8_t>> all;
    Enumerate(11, 5, widths, 0, all);
    std::uint32_t index = 0;
    for (const auto& expected : all) {
      if (needsNarrow && std::find(expected.begin(), expected.end(), 1) == expected.end()) {
        continue;
      }
      DataBarElementWidths(index++, 11, 5, needsNarrow, widths);
      EXPECT_EQ(widths, expected);
    }
    EXPECT_EQ(index, CountDataBarWidths(11, 4, 5, needsNarrow));
  }
}

TEST(DataBarCharacters, SplitsOfOneKind) {
  std::vector<std::uint8_t> widths(4);
  DataBarElementWidths(0, 4, 1, true, widths);
  EXPECT_THAT(widths, ElementsAre(1, 1, 1, 1));
  DataBarElementWidths(0, 12, 8, false, widths);
  EXPECT_THAT(widths, ElementsAre(1, 1, 2, 8));
  DataBarElementWidths(160, 12, 8, false, widths);
  EXPECT_THAT(widths, ElementsAre(8, 2, 1, 1));
}

TEST(DataBarCharacters, LargestLimitedNumberFallsIntoItsGroups) {
  EXPECT_EQ(DataBarGroupOf(kDataBarLimitedCharacters, 993260), 2U);
  EXPECT_EQ(DataBarGroupOf(kDataBarLimitedCharacters, 468539), 1U);
}

TEST(DataBarCharacters, GroupBoundariesOfLimited) {
  const std::vector<std::uint32_t> last = {183063, 820063, 1000775, 1491020, 1979844, 1996938, 2013570};
  for (std::size_t group = 0; group < last.size(); ++group) {
    EXPECT_EQ(DataBarGroupOf(kDataBarLimitedCharacters, last[group]), group);
    EXPECT_EQ(DataBarGroupOf(kDataBarLimitedCharacters, last[group] + 1),
              std::min<std::size_t>(group + 1, 6));
  }
}

template <class Set, class Encode>
void ExpectDistinctCharacters(const Set& set, std::uint32_t values, std::size_t modules, Encode encode) {
  std::set<decltype(encode(set, 0))> seen;
  for (std::uint32_t value = 0; value < values; ++value) {
    const auto widths = encode(set, value);
    EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), std::size_t{0}), modules);
    EXPECT_TRUE(seen.insert(widths).second) << value;
  }
}

TEST(DataBarCharacters, EveryCharacterIsDistinctAndOfEqualWidth) {
  ExpectDistinctCharacters(kDataBar14Outside, 2841, 16, EncodeDataBarCharacter<8>);
  ExpectDistinctCharacters(kDataBar14Inside, 1597, 15, EncodeDataBarCharacter<8>);
  ExpectDistinctCharacters(kDataBarExpandedCharacters, 4192, 17, EncodeDataBarCharacter<8>);
}

TEST(DataBarTables, FindersHaveFifteenModules) {
  for (const auto* finders : {&kDataBar14Finders[0], &kDataBarExpandedFinders[0]}) {
    const std::size_t count =
        finders == kDataBar14Finders.data() ? kDataBar14Finders.size() : kDataBarExpandedFinders.size();
    for (const DataBarFinder& finder : std::span(finders, count)) {
      EXPECT_EQ(std::accumulate(finder.begin(), finder.end(), std::size_t{0}), kDataBarFinderModules);
      EXPECT_THAT(std::vector(finder.begin() + 3, finder.end()), ElementsAre(1, 1));
    }
  }
}

TEST(DataBarTables, CheckPatternsAscendAndHaveNineModulesEach) {
  // In the order of their spaces, then of their bars.
  const auto key = [](const DataBarCheckPattern& pattern) {
    std::vector<std::uint8_t> elements;
    for (const std::size_t first : {0U, 1U}) {
      for (std::size_t i = first; i < pattern.size(); i += 2) {
        elements.push_back(pattern[i]);
      }
    }
    return elements;
  };
  for (std::size_t i = 1; i < kDataBarLimitedChecks.size(); ++i) {
    EXPECT_LT(key(kDataBarLimitedChecks[i - 1]), key(kDataBarLimitedChecks[i])) << i;
  }
  for (const DataBarCheckPattern& pattern : kDataBarLimitedChecks) {
    std::size_t spaces = 0;
    std::size_t bars = 0;
    for (std::size_t i = 0; i < pattern.size(); i += 2) {
      spaces += pattern[i];
      bars += pattern[i + 1];
    }
    EXPECT_EQ(spaces, 9U);
    EXPECT_EQ(bars, 9U);
    EXPECT_EQ(pattern[12] + pattern[13], 2);
  }
}

TEST(DataBarTables, WeightsArePublishedNumbers) {
  EXPECT_THAT(std::vector(kDataBar14Weights.begin(), kDataBar14Weights.begin() + 8),
              ElementsAre(1, 3, 9, 27, 2, 6, 18, 54));
  EXPECT_EQ(kDataBar14Weights.back(), 59);
  EXPECT_EQ(kDataBarLimitedWeights[14], 20);
  EXPECT_EQ(kDataBarLimitedWeights.back(), 74);
  EXPECT_EQ(kDataBarExpandedWeights[8], 20);
  EXPECT_THAT(std::vector(kDataBarExpandedWeights.end() - 8, kDataBarExpandedWeights.end()),
              ElementsAre(45, 135, 194, 160, 58, 174, 100, 89));
}

TEST(DataBarTables, FinderSequencesGrowByOnePair) {
  for (std::size_t i = 0; i < kDataBarExpandedSequences.size(); ++i) {
    EXPECT_EQ(kDataBarExpandedSequences[i].size(), i + 2);
    EXPECT_EQ(kDataBarExpandedSequences[i].front(), 'A');
  }
}

}  // namespace
}  // namespace barcode
