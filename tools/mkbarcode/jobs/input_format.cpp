#include "mkbarcode/jobs/input_format.h"

#include "base/line.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/parse.h"

namespace barcode::tool {
namespace {

InputFormat FormatOfWord(const std::string& word) {
  if (word == "csv") {
    return InputFormat::kCsv;
  }
  if (word == "jsonl") {
    return InputFormat::kJsonLines;
  }
  throw UsageError(Line("--input-format must be csv or jsonl, not \"", word, "\""));
}

}  // namespace

InputFormat FormatOfJobs(const std::string& file, const std::optional<std::string>& word) {
  if (word) {
    return FormatOfWord(*word);
  }
  const std::string name = LowerCase(file);
  if (name.ends_with(".csv")) {
    return InputFormat::kCsv;
  }
  if (file == kStandardInput || name.ends_with(".jsonl") || name.ends_with(".ndjson") ||
      name.ends_with(".json")) {
    return InputFormat::kJsonLines;
  }
  throw UsageError(Line("cannot tell from the name ", file,
                        " how the jobs are written; give --input-format csv or --input-format jsonl"));
}

}  // namespace barcode::tool
