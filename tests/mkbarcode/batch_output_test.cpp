// `mkbarcode batch`: what it reads, writes and says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "base/base64.h"
#include "base/line.h"
#include "label/json_request.h"
#include "label/label.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

std::string PictureOf(const std::string& request) {
  return label::MakeFromJson(request).data;
}

std::vector<json> LinesOf(const std::string& text) {
  std::vector<json> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find('\n', start);
    lines.push_back(json::parse(text.substr(start, end - start)));
    start = end + 1;
  }
  return lines;
}

// Of every file below a directory, in alphabetical order.
std::vector<std::string> Files(const std::string& directory) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    if (!entry.is_directory()) {
      files.push_back(std::filesystem::relative(entry.path(), directory).string());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

// Rows of all kinds, some of which fail, some of which have one name.
std::string MixedTable(int rows) {
  std::string table = "type,text,format,module,sku\r\n";
  for (int i = 1; i <= rows; ++i) {
    table += i % 7 == 0    ? Line("code128,\"Zeile, ", i, "\",svg,,S-", i % 50)
             : i % 11 == 0 ? Line("itf,klein,,3,S-", i)
             : i % 13 == 0 ? Line("qr,https://example.com/", i, ",pdf,,T-", i)
             : i % 17 == 0 ? Line("itf,12")
                           : Line("code128,Pallet ", i, ",,2,S-", i);
    table += "\r\n";
  }
  return table;
}

TEST(Batch, WritesAFileForEachRow) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"),
            "\xEF\xBB\xBFtype,text,format\r\ncode128,A,\r\nqr,\"a,\"\"b\",svg\r\nitf,12,pdf\r\n");
  const Outcome outcome = RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("new/labels")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, "mkbarcode: 3 rows: 3 drawn, 0 failed\n");
  EXPECT_THAT(Files(scratch.File("new/labels")), ElementsAre("000001.png", "000002.svg", "000003.pdf"));
  EXPECT_EQ(ReadFile(scratch.File("new/labels/000001.png")), PictureOf(R"({"type":"code128","text":"A"})"));
  EXPECT_EQ(ReadFile(scratch.File("new/labels/000002.svg")),
            PictureOf(R"({"type":"qr","text":"a,\"b","format":"svg"})"));
  EXPECT_EQ(ReadFile(scratch.File("new/labels/000003.pdf")),
            PictureOf(R"({"type":"itf","text":"12","format":"pdf"})"));
}

TEST(Batch, JsonLinesTellOfEveryRowInOrder) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.jsonl"),
            "{\"type\":\"code128\",\"text\":\"A\"}\n\n{\"type\":\"itf\",\"text\":\"a\"}\r\n"
            "{\"type\":\"qr\",\"text\":\"\\u00e4\",\"format\":\"svg\"}");
  const Outcome outcome = RunProgram({"batch", scratch.File("jobs.jsonl"), "-o", "-", "--quiet"});
  EXPECT_EQ(outcome.status, 1);
  const std::vector<json> lines = LinesOf(outcome.output);
  ASSERT_EQ(lines.size(), 3);
  const label::Label first = label::MakeFromJson(R"({"type":"code128","text":"A"})");
  EXPECT_EQ(lines[0]["n"], 1);
  EXPECT_EQ(lines[0]["ok"], true);
  EXPECT_EQ(lines[0]["media_type"], "image/png");
  EXPECT_EQ(Base64Decode(lines[0]["data"].get<std::string>()), first.data);
  EXPECT_EQ(lines[0]["report"], json::parse(first.report));
  EXPECT_EQ(lines[1],
            (json{{"n", 2},
                  {"ok", false},
                  {"report", json::parse(label::MakeFromJson(R"({"type":"itf","text":"a"})").report)}}));
  EXPECT_EQ(lines[2]["n"], 3);
  EXPECT_EQ(lines[2]["media_type"], "image/svg+xml");
  EXPECT_EQ(lines[2]["svg"], PictureOf(R"({"type":"qr","text":"ä","format":"svg"})"));
  EXPECT_FALSE(lines[2].contains("data"));
  const std::vector<json> errors = LinesOf(outcome.errors);
  ASSERT_EQ(errors.size(), 1);
  EXPECT_EQ(errors[0]["n"], 2);
  EXPECT_EQ(errors[0]["request"], (json{{"type", "itf"}, {"text", "a"}}));
  EXPECT_EQ(errors[0]["error"], lines[1]["report"]["error"]);
}

TEST(Batch, StandardInputIsJsonLinesUnlessSaidOtherwise) {
  const Outcome lines =
      RunShell(Concat({"echo '{\"type\":\"qr\",\"text\":\"x\"}' | ", Program(), " batch - -o -"}));
  EXPECT_EQ(lines.status, 0) << lines.errors;
  const Outcome table =
      RunShell(Concat({"printf 'type,text\\rqr,x\\r' | ", Program(), " batch - --input-format csv -o -"}));
  EXPECT_EQ(table.status, 0) << table.errors;
  EXPECT_EQ(table.output, lines.output);
  EXPECT_THAT(table.output, StartsWith(R"({"n":1,"ok":true,)"));
}

TEST(Batch, OptionsAreDefaultsOfAllRows) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "text,module,show_text\nA,,\nB,5,1\n");
  const Outcome outcome =
      RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.Path(), "--type", "code128", "--module",
                  "3", "--no-show-text", "--format", "svg", "--name", "{module}.{format}"});
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_EQ(ReadFile(scratch.File("3.svg")),
            PictureOf(R"({"type":"code128","text":"A","module":3,"show_text":false,"format":"svg"})"));
  EXPECT_EQ(ReadFile(scratch.File("5.svg")),
            PictureOf(R"({"type":"code128","text":"B","module":5,"show_text":true,"format":"svg"})"));
}

TEST(Batch, StrictRefusesWhatHasWarnings) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text\nnec2of5,123\ncode128,A\n");
  const Outcome lenient = RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("a")});
  EXPECT_EQ(lenient.status, 0);
  EXPECT_EQ(lenient.errors, "mkbarcode: 2 rows: 2 drawn (1 with warnings), 0 failed\n");
  const Outcome strict =
      RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("b"), "--strict", "-q"});
  EXPECT_EQ(strict.status, 1);
  EXPECT_EQ(LinesOf(strict.errors).at(0)["error"]["code"], "no_reader");
  EXPECT_THAT(Files(scratch.File("b")), ElementsAre("000002.png"));
}

// Usage errors come before anything is made.
TEST(Batch, WrongUsageIsToldBeforeAnythingIsDrawn) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text,sku\ncode128,A,1\n");
  WriteFile(scratch.File("twice.csv"), "type,text,type\ncode128,A,qr\n");
  WriteFile(scratch.File("empty.csv"), "");
  const std::string jobs = scratch.File("jobs.csv");
  const std::string out = scratch.File("out");
  struct Case {
    std::vector<std::string> arguments;
    std::string message;
  };
  const std::vector<Case> cases = {
      {{jobs, "-o", out}, "the column \"sku\" is no field"},
      {{jobs, "-o", out, "--name", "{n}-{shop}"}, "\"sku\""},
      {{scratch.File("twice.csv"), "-o", out}, "stands twice"},
      {{scratch.File("empty.csv"), "-o", out}, "the table is empty"},
      {{jobs, "--ignore-unknown"}, "no output"},
      {{"-o", out}, "no jobs"},
      {{jobs, "-o", out, "--module", "0"}, "--module"},
      {{jobs, "-o", out, "--module", "x"}, "--module"},
      {{jobs, "-o", out, "--format", "jpg"}, "--format"},
      {{jobs, "-o", out, "-j", "0"}, "-j"},
      {{jobs, "-o", out, "-j", "two"}, "-j"},
      {{jobs, "-o", out, "--name", "../{n}"}, "--name"},
      {{jobs, "-o", out, "--name", "{n"}, "--name"},
      {{jobs, "-o", out, "--input-format", "xml"}, "--input-format"},
      {{jobs, "-o", out + ".zip", "--resume", "--ignore-unknown"}, "--resume"},
      {{jobs, "-o", "-", "--resume", "--ignore-unknown"}, "--resume"},
      {{jobs, "-o", "-", "--name", "{n}"}, "--name"},
      {{jobs, "-o", out + ".png", "--ignore-unknown"}, "directory"},
      {{jobs, "-o", out, "--ignore-unknown", "--errors", jobs}, "--errors"},
      {{jobs, "-o", out, "--ignore-unknown", "--errors", "-"}, "--errors takes a file"},
      {{jobs, "-o", out, "--ignore-unknown", "--errors", out}, "--errors is the output"},
      {{jobs, "-o", out + "/", "--ignore-unknown", "--errors", out}, "--errors is the output"},
      {{jobs, "-o", scratch.Path(), "--ignore-unknown", "--errors", scratch.Path()},
       "--errors is the output"},
      {{jobs, "-o", out + ".zip", "--ignore-unknown", "--errors", scratch.File("./out.zip")},
       "--errors is the output"},
      {{jobs, "-o", out, "--mudule", "3"}, "mudule"},
  };
  for (const Case& test : cases) {
    std::vector<std::string> arguments = {"batch"};
    arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.status, 2) << test.message;
    EXPECT_EQ(outcome.output, "") << test.message;
    EXPECT_THAT(outcome.errors, AllOf(StartsWith("mkbarcode: "), HasSubstr(test.message)));
  }
  EXPECT_THAT(scratch.Names(), ElementsAre("empty.csv", "jobs.csv", "twice.csv"));
}

TEST(Batch, ColumnsThatAreNoFieldsMayBeUsedOrIgnored) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text,sku\ncode128,A,x/../y\ncode128,B,\n");
  EXPECT_EQ(
      RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("a"), "--ignore-unknown"}).status, 0);
  const Outcome outcome = RunProgram(
      {"batch", scratch.File("jobs.csv"), "-o", scratch.File("b"), "--name", "{type}/{sku}.{format}", "-q"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(Files(scratch.File("b")), ElementsAre("code128/x_.._y.png"));
  const json error = LinesOf(outcome.errors).at(0);
  EXPECT_EQ(error["n"], 2);
  EXPECT_EQ(error["error"]["field"], "sku");
}

TEST(Batch, UnknownMembersFailTheirRow) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.jsonl"),
            "{\"type\":\"qr\",\"text\":\"x\",\"sku\":1}\n{\"type\":\"qr\",\"text\":\"x\"}\nnonsense\n");
  const Outcome outcome = RunProgram({"batch", scratch.File("jobs.jsonl"), "-o", scratch.File("a"), "-q"});
  EXPECT_EQ(outcome.status, 1);
  const std::vector<json> errors = LinesOf(outcome.errors);
  ASSERT_EQ(errors.size(), 2);
  EXPECT_EQ(errors[0]["error"]["code"], "unknown_field");
  EXPECT_EQ(errors[1]["n"], 3);
  EXPECT_EQ(errors[1]["request"], "nonsense");
  EXPECT_EQ(errors[1]["error"]["code"], "bad_request");
  EXPECT_THAT(Files(scratch.File("a")), ElementsAre("000002.png"));
  const Outcome ignoring =
      RunProgram({"batch", scratch.File("jobs.jsonl"), "-o", scratch.File("b"), "-q", "--ignore-unknown"});
  EXPECT_THAT(Files(scratch.File("b")), ElementsAre("000001.png", "000002.png"));
}

TEST(Batch, ErrorsGoToAFileAndIntoTheSummary) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"),
            "type,text,module,show_text\nitf,a,2,1\ncode128,A,,\ncode128,A\ncode128,A,999,\n\"code128,A,,\n");
  const Outcome outcome = RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("out"),
                                      "--errors", scratch.File("errors.jsonl")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, "mkbarcode: 5 rows: 1 drawn, 4 failed\n");
  const std::vector<json> errors = LinesOf(ReadFile(scratch.File("errors.jsonl")));
  ASSERT_EQ(errors.size(), 4);
  EXPECT_EQ(errors[0]["request"], (json{{"type", "itf"}, {"text", "a"}, {"module", 2}, {"show_text", true}}));
  EXPECT_EQ(errors[0]["error"]["code"], "bad_text");
  EXPECT_EQ(errors[1]["n"], 3);
  EXPECT_EQ(errors[1]["request"], "code128,A");
  EXPECT_EQ(errors[2]["error"]["field"], "module");
  EXPECT_EQ(errors[3]["n"], 5);
  EXPECT_THAT(errors[3]["error"]["message"].get<std::string>(), HasSubstr("nothing closes"));
}

TEST(Batch, ErrorsNeverLandInTheOutput) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text\nqr,A\nitf,B\n");
  WriteFile(scratch.File("a.zip"), "earlier");
  std::filesystem::create_hard_link(scratch.File("a.zip"), scratch.File("other"));
  const Outcome linked = RunProgram(
      {"batch", scratch.File("jobs.csv"), "-o", scratch.File("a.zip"), "--errors", scratch.File("other")});
  EXPECT_EQ(linked.status, 2);
  EXPECT_THAT(linked.errors, HasSubstr("--errors is the output"));
  EXPECT_EQ(ReadFile(scratch.File("a.zip")), "earlier");
  const std::string lines = scratch.File("lines");
  const Outcome redirected = RunShell(
      Concat({Program(), " batch ", scratch.File("jobs.csv"), " -o - --errors ", lines, " >", lines}));
  EXPECT_EQ(redirected.status, 2);
  EXPECT_THAT(redirected.errors, HasSubstr("--errors is the output"));
  // A device is nobody's alone.
  EXPECT_EQ(RunShell(Concat({Program(), " batch ", scratch.File("jobs.csv"),
                             " -o - --errors /dev/null >/dev/null"}))
                .status,
            1);
}

TEST(Batch, ACellWithTooManyLinesIsOneRow) {
  const ScratchDirectory scratch;
  std::string table = "type,text\nqr,\"";
  for (int i = 0; i < 70'000; ++i) {
    table += "code128,INJECTED\n";
  }
  WriteFile(scratch.File("jobs.csv"), table + "\"\nqr,ok\n");
  const Outcome outcome = RunProgram({"batch", scratch.File("jobs.csv"), "-o", "-", "-q"});
  EXPECT_EQ(outcome.status, 1);
  const std::vector<json> errors = LinesOf(outcome.errors);
  ASSERT_EQ(errors.size(), 1);
  EXPECT_EQ(errors[0]["n"], 1);
  EXPECT_THAT(errors[0]["error"]["message"].get<std::string>(), HasSubstr("longer than 1048576 bytes"));
  const std::vector<json> lines = LinesOf(outcome.output);
  ASSERT_EQ(lines.size(), 2);
  EXPECT_EQ(lines[1]["n"], 2);
  EXPECT_EQ(lines[1]["ok"], true);
}

TEST(Batch, TheLaterOfTwoRowsWithOneNameFailsOrIsNumbered) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text\ncode128,A\ncode128,B\ncode128,A\ncode128,A\n");
  for (const char* const output : {"dir", "a.zip", "a.tar"}) {
    const Outcome refused = RunProgram(
        {"batch", scratch.File("jobs.csv"), "-o", scratch.File(output), "--name", "{text}.png", "-q"});
    EXPECT_EQ(refused.status, 1);
    const std::vector<json> errors = LinesOf(refused.errors);
    ASSERT_EQ(errors.size(), 2) << output;
    EXPECT_EQ(errors[0]["n"], 3);
    EXPECT_EQ(errors[0]["error"]["field"], "name");
    EXPECT_EQ(errors[1]["n"], 4);
  }
  EXPECT_THAT(Files(scratch.File("dir")), ElementsAre("A.png", "B.png"));
  EXPECT_EQ(RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("dir"), "--name", "{text}.png",
                        "--number-duplicates"})
                .status,
            0);
  EXPECT_THAT(Files(scratch.File("dir")), ElementsAre("A-2.png", "A-3.png", "A.png", "B.png"));
}

TEST(Batch, NamesTooLongForTheFileSystemFailTheirRow) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"),
            Line("type,text\ncode128,A\nqr,", std::string(300, 'x'), "\ncode128,B\n"));
  for (const char* const output : {"dir", "a.zip", "a.tar"}) {
    const Outcome outcome = RunProgram(
        {"batch", scratch.File("jobs.csv"), "-o", scratch.File(output), "--name", "{text}.png", "-q"});
    EXPECT_EQ(outcome.status, 1);
    ASSERT_EQ(LinesOf(outcome.errors).size(), 1) << outcome.errors;
    EXPECT_EQ(LinesOf(outcome.errors)[0]["n"], 2);
  }
  EXPECT_THAT(Files(scratch.File("dir")), ElementsAre("A.png", "B.png"));
}

TEST(Batch, NothingIsWrittenThroughLinksOrOverDirectories) {
  const ScratchDirectory scratch;
  std::filesystem::create_directories(scratch.File("out/d.png"));
  std::filesystem::create_directories(scratch.File("elsewhere"));
  std::filesystem::create_symlink(scratch.File("elsewhere"), scratch.File("out/link"));
  std::filesystem::create_symlink(scratch.File("elsewhere/target.png"), scratch.File("out/a.png"));
  WriteFile(scratch.File("elsewhere/target.png"), "stays");
  WriteFile(scratch.File("out/file"), "");
  WriteFile(scratch.File("jobs.csv"),
            "type,text,folder,name\nqr,x,link,x.png\nqr,x,plain,a.png\nqr,x,file,y.png\nqr,x,plain,b.png\n");
  const Outcome folders = RunProgram(
      {"batch", scratch.File("jobs.csv"), "-o", scratch.File("out"), "--name", "{folder}/{name}", "-q"});
  EXPECT_EQ(folders.status, 1);
  ASSERT_EQ(LinesOf(folders.errors).size(), 2) << folders.errors;
  EXPECT_EQ(LinesOf(folders.errors)[0]["n"], 1);
  EXPECT_EQ(LinesOf(folders.errors)[1]["n"], 3);
  WriteFile(scratch.File("names.csv"), "type,text,name\nqr,x,a\nqr,x,d\nqr,x,e\n");
  const Outcome names = RunProgram(
      {"batch", scratch.File("names.csv"), "-o", scratch.File("out"), "--name", "{name}.png", "-q"});
  EXPECT_EQ(names.status, 1);
  ASSERT_EQ(LinesOf(names.errors).size(), 1) << names.errors;
  EXPECT_EQ(LinesOf(names.errors)[0]["n"], 2);
  EXPECT_EQ(ReadFile(scratch.File("elsewhere/target.png")), "stays");
  EXPECT_FALSE(std::filesystem::is_symlink(scratch.File("out/a.png")));
  EXPECT_THAT(Files(scratch.File("elsewhere")), ElementsAre("target.png"));
  EXPECT_THAT(Files(scratch.File("out")),
              ElementsAre("a.png", "e.png", "file", "plain/a.png", "plain/b.png"));
}

TEST(Batch, FilesAreReplacedOrWithResumeSkipped) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text,name\nqr,x,sub/a\nqr,y,b\nqr,z,b\n");
  std::filesystem::create_directories(scratch.File("out"));
  WriteFile(scratch.File("out/b.png"), "earlier");
  const std::vector<std::string> arguments = {
      "batch", scratch.File("jobs.csv"), "-o", scratch.File("out"), "--name", "{name}.png"};
  std::vector<std::string> resuming = arguments;
  resuming.emplace_back("--resume");
  const Outcome resumed = RunProgram(resuming);
  EXPECT_EQ(resumed.status, 1);
  EXPECT_THAT(resumed.errors, HasSubstr("3 rows: 1 drawn, 1 there already, 1 failed"));
  EXPECT_EQ(ReadFile(scratch.File("out/b.png")), "earlier");
  EXPECT_THAT(RunProgram(arguments).errors, HasSubstr("3 rows: 2 drawn, 1 failed"));
  EXPECT_EQ(ReadFile(scratch.File("out/b.png")), PictureOf(R"({"type":"qr","text":"y"})"));
  EXPECT_THAT(RunProgram(resuming).errors, HasSubstr("3 rows: 0 drawn, 2 there already, 1 failed"));
}

TEST(Batch, ResumeLeavesLinksToFiles) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text,name\nqr,x,a\nqr,y,b\n");
  std::filesystem::create_directories(scratch.File("out"));
  WriteFile(scratch.File("target.png"), "earlier");
  std::filesystem::create_symlink(scratch.File("target.png"), scratch.File("out/a.png"));
  std::filesystem::create_symlink(scratch.File("gone.png"), scratch.File("out/b.png"));
  const Outcome outcome = RunProgram(
      {"batch", scratch.File("jobs.csv"), "-o", scratch.File("out"), "--name", "{name}.png", "--resume"});
  EXPECT_EQ(outcome.errors, "mkbarcode: 2 rows: 1 drawn, 1 there already, 0 failed\n");
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.File("out/a.png")));
  EXPECT_EQ(ReadFile(scratch.File("out/a.png")), "earlier");
  // A link to nothing is no label.
  EXPECT_FALSE(std::filesystem::is_symlink(scratch.File("out/b.png")));
  EXPECT_THAT(scratch.Names(), ElementsAre("jobs.csv", "out", "target.png"));
}

TEST(Batch, WritesTheSameWithAnyNumberOfThreads) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), MixedTable(2000));
  for (const char* const threads : {"1", "2", "7"}) {
    for (const char* const output : {"dir", "a.zip", "a.tar"}) {
      const std::string name = Line(threads, output);
      EXPECT_EQ(RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File(name), "-j", threads,
                            "--name", "{type}/{sku}.{format}", "--number-duplicates", "--errors",
                            scratch.File(name + ".errors")})
                    .status,
                1);
    }
    EXPECT_EQ(
        RunShell(Concat({Program(), " batch ", scratch.File("jobs.csv"), " --ignore-unknown -q -o - -j ",
                         threads, " >", scratch.File(Line(threads, "lines")), " 2>",
                         scratch.File(Line(threads, "lines.errors"))}))
            .status,
        1);
  }
  for (const char* const threads : {"2", "7"}) {
    for (const char* const file :
         {"a.zip", "a.tar", "lines", "a.zip.errors", "a.tar.errors", "dir.errors", "lines.errors"}) {
      EXPECT_EQ(ReadFile(scratch.File(Line(threads, file))), ReadFile(scratch.File(Line("1", file)))) << file;
    }
    const std::string directory = scratch.File(Line(threads, "dir"));
    ASSERT_EQ(Files(directory), Files(scratch.File("1dir")));
    for (const std::string& file : Files(directory)) {
      EXPECT_EQ(ReadFile(Line(directory, '/', file)), ReadFile(scratch.File("1dir/" + file)));
    }
  }
  EXPECT_EQ(LinesOf(ReadFile(scratch.File("1lines"))).size(), 2000);
}

constexpr const char* kReadArchives = R"PY(
import sys, tarfile, zipfile
z = zipfile.ZipFile(sys.argv[1])
assert z.testzip() is None
t = tarfile.open(sys.argv[2])
members = t.getmembers()
assert [m.name for m in members] == z.namelist(), (len(members), len(z.namelist()))
for m, info in zip(members, z.infolist()):
    assert (m.mtime, m.mode, m.uid, m.gid, m.isreg()) == (0, 0o644, 0, 0, True), m
    assert info.date_time == (1980, 1, 1, 0, 0, 0) and info.external_attr >> 16 == 0o100644, info
    assert info.compress_type == (0 if m.name.endswith('.png') else 8), info
    data = t.extractfile(m).read()
    assert data == z.read(info)
    assert data == open(sys.argv[3] + '/' + m.name, 'rb').read()
print(len(members), members[0].name, members[-1].name)
)PY";

TEST(Batch, ArchivesHoldTheFilesInTheOrderOfRows) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), MixedTable(700));
  WriteFile(scratch.File("read.py"), kReadArchives);
  for (const char* const output : {"dir", "a.zip", "a.tar"}) {
    RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File(output), "--name",
                "\xC3\xA4/{n}-{type}.{format}", "--ignore-unknown"});
  }
  const Outcome outcome = RunShell(Line("python3 ", scratch.File("read.py"), ' ', scratch.File("a.zip"), ' ',
                                        scratch.File("a.tar"), ' ', scratch.File("dir")));
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_THAT(outcome.output, HasSubstr(" \xC3\xA4/1-code128.png \xC3\xA4/700-code128.svg"));
  // GNU tar has nothing to complain of either.
  const Outcome tar = RunShell(Line("tar tf ", scratch.File("a.tar"), " >/dev/null"));
  EXPECT_EQ(tar.status, 0);
  EXPECT_EQ(tar.errors, "");
}

TEST(Batch, AZipOfManyMembersIsWhole) {
  const ScratchDirectory scratch;
  std::string jobs;
  constexpr int kMembers = 70'000;  // more than the old directory counts
  for (int i = 0; i < kMembers; ++i) {
    jobs += "{\"type\":\"jan8\",\"text\":\"4901234\",\"show_text\":false}\n";
  }
  WriteFile(scratch.File("jobs.jsonl"), jobs);
  ASSERT_EQ(RunProgram({"batch", scratch.File("jobs.jsonl"), "-o", scratch.File("a.zip")}).status, 0);
  const Outcome outcome =
      RunShell(Line("python3 -c 'import zipfile; z = zipfile.ZipFile(\"", scratch.File("a.zip"),
                    "\"); print(len(z.namelist()), z.testzip())'"));
  EXPECT_EQ(outcome.output, "70000 None\n") << outcome.errors;
}

TEST(Batch, ArchivesKeepLinksAndPermissionsOfTheEarlierFile) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text\nqr,x\n");
  WriteFile(scratch.File("real.zip"), "earlier");
  chmod(scratch.File("real.zip").c_str(), 0640);
  std::filesystem::create_symlink("real.zip", scratch.File("link.zip"));
  EXPECT_EQ(RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("link.zip")}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.File("link.zip")));
  EXPECT_THAT(ReadFile(scratch.File("real.zip")), StartsWith("PK\3\4"));
  struct stat status {};
  ASSERT_EQ(stat(scratch.File("real.zip").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640);
}

TEST(Batch, NoRowsAreAnEmptyRun) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text\n");
  const Outcome outcome = RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File("a.zip")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "mkbarcode: 0 rows: 0 drawn, 0 failed\n");
  EXPECT_EQ(RunShell(Line("python3 -c 'import zipfile; print(zipfile.ZipFile(\"", scratch.File("a.zip"),
                          "\").namelist())'"))
                .output,
            "[]\n");
}

TEST(Batch, OutputThatFailsEndsTheRun) {
  const ScratchDirectory scratch;
  std::string jobs;
  for (int i = 0; i < 20'000; ++i) {
    jobs += "{\"type\":\"qr\",\"text\":\"x\"}\n";
  }
  WriteFile(scratch.File("jobs.jsonl"), jobs);
  const Outcome full =
      RunShell(Concat({Program(), " batch ", scratch.File("jobs.jsonl"), " -o - >/dev/full"}));
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.errors, "mkbarcode: cannot write to standard output: No space left on device\n");
  const Outcome gone = RunShell(Concat({"{ ", Program(), " batch ", scratch.File("jobs.jsonl"),
                                        " -o -; echo $? >&2; } | head -1 >/dev/null"}));
  EXPECT_EQ(gone.errors, "mkbarcode: cannot write to standard output: Broken pipe\n1\n");
  const Outcome errors =
      RunShell(Concat({"echo nonsense | ", Program(), " batch - -o - --errors /dev/full >/dev/null"}));
  EXPECT_EQ(errors.status, 1);
  EXPECT_EQ(errors.errors, "mkbarcode: cannot write /dev/full: No space left on device\n");
}

// A limit on the size of files stands for a full disk.
TEST(Batch, AnArchiveThatFailsLeavesNothing) {
  const ScratchDirectory scratch;
  std::string jobs;
  for (int i = 0; i < 2'000; ++i) {
    jobs += "{\"type\":\"qr\",\"text\":\"x\"}\n";
  }
  WriteFile(scratch.File("jobs.jsonl"), jobs);
  WriteFile(scratch.File("a.zip"), "earlier");
  for (const char* const output : {"a.zip", "b.zip", "b.tar"}) {
    const Outcome outcome = RunShell(Concat(
        {"ulimit -f 100; ", Program(), " batch ", scratch.File("jobs.jsonl"), " -o ", scratch.File(output)}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("File too large"));
  }
  EXPECT_EQ(ReadFile(scratch.File("a.zip")), "earlier");
  EXPECT_THAT(scratch.Names(), ElementsAre("a.zip", "jobs.jsonl"));
}

TEST(Batch, WhatCannotBeReadOrMadeIsTold) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.csv"), "type,text\nqr,x\n");
  const Outcome jobs = RunProgram({"batch", scratch.File("none.csv"), "-o", "-"});
  EXPECT_EQ(jobs.status, 1);
  EXPECT_THAT(jobs.errors, AllOf(HasSubstr("none.csv"), HasSubstr("No such file")));
  for (const std::string output : {"jobs.csv", "jobs.csv/a.zip", "none/a.tar"}) {
    const Outcome outcome = RunProgram({"batch", scratch.File("jobs.csv"), "-o", scratch.File(output)});
    EXPECT_EQ(outcome.status, 1) << output;
    EXPECT_THAT(outcome.errors, HasSubstr(output));
  }
  EXPECT_THAT(scratch.Names(), ElementsAre("jobs.csv"));
}

TEST(Batch, HelpNamesItsOptions) {
  const Outcome outcome = RunProgram({"batch", "--help"});
  EXPECT_EQ(outcome.status, 0);
  for (const char* const option :
       {"--name", "--resume", "--number-duplicates", "--ignore-unknown", "--errors", "--input-format",
        "--quiet", "--module", "strict", "-j", "-o"}) {
    EXPECT_THAT(outcome.output, HasSubstr(option));
  }
  EXPECT_THAT(outcome.output, Not(IsEmpty()));
}

}  // namespace
}  // namespace barcode::tool
