#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <system_error>

namespace barcode::test {

// A folder of its own for each object, removed at the end of the scope.
class ScratchFolder {
 public:
  ScratchFolder()
      : m_path(std::filesystem::temp_directory_path() /
               ("barcode-test-" + std::to_string(getpid()) + "-" + std::to_string(NextNumber()))) {
    std::filesystem::create_directories(m_path);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string File(const std::string& name) const { return (m_path / name).string(); }

 private:
  static int NextNumber() {
    static std::atomic<int> number = 0;
    return ++number;
  }

  std::filesystem::path m_path;
};

}  // namespace barcode::test
