#include "core/diagnostics.h"

#include <cstdio>
#include <string>

namespace barcode {
namespace {

thread_local bool unflushedOutput = false;

}  // namespace

void Print(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  unflushedOutput = true;
}

void PrintLine(std::string_view line) {
  std::string text;
  text.reserve(line.size() + 1);
  text.append(line).push_back('\n');
  Print(text);
}

void ErrorLine(std::string_view line) {
  ErrorLine(line, {});
}

void ErrorLine(std::string_view prefix, std::string_view message) {
  FlushOutput();
  std::string text;
  text.reserve(prefix.size() + message.size() + 1);
  text.append(prefix).append(message).push_back('\n');
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
