// Completions and manual page have the options and words of --help, in the shells that they are for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "label/field_table.h"
#include "label/types.h"
#include "mkbarcode/cli/commands.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using Words = std::vector<std::string>;

const std::string kBashFile = MKBARCODE_PAGES "/bash-completion/completions/mkbarcode";
const std::string kZshFile = MKBARCODE_PAGES "/zsh/site-functions/_mkbarcode";
const std::string kFishFile = MKBARCODE_PAGES "/fish/vendor_completions.d/mkbarcode.fish";
const std::string kManualPage = MKBARCODE_PAGES "/man/man1/mkbarcode.1";

Words Lines(const std::string& text) {
  Words lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

// The command without a name is that of one label.
Words AllNames() {
  Words names = NamesOfCommands();
  names.insert(names.begin(), "");
  return names;
}

// "-o, --output FILE", "--[no-]strict", "--report[=FILE]": the names in it.
std::set<std::string> NamesIn(const std::string& written) {
  std::set<std::string> names;
  std::istringstream stream(written);
  for (std::string word; stream >> word;) {
    if (!word.starts_with('-')) {
      continue;
    }
    const std::string kSwitch = "--[no-]";
    const bool isSwitch = word.starts_with(kSwitch);
    const std::string name = isSwitch ? "--" + word.substr(kSwitch.size()) : word;
    const std::string plain = name.substr(0, name.find_first_of("[=,"));
    names.insert(plain);
    if (isSwitch) {
      names.insert("--no-" + plain.substr(2));
    }
  }
  return names;
}

std::set<std::string> OptionsOfHelp(const std::string& command) {
  std::set<std::string> options;
  const std::string name = command.empty() ? "" : " " + command;
  for (const std::string& line : Lines(RunShell(Program() + name + " --help").output)) {
    if (line.starts_with("  -")) {
      options.merge(NamesIn(line.substr(2, line.find("  ", 2) - 2)));
    }
  }
  return options;
}

std::set<std::string> OptionsOfManual(const std::string& command) {
  const std::string page = ReadFile(kManualPage);
  const std::size_t start =
      page.find(command.empty() ? ".SS \"One label\"" : ".SS \"mkbarcode " + command + "\"");
  EXPECT_NE(start, std::string::npos) << command;
  std::string section = page.substr(start, page.find(".SS", start + 1) - start);
  for (std::size_t at = section.find("\\-"); at != std::string::npos; at = section.find("\\-")) {
    section.erase(at, 1);
  }
  std::set<std::string> options;
  for (const std::string& line : Lines(section)) {
    if (line.starts_with(".B -")) {
      options.merge(NamesIn(line.substr(3)));
    }
  }
  return options;
}

// What Bash offers for the last of the words behind the program's name.
Words CompletedByBash(const Words& words) {
  std::string line = Concat({"source ", ShellQuoted(kBashFile), "; COMP_WORDS=(mkbarcode"});
  for (const std::string& word : words) {
    line += " " + ShellQuoted(word);
  }
  line += Concat({"); COMP_CWORD=", std::to_string(words.size()),
                  "; compopt() { :; }; _mkbarcode; printf '%s\\n' \"${COMPREPLY[@]}\""});
  const Outcome outcome = RunShell("LC_ALL=C.UTF-8 bash -c " + ShellQuoted(line));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  Words completed = Lines(outcome.output);
  std::erase(completed, "");
  return completed;
}

std::set<std::string> SetOf(const Words& words) {
  return {words.begin(), words.end()};
}

std::set<std::string> OptionsOfBash(const std::string& command) {
  return SetOf(CompletedByBash(command.empty() ? Words{"code39", "-"} : Words{command, "-"}));
}

// What the function hands to the one of zsh that completes, a specification on each line.
Words SpecificationsOfZsh(const std::string& command) {
  const std::string script =
      Concat({"_arguments() { shift; print -rl -- \"$@\" }; words=(mkbarcode ",
              command.empty() ? "x" : command, " x); CURRENT=3; source ", ShellQuoted(kZshFile)});
  const Outcome outcome = RunShell("zsh -f -c " + ShellQuoted(script));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  return Lines(outcome.output);
}

// "(-o --output)--output=[File to write]:FILE:_files".
std::set<std::string> OptionsOfZsh(const std::string& command) {
  std::set<std::string> options;
  for (const std::string& line : SpecificationsOfZsh(command)) {
    if (line.starts_with('(')) {
      const std::size_t name = line.find(')') + 1;
      options.insert(line.substr(name, line.find_first_of("=+[", name) - name));
    }
  }
  return options;
}

Words CompletedByFish(const std::string& line) {
  const ScratchDirectory home;
  const std::string script = Concat({"source ", ShellQuoted(kFishFile), "; complete -C ", ShellQuoted(line)});
  const Outcome outcome =
      RunShell(Concat({"HOME=", ShellQuoted(home.Path()), " fish --no-config -c ", ShellQuoted(script)}));
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  Words words = Lines(outcome.output);
  for (std::string& word : words) {
    word.resize(std::min(word.find('\t'), word.size()));
  }
  return words;
}

std::set<std::string> OptionsOfFish(const std::string& command) {
  return SetOf(CompletedByFish(Concat({"mkbarcode ", command.empty() ? "code39" : command, " -"})));
}

TEST(Pages, HaveTheOptionsOfHelpAndNoOthers) {
  for (const std::string& command : AllNames()) {
    const std::set<std::string> options = OptionsOfHelp(command);
    EXPECT_THAT(options, Contains("--help"));
    EXPECT_EQ(OptionsOfManual(command), options) << command;
    EXPECT_EQ(OptionsOfBash(command), options) << command;
    EXPECT_EQ(OptionsOfZsh(command), options) << command;
    EXPECT_EQ(OptionsOfFish(command), options) << command;
  }
}

TEST(Pages, HelpHasEveryFieldOfARequest) {
  const std::set<std::string> options = OptionsOfHelp("");
  for (const label::FieldInfo& field : label::AllFields()) {
    std::string name(field.name);
    std::ranges::replace(name, '_', '-');
    if (field.id != label::FieldId::kType && field.id != label::FieldId::kText) {
      EXPECT_THAT(options, Contains("--" + name));
    }
  }
}

TEST(BashCompletion, CompletesTypesAndCommands) {
  EXPECT_THAT(CompletedByBash({"code"}), UnorderedElementsAre("code39", "code93", "code128"));
  EXPECT_THAT(CompletedByBash({"gal"}), ElementsAre("gallery"));
  EXPECT_THAT(CompletedByBash({"library", "q"}), ElementsAre("qr"));
  EXPECT_THAT(CompletedByBash({"library", "g"}), ElementsAre("gs1-128"));
  EXPECT_THAT(CompletedByBash({"--module", "2", "q"}), ElementsAre("qr"));
  EXPECT_THAT(CompletedByBash({"--module", "=", "2", "q"}), ElementsAre("qr"));
  EXPECT_THAT(CompletedByBash({"--strict", "q"}), ElementsAre("qr"));
  EXPECT_THAT(CompletedByBash({"qr", "c"}), IsEmpty());
  EXPECT_EQ(CompletedByBash({""}).size(), label::AllTypes().size() + NamesOfCommands().size());
}

TEST(BashCompletion, CompletesOptionsAndTheirWords) {
  EXPECT_THAT(CompletedByBash({"qr", "x", "--mod"}), UnorderedElementsAre("--module", "--module-mm"));
  EXPECT_THAT(CompletedByBash({"qr", "x", "--no-st"}), ElementsAre("--no-strict"));
  EXPECT_THAT(CompletedByBash({"qr", "x", "--format", ""}), ElementsAre("png", "svg", "pdf"));
  EXPECT_THAT(CompletedByBash({"qr", "x", "--format", "="}), ElementsAre("png", "svg", "pdf"));
  EXPECT_THAT(CompletedByBash({"qr", "x", "--format", "=", "s"}), ElementsAre("svg"));
  EXPECT_THAT(CompletedByBash({"qr", "x", "--rotate", ""}), ElementsAre("0", "90", "180", "270"));
  EXPECT_THAT(CompletedByBash({"library", "qr", "--ecl", ""}), ElementsAre("L", "M", "Q", "H"));
  EXPECT_THAT(CompletedByBash({"qr", "x", "--module", ""}), IsEmpty());
}

TEST(BashCompletion, CompletesFilesAndDirectories) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("one.png"), "");
  const std::string beginning = scratch.File("on");
  const std::string file = scratch.File("one.png");
  EXPECT_THAT(CompletedByBash({"qr", "x", "-o", beginning}), ElementsAre(file));
  EXPECT_THAT(CompletedByBash({"qr", "x", "--report", "=", beginning}), ElementsAre(file));
  EXPECT_THAT(CompletedByBash({"qr", "--report", beginning}), IsEmpty());
  EXPECT_THAT(CompletedByBash({"gallery", scratch.Path()}), ElementsAre(scratch.Path()));
  EXPECT_THAT(CompletedByBash({"gallery", beginning}), IsEmpty());
}

TEST(FishCompletion, CompletesTypesOptionsAndWords) {
  EXPECT_THAT(CompletedByFish("mkbarcode code"), UnorderedElementsAre("code39", "code93", "code128"));
  EXPECT_THAT(CompletedByFish("mkbarcode library q"), ElementsAre("qr"));
  EXPECT_THAT(CompletedByFish("mkbarcode qr x --format "), UnorderedElementsAre("png", "svg", "pdf"));
  EXPECT_THAT(CompletedByFish("mkbarcode qr x --format=s"), ElementsAre("--format=svg"));
  EXPECT_THAT(CompletedByFish("mkbarcode library qr x --ecl "), UnorderedElementsAre("L", "M", "Q", "H"));
}

TEST(ZshCompletion, NamesTypesWordsAndFiles) {
  const Words label = SpecificationsOfZsh("");
  std::string types = "1:TYPE:(";
  for (const label::TypeInfo& type : label::AllTypes()) {
    types += Concat({type.name, " "});
  }
  EXPECT_THAT(label, Contains(testing::StartsWith(types)));
  EXPECT_THAT(label, Contains(testing::EndsWith(":WORD:(png svg pdf)")));
  EXPECT_THAT(label, Contains(testing::StartsWith("(--report)--report=-[Write the report")));
  EXPECT_THAT(label, Contains(testing::EndsWith("]:FILE:_files")));
  EXPECT_THAT(SpecificationsOfZsh("gallery"), Contains("1:DIR:_files -/"));
}

TEST(ManualPage, IsFormattedWithoutAWarning) {
  const Outcome groff = RunShell("LC_ALL=C.UTF-8 man --warnings -l -Tutf8 " + ShellQuoted(kManualPage));
  EXPECT_EQ(groff.status, 0);
  EXPECT_THAT(groff.errors, IsEmpty());
  EXPECT_THAT(groff.output, testing::HasSubstr("make barcode labels that scan"));
  // The page has no date, so that it is the same whenever it is made.
  Words warnings = Lines(RunShell("mandoc -T lint -W warning " + ShellQuoted(kManualPage)).output);
  std::erase_if(warnings,
                [](const std::string& line) { return line.ends_with("missing date, using \"\": TH"); });
  EXPECT_THAT(warnings, IsEmpty());
}

}  // namespace
}  // namespace barcode::tool
