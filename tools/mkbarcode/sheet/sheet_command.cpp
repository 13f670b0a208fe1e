#include "mkbarcode/sheet/sheet_command.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdint>
#include <functional>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/line.h"
#include "label/error.h"
#include "label/field_table.h"
#include "label/report.h"
#include "label/sheet_label.h"
#include "mkbarcode/cli/help_page.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/descriptor.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/file_replacement.h"
#include "mkbarcode/io.h"
#include "mkbarcode/jobs/failures.h"
#include "mkbarcode/jobs/job_reader.h"
#include "mkbarcode/label_options.h"
#include "mkbarcode/sheet/paper.h"
#include "mkbarcode/type_name.h"

namespace barcode::tool {
namespace {

using label::LabelError;

constexpr const char* kPurpose =
    "Puts a label for each row of a table or of lines of JSON on pages of label paper, as one PDF.";
constexpr const char* kNotes =
    "A label with a physical size (--dpi, --module-mm) keeps it, in the middle of its cell. One without "
    "becomes\n"
    "as large as whole modules of 1/600 inch let it in its cell. A row that is refused leaves its cell "
    "empty.\n"
    "\n"
    "Example:\n"
    "  mkbarcode sheet rows.csv -o sheet.pdf --page A4 --grid 3x8 --type code128\n"
    "\n"
    "Exit status: 0 all rows drawn, 1 rows were refused, or reading or writing failed, 2 wrong usage.";

constexpr const char* kPaperGroup = "Paper";
constexpr const char* kGroup = "Rows, output and help";

struct Counts {
  std::uint64_t rows = 0;
  std::uint64_t warned = 0;
  std::uint64_t failed = 0;
};

// ---- Command line ----

void AddPaperOptions(CLI::App& app, SheetCommand& command) {
  label::SheetGrid& grid = command.sheet.grid;
  app.add_option_function<std::string>(
         "--page", [&grid](const std::string& page) { SetPage(grid, page); },
         "Size of the page: A4, letter or one such as 100x150mm")
      ->type_name("SIZE")
      ->group(kPaperGroup);
  app.add_option_function<std::string>(
         "--grid", [&grid](const std::string& cells) { SetCells(grid, cells); },
         "Number of cells across and down, such as 3x8")
      ->type_name("COLUMNSxROWS")
      ->group(kPaperGroup);
  app.add_option_function<std::string>(
         "--margin", [&grid](const std::string& length) { grid.margin = SpacingOf("--margin", length); },
         "Millimetres around all cells (default 10); 7.2x15 is 7.2 left and right, 15 above and below")
      ->type_name("MM")
      ->group(kPaperGroup);
  app.add_option_function<std::string>(
         "--gap", [&grid](const std::string& length) { grid.gap = SpacingOf("--gap", length); },
         "Millimetres between cells (default 2); 2.5x0 is 2.5 between columns and none between rows")
      ->type_name("MM")
      ->group(kPaperGroup);
  app.add_flag("--outline", command.sheet.outline, "Draw a thin line around each cell")->group(kPaperGroup);
  app.add_option_function<std::string>(
         "--start-at",
         [&command](const std::string& number) { command.sheet.firstCell = CellNumber(number) - 1; },
         "Cell of the first page to begin with, counted from 1 row by row")
      ->type_name("N")
      ->group(kPaperGroup);
}

void AddFiles(CLI::App& app, SheetCommand& command) {
  app.add_option("JOBS", command.jobs,
                 "The rows: a table (.csv) or lines of JSON (.jsonl, .ndjson, .json); - is standard input");
  app.add_option("-o,--output", command.output, "PDF to write; - is standard output")
      ->type_name("FILE")
      ->group(kGroup);
  app.add_option("--input-format", command.inputFormat,
                 "How the rows are written (default: by the suffix; jsonl for standard input)")
      ->type_name("csv|jsonl")
      ->group(kGroup);
  app.add_flag("--ignore-unknown", command.ignoreUnknown, "Pass over columns that are no fields")
      ->group(kGroup);
  app.add_option("--errors", command.errors,
                 "File for the rows that failed, in lines of JSON (default: standard error)")
      ->type_name("FILE")
      ->group(kGroup);
  app.add_flag("-q,--quiet", command.quiet, "No warnings and no summary")->group(kGroup);
}

void Check(const CLI::App& app, const SheetCommand& command) {
  if (command.jobs.empty()) {
    throw UsageError("No jobs are given: add a file of them, or - for standard input.");
  }
  if (command.output.empty()) {
    throw UsageError("No output is given: add -o FILE, or -o - for standard output.");
  }
  if (!WasGiven(app, "--page")) {
    throw UsageError("No page is given: add --page A4, --page letter or a size such as --page 100x150mm.");
  }
  if (!WasGiven(app, "--grid")) {
    throw UsageError("No grid is given: add --grid COLUMNSxROWS, such as --grid 3x8.");
  }
  if (command.defaults.format.value_or(label::Format::kPdf) != label::Format::kPdf) {
    throw UsageError("The option \"--format\" must be pdf, or be left out: a sheet is a PDF.");
  }
  CheckDefaultType(command.defaults);
  CheckPaper(command.sheet.grid, command.sheet.firstCell + 1);
}

// ---- Rows ----

label::SheetLabel MakeLabel(const Job& job, const label::Cell& cell) {
  if (job.error) {
    throw LabelError(*job.error);
  }
  try {
    return LabelInCell(job.request, cell);
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  throw LabelError(label::ErrorCode::kOutOfMemory, "",
                   "Memory is exhausted; free some, or ask for less text.");
}

// Where the PDF goes.
class SheetFile {
 public:
  explicit SheetFile(const std::string& file) {
    if (file != "-") {
      m_file.emplace(file);
    }
  }

  void Write(std::string_view bytes) {
    if (m_file) {
      m_file->Write(bytes);
    } else if (!WriteDescriptor(STDOUT_FILENO, bytes)) {
      FailWithErrno("cannot write standard output");
    }
  }

  void Commit() {
    if (m_file) {
      m_file->Commit();
    }
  }

 private:
  std::optional<FileReplacement> m_file;
};

class SheetRun {
 public:
  explicit SheetRun(const SheetCommand& command) : m_command(command) {}

  int Run() {
    const InputFormat format = FormatOfJobs(m_command.jobs, m_command.inputFormat);
    JobReader jobs(
        m_command.jobs, format,
        {.defaults = m_command.defaults, .extraColumns = {}, .ignoreUnknown = m_command.ignoreUnknown});
    const Failures failures(m_command.errors, m_command.jobs, m_command.output);
    SheetFile file(m_command.output);
    label::SheetWriter sheet(m_command.sheet, [&file](std::string_view bytes) { file.Write(bytes); });
    while (const std::optional<JobReader::Row> row = jobs.Next()) {
      ++m_counts.rows;
      try {
        const label::SheetLabel label = MakeLabel(row->job, sheet.NextCell());
        sheet.Put(label);
        Warn(row->number, label.warnings);
      } catch (const LabelError& error) {
        ++m_counts.failed;
        sheet.LeaveEmpty();
        std::string line;
        AppendFailure(line, row->number, jobs.Parser().AsJson(row->raw), ErrorJson(error));
        failures.Write(line);
      }
    }
    sheet.Finish();
    file.Commit();
    Summarise(sheet.Pages());
    return m_counts.failed == 0 ? kExitDone : kExitFailed;
  }

 private:
  void Warn(std::uint64_t row, const std::vector<label::Warning>& warnings) {
    m_counts.warned += warnings.empty() ? 0 : 1;
    if (m_command.quiet) {
      return;
    }
    for (const label::Warning& warning : warnings) {
      WriteToStandardError(Line("mkbarcode: row ", row, ": warning: ", warning.message, '\n'));
    }
  }

  void Summarise(std::int64_t pages) const {
    if (m_command.quiet) {
      return;
    }
    std::string text =
        Line("mkbarcode: ", m_counts.rows, m_counts.rows == 1 ? " row on " : " rows on ", pages,
             pages == 1 ? " page: " : " pages: ", m_counts.rows - m_counts.failed, " drawn");
    if (m_counts.warned > 0) {
      AppendPieces(text, " (", m_counts.warned, " with warnings)");
    }
    AppendPieces(text, ", ", m_counts.failed, " failed\n");
    WriteToStandardError(text);
  }

  const SheetCommand& m_command;
  Counts m_counts;
};

}  // namespace

std::unique_ptr<CLI::App> BuildSheetApp(SheetCommand& command) {
  auto app = std::make_unique<CLI::App>(kPurpose, "sheet");
  app->footer(kNotes);
  app->set_help_flag("-h,--help", "Print this help")->group(kGroup);
  AddPaperOptions(*app, command);
  AddFiles(*app, command);
  AddLabelOption(*app, command.defaults, label::InfoOf(label::FieldId::kType))
      ->description("The symbology of rows that name none: a name or an alias from mkbarcode --list")
      ->type_name("TYPE");
  AddLabelOptions(*app, command.defaults);
  app->get_option("--format")->description("Only pdf: a sheet is a PDF");
  return app;
}

CommandDescription DescribeSheetCommand() {
  SheetCommand command;
  const auto wordsOf = [](std::string_view name) {
    return name == "format" ? std::vector<std::string>{"pdf"} : WordsOfLabels(name);
  };
  CommandDescription description = Describe(*BuildSheetApp(command), wordsOf);
  description.usage = {"sheet JOBS -o FILE --page SIZE --grid COLUMNSxROWS [OPTIONS]"};
  return description;
}

int RunSheet(const std::vector<std::string>& arguments) {
  SheetCommand command;
  const std::unique_ptr<CLI::App> app = BuildSheetApp(command);
  if (!RunParser(*app, arguments)) {
    WriteAll("-", HelpPage(DescribeSheetCommand()));
    return kExitDone;
  }
  Check(*app, command);
  return SheetRun(command).Run();
}

}  // namespace barcode::tool
