#include "mkbarcode/jobs/failures.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "base/line.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/io.h"

namespace barcode::tool {
namespace {

bool IsSameFile(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  return stat(one.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

int Open(const std::string& file, const std::string& jobs) {
  if (file.empty()) {
    return -1;
  }
  if (IsSameFile(file, jobs)) {
    throw UsageError("--errors is the file of the jobs");
  }
  constexpr mode_t kMode = 0666;
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kMode);
  if (descriptor < 0) {
    FailWithErrno("cannot write " + file);
  }
  return descriptor;
}

}  // namespace

Failures::Failures(const std::string& file, const std::string& jobs)
    : m_name(file), m_file(Open(file, jobs)) {}

void Failures::Write(std::string_view lines) const {
  if (m_name.empty()) {
    WriteToStandardError(lines);
  } else if (!WriteDescriptor(m_file.Number(), lines)) {
    FailWithErrno("cannot write " + m_name);
  }
}

void AppendFailure(std::string& lines, std::uint64_t number, std::string_view row, std::string_view error) {
  AppendPieces(lines, R"({"n":)", number, R"(,"request":)", row, R"(,"error":)", error, "}\n");
}

}  // namespace barcode::tool
