#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "mkbarcode/descriptor.h"

namespace barcode::tool {

// Where the rows that failed go, as lines of JSON.
class Failures {
 public:
  // file: what is in it goes; "" for standard error. jobs, output: the file of the rows and where the labels
  // go, "-" for a standard stream; it must be neither. Throws UsageError and RunError.
  Failures(const std::string& file, const std::string& jobs, const std::string& output);

  // Throws RunError.
  void Write(std::string_view lines) const;

 private:
  std::string m_name;
  Descriptor m_file;
};

// Adds the line of a row. row, error: in JSON.
void AppendFailure(std::string& lines, std::uint64_t number, std::string_view row, std::string_view error);

}  // namespace barcode::tool
