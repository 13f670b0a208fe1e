// Every cell of the tables "What a scanner reads" in docs/symbologies: what a row says is drawn for random
// texts of its pattern, and each reader, looking for all that it knows, is to find what the cell says.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "label_proof/own_decoders.h"
#include "label_proof/reading_rules.h"
#include "reading_tables/drawn.h"
#include "reading_tables/page_table.h"
#include "reading_tables/texts.h"
#include "support/readers.h"

namespace barcode::test {
namespace {

using Readings = std::vector<std::optional<Reading>>;

constexpr int kTexts = 20;

// A row with what is drawn for it.
struct DrawnRow {
  TableRow row;
  Symbology symbology = Symbology::kCode39;
  std::vector<Content> contents;
  std::vector<GreyImage> pictures;
};

DrawnRow DrawRow(const TableRow& row, std::uint64_t seed) {
  DrawnRow drawn{row, SymbologyOf(row.drawn), {}, {}};
  RandomText random(seed);
  for (int i = 0; i < kTexts; ++i) {
    drawn.contents.push_back(ContentOf(drawn.symbology, TextOf(row.text, random)));
    const std::string& text = drawn.contents.back().text;
    const std::optional<GreyImage> picture = Drawn(row.drawn, text, row.margin);
    if (!picture) {
      throw std::runtime_error(row.drawn + " refuses " + text);
    }
    drawn.pictures.push_back(*picture);
  }
  return drawn;
}

std::string WithoutParentheses(std::string data) {
  std::erase_if(data, [](char c) { return c == '(' || c == ')'; });
  return data;
}

bool IsRight(ReaderId reader, const DrawnRow& drawn, const Content& content, const Reading& reading) {
  // ZXing 1.4 writes elements with parentheses and leaves out the separators.
  if (reader == ReaderId::kZxing && drawn.symbology == Symbology::kDataBarExpanded) {
    std::string data = content.data;
    std::erase(data, '\x1D');
    return WithoutParentheses(reading.data) == data;
  }
  return reading.data == ExpectedData(reader, drawn.symbology, content);
}

// "20 of 20", "0 of 20, 3 wrong".
std::string CellOf(ReaderId reader, const DrawnRow& drawn, const Readings& readings) {
  int right = 0;
  int wrong = 0;
  for (std::size_t i = 0; i < readings.size(); ++i) {
    if (readings[i]) {
      ++(IsRight(reader, drawn, drawn.contents[i], *readings[i]) ? right : wrong);
    }
  }
  const std::string cell = std::to_string(right) + " of " + std::to_string(kTexts);
  return wrong == 0 ? cell : cell + ", " + std::to_string(wrong) + " wrong";
}

std::optional<Reading> ReadWithOwn(Symbology symbology, const GreyImage& picture) {
  std::optional<std::string> data;
  switch (symbology) {
    case Symbology::kMatrix2of5:
      data = DecodeMatrix2of5(picture);
      break;
    case Symbology::kNec2of5:
      data = DecodeNec2of5(picture);
      break;
    default:
      data = DecodePostal(picture);
      break;
  }
  return data ? std::optional(Reading{"", *data}) : std::nullopt;
}

template <class Read>
Readings ReadAll(const DrawnRow& drawn, const Read& read) {
  Readings readings;
  for (const GreyImage& picture : drawn.pictures) {
    readings.push_back(read(picture));
  }
  return readings;
}

void ExpectCell(std::size_t column, ReaderId reader, const DrawnRow& drawn, const Readings& readings) {
  EXPECT_EQ(drawn.row.cells[column], CellOf(reader, drawn, readings))
      << drawn.row.name << ", " << NameOf(reader) << ", first text "
      << testing::PrintToString(drawn.contents.front().text) << ", read as "
      << testing::PrintToString(readings.front());
}

void ExpectReaders(const std::vector<DrawnRow>& table) {
  std::vector<GreyImage> pictures;
  for (const DrawnRow& drawn : table) {
    ExpectCell(0, ReaderId::kZxing, drawn,
               ReadAll(drawn, [](const GreyImage& picture) { return ReadWithZxing(picture); }));
    ExpectCell(1, ReaderId::kZbar, drawn,
               ReadAll(drawn, [](const GreyImage& picture) { return ReadWithZbar(picture); }));
    pictures.insert(pictures.end(), drawn.pictures.begin(), drawn.pictures.end());
  }
  const Readings readings = ReadWithWasm(pictures);
  for (std::size_t i = 0; i < table.size(); ++i) {
    const auto first = readings.begin() + static_cast<std::ptrdiff_t>(i) * kTexts;
    ExpectCell(2, ReaderId::kWasm, table[i], Readings(first, first + kTexts));
  }
}

void ExpectOwnDecoder(const DrawnRow& drawn) {
  ExpectCell(3, ReaderId::kOwn, drawn,
             ReadAll(drawn, [&](const GreyImage& picture) { return ReadWithOwn(drawn.symbology, picture); }));
}

std::vector<std::string> Pages() {
  std::vector<std::string> pages;
  for (const auto& file : std::filesystem::directory_iterator(TEST_PAGES)) {
    pages.push_back(file.path().stem().string());
  }
  std::ranges::sort(pages);
  return pages;
}

class ReadingTables : public testing::TestWithParam<std::string> {};

TEST_P(ReadingTables, EveryCellHolds) {
  std::vector<DrawnRow> table;
  for (const TableRow& row : TableOf(std::filesystem::path(TEST_PAGES) / (GetParam() + ".md"))) {
    constexpr std::uint64_t kSeed = 20;
    table.push_back(DrawRow(row, kSeed));
  }
  for (const char* const name : {"library, default", "library, as recommended", "label"}) {
    EXPECT_TRUE(std::ranges::any_of(table, [&](const DrawnRow& drawn) {
      return drawn.row.name.starts_with(name);
    })) << name;
  }
  ExpectReaders(table);
  for (const DrawnRow& drawn : table) {
    if (drawn.row.cells.size() > 3) {
      ExpectOwnDecoder(drawn);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Pages, ReadingTables, testing::ValuesIn(Pages()),
                         [](const auto& instance) { return instance.param; });

TEST(ReadingTablesPages, ThereIsOneForEachSymbology) {
  EXPECT_EQ(Pages().size(), EverySymbologyInfo().size());
}

}  // namespace
}  // namespace barcode::test
