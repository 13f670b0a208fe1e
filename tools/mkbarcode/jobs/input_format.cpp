#include "mkbarcode/jobs/input_format.h"

#include "base/line.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/file_suffix.h"

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
  if (HasSuffix(file, ".CSV")) {
    return InputFormat::kCsv;
  }
  if (file == kStandardInput || HasSuffix(file, ".JSONL") || HasSuffix(file, ".NDJSON") ||
      HasSuffix(file, ".JSON")) {
    return InputFormat::kJsonLines;
  }
  throw UsageError(Line("cannot tell from the name ", file,
                        " how the jobs are written; give --input-format csv or --input-format jsonl"));
}

}  // namespace barcode::tool
