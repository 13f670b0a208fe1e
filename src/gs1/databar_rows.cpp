#include "gs1/databar_rows.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace barcode {
namespace {

constexpr char kDark = '1';
constexpr char kLight = '0';
constexpr std::size_t kLongestDigit = 9;

char Opposite(char module) {
  return module == kDark ? kLight : kDark;
}

void AppendRun(std::string& digits, std::size_t length) {
  for (; length > kLongestDigit; length -= kLongestDigit) {
    digits += "90";
  }
  digits += static_cast<char>('0' + length);
}

}  // namespace

void DataBarRowBuilder::AddElement(std::uint8_t width) {
  m_row.append(width, m_dark ? kDark : kLight);
  m_dark = !m_dark;
}

DataBarRowBuilder& DataBarRowBuilder::Add(std::span<const std::uint8_t> widths) {
  for (const std::uint8_t width : widths) {
    AddElement(width);
  }
  return *this;
}

DataBarRowBuilder& DataBarRowBuilder::AddReversed(std::span<const std::uint8_t> widths) {
  std::for_each(widths.rbegin(), widths.rend(), [this](std::uint8_t width) { AddElement(width); });
  return *this;
}

DataBarRowBuilder& DataBarRowBuilder::AddGuard() {
  return Add(std::array<std::uint8_t, 2>{1, 1});
}

DataBarModuleRow AdjacentSeparator(const DataBarModuleRow& row, std::span<const std::size_t> wideFinders) {
  DataBarModuleRow separator(row.size(), kLight);
  std::transform(row.begin(), row.end(), separator.begin(), Opposite);
  for (const std::size_t first : wideFinders) {
    char left = kLight;
    for (std::size_t i = first; i < first + kWideFinderModules; ++i) {
      separator[i] = row[i] == kLight ? Opposite(left) : kLight;
      left = separator[i];
    }
  }
  std::fill_n(separator.begin(), kSeparatorMargin, kLight);
  std::fill_n(separator.rbegin(), kSeparatorMargin, kLight);
  return separator;
}

DataBarModuleRow MiddleSeparator(std::size_t modules) {
  DataBarModuleRow separator(modules, kLight);
  for (std::size_t i = kSeparatorMargin + 1; i + kSeparatorMargin < modules; i += 2) {
    separator[i] = kDark;
  }
  return separator;
}

std::string WidthDigits(const DataBarModuleRow& row) {
  std::string digits;
  char colour = kDark;
  for (auto run = row.begin(); run != row.end(); colour = Opposite(colour)) {
    const auto end = std::find(run, row.end(), Opposite(colour));
    AppendRun(digits, static_cast<std::size_t>(std::distance(run, end)));
    run = end;
  }
  return digits;
}

std::string WidthDigits(std::span<const std::uint8_t> elements) {
  std::string digits;
  digits.reserve(elements.size());
  for (const std::uint8_t width : elements) {
    digits += static_cast<char>('0' + width);
  }
  return digits;
}

std::string BehindEmptyBar(std::span<const std::uint8_t> elements) {
  return '0' + WidthDigits(elements);
}

}  // namespace barcode
