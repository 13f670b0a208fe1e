// Runs a fuzz target over the files of folders: what a fuzzer has found once is tried by every test run.
//   replay FOLDER...
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

std::vector<char> BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

int main(int argc, char** argv) {
  std::FILE* const report = stdout;  // the target may replace the stream
  std::size_t inputs = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& file : FilesOf(argv[i])) {
      const std::vector<char> bytes = BytesOf(file);
      (void)std::fprintf(report, "%s\n", file.c_str());
      (void)std::fflush(report);
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++inputs;
    }
  }
  (void)std::fprintf(report, "%zu inputs replayed\n", inputs);
  (void)std::fflush(report);
  return inputs == 0 ? 1 : 0;
}
