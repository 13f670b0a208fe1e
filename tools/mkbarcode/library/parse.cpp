#include "mkbarcode/library/parse.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace barcode::tool {
namespace {

template <class T>
std::optional<T> ParseWhole(std::string_view text, auto... base) {
  T value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base...);
  if (error != std::errc{} || stop != end) {
    return std::nullopt;
  }
  return value;
}

std::optional<int> ParsePositive(std::string_view text) {
  const std::optional<int> value = ParseInteger(text);
  return value && *value > 0 ? value : std::nullopt;
}

std::optional<Color> FromChannels(const std::array<int, 4>& channels) {
  for (const int channel : channels) {
    if (channel < 0 || channel > 255) {
      return std::nullopt;
    }
  }
  return Color{channels[0], channels[1], channels[2], channels[3]};
}

std::optional<Color> ParseHexColor(std::string_view digits) {
  if (digits.size() != 6 && digits.size() != 8) {
    return std::nullopt;
  }
  std::array<int, 4> channels = {0, 0, 0, 255};
  for (std::size_t i = 0; i * 2 < digits.size(); ++i) {
    const std::optional<int> channel = ParseWhole<int>(digits.substr(i * 2, 2), 16);
    if (!channel) {
      return std::nullopt;
    }
    channels.at(i) = *channel;
  }
  return FromChannels(channels);
}

std::optional<Color> ParseDecimalColor(std::string_view text) {
  std::array<int, 4> channels = {0, 0, 0, 255};
  std::size_t count = 0;
  for (bool more = true; more; ++count) {
    const std::size_t comma = text.find(',');
    more = comma != std::string_view::npos;
    const std::optional<int> channel = ParseInteger(text.substr(0, comma));
    if (!channel || count == channels.size()) {
      return std::nullopt;
    }
    channels.at(count) = *channel;
    if (more) {
      text.remove_prefix(comma + 1);
    }
  }
  return count < 3 ? std::nullopt : FromChannels(channels);
}

}  // namespace

std::optional<int> ParseInteger(std::string_view text) {
  return ParseWhole<int>(text);
}

std::optional<double> ParseReal(std::string_view text) {
  const std::optional<double> value = ParseWhole<double>(text);
  return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<Size> ParseSize(std::string_view text) {
  const std::size_t cross = text.find_first_of("xX");
  const std::optional<int> width = ParsePositive(text.substr(0, cross));
  if (!width) {
    return std::nullopt;
  }
  if (cross == std::string_view::npos) {
    return Size{*width, *width, true};
  }
  const std::optional<int> height = ParsePositive(text.substr(cross + 1));
  if (!height) {
    return std::nullopt;
  }
  return Size{*width, *height, false};
}

std::optional<Color> ParseColor(std::string_view text) {
  return text.starts_with('#') ? ParseHexColor(text.substr(1)) : ParseDecimalColor(text);
}

std::optional<std::string> FormatOfFile(std::string_view file) {
  const std::size_t dot = file.find_last_of("./");
  if (dot == std::string_view::npos || file[dot] != '.') {
    return std::nullopt;
  }
  const std::string suffix = LowerCase(file.substr(dot + 1));
  for (const std::string_view format : {"png", "svg", "jpg", "jpeg"}) {
    if (suffix == format) {
      return suffix;
    }
  }
  return std::nullopt;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return lower;
}

}  // namespace barcode::tool
