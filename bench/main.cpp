// The benchmarks. The diagnostics that the library prints go nowhere here; results go to the original
// standard output.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <streambuf>

namespace {

// Writes to a descriptor, for the reporter.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : m_descriptor(descriptor) {}

 protected:
  int_type overflow(int_type character) override {
    const char byte = traits_type::to_char_type(character);
    return write(m_descriptor, &byte, 1) == 1 ? character : traits_type::eof();
  }
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    return write(m_descriptor, text, static_cast<std::size_t>(size));
  }

 private:
  int m_descriptor;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  DescriptorBuffer results(dup(STDOUT_FILENO));
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDOUT_FILENO);
  std::cout.rdbuf(&results);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
