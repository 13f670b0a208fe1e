#pragma once

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace barcode::test {

// A folder of its own for each object, removed at the end of the scope.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "barcode-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("no scratch folder");
    }
    m_path = pattern;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string File(const std::string& name) const { return (m_path / name).string(); }

 private:
  std::filesystem::path m_path;
};

}  // namespace barcode::test
