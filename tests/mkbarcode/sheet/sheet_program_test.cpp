// Sheets, as a shell sees the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "label/sheet_grid.h"
#include "label_proof/picture.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"
#include "mkbarcode/running_program.h"
#include "mkbarcode/sheet/sheet_command.h"
#include "support/readers.h"

namespace barcode::tool {
namespace {

using nlohmann::json;
using test::GreyImage;
using test::GreyOfPages;
using test::PdfInfo;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr double kDotsPerMm = 600 / 25.4;

// A sheet of rows in JSON lines, with these options.
class SheetProgram : public testing::Test {
 protected:
  Outcome Make(const std::string& rows, const std::vector<std::string>& options,
               const std::string& suffix = ".jsonl") {
    const std::string jobs = m_scratch.File("rows" + suffix);
    WriteFile(jobs, rows);
    std::vector<std::string> arguments = {"sheet", jobs, "-o", Pdf()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgram(arguments);
  }

  std::string Pdf() const { return m_scratch.File("sheet.pdf"); }
  std::vector<GreyImage> Pages() const { return GreyOfPages(ReadFile(Pdf()), 600); }
  std::string Info() const { return PdfInfo(ReadFile(Pdf())); }
  bool IsThere() const { return std::ranges::count(m_scratch.Names(), "sheet.pdf") == 1; }

  ScratchDirectory m_scratch;
};

GreyImage CellOf(const GreyImage& page, const label::SheetGrid& grid, std::int64_t number) {
  const label::Cell cell = label::CellAt(grid, number);
  const auto dots = [](double mm) { return static_cast<int>(std::ceil(mm * kDotsPerMm)); };
  GreyImage image{dots(cell.width) - 1, dots(cell.height) - 1, {}};
  for (int y = 0; y < image.height; ++y) {
    const auto begin = page.pixels.begin() + std::ptrdiff_t{dots(cell.y) + y} * page.width + dots(cell.x);
    image.pixels.insert(image.pixels.end(), begin, begin + image.width);
  }
  return image;
}

// What stands in a cell; "" when it is empty.
std::string ReadCell(const GreyImage& page, const label::SheetGrid& grid, std::int64_t number) {
  const GreyImage cell = CellOf(page, grid, number);
  if (std::ranges::all_of(cell.pixels, [](int pixel) { return pixel == 255; })) {
    return "";
  }
  const std::optional<test::Reading> zxing = test::ReadWithZxing(cell, {}, test::Turns::kAll);
  const std::optional<test::Reading> zbar = test::ReadWithZbar(cell);
  if (!zxing || !zbar) {
    return "not read";
  }
  return zxing->data == zbar->data ? zxing->data : "read in two ways";
}

std::vector<std::string> ReadCells(const GreyImage& page, const label::SheetGrid& grid) {
  std::vector<std::string> texts;
  for (std::int64_t number = 0; number < CellsOf(grid); ++number) {
    texts.push_back(ReadCell(page, grid, number));
  }
  return texts;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

const std::vector<std::string> kTwoByTwo = {"--page", "A4", "--grid", "2x2"};
const label::SheetGrid kTwoByTwoGrid{.columns = 2, .rows = 2};

std::vector<std::string> With(std::vector<std::string> options, const std::vector<std::string>& more) {
  options.insert(options.end(), more.begin(), more.end());
  return options;
}

std::string Row(const std::string& type, const std::string& text) {
  return json({{"type", type}, {"text", text}}).dump() + "\n";
}

TEST_F(SheetProgram, PutsRowsIntoCellsRowByRow) {
  const Outcome outcome = Make(Row("code128", "ONE") + Row("qr", "TWO") + Row("code39", "THREE") +
                                   Row("qr", "FOUR") + Row("code128", "FIVE"),
                               kTwoByTwo);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_EQ(outcome.errors, "mkbarcode: 5 rows on 2 pages: 5 drawn, 0 failed\n");
  EXPECT_THAT(Info(), StartsWith("Pages: 2\nPage 1 size: 595.276 x 841.89 pts (A4)\n"));
  const std::vector<GreyImage> pages = Pages();
  ASSERT_EQ(pages.size(), 2);
  EXPECT_THAT(ReadCells(pages[0], kTwoByTwoGrid), ElementsAre("ONE", "TWO", "THREE", "FOUR"));
  EXPECT_THAT(ReadCells(pages[1], kTwoByTwoGrid), ElementsAre("FIVE", "", "", ""));
}

TEST_F(SheetProgram, TakesTablesAndStandardInput) {
  ASSERT_EQ(Make("\xEF\xBB\xBFtext,type\r\nONE,code128\r\n\"T,W\"\"O\",qr\r\n", kTwoByTwo, ".csv").status, 0);
  EXPECT_THAT(ReadCells(Pages().at(0), kTwoByTwoGrid), ElementsAre("ONE", "T,W\"O", "", ""));
  const std::string options = " -q --page letter --grid 2x2 --type qr -o " + ShellQuoted(Pdf());
  const Outcome lines = RunShell("echo '{\"text\":\"ONE\"}' | " + Program() + " sheet -" + options);
  EXPECT_EQ(lines.status, 0) << lines.errors;
  EXPECT_THAT(Info(), HasSubstr("612 x 792 pts (letter)"));
  EXPECT_EQ(
      RunShell("printf 'text\\nONE\\n' | " + Program() + " sheet - --input-format csv" + options).status, 0);
  EXPECT_EQ(ReadCell(Pages().at(0), {.pageWidth = 215.9, .pageHeight = 279.4, .columns = 2, .rows = 2}, 0),
            "ONE");
}

TEST_F(SheetProgram, OptionsAreDefaultsOfAllRows) {
  const Outcome outcome = Make("{\"text\":\"ONE\"}\n{\"text\":\"TWO\",\"type\":\"qr\",\"rotate\":0}\n",
                               With(kTwoByTwo, {"--type", "code128", "--rotate", "90"}));
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_THAT(ReadCells(Pages().at(0), kTwoByTwoGrid), ElementsAre("ONE", "TWO", "", ""));
}

TEST_F(SheetProgram, BeginsAtACellOfTheFirstPage) {
  ASSERT_EQ(
      Make(Row("qr", "ONE") + Row("qr", "TWO") + Row("qr", "THREE"), With(kTwoByTwo, {"--start-at", "3"}))
          .status,
      0);
  const std::vector<GreyImage> pages = Pages();
  ASSERT_EQ(pages.size(), 2);
  EXPECT_THAT(ReadCells(pages[0], kTwoByTwoGrid), ElementsAre("", "", "ONE", "TWO"));
  EXPECT_THAT(ReadCells(pages[1], kTwoByTwoGrid), ElementsAre("THREE", "", "", ""));
}

// 12 dots of 300 dpi a module: 24 of the page's at 600.
TEST_F(SheetProgram, AnOwnSizeIsExactAndStandsInTheMiddle) {
  ASSERT_EQ(Make(Row("datamatrix", "DM"), {"--page", "100x60mm", "--grid", "1x1", "--margin", "7", "--dpi",
                                           "300", "--module", "12", "--quiet-zone", "0"})
                .status,
            0);
  const test::DarkPixels page(Pages().at(0));
  // Ten modules: 120 dots, from (1181.1 - 120) / 2 = 530.55 and (708.66 - 120) / 2 = 294.33 on, in whole
  // dots.
  constexpr int kLeft = 2 * 531;
  constexpr int kTop = 2 * 294;
  constexpr int kSide = 240;
  EXPECT_FALSE(page.AnyIn(0, 0, kLeft, page.Height()));
  EXPECT_FALSE(page.AnyIn(kLeft + kSide, 0, page.Width(), page.Height()));
  EXPECT_FALSE(page.AnyIn(0, 0, page.Width(), kTop));
  EXPECT_FALSE(page.AnyIn(0, kTop + kSide, page.Width(), page.Height()));
  for (int i = 0; i < kSide; ++i) {
    EXPECT_TRUE(page.At(kLeft, kTop + i));
    EXPECT_TRUE(page.At(kLeft + i, kTop + kSide - 1));
    EXPECT_EQ(page.At(kLeft + i, kTop), i / 24 % 2 == 0);
  }
}

TEST_F(SheetProgram, WithoutASizeTheModuleIsTheLargestThatFits) {
  // 28 x 28 mm: 661 dots; 21 + 8 modules of 22 dots are 638.
  ASSERT_EQ(Make(Row("qr", "A"), {"--page", "30x30mm", "--grid", "1x1", "--margin", "1"}).status, 0);
  const test::DarkPixels page(Pages().at(0));
  // From (708.66 - 638) / 2 on, behind four modules of light.
  constexpr int kFirst = 35 + 4 * 22;
  EXPECT_FALSE(page.AnyIn(0, 0, kFirst, page.Height()));
  EXPECT_FALSE(page.AnyIn(0, 0, page.Width(), kFirst));
  EXPECT_FALSE(page.AnyIn(kFirst + 21 * 22, 0, page.Width(), page.Height()));
  for (int i = 0; i < 7 * 22; ++i) {
    EXPECT_TRUE(page.At(kFirst + i, kFirst));
    EXPECT_TRUE(page.At(kFirst, kFirst + i));
  }
  EXPECT_FALSE(page.At(kFirst + 7 * 22, kFirst));
}

TEST_F(SheetProgram, ARefusedRowLeavesItsCellEmpty) {
  const Outcome outcome =
      Make(Row("qr", "ONE") + Row("jan13", "4901234567890") + "nonsense\n" + Row("qr", "FOUR"), kTwoByTwo);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(ReadCells(Pages().at(0), kTwoByTwoGrid), ElementsAre("ONE", "", "", "FOUR"));
  const std::vector<std::string> lines = LinesOf(outcome.errors);
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(
      lines[0],
      R"({"n":2,"request":{"text":"4901234567890","type":"jan13"},"error":{"code":"bad_text","field":"text",)"
      R"("message":"The check digit is 0 but must be 4; correct it or leave it out."}})");
  const json second = json::parse(lines[1]);
  EXPECT_EQ(second["n"], 3);
  EXPECT_EQ(second["request"], "nonsense");
  EXPECT_EQ(second["error"]["code"], "bad_request");
  EXPECT_EQ(lines[2], "mkbarcode: 4 rows on 1 page: 2 drawn, 2 failed");
}

TEST_F(SheetProgram, ARowThatDoesNotFitIsToldTheSizeThatWouldDo) {
  const std::string row = R"({"type":"code128","text":"A LABEL OF ITS OWN SIZE","dpi":300,"module_mm":0.5})";
  const Outcome outcome = Make(row + "\n", {"--page", "A4", "--grid", "3x8", "-q"});
  EXPECT_EQ(outcome.status, 1);
  const json error = json::parse(outcome.errors)["error"];
  EXPECT_EQ(error["code"], "too_small");
  const double width = error["needed_mm"]["width"];
  const double height = error["needed_mm"]["height"];
  EXPECT_GT(width, 62);
  std::ostringstream page;
  page << width << 'x' << height << "mm";
  EXPECT_EQ(Make(row + "\n", {"--page", page.str(), "--grid", "1x1", "--margin", "0"}).status, 0)
      << page.str();
}

TEST_F(SheetProgram, FailedRowsGoToAFile) {
  const std::string errors = m_scratch.File("errors");
  WriteFile(errors, "of an earlier run\n");
  const Outcome outcome = Make(Row("qr", "") + Row("qr", "A"), With(kTwoByTwo, {"--errors", errors}));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, "mkbarcode: 2 rows on 1 page: 1 drawn, 1 failed\n");
  const json line = json::parse(ReadFile(errors));
  EXPECT_EQ(line["n"], 1);
  EXPECT_EQ(line["error"]["code"], "bad_text");
  // Not the rows themselves.
  const Outcome same = Make(Row("qr", "A"), With(kTwoByTwo, {"--errors", m_scratch.File("rows.jsonl")}));
  EXPECT_EQ(same.status, 2);
  EXPECT_EQ(ReadFile(m_scratch.File("rows.jsonl")), Row("qr", "A"));
}

TEST_F(SheetProgram, WarningsNameTheirRow) {
  const std::string rows = Row("qr", "A") + R"({"type":"qr","text":"B","foreground":"#ccc"})" + "\n";
  const Outcome outcome = Make(rows, kTwoByTwo);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(LinesOf(outcome.errors),
              ElementsAre(StartsWith("mkbarcode: row 2: warning: Scanners see a contrast of "),
                          "mkbarcode: 2 rows on 1 page: 2 drawn (1 with warnings), 0 failed"));
  const Outcome quiet = Make(rows, With(kTwoByTwo, {"--quiet"}));
  EXPECT_EQ(quiet.status, 0);
  EXPECT_THAT(quiet.errors, IsEmpty());
  const Outcome strict = Make(rows, With(kTwoByTwo, {"--strict", "-q"}));
  EXPECT_EQ(strict.status, 1);
  EXPECT_EQ(json::parse(strict.errors)["error"]["code"], "low_contrast");
  EXPECT_EQ(ReadCell(Pages().at(0), kTwoByTwoGrid, 1), "");
}

TEST_F(SheetProgram, ARowsFormatIsPdfOrNone) {
  const Outcome outcome = Make(R"({"type":"qr","text":"A","format":"pdf"})"
                               "\n"
                               R"({"type":"qr","text":"B","format":"svg"})"
                               "\n",
                               With(kTwoByTwo, {"-q", "--format", "pdf"}));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(json::parse(outcome.errors)["error"]["field"], "format");
  EXPECT_THAT(ReadCells(Pages().at(0), kTwoByTwoGrid), ElementsAre("A", "", "", ""));
}

TEST_F(SheetProgram, NoRowsMakeAPageOfEmptyCells) {
  const Outcome outcome = Make("", With(kTwoByTwo, {"--outline"}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "mkbarcode: 0 rows on 1 page: 0 drawn, 0 failed\n");
  EXPECT_THAT(Info(), StartsWith("Pages: 1\n"));
  EXPECT_EQ(Make("type,text\n", kTwoByTwo, ".csv").status, 0);
}

TEST_F(SheetProgram, OutlinesStandOnTheEdges) {
  ASSERT_EQ(Make(Row("qr", "A"), With(kTwoByTwo, {"--outline", "--margin", "20", "--gap", "10"})).status, 0);
  const test::DarkPixels page(Pages().at(0));
  // 20 mm: 472.4 dots; a line of 0.1 mm reaches 1.2 dots to either side.
  EXPECT_TRUE(page.At(472, 1000));
  EXPECT_FALSE(page.At(469, 1000));
  EXPECT_FALSE(page.At(475, 1000));
  EXPECT_EQ(ReadCell(Pages().at(0), {.columns = 2, .rows = 2, .margin = 20.2, .gap = 10.4}, 0), "A");
}

TEST_F(SheetProgram, TheSameRowsMakeTheSameBytes) {
  const std::string rows = Row("qr", "A") + Row("code128", "B");
  ASSERT_EQ(Make(rows, kTwoByTwo).status, 0);
  const std::string first = ReadFile(Pdf());
  ASSERT_EQ(Make(rows, kTwoByTwo).status, 0);
  EXPECT_EQ(ReadFile(Pdf()), first);
  const Outcome piped = RunShell(Program() + " sheet " + ShellQuoted(m_scratch.File("rows.jsonl")) +
                                 " -q -o - --page A4 --grid 2x2");
  EXPECT_EQ(piped.status, 0);
  EXPECT_EQ(piped.output, first);
  EXPECT_THAT(piped.errors, IsEmpty());
}

TEST_F(SheetProgram, WrongUsageWritesNothing) {
  const auto usage = [](const std::string& message) {
    return "mkbarcode: " + message + "\nSee mkbarcode sheet --help\n";
  };
  const std::vector<std::string> page = {"--page", "A4"};
  const std::vector<std::string> grid = {"--grid", "2x2"};
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {page, "No grid is given: add --grid COLUMNSxROWS, such as --grid 3x8."},
      {grid, "No page is given: add --page A4, --page letter or a size such as --page 100x150mm."},
      {With(kTwoByTwo, {"--start-at", "5"}),
       "The option \"--start-at\" must be a cell of the page, from 1 to 4, not 5."},
      {With(kTwoByTwo, {"--start-at", "0"}),
       "The option \"--start-at\" must be the number of a cell, from 1, not \"0\"."},
      {With(kTwoByTwo, {"--margin", "150"}),
       "A margin of 150 mm and gaps of 2 mm leave no room for 2 x 2 cells on a page of 210 x 297 mm; choose "
       "a "
       "smaller margin, smaller gaps or fewer cells."},
      {With(kTwoByTwo, {"--format", "png"}),
       "The option \"--format\" must be pdf, or be left out: a sheet is a PDF."},
      {With(kTwoByTwo, {"--module", "0"}), "The option \"--module\" must be a whole number from 1 to 100."},
      {With(kTwoByTwo, {"--type", "cod128"}),
       "There is no type \"cod128\"; did you mean \"code128\"? \"mkbarcode --list\" names all types."},
      {With(kTwoByTwo, {"--outlines"}), "There is no option \"--outlines\"; did you mean \"--outline\"?"},
      {With(kTwoByTwo, {"--page", "A4"}), "The option \"--page\" stands twice; give it once."}};
  for (const auto& [options, message] : cases) {
    const Outcome outcome = Make(Row("qr", "A"), options);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors, usage(message));
    EXPECT_FALSE(IsThere());
  }
  const auto errorsTo = [](const std::string& file) { return With(kTwoByTwo, {"--errors", file}); };
  EXPECT_EQ(Make(Row("qr", "A"), errorsTo(Pdf())).errors, usage("--errors is the output"));
  EXPECT_EQ(Make(Row("qr", "A"), errorsTo("-")).errors,
            usage("--errors takes a file; without it the rows go to standard error"));
  EXPECT_FALSE(IsThere());
  EXPECT_EQ(Make("type,text,colour\nqr,A,red\n", kTwoByTwo, ".csv").status, 2);
  EXPECT_EQ(Make("type,text,colour\nqr,A,red\n", With(kTwoByTwo, {"--ignore-unknown"}), ".csv").status, 0);
  EXPECT_EQ(RunProgram({"sheet"}).errors,
            usage("No jobs are given: add a file of them, or - for standard input."));
  EXPECT_EQ(RunProgram({"sheet", "rows.csv"}).errors,
            usage("No output is given: add -o FILE, or -o - for standard output."));
}

TEST_F(SheetProgram, HelpAndCompletionsKnowOneFormat) {
  EXPECT_THAT(RunProgram({"sheet", "--help"}).output, HasSubstr("Only pdf: a sheet is a PDF"));
  const CommandDescription description = DescribeSheetCommand();
  const auto format = std::ranges::find_if(description.options, [](const OptionDescription& option) {
    return option.names == std::vector<std::string>{"--format"};
  });
  ASSERT_NE(format, description.options.end());
  EXPECT_THAT(format->words, ElementsAre("pdf"));
}

TEST_F(SheetProgram, FailuresLeaveWhatWasThere) {
  WriteFile(Pdf(), "an earlier sheet");
  const Outcome unread =
      RunProgram({"sheet", m_scratch.File("none.csv"), "-o", Pdf(), "--page", "A4", "--grid", "1x1"});
  EXPECT_EQ(unread.status, 1);
  EXPECT_THAT(unread.errors, StartsWith("mkbarcode: cannot read "));
  EXPECT_EQ(ReadFile(Pdf()), "an earlier sheet");
  WriteFile(m_scratch.File("rows.jsonl"), Row("qr", "A"));
  const Outcome unwritten = RunProgram({"sheet", m_scratch.File("rows.jsonl"), "-o",
                                        m_scratch.File("no/sheet.pdf"), "--page", "A4", "--grid", "1x1"});
  EXPECT_EQ(unwritten.status, 1);
  EXPECT_THAT(unwritten.errors, StartsWith("mkbarcode: cannot write "));
  const Outcome full = RunShell(Program() + " sheet " + ShellQuoted(m_scratch.File("rows.jsonl")) +
                                " --page A4 --grid 1x1 -o - >/dev/full");
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.errors, "mkbarcode: cannot write standard output: No space left on device\n");
}

TEST_F(SheetProgram, SignalsLeaveNoFile) {
  const ScratchDirectory elsewhere;
  for (const int signal : {SIGINT, SIGTERM, SIGKILL}) {
    RunningProgram program({"sheet", "-", "-o", Pdf(), "--page", "A4", "--grid", "1x1"},
                           elsewhere.File("errors"));
    for (int i = 0; i < 5; ++i) {
      program.Write(Row("qr", "A"));
    }
    // Pages are being written while the rows still come.
    ASSERT_TRUE(Eventually([&] { return !m_scratch.Names().empty(); }));
    program.Signal(signal);
    constexpr int kSignalled = 1000;
    EXPECT_EQ(program.Wait(), kSignalled + signal);
    EXPECT_FALSE(IsThere()) << signal;
    if (signal != SIGKILL) {
      EXPECT_THAT(m_scratch.Names(), IsEmpty()) << signal;
    }
  }
}

TEST_F(SheetProgram, ManyPages) {
  std::string rows = "text\n";
  for (int i = 1; i <= 2'500; ++i) {
    rows += std::to_string(i) + "\n";
  }
  const Outcome outcome =
      Make(rows, {"--page", "20x20mm", "--grid", "1x1", "--margin", "1", "--type", "datamatrix"}, ".csv");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "mkbarcode: 2500 rows on 2500 pages: 2500 drawn, 0 failed\n");
  EXPECT_THAT(Info(), StartsWith("Pages: 2500\n"));
}

}  // namespace
}  // namespace barcode::tool
