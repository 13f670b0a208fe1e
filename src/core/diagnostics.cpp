#include "core/diagnostics.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace barcode {
namespace {

thread_local bool unflushedOutput = false;

}  // namespace

void Print(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  unflushedOutput = true;
}

void PrintError(std::string_view text) {
  FlushOutput();
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

void PrintErrorWithoutMemory(std::initializer_list<std::string_view> texts) {
  std::array<char, 256> line;
  std::size_t length = 0;
  for (const std::string_view text : texts) {
    length += text.copy(line.data() + length, line.size() - 1 - length);
  }
  line[length++] = '\n';
  PrintError({line.data(), length});
}

void FlushOutput() {
  if (!unflushedOutput) {
    return;
  }
  std::fflush(stdout);
  unflushedOutput = false;
}

}  // namespace barcode
