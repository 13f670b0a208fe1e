#include "mkbarcode/jobs/job_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

int Open(const std::string& file) {
  const int descriptor = file == kStandardInput ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)
                                                : open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) {
    FailWithErrno("cannot read " + file);
  }
  return descriptor;
}

std::optional<std::uint64_t> SizeOf(int descriptor) {
  struct stat status {};
  const bool isFile = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  return isFile ? std::optional(static_cast<std::uint64_t>(status.st_size)) : std::nullopt;
}

}  // namespace

JobReader::JobReader(const std::string& file, InputFormat format, JobRules rules, int wakeUp)
    : m_file(Open(file)),
      m_rows(m_file.Number(), file == kStandardInput ? "standard input" : file, format, wakeUp),
      m_size(SizeOf(m_file.Number())) {
  if (format == InputFormat::kJsonLines) {
    m_parser.emplace(std::move(rules));
    return;
  }
  const std::optional<RawRow> header = WaitForRow();
  if (!header && m_rows.IsAtEnd()) {
    throw UsageError("the table is empty; it begins with a row of field names");
  }
  if (!header) {
    m_parser.emplace(JobRules{});  // the wait was broken off: nobody asks for rows any more
    return;
  }
  m_parser.emplace(*header, std::move(rules));
}

std::optional<RawRow> JobReader::WaitForRow() {
  while (true) {
    if (const std::optional<RawRow> row = m_rows.Next()) {
      return row;
    }
    if (m_rows.IsAtEnd() || m_rows.Fill() == RowReader::Filled::kWokenUp) {
      return std::nullopt;
    }
  }
}

std::optional<JobReader::Row> JobReader::Next() {
  const std::optional<RawRow> raw = WaitForRow();
  if (!raw) {
    return std::nullopt;
  }
  return Row{++m_number, *raw, m_parser->Parse(*raw)};
}

}  // namespace barcode::tool
