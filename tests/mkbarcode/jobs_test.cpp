// Rows from bytes, and requests from rows.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

#include "label/field_table.h"
#include "mkbarcode/descriptor.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/jobs/input_format.h"
#include "mkbarcode/jobs/job_parser.h"
#include "mkbarcode/jobs/job_reader.h"
#include "mkbarcode/jobs/json_members.h"
#include "mkbarcode/jobs/row_reader.h"
#include "mkbarcode/jobs/table_row.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

void Add(RowCutter& cutter, std::string_view bytes) {
  while (!bytes.empty()) {
    const RowCutter::Room room = cutter.RoomForInput();
    const std::size_t count = bytes.copy(room.bytes, room.size);
    cutter.Add(count);
    bytes.remove_prefix(count);
  }
}

struct Cut {
  std::string bytes;
  RowProblem problem;

  bool operator==(const Cut&) const = default;
};

void PrintTo(const Cut& cut, std::ostream* stream) {
  *stream << '[' << cut.bytes << "] " << static_cast<int>(cut.problem);
}

void TakeAll(RowCutter& cutter, std::vector<Cut>& rows) {
  while (const std::optional<RawRow> row = cutter.Next()) {
    rows.push_back({std::string(row->bytes), row->problem});
  }
}

// All rows, with the bytes coming in pieces of one size.
std::vector<Cut> CutAll(InputFormat format, std::string_view bytes, std::size_t pieceSize) {
  RowCutter cutter(format);
  std::vector<Cut> rows;
  while (!bytes.empty()) {
    Add(cutter, bytes.substr(0, pieceSize));
    bytes.remove_prefix(std::min(pieceSize, bytes.size()));
    TakeAll(cutter, rows);
  }
  cutter.AddEnd();
  TakeAll(cutter, rows);
  return rows;
}

// The same in whatever pieces the bytes come.
std::vector<std::string> Rows(InputFormat format, std::string_view bytes) {
  const std::vector<Cut> whole = CutAll(format, bytes, bytes.size());
  for (const std::size_t pieceSize : std::array<std::size_t, 4>{1, 2, 3, 5}) {
    EXPECT_EQ(CutAll(format, bytes, pieceSize), whole) << pieceSize;
  }
  std::vector<std::string> rows;
  for (const Cut& cut : whole) {
    EXPECT_EQ(cut.problem, RowProblem::kNone);
    rows.push_back(cut.bytes);
  }
  return rows;
}

TEST(RowCutter, LinesEndWithLfOrCrLfOrTheInput) {
  EXPECT_THAT(Rows(InputFormat::kJsonLines, "{1}\n{2}\r\n{3}"), ElementsAre("{1}", "{2}", "{3}"));
  EXPECT_THAT(Rows(InputFormat::kJsonLines, "{1}\n"), ElementsAre("{1}"));
  EXPECT_THAT(Rows(InputFormat::kJsonLines, ""), IsEmpty());
}

TEST(RowCutter, BlankLinesAreNoRows) {
  EXPECT_THAT(Rows(InputFormat::kJsonLines, "\n{1}\n\r\n \t\n{2}\n\n"), ElementsAre("{1}", "{2}"));
  EXPECT_THAT(Rows(InputFormat::kCsv, "\na\n\r\n\r\rb\n\n"), ElementsAre("a", "b"));
}

TEST(RowCutter, ByteOrderMarksAreNoPartOfTheFirstRow) {
  EXPECT_THAT(Rows(InputFormat::kJsonLines, "\xEF\xBB\xBF{1}\n{2}"), ElementsAre("{1}", "{2}"));
  EXPECT_THAT(Rows(InputFormat::kCsv, "\xEF\xBB\xBF\"a\nb\",c\nd"), ElementsAre("\"a\nb\",c", "d"));
  EXPECT_THAT(Rows(InputFormat::kCsv, "\xEF"), ElementsAre("\xEF"));
  EXPECT_THROW(CutAll(InputFormat::kCsv, std::string_view("\xFF\xFEt\0y\0", 6), 6), RunError);
}

TEST(RowCutter, TableRowsEndOutsideQuotes) {
  EXPECT_THAT(Rows(InputFormat::kCsv, "a,\"b\nc\",d\r\ne\rf\n"), ElementsAre("a,\"b\nc\",d", "e", "f"));
  EXPECT_THAT(Rows(InputFormat::kCsv, "\"a\r\nb\"\r\nc"), ElementsAre("\"a\r\nb\"", "c"));
  EXPECT_THAT(Rows(InputFormat::kCsv, "\"a\"\"\n\",b\nc"), ElementsAre("\"a\"\"\n\",b", "c"));
}

TEST(RowCutter, QuotesInsideAPlainCellOpenNothing) {
  EXPECT_THAT(Rows(InputFormat::kCsv, "a\"b,c\nd,5\"\ne"), ElementsAre("a\"b,c", "d,5\"", "e"));
}

TEST(RowCutter, AQuoteThatNothingClosesCostsItsLineAlone) {
  for (const std::size_t pieceSize : std::array<std::size_t, 3>{1, 4, 100}) {
    EXPECT_THAT(CutAll(InputFormat::kCsv, "a\n\"b,c\r\nd\ne", pieceSize),
                ElementsAre(Cut{"a", RowProblem::kNone}, Cut{"\"b,c", RowProblem::kUnclosedQuote},
                            Cut{"d", RowProblem::kNone}, Cut{"e", RowProblem::kNone}));
    EXPECT_THAT(CutAll(InputFormat::kCsv, "a\n\"b", pieceSize),
                ElementsAre(Cut{"a", RowProblem::kNone}, Cut{"\"b", RowProblem::kUnclosedQuote}));
  }
  std::string table = "\"b\n";
  while (table.size() + 6 <= kLongestRow) {
    table += "plain\n";
  }
  const std::vector<Cut> rows = CutAll(InputFormat::kCsv, table, 100'000);
  ASSERT_EQ(rows.size(), 1 + (table.size() - 3) / 6);
  EXPECT_EQ(rows[0], (Cut{"\"b", RowProblem::kUnclosedQuote}));
  EXPECT_EQ(rows[1], (Cut{"plain", RowProblem::kNone}));
}

std::string Repeated(std::string_view text, std::size_t atLeast) {
  std::string repeated;
  while (repeated.size() < atLeast) {
    repeated += text;
  }
  return repeated;
}

TEST(RowCutter, LinesInsideALongQuotedCellAreNoRows) {
  const std::string lines = Repeated("code128,INJECTED\r\n\"\"a\"\",b\n", 3 * kLongestRow);
  for (const std::size_t pieceSize :
       std::array<std::size_t, 4>{1'000, 100'000, kLongestRow + 1, 100'000'000}) {
    const std::vector<Cut> rows =
        CutAll(InputFormat::kCsv, "a\nqr,\"" + lines + "\",x\r\nqr,ok\n\"b\n", pieceSize);
    ASSERT_EQ(rows.size(), 4) << pieceSize;
    EXPECT_EQ(rows[1].problem, RowProblem::kTooLongInQuote);
    EXPECT_EQ(rows[1].bytes, ("qr,\"" + lines).substr(0, 1000));
    EXPECT_EQ(rows[2], (Cut{"qr,ok", RowProblem::kNone}));
    EXPECT_EQ(rows[3], (Cut{"\"b", RowProblem::kUnclosedQuote}));
    // Nothing closes it.
    EXPECT_EQ(CutAll(InputFormat::kCsv, "\"" + lines, pieceSize).size(), 1);
    EXPECT_EQ(CutAll(InputFormat::kCsv, "\"" + lines + "\"", pieceSize).size(), 1);
  }
}

TEST(RowCutter, TheLongestRowIsTheSameInAllPieces) {
  for (const InputFormat format : {InputFormat::kJsonLines, InputFormat::kCsv}) {
    for (const std::size_t pieceSize : std::array<std::size_t, 3>{1'000, kLongestRow, 100'000'000}) {
      const std::string longest(kLongestRow, 'x');
      EXPECT_EQ(CutAll(format, longest + "\r\nb", pieceSize),
                (std::vector<Cut>{{longest, RowProblem::kNone}, {"b", RowProblem::kNone}}));
      EXPECT_EQ(CutAll(format, longest + "x\"\nb", pieceSize),
                (std::vector<Cut>{{std::string(1000, 'x'), RowProblem::kTooLong}, {"b", RowProblem::kNone}}));
    }
  }
}

TEST(RowCutter, ARowWithoutEndIsDroppedNotKept) {
  for (const InputFormat format : {InputFormat::kJsonLines, InputFormat::kCsv}) {
    for (const std::string& mark : {std::string(), std::string("\"")}) {
      RowCutter cutter(format);
      std::vector<Cut> rows;
      Add(cutter, "a\n");
      Add(cutter, mark);
      std::size_t largest = 0;
      for (int i = 0; i < 100; ++i) {
        Add(cutter, std::string(1U << 20U, 'x'));
        TakeAll(cutter, rows);
        largest = std::max(largest, cutter.RoomForInput().size);
      }
      Add(cutter, mark + "\nb\n");
      TakeAll(cutter, rows);
      ASSERT_EQ(rows.size(), 3);
      EXPECT_EQ(rows[1].problem, format == InputFormat::kCsv && !mark.empty() ? RowProblem::kTooLongInQuote
                                                                              : RowProblem::kTooLong);
      EXPECT_LE(rows[1].bytes.size(), 1000);
      EXPECT_EQ(rows[2], (Cut{"b", RowProblem::kNone}));
      EXPECT_LE(largest, 8 * kLongestRow);
    }
  }
}

TEST(RowReader, GivesWhatIsThereWithoutWaitingForMore) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  RowReader reader(ends[0], "pipe", InputFormat::kJsonLines);
  EXPECT_EQ(reader.Next(), std::nullopt);
  ASSERT_EQ(write(ends[1], "{1}\n{2", 6), 6);
  EXPECT_EQ(reader.Fill(), RowReader::Filled::kSome);
  EXPECT_EQ(reader.Next()->bytes, "{1}");
  EXPECT_EQ(reader.Next(), std::nullopt);
  EXPECT_FALSE(reader.IsAtEnd());
  close(ends[1]);
  reader.Fill();
  EXPECT_EQ(reader.Next()->bytes, "{2");
  EXPECT_EQ(reader.Next(), std::nullopt);
  EXPECT_TRUE(reader.IsAtEnd());
  EXPECT_EQ(reader.BytesTaken(), 6);
  close(ends[0]);
}

TEST(RowReader, IsWokenUpWhileItWaits) {
  std::array<int, 2> ends{};
  std::array<int, 2> bell{};
  ASSERT_EQ(pipe(ends.data()), 0);
  ASSERT_EQ(pipe(bell.data()), 0);
  ASSERT_EQ(write(bell[1], "!", 1), 1);
  RowReader reader(ends[0], "pipe", InputFormat::kJsonLines, bell[0]);
  EXPECT_EQ(reader.Fill(), RowReader::Filled::kWokenUp);
  for (const int descriptor : {ends[0], ends[1], bell[0], bell[1]}) {
    close(descriptor);
  }
}

TEST(RowReader, SaysWhatCannotBeRead) {
  const Descriptor directory(open("/", O_RDONLY | O_CLOEXEC));
  RowReader reader(directory.Number(), "jobs.csv", InputFormat::kCsv);
  try {
    reader.Fill();
    FAIL();
  } catch (const RunError& error) {
    EXPECT_THAT(error.what(), HasSubstr("cannot read jobs.csv: Is a directory"));
  }
}

TEST(TableRow, CellsWithAndWithoutQuotes) {
  EXPECT_THAT(CellsOf("a,b,c").cells, ElementsAre("a", "b", "c"));
  EXPECT_THAT(CellsOf("\"a,\"\"b\"\"\n\", c ,").cells, ElementsAre("a,\"b\"\n", " c ", ""));
  EXPECT_THAT(CellsOf("\"\"").cells, ElementsAre(""));
  EXPECT_THAT(CellsOf(",").cells, ElementsAre("", ""));
}

TEST(TableRow, QuotesThatDoNotFitAreNamed) {
  EXPECT_THAT(CellsOf("a,b\"c").problem.value(), HasSubstr("Cell 2 of the row has a quote inside"));
  EXPECT_THAT(CellsOf("\"a\"b,c").problem.value(),
              HasSubstr("Cell 1 of the row goes on behind its closing quote"));
  EXPECT_THAT(CellsOf("a,\"b").problem.value(), HasSubstr("nothing closes"));
}

TEST(JsonMembers, AreFoundWhateverTheirValues) {
  const auto members = MembersOf(R"( { "a" : "x,}\"" , "b":{"c":[1,"]}"]}, "\u0064":-1.5e3,"e":null } )");
  ASSERT_TRUE(members);
  std::vector<std::string> found;
  for (const JsonMember& member : *members) {
    found.push_back(member.name + '=' + std::string(member.value));
  }
  EXPECT_THAT(found, ElementsAre(R"(a="x,}\"")", R"(b={"c":[1,"]}"]})", "d=-1.5e3", "e=null"));
  EXPECT_EQ(MembersOf("{}")->size(), 0);
  EXPECT_FALSE(MembersOf("[1]"));
  EXPECT_FALSE(MembersOf("{\"a\":}"));
  EXPECT_FALSE(MembersOf(""));
  EXPECT_EQ(PlainText(R"("a\u00e4")"), "a\xC3\xA4");
  EXPECT_EQ(PlainText("12.50"), "12.50");
  EXPECT_EQ(PlainText("null"), "");
}

TEST(InputFormat, BySuffixOrWord) {
  EXPECT_EQ(FormatOfJobs("a.csv", std::nullopt), InputFormat::kCsv);
  EXPECT_EQ(FormatOfJobs("A.CSV", std::nullopt), InputFormat::kCsv);
  for (const char* const name : {"a.jsonl", "a.ndjson", "a.json", "-"}) {
    EXPECT_EQ(FormatOfJobs(name, std::nullopt), InputFormat::kJsonLines);
  }
  EXPECT_EQ(FormatOfJobs("-", "csv"), InputFormat::kCsv);
  EXPECT_EQ(FormatOfJobs("a.csv", "jsonl"), InputFormat::kJsonLines);
  EXPECT_THROW(FormatOfJobs("a.txt", std::nullopt), UsageError);
  EXPECT_THROW(FormatOfJobs("a.csv", "xml"), UsageError);
}

RawRow Raw(std::string_view bytes) {
  return {bytes, RowProblem::kNone};
}

JobParser TableParser(std::string_view header, JobRules rules = {}) {
  return {Raw(header), std::move(rules)};
}

std::string UsageErrorOf(std::string_view header, const JobRules& rules = {}) {
  try {
    TableParser(header, rules);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "none";
}

std::string ErrorOf(const Job& job) {
  return job.error ? job.error->what() : "none";
}

TEST(JobParser, CellsAreFields) {
  const JobParser parser = TableParser("type,text,module,show_text,quiet_zone,format");
  const Job job = parser.Parse(Raw("code128,\"a,\"\"b\",3,FALSE,standard,svg"));
  ASSERT_EQ(ErrorOf(job), "none");
  EXPECT_EQ(job.request.type, "code128");
  EXPECT_EQ(job.request.text, "a,\"b");
  EXPECT_EQ(job.request.module, 3);
  EXPECT_EQ(job.request.showText, false);
  EXPECT_EQ(job.request.quietZone, std::nullopt);
  EXPECT_EQ(job.request.format, label::Format::kSvg);
}

TEST(JobParser, BooleansAreTrueFalseOneOrZero) {
  const JobParser parser = TableParser("show_text");
  for (const auto& [cell, value] : {std::pair("true", true), {"1", true}, {"false", false}, {"0", false}}) {
    EXPECT_EQ(parser.Parse(Raw(cell)).request.showText, value);
  }
  EXPECT_THAT(ErrorOf(parser.Parse(Raw("yes"))), HasSubstr("show_text"));
}

TEST(JobParser, EmptyCellsAreAbsent) {
  JobRules rules;
  rules.defaults.module = 5;
  rules.defaults.type = "qr";
  const JobParser parser = TableParser("type,text,module", rules);
  const Job job = parser.Parse(Raw(",x,\"\""));
  EXPECT_EQ(job.request.type, "qr");
  EXPECT_EQ(job.request.module, 5);
  EXPECT_EQ(parser.Parse(Raw("itf,12,7")).request.module, 7);
  const Job line = JobParser(rules).Parse(Raw(R"({"text":"x","module":null})"));
  EXPECT_EQ(line.request.module, 5);
}

TEST(JobParser, RowsThatDoNotFitTheHeaderFail) {
  const JobParser parser = TableParser("type,text");
  EXPECT_EQ(
      ErrorOf(parser.Parse(Raw("code128"))),
      "The row has 1 cell and the header 2; each column wants one, empty where there is nothing to say.");
  EXPECT_THAT(ErrorOf(parser.Parse(Raw("code128,a,b"))), HasSubstr("The row has 3 cells and the header 2"));
  EXPECT_THAT(ErrorOf(parser.Parse(Raw(std::string_view("code128,a\0", 10)))), HasSubstr("zero byte"));
  EXPECT_THAT(ErrorOf(parser.Parse(Raw("code128,\xFF"))), HasSubstr("not in UTF-8"));
  EXPECT_THAT(ErrorOf(parser.Parse(Raw("code128,\"a\"b"))), HasSubstr("closing quote"));
  EXPECT_THAT(ErrorOf(parser.Parse({"\"", RowProblem::kUnclosedQuote})), HasSubstr("nothing closes"));
  EXPECT_THAT(ErrorOf(parser.Parse({"x", RowProblem::kTooLong})), HasSubstr("longer than 1048576 bytes;"));
  EXPECT_THAT(
      ErrorOf(parser.Parse({"\"", RowProblem::kTooLongInQuote})),
      HasSubstr("longer than 1048576 bytes and goes on up to its closing quote; if nothing closes it, "
                "the rows behind it are lost"));
}

TEST(JobParser, HeadersThatDoNotFitAreUsageErrors) {
  EXPECT_EQ(UsageErrorOf("type,text"), "none");
  EXPECT_EQ(UsageErrorOf("type,txt"),
            "the column \"txt\" is no field; use it in --name, or give --ignore-unknown");
  EXPECT_EQ(UsageErrorOf("type,Quiet-Zone"),
            "the column \"Quiet-Zone\" is no field; did you mean \"quiet_zone\"?");
  EXPECT_EQ(UsageErrorOf("type, text"), "the column \" text\" is no field; did you mean \"text\"?");
  EXPECT_EQ(UsageErrorOf("type,text,type"), "the column \"type\" stands twice");
  EXPECT_THAT(UsageErrorOf("type,text,"), HasSubstr("column 3 has no name"));
  EXPECT_THAT(UsageErrorOf("type;text"), HasSubstr("separated by commas"));
  EXPECT_THAT(UsageErrorOf("type,t\xE4xt"), HasSubstr("UTF-8"));
  EXPECT_THAT(UsageErrorOf("type,\"te\"xt"), HasSubstr("closing quote"));
  EXPECT_EQ(UsageErrorOf("type,txt,,txt", {.ignoreUnknown = true}), "none");
  EXPECT_EQ(UsageErrorOf("type,text,sku", {.extraColumns = {"sku"}}), "none");
  EXPECT_EQ(UsageErrorOf("type,text", {.extraColumns = {"sku"}}), "there is no field and no column \"sku\"");
  EXPECT_EQ(UsageErrorOf("sku,text,sku", {.extraColumns = {"sku"}}), "the column \"sku\" stands twice");
}

TEST(JobParser, ExtraColumnsAreKept) {
  const JobParser parser = TableParser("sku,type,text,other", {.extraColumns = {"other", "sku"}});
  EXPECT_THAT(parser.Parse(Raw("S-1,qr,x,")).extraValues, ElementsAre("", "S-1"));
}

TEST(JobParser, UnknownMembersFailTheirRow) {
  const JobParser parser{JobRules{}};
  const Job job = parser.Parse(Raw(R"({"type":"qr","text":"x","sku":1})"));
  ASSERT_TRUE(job.error);
  EXPECT_EQ(job.error->Code(), label::ErrorCode::kUnknownField);
  EXPECT_EQ(job.error->Field(), "sku");
  EXPECT_THAT(ErrorOf(job), HasSubstr("--ignore-unknown"));
}

TEST(JobParser, UnknownMembersMayBeIgnoredOrUsed) {
  const JobParser ignoring{JobRules{.ignoreUnknown = true}};
  EXPECT_EQ(ErrorOf(ignoring.Parse(Raw(R"({"sku":{"a":[1]},"type":"qr","text":"x","b":2})"))), "none");
  EXPECT_THAT(ErrorOf(ignoring.Parse(Raw(R"({"sku":1,"module":"x"})"))), HasSubstr("module"));
  EXPECT_THAT(ErrorOf(ignoring.Parse(Raw(R"({"text":"a","text":"b"})"))), HasSubstr("stands twice"));
  EXPECT_THAT(ErrorOf(ignoring.Parse(Raw("{"))), HasSubstr("ends too early"));

  const JobParser using_{JobRules{.extraColumns = {"sku"}}};
  const Job job = using_.Parse(Raw(R"({"sku":17,"type":"qr","text":"x"})"));
  EXPECT_EQ(ErrorOf(job), "none");
  EXPECT_THAT(job.extraValues, ElementsAre("17"));
  EXPECT_EQ(job.request.text, "x");
  EXPECT_THAT(ErrorOf(using_.Parse(Raw(R"({"sku":17,"other":1})"))), HasSubstr("other"));
  EXPECT_THAT(ErrorOf(using_.Parse(Raw(R"({"sku":1,"sku":2})"))), HasSubstr("stands twice"));
}

TEST(JobParser, WritesRowsAsJsonThatCanBeAskedForAgain) {
  const JobParser table = TableParser("type,text,module,show_text,sku", {.extraColumns = {"sku"}});
  const std::string json = table.AsJson(Raw("code128,\"a\"\"b\",03,1,7"));
  EXPECT_EQ(json, R"({"type":"code128","text":"a\"b","module":3,"show_text":true,"sku":"7"})");
  EXPECT_EQ(ErrorOf(JobParser(JobRules{.extraColumns = {"sku"}}).Parse(Raw(json))), "none");
  EXPECT_EQ(table.AsJson(Raw("code128,,,,")), R"({"type":"code128"})");
  EXPECT_EQ(table.AsJson(Raw(",,inf,maybe,")), R"({"module":"inf","show_text":"maybe"})");
  EXPECT_EQ(table.AsJson(Raw("a,b")), R"("a,b")");
  const JobParser lines{JobRules{}};
  EXPECT_EQ(lines.AsJson(Raw(R"({"a": 1})")), R"({"a": 1})");
  EXPECT_EQ(lines.AsJson(Raw("{\"a\xFF")), "\"{\\\"a\xEF\xBF\xBD\"");
}

TEST(JobReader, NumbersRowsBelowTheHeader) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text\r\nqr,a\r\n\r\nqr\r\nqr,c");
  JobReader reader(scratch.File("jobs.csv"), InputFormat::kCsv, {});
  EXPECT_EQ(reader.Size(), 27);
  std::vector<std::string> rows;
  while (const std::optional<JobReader::Row> row = reader.Next()) {
    rows.push_back(std::to_string(row->number) + (row->job.error ? "!" : *row->job.request.text));
  }
  EXPECT_THAT(rows, ElementsAre("1a", "2!", "3c"));
}

TEST(JobReader, ATableWithoutHeaderIsAUsageErrorAndAMissingFileIsNot) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "");
  EXPECT_THROW(JobReader(scratch.File("jobs.csv"), InputFormat::kCsv, {}), UsageError);
  EXPECT_THROW(JobReader(scratch.File("none.csv"), InputFormat::kCsv, {}), RunError);
  EXPECT_EQ(JobReader(scratch.File("jobs.csv"), InputFormat::kJsonLines, {}).Next(), std::nullopt);
}

}  // namespace
}  // namespace barcode::tool
