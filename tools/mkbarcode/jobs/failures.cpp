#include "mkbarcode/jobs/failures.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <system_error>

#include "base/line.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/io.h"

namespace barcode::tool {
namespace {

// Of a file, or of a standard stream for "-".
std::optional<struct stat> StatusOf(const std::string& file, int standardStream) {
  struct stat status {};
  const int result = file == "-" ? fstat(standardStream, &status) : stat(file.c_str(), &status);
  return result == 0 ? std::optional(status) : std::nullopt;
}

// Terminals, pipes and such may have more than one use.
bool IsSameFile(const std::string& file, const std::string& other, int standardStream) {
  const std::optional<struct stat> first = StatusOf(file, -1);
  const std::optional<struct stat> second = StatusOf(other, standardStream);
  return first && second && (S_ISREG(first->st_mode) || S_ISDIR(first->st_mode)) &&
         first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

// Also where there is no such file yet.
bool IsSamePath(const std::string& file, const std::string& other) {
  const auto whole = [](const std::string& path, std::error_code& error) {
    const std::filesystem::path found = std::filesystem::weakly_canonical(path, error);
    return found.has_filename() ? found : found.parent_path();
  };
  std::error_code fileError;
  std::error_code otherError;
  const bool isSame = other != "-" && whole(std::filesystem::absolute(file, fileError), fileError) ==
                                          whole(std::filesystem::absolute(other, otherError), otherError);
  return isSame && !fileError && !otherError;
}

int Open(const std::string& file, const std::string& jobs, const std::string& output) {
  if (file.empty()) {
    return -1;
  }
  if (file == "-") {
    throw UsageError("--errors takes a file; without it the rows go to standard error");
  }
  if (IsSameFile(file, jobs, STDIN_FILENO)) {
    throw UsageError("--errors is the file of the jobs");
  }
  if (IsSameFile(file, output, STDOUT_FILENO) || IsSamePath(file, output)) {
    throw UsageError("--errors is the output");
  }
  constexpr mode_t kMode = 0666;
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kMode);
  if (descriptor < 0) {
    FailWithErrno("cannot write " + file);
  }
  return descriptor;
}

}  // namespace

Failures::Failures(const std::string& file, const std::string& jobs, const std::string& output)
    : m_name(file), m_file(Open(file, jobs, output)) {}

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
