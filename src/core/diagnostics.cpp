#include "core/diagnostics.h"

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

void FlushOutput() {
  if (!unflushedOutput) {
    return;
  }
  std::fflush(stdout);
  unflushedOutput = false;
}

}  // namespace barcode
