#include "label/composition.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "base/line.h"
#include "base/numeric.h"
#include "label/dark_area.h"
#include "label/font.h"
#include "label/needs.h"
#include "label/text_setting.h"
#include "label/turn.h"
#include "label/units.h"
#include "layout/four_state_layout.h"
#include "layout/linear_layout.h"
#include "layout/stacked_layout.h"
#include "text/text_bands.h"
#include "text/text_spacing.h"

namespace barcode::label {
namespace {

// A digit of EAN and UPC symbols is as wide as its bars.
constexpr int kDigitModules = 7;

// Text under a symbol whose height follows from its modules has this size, and half of the usual gap for it,
// where a module has the size that it has by default.
constexpr int kCaptionSize = 12;
constexpr double kCaptionGap = 3.0;

// Light kept on either side of a text that reaches across the picture, in dots: glyphs may lean out a little.
constexpr double kTextMargin = 1.0;

// The largest module of a request, in dots.
constexpr std::int64_t kMostModule = 100;

// ---- Sizes in dots ----

// The room of the text: nothing when size is 0.
struct TextRoom {
  int size = 0;
  int gap = 0;
  int height = 0;  // of the lines without the gap
};

// All heights of a picture before its turn, from the top: quiet zone, bars, and then, for linear symbols,
// text and quiet zone, else quiet zone and text.
struct Sizes {
  std::int64_t module = 0;
  std::int64_t barHeight = 0;
  TextRoom text;
  std::int64_t width = 0;
  std::int64_t height = 0;
};

class Composer {
 public:
  Composer(const TypeInfo& type, const Request& request, const Symbol& symbol, long long maxPixels)
      : m_type(type), m_request(request), m_symbol(symbol), m_maxPixels(maxPixels) {
    m_needs = NeedsOf(type, request, symbol);
    m_stacked = std::holds_alternative<StackedSymbol>(symbol.modules);
    const int side = request.quietZone.value_or(0);
    m_quiet = request.quietZone ? QuietZone{side, side, side, side} : type.quietZone;
    MakeLines();
  }

  Composition Run() {
    const bool boxed = m_request.width.has_value();
    const Sizes sizes = boxed ? SizesInBox() : NaturalSizes();
    RequireFewPixels(sizes);
    WarnOfText(sizes);

    m_result.module = static_cast<int>(sizes.module);
    m_result.columns = static_cast<int>(m_needs.columns);
    m_result.rows = m_type.twoDimensional ? static_cast<int>(m_needs.rows) : 1;
    m_result.quietZone = m_quiet;
    m_result.warnings.insert(m_result.warnings.begin(), m_symbol.warnings.begin(), m_symbol.warnings.end());
    Drawing& drawing = m_result.drawing;
    drawing.width = static_cast<int>(sizes.width);
    drawing.height = static_cast<int>(sizes.height);
    drawing.foreground = m_request.foreground.value_or(kBlack);
    drawing.background = m_request.background.value_or(kWhite);
    drawing.dpi = m_request.dpi;
    drawing.title = m_symbol.text;
    Place(sizes);
    Turn(drawing, m_request.rotate.value_or(Rotation::kNone));
    return std::move(m_result);
  }

 private:
  // ---- Text ----

  void MakeLines() {
    if (!m_request.showText.value_or(true)) {
      return;
    }
    m_captioned = m_request.caption.has_value();
    const std::span<const std::string> texts =
        m_captioned ? std::span(&*m_request.caption, 1) : std::span(m_symbol.lines);
    m_lines.reserve(texts.size());
    for (const std::string& text : texts) {
      if (text.empty()) {
        continue;
      }
      // No line that long fits a picture, and nobody waits for its measure.
      if (text.size() > kMostTextBytes) {
        m_tooLong = true;
        m_lines.clear();
        return;
      }
      m_lines.emplace_back(Font(), text);
    }
    m_digits = !m_captioned && m_needs.guard != nullptr && !m_lines.empty();
  }

  // The size that the text has when there is room for it.
  int WantedSize(std::int64_t module, std::int64_t height) const {
    const auto scale = static_cast<float>(m_request.textScale.value_or(1.0));
    if (m_needs.OwnHeight()) {
      const double size = kCaptionSize * static_cast<double>(module) / m_type.defaultModule;
      return std::max(kMinTextSize, TruncToInt(size * static_cast<double>(scale)));
    }
    int unscaled = TextSize(static_cast<unsigned>(height), 1.0F);
    if (m_digits) {
      unscaled = m_lines.front().LargestCellSize(static_cast<double>(kDigitModules * module), unscaled);
    } else if (m_stacked && !m_captioned && !m_lines.empty()) {
      // A stacked symbol is narrow and high for the text that it carries.
      const double width = static_cast<double>(ModulesAcross() * module) - 2 * kTextMargin;
      unscaled = m_lines.front().LargestSize(width, unscaled);
    }
    return std::max(kMinTextSize, TruncToInt(static_cast<float>(unscaled) * scale));
  }

  int Gap(std::int64_t module, std::int64_t height) const {
    const double scale = m_request.textGap.value_or(1.0);
    if (m_digits) {
      return std::max(1, TruncToInt(static_cast<double>(module) * scale));
    }
    const double gap =
        m_needs.OwnHeight()
            ? kCaptionGap * static_cast<double>(module) / m_type.defaultModule * scale
            : ScaledTextGap(static_cast<unsigned>(height), kTextGapBands, static_cast<float>(scale));
    return std::max(1, TruncToInt(gap));
  }

  // Whole dots of a line above and below its base line. The digits of EAN and UPC stand close below their
  // bars, between the guards: nothing is kept free for accents and descenders.
  int Ascent(const TextLine& line, int size) const {
    return m_digits ? static_cast<int>(std::ceil(Font().CapHeight() * size / kUnitsPerEm))
                    : line.Ascent(size);
  }
  int Descent(const TextLine& line, int size) const {
    constexpr int kOvershoot =
        64;  // round digits reach a little below the line, less than this part of the em
    return m_digits ? (size + kOvershoot - 1) / kOvershoot : line.Descent(size);
  }

  // The room of the lines at the largest size, up to `wanted`, at which each fits the width; none when that
  // is too small.
  TextRoom RoomFor(int wanted, int gap, std::int64_t module, std::int64_t width) const {
    if (m_lines.empty()) {
      return {};
    }
    int size = wanted;
    if (m_digits) {
      size = m_lines.front().LargestCellSize(static_cast<double>(DigitCell() * module), wanted);
    } else {
      for (const TextLine& line : m_lines) {
        size = line.LargestSize(static_cast<double>(width) - 2 * kTextMargin, size);
      }
    }
    if (size < kSmallestTextSize) {
      return {};
    }
    TextRoom room{.size = size, .gap = gap};
    for (const TextLine& line : m_lines) {
      room.height += Ascent(line, size) + Descent(line, size);
    }
    return room;
  }

  // Modules that each digit of an EAN or UPC symbol has: those beside the bars stand in the quiet zone.
  int DigitCell() const {
    int cell = kDigitModules;
    if (m_needs.guard->leftMargin > 0.0F) {
      cell = std::min(cell, m_quiet.left);
    }
    if (m_needs.guard->rightMargin > 0.0F) {
      cell = std::min(cell, m_quiet.right);
    }
    return cell;
  }

  void WarnOfText(const Sizes& sizes) {
    if (m_lines.empty() && !m_tooLong) {
      return;
    }
    if (sizes.text.size == 0) {
      Warn(ErrorCode::kTextLeftOut,
           "The text was left out because it does not fit even at 6 pixels; give it fewer characters or the "
           "picture more room.",
           SizeForText(sizes));
      m_lines.clear();
      return;
    }
    if (sizes.text.size < m_wantedSize) {
      Warn(ErrorCode::kTextShrunk,
           Line("The text was set at ", sizes.text.size, " pixels instead of ", m_wantedSize,
                " to fit; give it fewer characters or the picture more room."),
           SizeForText(sizes));
    }
    std::string missing;
    for (const TextLine& line : m_lines) {
      for (const char32_t character : line.Missing()) {
        missing += missing.empty() ? "" : ", ";
        AppendCodePoint(missing, character);
      }
    }
    if (!missing.empty()) {
      Warn(ErrorCode::kMissingGlyph, Line("The text has characters that the font lacks (", missing,
                                          "), shown as boxes; give a caption without them."));
    }
    for (const TextLine& line : m_lines) {
      m_result.displayText += m_result.displayText.empty() ? "" : "\n";
      m_result.displayText += line.Text();
    }
  }

  static void AppendCodePoint(std::string& out, char32_t codePoint) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    out += "U+";
    const int digits = codePoint > 0xFFFFF ? 6 : codePoint > 0xFFFF ? 5 : 4;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
      out += kDigits[codePoint >> shift & 0xFU];
    }
  }

  void Warn(ErrorCode code, std::string message, std::optional<Size> needed = std::nullopt) {
    m_result.warnings.push_back({code, std::move(message), needed});
  }

  // A box that holds the text at the size that it wants there, for who refuses it otherwise: no smaller than
  // the picture, with its module or, where that is of no use, a larger one. Nothing where the text fits none.
  std::optional<Size> SizeForText(const Sizes& sizes) const {
    if (!m_request.strict.value_or(false) || m_tooLong) {
      return std::nullopt;
    }
    for (std::int64_t module = sizes.module; module <= kMostModule; ++module) {
      if (const std::optional<Size> size = SizeForText(sizes, module)) {
        return Turned(*size);
      }
    }
    return std::nullopt;
  }

  std::optional<Size> SizeForText(const Sizes& present, std::int64_t module) const {
    Sizes sizes;
    sizes.module = module;
    // A higher box has a larger text, which wants a higher box.
    for (std::int64_t least = present.height; least != sizes.height;) {
      sizes.height = least;
      const int wanted = WantedSize(module, sizes.height);
      sizes.width = std::max(present.width, ModulesAcross() * module);
      for (const TextLine& line : m_lines) {
        const double width = std::ceil(line.Width(wanted) + 2 * kTextMargin);
        sizes.width = m_digits ? sizes.width : std::max(sizes.width, static_cast<std::int64_t>(width));
      }
      if (sizes.width > m_maxPixels / sizes.height) {
        return std::nullopt;
      }
      sizes.text = RoomFor(wanted, Gap(module, sizes.height), module, sizes.width);
      if (sizes.text.size < wanted) {
        return std::nullopt;
      }
      sizes.barHeight = LeastBars() * module;
      least = std::max(sizes.height, Height(sizes));
    }
    return Size{ClampToInt(sizes.width), ClampToInt(sizes.height)};
  }

  // ---- Sizes ----

  std::int64_t ModulesAcross() const { return m_quiet.left + m_needs.columns + m_quiet.right; }
  std::int64_t QuietRows() const { return m_quiet.top + m_quiet.bottom; }

  // Modules of the bars at least.
  std::int64_t LeastBars() const { return m_needs.OwnHeight() ? m_needs.rows : m_needs.leastHeight; }

  // What text and guard bars add below the bars.
  std::int64_t FootHeight(const TextRoom& text, std::int64_t module) const {
    const std::int64_t reach = m_needs.guardReach * module;
    if (text.size == 0) {
      return reach;
    }
    // Digits stand between the guard bars, any other text below them.
    const std::int64_t textHeight = text.gap + text.height;
    return m_digits ? std::max(reach, textHeight) : reach + textHeight;
  }

  Sizes NaturalSizes() {
    Sizes sizes;
    sizes.module = m_request.module.value_or(m_type.defaultModule);
    if (m_request.moduleMm) {
      sizes.module = DotsOf(*m_request.moduleMm);
    }
    if (m_needs.OwnHeight()) {
      sizes.barHeight = m_needs.rows * sizes.module;
    } else {
      sizes.barHeight = BarHeight(sizes.module);
      if (sizes.barHeight < m_needs.leastHeight * sizes.module) {
        const std::int64_t least = m_needs.leastHeight * sizes.module;
        const std::string_view field = m_request.heightMm ? "height_mm" : "height";
        throw LabelError(
            ErrorCode::kTooSmall, field,
            Line("The bars are too low to be read; give them a height of at least ", least, " pixels."),
            Turned(Outer(sizes.module, least)));
      }
    }
    sizes.width = ModulesAcross() * sizes.module;
    const std::int64_t height = TextBasis(sizes);
    m_wantedSize = WantedSize(sizes.module, height);
    sizes.text = RoomFor(m_wantedSize, Gap(sizes.module, height), sizes.module, sizes.width);
    sizes.height = Height(sizes);
    return sizes;
  }

  // The height of bars that the size of their text follows. Symbols that are high because they are wide, or
  // of several rows, have the text of others.
  std::int64_t TextBasis(const Sizes& sizes) const {
    const bool given = m_request.height || m_request.heightMm;
    return given || m_needs.guard != nullptr ? sizes.barHeight
                                             : std::min(sizes.barHeight, kNaturalBarHeight * sizes.module);
  }

  std::int64_t Height(const Sizes& sizes) const {
    return sizes.barHeight + FootHeight(sizes.text, sizes.module) + QuietRows() * sizes.module;
  }

  // The outer size of a symbol with bars of a height, with the text as small as it may be.
  Size Outer(std::int64_t module, std::int64_t barHeight) const {
    Sizes sizes;
    sizes.module = module;
    sizes.barHeight = barHeight;
    sizes.width = ModulesAcross() * module;
    sizes.text = RoomFor(kSmallestTextSize, 1, module, sizes.width);
    return {ClampToInt(sizes.width), ClampToInt(Height(sizes))};
  }

  std::int64_t DotsOf(double millimetres) const {
    return std::max(1, TruncToInt(std::round(millimetres / kMillimetresPerInch * *m_request.dpi)));
  }

  std::int64_t BarHeight(std::int64_t module) const {
    if (m_request.heightMm) {
      return DotsOf(*m_request.heightMm);
    }
    if (m_request.height) {
      return *m_request.height;
    }
    return std::llround(m_needs.naturalHeight * static_cast<double>(module));
  }

  // A size before the turn after it, or the other way round.
  Size Turned(Size size) const {
    return TurnsAcross(m_request.rotate.value_or(Rotation::kNone)) ? Size{size.height, size.width} : size;
  }

  // The largest module with which the symbol fits the box, and its text as large as it then can be. Where the
  // text must not suffer, the module does.
  Sizes SizesInBox() {
    const Size box = Turned({*m_request.width, *m_request.height});
    for (const TextFit fit : {TextFit::kWhole, TextFit::kSmaller, TextFit::kNone}) {
      if (fit == TextFit::kWhole && !m_request.strict.value_or(false)) {
        continue;
      }
      for (std::int64_t module = box.width / ModulesAcross(); module > 0; --module) {
        const Sizes sizes = SizesAt(module, box, fit);
        if (sizes.barHeight > 0) {
          return sizes;
        }
      }
    }
    const Size needed = Turned(Outer(1, LeastBars()));
    throw LabelError(ErrorCode::kTooSmall, needed.width > *m_request.width ? "width" : "height",
                     Line("The symbol does not fit ", *m_request.width, " x ", *m_request.height,
                          " pixels; give it at least ", needed.width, " x ", needed.height, "."),
                     needed);
  }

  enum class TextFit : std::uint8_t { kWhole, kSmaller, kNone };

  // The picture of the box with so large a module; without height of bars when it does not fit.
  Sizes SizesAt(std::int64_t module, Size box, TextFit fit) {
    Sizes sizes;
    sizes.module = module;
    sizes.width = box.width;
    sizes.height = box.height;
    m_wantedSize = WantedSize(module, box.height);
    if (fit == TextFit::kNone || m_lines.empty()) {
      sizes.barHeight = BarsInBox(sizes);
      return sizes;
    }
    const int smallest = fit == TextFit::kWhole ? m_wantedSize : kSmallestTextSize;
    for (int size = m_wantedSize; size >= smallest && sizes.barHeight == 0; --size) {
      const int gap = size == m_wantedSize ? Gap(module, box.height) : 1;
      sizes.text = RoomFor(size, gap, module, sizes.width);
      if (sizes.text.size == 0 || (fit == TextFit::kWhole && sizes.text.size < m_wantedSize)) {
        return sizes;
      }
      size = sizes.text.size;
      sizes.barHeight = BarsInBox(sizes);
    }
    return sizes;
  }

  // The height of the bars that the text leaves; 0 when it is too low.
  std::int64_t BarsInBox(const Sizes& sizes) const {
    const std::int64_t room =
        sizes.height - FootHeight(sizes.text, sizes.module) - QuietRows() * sizes.module;
    const std::int64_t least = LeastBars() * sizes.module;
    if (room < least) {
      return 0;
    }
    return m_needs.OwnHeight() ? least : room;
  }

  void RequireFewPixels(const Sizes& sizes) const {
    if (sizes.width > m_maxPixels / std::max<std::int64_t>(1, sizes.height)) {
      throw LabelError(ErrorCode::kTooLarge,
                       m_request.width      ? "width"
                       : m_request.moduleMm ? "module_mm"
                                            : "module",
                       Line("The picture would have ", sizes.width, " x ", sizes.height,
                            " pixels; ask for one of at most ", m_maxPixels, " pixels in all."));
    }
  }

  // ---- Places ----

  void Place(const Sizes& sizes) {
    const auto module = static_cast<int>(sizes.module);
    // What a box has too much stands evenly on both sides.
    const std::int64_t spareWidth = sizes.width - ModulesAcross() * sizes.module;
    const std::int64_t spareHeight = sizes.height - Height(sizes);
    m_x = static_cast<int>(spareWidth / 2) + m_quiet.left * module;
    m_y = static_cast<int>(spareHeight / 2) + m_quiet.top * module;
    m_module = module;
    m_barHeight = static_cast<int>(sizes.barHeight);
    std::visit([this](const auto& modules) { PlaceModules(modules); }, m_symbol.modules);
    if (!m_lines.empty()) {
      PlaceText(sizes);
    }
  }

  int Adjust() const { return m_request.barAdjust.value_or(0); }

  void PlaceModules(const LinearSymbol& symbol) {
    std::vector<DotRect>& dark = m_result.drawing.dark;
    const std::vector<Bar> bars = BarsOf(symbol.pattern);
    AddBars(dark, bars, m_module, Adjust(), {m_x, m_y, m_barHeight, m_result.drawing.width});
    if (symbol.guard == nullptr || m_needs.guardReach == 0) {
      return;
    }
    for (std::size_t i = 0; i < bars.size(); ++i) {
      if (IsGuard(*symbol.guard, bars[i].run)) {
        dark[i].height += static_cast<int>(m_needs.guardReach) * m_module;
      }
    }
  }

  static bool IsGuard(const GuardBarStyle& style, std::size_t run) {
    std::size_t end = 0;
    for (const GuardSection& section : style.sections) {
      end += section.runs;
      if (run < end) {
        return section.guard;
      }
    }
    return false;
  }

  void PlaceModules(const StackedSymbol& symbol) {
    std::int64_t shares = 0;
    int separators = 0;
    for (const StackedRow& row : symbol.rows) {
      shares += ShareOf(row);
      separators += IsSeparator(row) ? *row.height * m_module : 0;
    }
    const std::int64_t shared = m_barHeight - separators;
    std::int64_t taken = 0;
    int above = 0;  // of the separators
    for (const StackedRow& row : symbol.rows) {
      const int top = m_y + above + static_cast<int>(shared * taken / shares);
      taken += ShareOf(row);
      above += IsSeparator(row) ? *row.height * m_module : 0;
      const int bottom = m_y + above + static_cast<int>(shared * taken / shares);
      AddBars(m_result.drawing.dark, BarsOf(row.widths), m_module, Adjust(),
              {m_x, top, bottom - top, m_result.drawing.width});
    }
  }

  void PlaceModules(const FourStateBars& symbol) {
    const int adjust = std::clamp(Adjust(), 1 - m_module, m_module - 1);
    const Box box{m_x, m_y, 0, static_cast<std::uint32_t>(m_barHeight)};
    for (const RectF& bar : LayoutFourState(symbol.bars, box, adjust).bars) {
      m_result.drawing.dark.push_back({static_cast<int>(bar.x), static_cast<int>(bar.y),
                                       static_cast<int>(bar.width), static_cast<int>(bar.height)});
    }
    DotRect& last = m_result.drawing.dark.back();
    last.width = std::min(last.width, std::max(m_module, m_result.drawing.width - last.x - 1));
  }

  void PlaceModules(const MatrixSymbol& symbol) {
    std::vector<DotRect>& dark = m_result.drawing.dark;
    AddMatrix(dark, symbol.matrix, m_x, m_y, m_module, symbol.rowHeight * m_module, Adjust());
    // The last column and row grow into the quiet zone, where there is one.
    const int right = m_x + (static_cast<int>(m_needs.columns) + m_quiet.right) * m_module;
    const int bottom = m_y + m_barHeight + m_quiet.bottom * m_module;
    for (DotRect& rect : dark) {
      rect.width = std::min(rect.width, right - rect.x);
      rect.height = std::min(rect.height, bottom - rect.y);
    }
  }

  void PlaceText(const Sizes& sizes) {
    const TextRoom& room = sizes.text;
    int top = m_y + m_barHeight + room.gap;
    if (m_needs.OwnHeight()) {
      top += m_quiet.bottom * m_module;
    } else if (!m_digits) {
      top += static_cast<int>(m_needs.guardReach) * m_module;
    }
    for (const TextLine& line : m_lines) {
      const double baseLine = top + Ascent(line, room.size);
      if (m_digits) {
        PlaceDigits(line, baseLine, room.size);
      } else {
        std::optional<PlacedText> spread = Spread(line, baseLine, room.size);
        m_result.drawing.texts.push_back(spread ? std::move(*spread) : Centred(line, baseLine, room.size));
      }
      top += Ascent(line, room.size) + Descent(line, room.size);
    }
  }

  PlacedText Centred(const TextLine& line, double baseLine, int size) const {
    const double width = line.Width(size);
    const double middle = m_x + static_cast<double>(m_needs.columns) * m_module / 2.0;
    const double last = std::max(kTextMargin, m_result.drawing.width - kTextMargin - width);
    return line.SetAt(std::clamp(middle - width / 2.0, kTextMargin, last), baseLine, size);
  }

  // The characters spread across the symbol, where they do not come too close to each other or the edges.
  std::optional<PlacedText> Spread(const TextLine& line, double baseLine, int size) const {
    if (m_needs.OwnHeight() || m_captioned || !m_request.evenSpacing.value_or(true)) {
      return std::nullopt;
    }
    const EvenSpacing spacing =
        EvenSpacing::Across(m_x, m_needs.columns * m_module, line.Length(), size, 1.0F);
    const double widest = line.WidestAdvance(size);
    const auto first = static_cast<double>(spacing.Centre(0));
    const auto last = static_cast<double>(spacing.Centre(line.Length() - 1));
    const bool isClose = line.Length() > 1 && static_cast<double>(spacing.pitch) < widest;
    if (isClose || first - widest / 2 < kTextMargin ||
        last + widest / 2 > m_result.drawing.width - kTextMargin) {
      return std::nullopt;
    }
    const auto centreOf = [&spacing](std::size_t i) { return static_cast<double>(spacing.Centre(i)); };
    return line.SetAround(centreOf, baseLine, size);
  }

  // The digits of EAN and UPC symbols: groups under their bars, single ones beside them.
  void PlaceDigits(const TextLine& line, double baseLine, int size) {
    const GuardBarStyle& style = *m_needs.guard;
    const double cell = DigitCell() * m_module;
    std::vector<double> centres(line.Length());
    if (style.leftMargin > 0.0F) {
      const int gap = OuterGap(m_quiet.left, m_type.quietZone.left);
      centres.front() = m_x - gap * m_module - cell / 2.0;
    }
    if (style.rightMargin > 0.0F) {
      const int gap = OuterGap(m_quiet.right, m_type.quietZone.right);
      centres.back() = m_x + static_cast<double>(m_needs.columns + gap) * m_module + cell / 2.0;
    }
    for (const DigitGroup& group : style.groups) {
      const auto [first, modules] = SectionModules(group.section);
      const double start = m_x + first * m_module;
      const double span = modules * m_module;
      // Spread over their bars, or close together in the middle of them.
      const bool even = m_request.evenSpacing.value_or(true);
      const double pitch = even ? span / static_cast<double>(group.count) : line.WidestAdvance(size);
      const double left = start + (span - pitch * static_cast<double>(group.count)) / 2.0;
      for (std::size_t i = 0; i < group.count; ++i) {
        centres[group.first + i] = left + pitch * (static_cast<double>(i) + 0.5);
      }
    }
    m_result.drawing.texts.push_back(
        line.SetAround([&centres](std::size_t i) { return centres[i]; }, baseLine, size));
  }

  // Modules between the bars and a digit beside them.
  static int OuterGap(int quiet, int standard) {
    return std::max(0, std::min(quiet, standard) - kDigitModules);
  }

  // First module and number of modules of a section of guards or data.
  std::pair<double, double> SectionModules(std::size_t section) const {
    const RunVector& pattern = std::get<LinearSymbol>(m_symbol.modules).pattern;
    std::size_t run = 0;
    double first = 0;
    double modules = 0;
    for (std::size_t i = 0; i <= section; ++i) {
      first += modules;
      modules = 0;
      const std::size_t end = std::min(pattern.size(), run + m_needs.guard->sections[i].runs);
      for (; run < end; ++run) {
        modules += pattern[run];
      }
    }
    return {first, modules};
  }

  const TypeInfo& m_type;
  const Request& m_request;
  const Symbol& m_symbol;
  long long m_maxPixels;
  Needs m_needs;
  QuietZone m_quiet;
  bool m_stacked = false;
  bool m_tooLong = false;  // more text than is looked at
  bool m_captioned = false;
  bool m_digits = false;          // of EAN and UPC, which stand in groups
  std::vector<TextLine> m_lines;  // of the texts of the symbol or the request
  int m_wantedSize = 0;
  int m_x = 0;  // of the symbol
  int m_y = 0;
  int m_module = 0;
  int m_barHeight = 0;
  Composition m_result;
};

}  // namespace

Composition Compose(const TypeInfo& type, const Request& request, const Symbol& symbol, long long maxPixels) {
  return Composer(type, request, symbol, maxPixels).Run();
}

}  // namespace barcode::label
