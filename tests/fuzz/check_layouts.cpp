#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "base/numeric.h"
#include "base/stacked_row.h"
#include "fuzz/checks.h"
#include "fuzz/require.h"
#include "gs1/payment_form_layout.h"
#include "layout/four_state_layout.h"
#include "layout/guard_bar_layout.h"
#include "layout/linear_layout.h"
#include "layout/matrix_layout.h"
#include "layout/stacked_layout.h"
#include "linear/ean_upc_encoder.h"
#include "linear/yubin_customer_encoder.h"

namespace barcode::fuzz {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr auto kScales =
    std::to_array<float>({1, 1, 1, 0, -1, 0.5F, 2, 30, 1e9F, 1e-9F, 1e38F, -1e38F, kInfinity, -kInfinity,
                          std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::denorm_min()});
constexpr auto kSizes = std::to_array<std::uint32_t>(
    {0, 1, 2, 9, 49, 50, 51, 100, 200, 201, 300, 1000, 65'536, 0x7FFF'FFFF, 0x8000'0000, 0xFFFF'FFFF});

float Scale(ByteReader& reader) {
  return reader.OneIn(8) ? reader.Any<float>() : reader.Of(kScales);
}

std::uint32_t Size(ByteReader& reader) {
  const std::uint32_t size = reader.OneIn(8) ? reader.Any<std::uint32_t>() : reader.Of(kSizes);
  return reader.Flag() ? size : reader.Byte();
}

int Adjustment(ByteReader& reader) {
  return reader.OneIn(8) ? reader.Any<int>() : static_cast<std::int8_t>(reader.Byte());
}

Box AnyBox(ByteReader& reader) {
  Box box;
  if (reader.OneIn(8)) {
    box.x = static_cast<int>(reader.Byte()) - 128;
    box.y = static_cast<int>(reader.Byte()) - 128;
  }
  box.width = Size(reader);
  box.height = Size(reader);
  return box;
}

LinearOptions AnyOptions(ByteReader& reader) {
  LinearOptions options;
  options.text.show = !reader.OneIn(4);
  options.text.evenSpacing = reader.Flag();
  options.text.fontScale = Scale(reader);
  options.text.marginScale = reader.OneIn(8) ? Scale(reader) : 1.0F;
  options.text.gap = Scale(reader);
  options.fitWidth = reader.Flag();
  options.pxAdjustBlack = Adjustment(reader);
  options.pxAdjustWhite = Adjustment(reader);
  return options;
}

PixelGrid AnyGrid(ByteReader& reader) {
  return reader.Flag() ? PixelGrid::kWhole : PixelGrid::kFractional;
}

// A font whose texts grow with its size, from nothing to far wider than any box, or that cannot be measured.
TextMeasure AnyFont(ByteReader& reader) {
  const double aspect = static_cast<double>(reader.Byte()) / 32;
  if (reader.OneIn(4)) {
    return [](const std::string&, int) { return std::nullopt; };
  }
  return [aspect](const std::string& text, int size) {
    const double width = aspect * size * static_cast<double>(text.size());
    return std::optional(TextExtent{std::max(TruncToInt(width), 0), size});
  };
}

RunVector AnyPattern(ByteReader& reader, std::uint32_t narrowest) {
  RunVector pattern;
  for (const char width : reader.Bytes(60)) {
    pattern.push_back(narrowest + static_cast<unsigned char>(width) % 9);
  }
  if (pattern.empty()) {
    pattern.push_back(1);
  }
  return pattern;
}

void RequireBars(const Drawing& drawing, std::size_t bars, float narrowest) {
  Require(drawing.bars.size() == bars, "every bar is drawn");
  for (const RectF& bar : drawing.bars) {
    Require(bar.width >= narrowest, "no bar is narrower than a pixel");
    Require(bar.height == bar.height && bar.x == bar.x && bar.y == bar.y, "bars stand somewhere");
  }
  Require(drawing.drawnWidth == drawing.drawnWidth, "the drawn width is a number");
}

void RequireTexts(const Drawing& drawing, const LinearOptions& options) {
  Require(options.text.show || drawing.texts.empty(), "text is shown when it is to be");
  for (const TextRun& run : drawing.texts) {
    Require(!run.text.empty() && run.size >= 1, "a text has characters and a size");
    Require(run.x == run.x && run.box.top == run.box.top, "texts stand somewhere");
  }
}

}  // namespace

void CheckLinearLayout(ByteReader& reader) {
  const Box box = AnyBox(reader);
  const LinearOptions options = AnyOptions(reader);
  const PixelGrid grid = AnyGrid(reader);
  const RunVector pattern = AnyPattern(reader, 1);
  const std::string text = reader.Bytes(40);
  const Drawing drawing = LayoutLinear(pattern, text, box, options, grid);
  RequireBars(drawing, (pattern.size() + 1) / 2, 1);
  RequireTexts(drawing, options);
  Require(drawing.barHeight >= 1, "bars are at least a pixel high");
  Require(drawing.texts.empty() == (text.empty() || !options.text.show), "a text is shown when there is one");
}

void CheckGuardBarLayout(ByteReader& reader) {
  struct Retail {
    const GuardBarStyle& style;
    RunVector pattern;
    std::string_view code;
  };
  static const std::array<Retail, 4> kRetail = {{{kJan13Style, EncodeJan13("4901234567894"), "4901234567894"},
                                                 {kJan8Style, EncodeJan8("49012347"), "49012347"},
                                                 {kUpcAStyle, EncodeUpcA("012345678905"), "012345678905"},
                                                 {kUpcEStyle, EncodeUpcE("01234565"), "01234565"}}};
  const Retail& retail = kRetail[reader.Below(kRetail.size())];
  const Box box = AnyBox(reader);
  const LinearOptions options = AnyOptions(reader);
  const PixelGrid grid = AnyGrid(reader);
  const Drawing drawing =
      LayoutGuardBarSymbol(retail.style, retail.pattern, retail.code, box, options, grid, AnyFont(reader));
  RequireTexts(drawing, options);
  RequireBars(drawing, (retail.pattern.size() + 1) / 2, 1);
  for (const TextRun& run : drawing.texts) {
    Require(retail.code.find(run.text) != std::string_view::npos, "digits of the code are shown");
  }
}

void CheckStackedLayout(ByteReader& reader) {
  const Box box = AnyBox(reader);
  const LinearOptions options = AnyOptions(reader);
  const float smallestShare = reader.Flag() ? 1.0F : -kInfinity;
  const bool isProportional = reader.Flag();
  std::vector<StackedRow> rows;
  std::size_t bars = 0;
  for (std::size_t count = 1 + reader.Below(12); count > 0; --count) {
    StackedRow row{.widths = AnyPattern(reader, 0), .height = std::nullopt};
    if (isProportional || reader.Flag()) {
      row.height = static_cast<int>(1 + reader.Below(40));
    }
    for (std::size_t i = 0; i < row.widths.size(); i += 2) {
      bars += row.widths[i] != 0 ? 1 : 0;
    }
    rows.push_back(std::move(row));
  }
  const StackedRoom room = StackedRoom::Of(box.height, options.text.fontScale, options.text.gap);
  const std::uint64_t widest = std::max<std::uint64_t>(WidestRow(rows), 1);
  const ElementScale scale = ScaleFor(static_cast<float>(box.width), widest, options);
  const std::vector<float> heights = isProportional
                                         ? ProportionalHeights(rows, room)
                                         : SharedHeights(rows, room, scale.moduleWidth, smallestShare);
  Require(heights.size() == rows.size(), "every row has a height");
  const Drawing drawing = LayoutRows(rows, heights, scale, box);
  Require(drawing.bars.size() <= bars, "no more bars are drawn than there are");
  for (const RectF& bar : drawing.bars) {
    Require(bar.width >= 1 && bar.height == bar.height, "no bar is narrower than a pixel");
  }
}

void CheckFourStateLayout(ByteReader& reader) {
  static const FourStateSymbol kSymbol = EncodeYubinCustomer("1234567-ABC");
  const Box box = AnyBox(reader);
  const Drawing drawing = LayoutFourState(kSymbol.bars, box, Adjustment(reader));
  RequireBars(drawing, kYubinBars, 1);
  (void)FourStateImageWidth(static_cast<float>(box.height));
}

void CheckPaymentFormLayout(ByteReader& reader) {
  const Box box = AnyBox(reader);
  const LinearOptions options = AnyOptions(reader);
  const PixelGrid grid = AnyGrid(reader);
  const Drawing drawing =
      LayoutPaymentForm("9191234500000000000000000000000000000000000", box, options, grid, AnyFont(reader));
  RequireTexts(drawing, options);
  Require(!drawing.bars.empty(), "the bars are there");
}

void CheckMatrixLayout(ByteReader& reader) {
  ModuleMatrix matrix(static_cast<int>(reader.Below(40)), static_cast<int>(reader.Below(40)));
  const std::uint32_t width = Size(reader);
  const std::uint32_t height = Size(reader);
  const bool fitWidth = reader.Flag();
  const PixelGrid grid = AnyGrid(reader);
  const ModuleRule rule{
      .adjust = static_cast<double>(Adjustment(reader)),
      .skip = reader.Of(std::array{SkipModules::kNone, SkipModules::kEmptyCell, SkipModules::kEmptyRect})};
  for (int x = 0; x < matrix.Columns(); ++x) {
    for (int y = 0; y < matrix.Rows(); y += 8) {
      const std::uint8_t bits = reader.Byte();
      for (int bit = 0; bit < 8 && y + bit < matrix.Rows(); ++bit) {
        matrix.Set(x, y + bit, (bits >> bit & 1U) != 0);
      }
    }
  }
  const MatrixDrawing drawing = LayoutStretched(matrix, width, height, fitWidth, grid, rule);
  std::size_t visited = 0;
  LayoutModules(matrix, drawing.grid, drawing.rule, [&](const ModuleRect& rect) {
    Require(rule.skip != SkipModules::kEmptyRect || (rect.width > 0 && rect.height > 0),
            "empty modules are left out");
    ++visited;
  });
  Require(visited <= matrix.CountDark() && (rule.skip != SkipModules::kNone || visited == matrix.CountDark()),
          "every dark module is drawn");
  std::size_t merged = 0;
  LayoutDarkArea(matrix, drawing.grid, rule.adjust, [&](const ModuleRect& rect) {
    Require(rect.width > 0 && rect.height > 0, "a dark area has an extent");
    ++merged;
  });
  Require(merged <= matrix.CountDark(), "rectangles become fewer");
  const ModuleSize square = SquareModules(width, height, matrix.Columns(), matrix.Rows(), fitWidth);
  Require(square.width == square.height, "square modules are square");
}

}  // namespace barcode::fuzz
