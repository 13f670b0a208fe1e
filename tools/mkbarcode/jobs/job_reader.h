#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "mkbarcode/descriptor.h"
#include "mkbarcode/jobs/job_parser.h"
#include "mkbarcode/jobs/row_reader.h"

namespace barcode::tool {

// JOBS: a file, or standard input for "-".
class JobReader {
 public:
  // Reads the header row of a table. wakeUp: see RowReader. Throws UsageError for a header that does not fit,
  // RunError when nothing can be read.
  JobReader(const std::string& file, InputFormat format, JobRules rules, int wakeUp = -1);

  // Rows are taken here, one thread at a time, and understood there, by any number.
  RowReader& Rows() { return m_rows; }
  const JobParser& Parser() const { return *m_parser; }

  // The bytes of a regular file.
  std::optional<std::uint64_t> Size() const { return m_size; }

  // A numbered row, from 1.
  struct Row {
    std::uint64_t number = 0;
    RawRow raw;  // until the next one is asked for
    Job job;
  };
  // For those who take row by row, and wait for each.
  std::optional<Row> Next();

 private:
  std::optional<RawRow> WaitForRow();

  Descriptor m_file;
  RowReader m_rows;
  std::optional<JobParser> m_parser;
  std::optional<std::uint64_t> m_size;
  std::uint64_t m_number = 0;
};

}  // namespace barcode::tool
