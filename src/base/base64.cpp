#include "base/base64.h"

#include <array>
#include <cstddef>

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

constexpr std::uint8_t kNoDigit = 64;

// The value of each byte as a character of the alphabet.
constexpr auto kValues = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(kNoDigit);
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
    values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return values;
}();

// Appends the bytes that a group of two, three or four characters stands for; false when it stands for none.
bool DecodeGroup(std::string& out, std::string_view group) {
  std::uint32_t bits = 0;
  for (const char c : group) {
    const std::uint8_t value = kValues[static_cast<unsigned char>(c)];
    if (value == kNoDigit) {
      return false;
    }
    bits = bits << 6U | value;
  }
  const std::size_t bytes = group.size() * 6 / 8;
  bits <<= 32 - 6 * group.size();
  for (std::size_t i = 0; i < bytes; ++i) {
    out += static_cast<char>(bits >> 24U);
    bits <<= 8U;
  }
  return bits == 0;
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

std::optional<std::string> Base64Decode(std::string_view text) {
  if (text.size() % 4 != 0) {
    return std::nullopt;
  }
  std::string out;
  out.reserve(text.size() / 4 * 3);
  while (!text.empty()) {
    std::string_view group = text.substr(0, 4);
    text.remove_prefix(4);
    if (text.empty() && group.ends_with('=')) {
      group.remove_suffix(group.ends_with("==") ? 2 : 1);
    }
    if (!DecodeGroup(out, group)) {
      return std::nullopt;
    }
  }
  return out;
}

}  // namespace barcode
