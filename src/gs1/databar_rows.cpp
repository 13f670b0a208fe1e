#include "gs1/databar_rows.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace barcode {
namespace {

constexpr std::uint32_t kWidestElement = 9;

void AppendRun(RunVector& widths, std::uint32_t modules) {
  for (; modules > kWidestElement; modules -= kWidestElement) {
    widths.insert(widths.end(), {kWidestElement, 0});
  }
  widths.push_back(modules);
}

}  // namespace

void DataBarRowBuilder::AddElement(std::uint8_t width) {
  m_row.insert(m_row.end(), width, m_dark);
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
  DataBarModuleRow separator = row;
  separator.flip();
  for (const std::size_t first : wideFinders) {
    bool dark = false;
    for (std::size_t i = first; i < first + kWideFinderModules; ++i) {
      dark = !row[i] && !dark;
      separator[i] = dark;
    }
  }
  std::fill_n(separator.begin(), kSeparatorMargin, false);
  std::fill_n(separator.rbegin(), kSeparatorMargin, false);
  return separator;
}

DataBarModuleRow MiddleSeparator(std::size_t modules) {
  DataBarModuleRow separator(modules, false);
  for (std::size_t i = kSeparatorMargin + 1; i + kSeparatorMargin < modules; i += 2) {
    separator[i] = true;
  }
  return separator;
}

RunVector ElementWidths(const DataBarModuleRow& row) {
  RunVector widths;
  widths.reserve(row.size());
  bool dark = true;
  for (auto run = row.begin(); run != row.end(); dark = !dark) {
    const auto end = std::find(run, row.end(), !dark);
    AppendRun(widths, static_cast<std::uint32_t>(std::distance(run, end)));
    run = end;
  }
  return widths;
}

}  // namespace barcode
