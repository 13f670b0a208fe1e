#include "gs1/databar_rows.h"

#include <algorithm>
#include <array>

namespace barcode {
namespace {

constexpr std::uint32_t kWidestElement = 9;

std::uint8_t Opposite(std::uint8_t module) {
  return module ^ 1U;
}

void AppendRun(RunVector& widths, std::uint32_t modules) {
  for (; modules > kWidestElement; modules -= kWidestElement) {
    widths.insert(widths.end(), {kWidestElement, 0});
  }
  widths.push_back(modules);
}

}  // namespace

void DataBarRowBuilder::AddElement(std::uint8_t width) {
  m_row.insert(m_row.end(), width, m_dark ? 1 : 0);
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
  DataBarModuleRow separator(row.size());
  std::transform(row.begin(), row.end(), separator.begin(), Opposite);
  for (const std::size_t first : wideFinders) {
    std::uint8_t left = 0;
    for (std::size_t i = first; i < first + kWideFinderModules; ++i) {
      left = row[i] == 0 ? Opposite(left) : 0;
      separator[i] = left;
    }
  }
  std::fill_n(separator.begin(), kSeparatorMargin, std::uint8_t{0});
  std::fill_n(separator.rbegin(), kSeparatorMargin, std::uint8_t{0});
  return separator;
}

DataBarModuleRow MiddleSeparator(std::size_t modules) {
  DataBarModuleRow separator(modules, 0);
  for (std::size_t i = kSeparatorMargin + 1; i + kSeparatorMargin < modules; i += 2) {
    separator[i] = 1;
  }
  return separator;
}

RunVector ElementWidths(const DataBarModuleRow& row) {
  RunVector widths;
  widths.reserve(row.size());
  std::uint8_t colour = 1;
  std::uint32_t run = 0;
  for (const std::uint8_t module : row) {
    if (module != colour) {
      AppendRun(widths, run);
      colour = module;
      run = 0;
    }
    ++run;
  }
  AppendRun(widths, run);
  return widths;
}

}  // namespace barcode
