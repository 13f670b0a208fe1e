#include "base/base64.h"

#include <cstddef>
#include <string_view>

namespace barcode {
namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The four characters of 24 bits.
void EncodeGroup(char* out, std::uint32_t bits) {
  out[0] = kAlphabet[bits >> 18U];
  out[1] = kAlphabet[(bits >> 12U) & 63U];
  out[2] = kAlphabet[(bits >> 6U) & 63U];
  out[3] = kAlphabet[bits & 63U];
}

}  // namespace

std::string Base64Encode(std::span<const std::uint8_t> bytes) {
  std::string out;
  AppendBase64(out, bytes);
  return out;
}

void AppendBase64(std::string& out, std::span<const std::uint8_t> bytes) {
  const std::size_t head = out.size();
  out.resize(head + (bytes.size() + 2) / 3 * 4);
  char* group = out.data() + head;
  while (bytes.size() >= 3) {
    EncodeGroup(group, (static_cast<std::uint32_t>(bytes[0]) << 16U) |
                           (static_cast<std::uint32_t>(bytes[1]) << 8U) | bytes[2]);
    bytes = bytes.subspan(3);
    group += 4;
  }
  if (bytes.empty()) {
    return;
  }
  std::uint32_t rest = static_cast<std::uint32_t>(bytes[0]) << 16U;
  if (bytes.size() == 2) {
    rest |= static_cast<std::uint32_t>(bytes[1]) << 8U;
  }
  EncodeGroup(group, rest);
  group[3] = '=';
  if (bytes.size() == 1) {
    group[2] = '=';
  }
}

}  // namespace barcode
