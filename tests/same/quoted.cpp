#include "same/quoted.h"

#include <array>
#include <cinttypes>
#include <cstdio>

namespace barcode::same {
namespace {

constexpr std::uint64_t kFnvOffset = 14695981039346656037U;
constexpr std::uint64_t kFnvPrime = 1099511628211U;

void AppendEscaped(std::string& to, unsigned char byte) {
  if (byte == '"' || byte == '\\') {
    to += '\\';
  }
  if (byte >= ' ' && byte <= '~') {
    to += static_cast<char>(byte);
    return;
  }
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  to += "\\x";
  to += kDigits[byte >> 4U];
  to += kDigits[byte & 15U];
}

}  // namespace

std::uint64_t Hash(std::string_view bytes) {
  std::uint64_t hash = kFnvOffset;
  for (const char byte : bytes) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * kFnvPrime;
  }
  return hash;
}

std::string Digest(std::string_view bytes) {
  if (bytes.empty()) {
    return "-";
  }
  std::array<char, 48> digest{};
  (void)std::snprintf(digest.data(), digest.size(), "%016" PRIx64 ":%zu", Hash(bytes), bytes.size());
  return digest.data();
}

std::string Quoted(std::string_view text, std::size_t limit) {
  std::string quoted = "\"";
  for (const char byte : text.substr(0, limit)) {
    AppendEscaped(quoted, static_cast<unsigned char>(byte));
  }
  quoted += '"';
  return text.size() <= limit ? quoted : quoted + "..." + Digest(text);
}

}  // namespace barcode::same
