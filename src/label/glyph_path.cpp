#include "label/glyph_path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "label/path_data.h"

namespace barcode::label {
namespace {

using Kind = OutlinePiece::Kind;

// Bytes of the path of a glyph, roughly.
constexpr std::size_t kLikelySize = 600;

UnitPoint Down(const UnitPoint& point) {
  return {point.x, -point.y};
}

// Writes the pieces of one glyph.
class OutlineFormatter {
 public:
  explicit OutlineFormatter(TextWriter& out) : m_path(out) {}

  void Add(const OutlinePiece& piece, bool lastOfContour) {
    const UnitPoint to = Down(piece.to);
    const UnitPoint step = From(to);
    if (piece.kind == Kind::kMove) {
      Command('m').Number(step.x).Number(step.y);
    } else if (piece.kind == Kind::kCurve) {
      AddCurve(Down(piece.control), step);
    } else if (lastOfContour || step == UnitPoint{}) {
      return;  // a fill closes its contours
    } else if (step.x == 0 || step.y == 0) {
      Command(step.y == 0 ? 'h' : 'v').Number(step.x + step.y);
    } else {
      Command('l').Number(step.x).Number(step.y);
    }
    m_at = to;
  }

  void Flush() { m_path.Flush(); }

  // The pen is there without a move.
  void Begin(const UnitPoint& at) {
    m_at = at;
    m_last = 'm';
  }
  const UnitPoint& At() const { return m_at; }

 private:
  UnitPoint From(const UnitPoint& point) const { return {point.x - m_at.x, point.y - m_at.y}; }

  void AddCurve(const UnitPoint& control, const UnitPoint& step) {
    const UnitPoint toControl = From(control);
    const bool smooth = (m_last == 'q' || m_last == 't') && toControl == From(m_control, m_at);
    if (!smooth) {
      Command('q').Number(toControl.x).Number(toControl.y).Number(step.x).Number(step.y);
    } else {
      Command('t').Number(step.x).Number(step.y);
    }
    m_control = control;
  }
  static UnitPoint From(const UnitPoint& begin, const UnitPoint& end) {
    return {end.x - begin.x, end.y - begin.y};
  }

  // A command that goes on is not repeated.
  PathData& Command(char command) {
    if (command == m_last && command != 'm') {
      return m_path;
    }
    m_last = command;
    return m_path.Command(command);
  }

  PathData m_path;
  UnitPoint m_at;
  UnitPoint m_control;
  char m_last = 'm';
};

// The data stands in `room` until that is written to again.
GlyphPath PathOf(const Outline& outline, TextWriter& room) {
  room.Shorten(0);
  if (outline.empty()) {
    return {};
  }
  OutlineFormatter formatter(room);
  const UnitPoint begin = Down(outline.front().to);
  formatter.Begin(begin);
  for (std::size_t i = 1; i < outline.size(); ++i) {
    formatter.Add(outline[i], i + 1 == outline.size() || outline[i + 1].kind == Kind::kMove);
  }
  formatter.Flush();
  return {begin, formatter.At(), room.Written()};
}

// The paths of the ordinary glyphs: written once, never changed.
struct PathTable {
  static constexpr std::size_t kRoom = 16'384;
  std::array<char, kRoom> text = {};
  std::array<std::optional<GlyphPath>, kOrdinaryGlyphs> paths = {};  // nothing: not kept
};

void FillTable(PathTable& table) {
  const Font font;
  TextWriter room(kLikelySize);
  std::size_t used = 0;
  for (char32_t character = 0x20; character < 0x20 + kOrdinaryGlyphs; ++character) {
    const std::optional<int> glyph = font.FindGlyph(character);
    const std::optional<int> number = glyph ? font.OrdinaryNumber(*glyph) : std::nullopt;
    if (!number) {
      continue;
    }
    GlyphPath path = PathOf(font.GlyphOutline(*glyph), room);
    if (used + path.data.size() > PathTable::kRoom) {
      continue;
    }
    char* const begin = table.text.data() + used;
    std::copy(path.data.begin(), path.data.end(), begin);
    path.data = std::string_view(begin, path.data.size());
    used += path.data.size();
    table.paths[static_cast<std::size_t>(*number)] = path;
  }
}

// Not movable: the paths lie in the table itself.
const PathTable& TheTable() {
  struct Filled : PathTable {
    Filled() { FillTable(*this); }
  };
  static const Filled table;
  return table;
}

const GlyphPath* OrdinaryPath(const Font& font, int glyph) {
  const std::optional<int> number = font.OrdinaryNumber(glyph);
  if (!number) {
    return nullptr;
  }
  const std::optional<GlyphPath>& path = TheTable().paths[static_cast<std::size_t>(*number)];
  return path ? &*path : nullptr;
}

}  // namespace

void GlyphPen::Draw(int glyph, const UnitPoint& origin) {
  if (const GlyphPath* const path = OrdinaryPath(m_font, glyph)) {
    Add(*path, origin);
    return;
  }
  TextWriter room(kLikelySize);
  Add(PathOf(m_font.GlyphOutline(glyph), room), origin);
}

void GlyphPen::Add(const GlyphPath& path, const UnitPoint& origin) {
  if (path.data.empty()) {
    return;
  }
  PathData move(m_out);
  move.Command('m').Number(origin.x + path.begin.x - m_at.x).Number(origin.y + path.begin.y - m_at.y);
  move.Flush();
  m_out.Add(path.data);
  m_at = {origin.x + path.end.x, origin.y + path.end.y};
}

}  // namespace barcode::label
