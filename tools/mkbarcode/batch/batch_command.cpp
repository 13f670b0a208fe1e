#include "mkbarcode/batch/batch_command.h"

#include <fcntl.h>
#include <malloc.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <csignal>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include "base/ascii.h"
#include "base/line.h"
#include "label/field_table.h"
#include "mkbarcode/batch/archive_file.h"
#include "mkbarcode/batch/engine.h"
#include "mkbarcode/batch/interruption.h"
#include "mkbarcode/batch/name_table.h"
#include "mkbarcode/batch/name_template.h"
#include "mkbarcode/batch/output.h"
#include "mkbarcode/batch/progress.h"
#include "mkbarcode/cli/help_page.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/descriptor.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/file_suffix.h"
#include "mkbarcode/io.h"
#include "mkbarcode/jobs/failures.h"
#include "mkbarcode/jobs/job_reader.h"
#include "mkbarcode/label_options.h"
#include "mkbarcode/type_name.h"

namespace barcode::tool {
namespace {

constexpr unsigned kMostThreads = 512;

constexpr const char* kPurpose = "Makes a label for each row of a table or of lines of JSON.";
constexpr const char* kNotes =
    "A table is CSV with a header row of field names (type, text, quiet_zone ...); an empty cell counts as\n"
    "absent. Lines of JSON are objects with the same fields. Options of labels are defaults of all rows.\n"
    "With -o - each row becomes a line of JSON: {\"n\", \"ok\", \"media_type\", \"data\" (base64; for SVG "
    "\"svg\"\n"
    "as text), \"report\"}. A row that fails stops no other.\n"
    "\n"
    "Examples:\n"
    "  mkbarcode batch parts.csv -o labels --name \"{type}/{text}.{format}\" --format svg\n"
    "  mkbarcode batch parts.csv -o labels.zip --errors failed.jsonl\n"
    "  database-export | mkbarcode batch - -o - | printer\n"
    "\n"
    "Exit status: 0 all drawn, 1 a row or the run failed, 2 wrong usage, 130 and 143 interrupted.";

// What the command was asked for.
struct BatchOptions {
  std::string jobs;
  std::string output;
  std::optional<std::string> inputFormat;
  std::optional<std::string> name;
  std::string errors;  // "" is standard error
  std::optional<unsigned> threads;
  bool ignoreUnknown = false;
  bool numberDuplicates = false;
  bool resume = false;
  bool quiet = false;
  label::Request defaults;
};

enum class OutputKind { kDirectory, kTar, kZip, kJsonLines };

OutputKind KindOf(const std::string& output) {
  if (output.empty()) {
    throw UsageError("no output: give -o DIRECTORY, -o FILE.zip, -o FILE.tar, or -o - for lines of JSON");
  }
  if (output == "-") {
    return OutputKind::kJsonLines;
  }
  if (HasSuffix(output, ".ZIP")) {
    return OutputKind::kZip;
  }
  if (HasSuffix(output, ".TAR")) {
    return OutputKind::kTar;
  }
  for (const std::string_view suffix :
       {".PNG", ".SVG", ".PDF", ".JPG", ".TGZ", ".TAR.GZ", ".JSONL", ".JSON"}) {
    if (HasSuffix(output, suffix)) {
      throw UsageError(Line("-o ", output,
                            ": a batch writes a directory, a .zip file or a .tar file, or with -o - lines of "
                            "JSON to standard output"));
    }
  }
  return OutputKind::kDirectory;
}

void CheckOptions(const BatchOptions& options, OutputKind kind) {
  if (options.jobs.empty()) {
    throw UsageError("no jobs: give a file of them, or - for standard input");
  }
  CheckDefaultType(options.defaults);
  if (options.resume && kind != OutputKind::kDirectory) {
    throw UsageError("--resume goes with a directory only: what is no directory is written as a whole");
  }
  if (kind == OutputKind::kJsonLines && (options.name || options.numberDuplicates)) {
    throw UsageError(Line(options.name ? "--name" : "--number-duplicates",
                          " does not go with -o -: lines of JSON have no names"));
  }
}

std::unique_ptr<Output> OpenOutput(const BatchOptions& options, OutputKind kind) {
  switch (kind) {
    case OutputKind::kDirectory:
      return DirectoryOutput(options.output, options.resume);
    case OutputKind::kTar:
      return TarOutput(options.output);
    case OutputKind::kZip:
      return ZipOutput(options.output);
    case OutputKind::kJsonLines:
      break;
  }
  return JsonLinesOutput(STDOUT_FILENO);
}

unsigned ThreadsOf(const BatchOptions& options) {
  if (options.threads) {
    return *options.threads;
  }
  // Those that this process may use.
  cpu_set_t cores;
  const bool isKnown = sched_getaffinity(0, sizeof cores, &cores) == 0;
  const unsigned count =
      isKnown ? static_cast<unsigned>(CPU_COUNT(&cores)) : std::thread::hardware_concurrency();
  return std::clamp(count, 1U, kMostThreads);
}

std::string Summary(const Counts& counts) {
  std::string text =
      Line("mkbarcode: ", counts.rows, counts.rows == 1 ? " row: " : " rows: ", counts.drawn, " drawn");
  if (counts.warned > 0) {
    AppendPieces(text, " (", counts.warned, " with warnings)");
  }
  if (counts.skipped > 0) {
    AppendPieces(text, ", ", counts.skipped, " there already");
  }
  AppendPieces(text, ", ", counts.failed, " failed\n");
  return text;
}

// How to go on after an interruption.
std::string Advice(const BatchOptions& options, OutputKind kind, std::uint64_t rows) {
  const std::string start = Line("mkbarcode: interrupted after row ", rows, ". ");
  if (kind == OutputKind::kDirectory) {
    return Line(start, options.jobs == "-" ? "The same rows and options with --resume go on from there.\n"
                                           : "The same command with --resume goes on from there.\n");
  }
  if (kind == OutputKind::kJsonLines) {
    return Line(start, "What is missing are the rows from ", rows + 1, " on.\n");
  }
  return Line(start, options.output,
              " was not written. Start again; a directory can be gone on with, by --resume.\n");
}

// What one label takes the next one takes again: memory does not go back to the system in between.
void KeepMemory() {
  constexpr int kKept = 16 << 20U;
  constexpr int kMapped = 4 << 20U;
  mallopt(M_TRIM_THRESHOLD, kKept);
  mallopt(M_MMAP_THRESHOLD, kMapped);
}

class BatchRun {
 public:
  explicit BatchRun(const BatchOptions& options)
      : m_options(options),
        m_kind(KindOf(options.output)),
        m_pattern(options.name.value_or(std::string(kDefaultName))) {
    CheckOptions(options, m_kind);
  }

  int Run() {
    KeepMemory();
    const InputFormat format = FormatOfJobs(m_options.jobs, m_options.inputFormat);
    const Interruption interruption;
    std::optional<JobReader> jobs;
    std::optional<Failures> failures;
    try {
      const Interruption::BreaksOffCalls breaksOff;
      jobs.emplace(m_options.jobs, format, Rules(), interruption.WakeUpDescriptor());
      if (Interruption::Signal() != 0) {
        return End(true);
      }
      failures.emplace(m_options.errors, m_options.jobs, m_options.output);
    } catch (const RunError&) {
      // A pipe with a name waits for its other end when it is opened; a signal breaks that off.
      if (Interruption::Signal() != 0) {
        return End(true);
      }
      throw;
    }
    const std::unique_ptr<Output> output = OpenOutput(m_options, m_kind);
    const bool hasLeftRows = Make(*jobs, *output, *failures, interruption);
    const bool isArchive = m_kind == OutputKind::kTar || m_kind == OutputKind::kZip;
    if (!hasLeftRows || !isArchive) {
      output->Finish();
    }
    return End(hasLeftRows);
  }

 private:
  JobRules Rules() const {
    return {.defaults = m_options.defaults,
            .extraColumns =
                m_kind == OutputKind::kJsonLines ? std::vector<std::string>() : m_pattern.ExtraColumns(),
            .ignoreUnknown = m_options.ignoreUnknown};
  }

  // Whether rows were left.
  bool Make(JobReader& jobs, Output& output, const Failures& failures, const Interruption& interruption) {
    Progress progress(Progress::OnStandardError(m_options.quiet), jobs.Size());
    std::optional<NameTable> table;
    std::optional<NameClaims> claims;
    if (m_kind != OutputKind::kJsonLines && !m_pattern.IsUnique()) {
      m_kind == OutputKind::kDirectory ? table.emplace()
                                       : table.emplace(DirectoryOfArchive(m_options.output));
      claims.emplace(*table, m_options.numberDuplicates ? NameClaims::Repeated::kNumbered
                                                        : NameClaims::Repeated::kRefused);
    }
    std::optional<Naming> naming;
    if (m_kind != OutputKind::kJsonLines) {
      naming.emplace(Naming{m_pattern, claims ? &*claims : nullptr});
    }
    Engine engine({.jobs = jobs,
                   .output = output,
                   .naming = naming,
                   .threads = ThreadsOf(m_options),
                   .tell =
                       [&](const Parcel& parcel) {
                         m_counts.Add(parcel.counts);
                         if (!parcel.failures.empty()) {
                           progress.Clear();
                           failures.Write(parcel.failures);
                         }
                         progress.Tell(m_counts, parcel.bytesTaken);
                       },
                   .isInterrupted = [] { return Interruption::Signal() != 0; },
                   .wakeUp = [&] { interruption.WakeUp(); }});
    engine.Run();
    return engine.HasLeftRows();
  }

  int End(bool isInterrupted) const {
    if (!m_options.quiet) {
      WriteToStandardError(Summary(m_counts));
    }
    if (isInterrupted) {
      WriteToStandardError(Advice(m_options, m_kind, m_counts.rows));
      constexpr int kBySignal = 128;
      return kBySignal + Interruption::Signal();
    }
    return m_counts.failed == 0 ? kExitDone : kExitFailed;
  }

  const BatchOptions& m_options;
  OutputKind m_kind;
  NameTemplate m_pattern;
  Counts m_counts;
};

// A text as it is: the parser takes brackets for lists otherwise.
CLI::Option* AddText(CLI::App& app, const std::string& name, const std::string& help, std::string& value) {
  return app.add_option(name, CLI::callback_t(), help)->each([&value](const std::string& given) {
    value = given;
  });
}

CLI::Option* AddText(CLI::App& app, const std::string& name, const std::string& help,
                     std::optional<std::string>& value) {
  return app.add_option(name, CLI::callback_t(), help)->each([&value](const std::string& given) {
    value = given;
  });
}

unsigned ReadThreads(const std::string& value) {
  const bool isNumber = AllDigits(value) && !value.empty() && value.size() <= 3;
  const unsigned long number = isNumber ? std::stoul(value) : 0;
  if (number < 1 || number > kMostThreads) {
    throw UsageError(Line("The option \"-j\" must be a whole number from 1 to ", kMostThreads, '.'));
  }
  return static_cast<unsigned>(number);
}

void AddOwnOptions(CLI::App& app, BatchOptions& options) {
  AddText(app, "JOBS",
          "The rows: a table (.csv) or lines of JSON (.jsonl, .ndjson, .json); - is standard input",
          options.jobs);
  AddText(app, "-o,--output", "A directory, FILE.zip or FILE.tar; - writes lines of JSON to standard output",
          options.output)
      ->type_name("OUTPUT");
  AddText(app, "--input-format", "How JOBS are written (default: by the suffix; jsonl for standard input)",
          options.inputFormat)
      ->type_name("csv|jsonl");
  AddText(app, "--name",
          Line("Name of each file, with {n}, {n:06}, {FIELD} or {COLUMN}; / makes folders (default ",
               kDefaultName, ')'),
          options.name)
      ->type_name("TEMPLATE");
  app.add_flag("--number-duplicates", options.numberDuplicates,
               "Number the name of a row that an earlier one has, instead of refusing the row");
  app.add_flag("--resume", options.resume, "Skip rows whose file exists");
  app.add_flag("--ignore-unknown", options.ignoreUnknown, "Pass over columns that are no fields");
  app.add_option("-j,--jobs", CLI::callback_t(),
                 "How many labels are drawn at a time (default: one for each core)")
      ->type_name("N")
      ->each([&options](const std::string& value) { options.threads = ReadThreads(value); });
  AddText(app, "--errors", "File for the rows that failed, in lines of JSON (default: standard error)",
          options.errors)
      ->type_name("FILE");
  app.add_flag("-q,--quiet", options.quiet, "No progress and no summary");
}

std::unique_ptr<CLI::App> BuildBatchApp(BatchOptions& options) {
  auto app = std::make_unique<CLI::App>(kPurpose, "batch");
  app->footer(kNotes);
  app->set_help_flag("-h,--help", "Print this help");
  AddOwnOptions(*app, options);
  AddLabelOption(*app, options.defaults, label::InfoOf(label::FieldId::kType));
  AddLabelOptions(*app, options.defaults);
  return app;
}

}  // namespace

CommandDescription DescribeBatch() {
  BatchOptions options;
  CommandDescription description = Describe(*BuildBatchApp(options));
  description.usage = {"batch JOBS -o OUTPUT [OPTIONS]"};
  return description;
}

int RunBatch(const std::vector<std::string>& arguments) {
  BatchOptions options;
  const std::unique_ptr<CLI::App> app = BuildBatchApp(options);
  if (!RunParser(*app, arguments)) {
    WriteAll("-", HelpPage(DescribeBatch()));
    return kExitDone;
  }
  return BatchRun(options).Run();
}

}  // namespace barcode::tool
