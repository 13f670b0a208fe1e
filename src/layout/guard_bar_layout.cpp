#include "layout/guard_bar_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/numeric.h"
#include "layout/linear_layout.h"
#include "layout/text_layout.h"
#include "text/text_bands.h"

namespace barcode {
namespace {

// Margins and guards follow the text height of the middle size band at every height.
constexpr float kMiddleBand = kTextHeightBands.medium;
constexpr float kDigitCell = 0.8F;
// Guard bars of a symbol without text: 5% longer than the data bars. As a double it is exact enough to keep
// whole results whole.
constexpr double kBareGuardFactor = 1.05;
// The gap above the digits has one factor at every height.
constexpr SizeBands kGuardTextGapBands{0.03F, 0.03F, 0.03F};
constexpr int kMinTextGap = 1;
constexpr float kSvgTextRatio = 0.8F;
constexpr double kSvgDigitRatio = 0.6;

// The EAN symbols share the widths that stand in for missing sections: the run counts of EAN-8, also where a
// half has more modules than runs.
constexpr std::array<GuardSection, 5> kJan13Sections = {
    {{3, true, 3}, {24, false, 16}, {5, true, 5}, {24, false, 16}, {3, true, 3}}};
constexpr std::array<GuardSection, 5> kJan8Sections = {
    {{3, true, 3}, {16, false, 16}, {5, true, 5}, {16, false, 16}, {3, true, 3}}};
// The first and the last digit of UPC-A belong to the guards, the outer spaces of the centre guard to the
// data.
constexpr std::array<GuardSection, 5> kUpcASections = {
    {{7, true, 7}, {21, false, 21}, {3, true, 3}, {21, false, 21}, {7, true, 7}}};
constexpr std::array<GuardSection, 3> kUpcESections = {{{3, true, 3}, {24, false, 42}, {6, true, 6}}};

constexpr std::array<DigitGroup, 2> kJan13Groups = {{{1, 6, 1, false}, {7, 6, 3, true}}};
constexpr std::array<DigitGroup, 2> kJan8Groups = {{{0, 4, 1, false}, {4, 4, 3, true}}};
constexpr std::array<DigitGroup, 2> kUpcAGroups = {{{1, 5, 1, false}, {6, 5, 3, true}}};
constexpr std::array<DigitGroup, 1> kUpcEGroups = {{{1, 6, 1, false}}};

float Snap(float value, PixelGrid grid) {
  return grid == PixelGrid::kWhole ? std::trunc(value) : value;
}

double Snap(double value, PixelGrid grid) {
  return grid == PixelGrid::kWhole ? std::trunc(value) : value;
}

// A scale that is no number, or that takes the height out of range, counts as none.
float MiddleBandTextHeight(const Box& box, const TextOptions& options) {
  const float height = static_cast<float>(box.height) * kMiddleBand * options.fontScale;
  return std::isfinite(height) ? height : 0.0F;
}

float Margin(const Box& box, const TextOptions& options, float cells) {
  return options.show ? MiddleBandTextHeight(box, options) * kDigitCell * cells : 0.0F;
}

float BarHeight(const Box& box, const TextOptions& options) {
  return LayoutBarHeight(box.height, 1, options);
}

float GuardHeight(const GuardBarStyle& style, const Box& box, const TextOptions& options, PixelGrid grid) {
  const float barHeight = Snap(BarHeight(box, options), grid);
  if (!options.show) {
    return static_cast<float>(Snap(static_cast<double>(barHeight) * kBareGuardFactor, grid));
  }
  return barHeight + Snap(MiddleBandTextHeight(box, options) * style.guardReach, grid);
}

double CellWidth(int fontSize, PixelGrid grid, const TextMeasure& measure) {
  if (grid == PixelGrid::kFractional) {
    return EstimatedDigitWidth(fontSize);
  }
  const std::optional<TextExtent> digit = measure("0", fontSize);
  return digit ? digit->width : fontSize / 2;
}

}  // namespace

const GuardBarStyle kJan13Style = {kJan13Sections, kJan13Groups, 1.2F, 0.0F, 0.275F, 0.3F, false};
const GuardBarStyle kJan8Style = {kJan8Sections, kJan8Groups, 0.0F, 0.0F, 0.275F, 0.0F, true};
const GuardBarStyle kUpcAStyle = {kUpcASections, kUpcAGroups, 1.0F, 1.0F, 0.495F, 0.0F, false};
const GuardBarStyle kUpcEStyle = {kUpcESections, kUpcEGroups, 1.0F, 1.0F, 0.495F, 0.0F, false};

GuardBars LayoutGuardBars(const GuardBarStyle& style, const RunVector& pattern, const Box& box,
                          const LinearOptions& options, PixelGrid grid) {
  const float left = Margin(box, options.text, style.leftMargin);
  const float right = Margin(box, options.text, style.rightMargin);
  const float width = static_cast<float>(box.width) - (left + right);
  const ElementScale scale = ScaleFor(width, TotalModules(pattern), options);
  const float barHeight = Snap(BarHeight(box, options.text), grid);
  const float guardHeight = GuardHeight(style, box, options.text, grid);
  const auto top = static_cast<float>(box.y);

  GuardBars layout;
  layout.rightMargin = Snap(right, grid);
  std::size_t sectionEnd = 0;
  bool guard = false;
  const auto visit = [&](std::size_t index, bool isBar, float x, float elementWidth) {
    if (index == sectionEnd && layout.sectionStarts.size() < style.sections.size()) {
      const GuardSection& section = style.sections[layout.sectionStarts.size()];
      layout.sectionStarts.push_back(Snap(x, grid));
      sectionEnd += section.runs;
      guard = section.guard;
    }
    if (isBar) {
      layout.bars.push_back({x, top, elementWidth, guard ? guardHeight : barHeight});
    }
  };
  layout.end = WalkElements(pattern, scale, static_cast<float>(box.x) + Snap(left, grid), visit);
  while (layout.sectionStarts.size() < style.sections.size()) {
    const float modules = style.sections[layout.sectionStarts.size() - 1].nominalModules;
    layout.sectionStarts.push_back(Snap(layout.sectionStarts.back() + modules * scale.moduleWidth, grid));
  }
  return layout;
}

std::vector<TextRun> LayoutGuardText(const GuardBarStyle& style, const GuardBars& bars, std::string_view code,
                                     const Box& box, const LinearOptions& options, double cellWidth,
                                     PixelGrid grid) {
  std::vector<TextRun> texts;
  const int size = GuardTextSize(box, options.text, grid);
  // The digits stand close under the bars, also where the box ends before they do.
  const TextBox line{.top = GuardTextTop(style, box, options.text, grid)};
  const auto add = [&](std::string_view digits, double x, TextAnchor anchor) {
    TextRun& run = texts.emplace_back();
    run.text = digits;
    run.size = size;
    run.anchor = anchor;
    run.x = x;
    run.box = line;
  };
  if (style.leftMargin > 0.0F) {
    const double inset = grid == PixelGrid::kFractional ? cellWidth * style.svgLeadingInset : 0.0;
    add(code.substr(0, 1), box.x + inset, TextAnchor::kStart);
  }
  for (const DigitGroup& group : style.groups) {
    const double start = bars.sectionStarts[group.section];
    const double span = bars.sectionStarts[group.section + 1] - start;
    const double usable = span - 2.0 * cellWidth;
    if (!(usable > 0.0)) {
      if (group.endsText) {
        return texts;
      }
      continue;
    }
    const std::string_view digits = code.substr(group.first, group.count);
    if (!options.text.evenSpacing) {
      add(digits, start + Snap(span / 2.0, grid), TextAnchor::kMiddle);
      continue;
    }
    for (std::size_t k = 0; k < digits.size(); ++k) {
      const double offset = static_cast<double>(k) * usable / static_cast<double>(digits.size() - 1);
      add(digits.substr(k, 1), start + cellWidth + Snap(offset, grid), TextAnchor::kMiddle);
    }
  }
  if (style.rightMargin > 0.0F) {
    const double x = Snap(static_cast<double>(bars.end), grid) - cellWidth + bars.rightMargin;
    add(code.substr(code.size() - 1), x, TextAnchor::kStart);
  }
  return texts;
}

double GuardTextTop(const GuardBarStyle& style, const Box& box, const TextOptions& options, PixelGrid grid) {
  const bool gap = grid == PixelGrid::kFractional || style.rasterTextGap;
  const int gapHeight = std::max(kMinTextGap, ScaledTextGap(box.height, kGuardTextGapBands, options.gap));
  return Snap(box.y + double{BarHeight(box, options)} + (gap ? gapHeight : 0), grid);
}

int GuardTextSize(const Box& box, const TextOptions& options, PixelGrid grid) {
  const int size = TextSize(box.height, options.fontScale);
  if (grid == PixelGrid::kWhole) {
    return size;
  }
  return std::max(kMinTextSize, TruncToInt(static_cast<float>(size) * kSvgTextRatio));
}

double EstimatedDigitWidth(int fontSize) {
  return fontSize * kSvgDigitRatio;
}

Drawing LayoutGuardBarSymbol(const GuardBarStyle& style, const RunVector& pattern, std::string_view code,
                             const Box& box, const LinearOptions& options, PixelGrid grid,
                             const TextMeasure& measure) {
  GuardBars bars = LayoutGuardBars(style, pattern, box, options, grid);
  Drawing drawing;
  drawing.barHeight = BarHeight(box, options.text);
  drawing.drawnWidth = bars.end - static_cast<float>(box.x);
  if (options.text.show) {
    const double cellWidth = CellWidth(GuardTextSize(box, options.text, grid), grid, measure);
    drawing.texts = LayoutGuardText(style, bars, code, box, options, cellWidth, grid);
  }
  drawing.bars = std::move(bars.bars);
  return drawing;
}

}  // namespace barcode
