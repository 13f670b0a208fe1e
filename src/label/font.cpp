#include "label/font.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory_resource>
#include <span>
#include <vector>

#include "label/outline_fit.h"
#include "text/embedded_font.h"

// The font library, compiled here for this file alone. It takes its memory from the arena that a call brings:
// an arena throws std::bad_alloc right through the library's functions, which own nothing, and gives
// everything back at once. The embedded font is what the library's assertions ask for.
#define STBTT_STATIC
#define STB_TRUETYPE_IMPLEMENTATION
#define STBTT_malloc(size, arena) (static_cast<std::pmr::memory_resource*>(arena)->allocate(size))
#define STBTT_free(block, arena) (static_cast<void>(block), static_cast<void>(arena))
#define STBTT_assert(condition) (static_cast<void>(0))
#include <stb/stb_truetype.h>

namespace barcode::label {
namespace {

// Room for the points of every glyph without an accent: 128 of them. More come from the heap.
constexpr std::size_t kArenaSize = 128 * sizeof(stbtt_vertex);

// Curves may be off by so much, in ems.
constexpr double kTolerance = 1.25 / 256;

// The placeholder in units, as wide and high as a capital letter.
constexpr int kBoxAdvance = 64;
constexpr int kBoxLeft = 7;
constexpr int kBoxRight = kBoxAdvance - kBoxLeft;
constexpr int kBoxTop = 91;
constexpr int kBoxStroke = 7;

constexpr char32_t kFirstOrdinary = 0x20;
constexpr int kNoGlyph = 0;
// Glyphs below this number are found in a table; the ordinary ones are.
constexpr int kNumberedGlyphs = 512;
// Pieces of all ordinary glyphs, with room to spare.
constexpr std::size_t kOrdinaryPieces = 2048;
constexpr int kNotKept = -1;

}  // namespace

// Where the tables of the font stand, and its ordinary glyphs: read once, never changed.
struct FontFace {
  stbtt_fontinfo info = {};
  int unitsPerEm = 0;
  int ascent = 0;
  int descent = 0;
  int capHeight = 0;
  std::array<std::int16_t, kOrdinaryGlyphs> glyphs = {};           // kNoGlyph where the font has none
  std::array<std::int16_t, kNumberedGlyphs> ordinaryNumbers = {};  // of glyphs, or kNotKept
  std::array<double, kOrdinaryGlyphs> advances = {};
  std::array<GlyphReach, kOrdinaryGlyphs> reaches = {};
  std::array<OutlinePiece, kOrdinaryPieces> pieces = {};
  std::array<std::int16_t, kOrdinaryGlyphs + 1> pieceBegins = {};
};

namespace {

// Coordinates of the font to the nearest unit, halves upwards.
class Quantiser {
 public:
  explicit Quantiser(int unitsPerEm) : m_factor(static_cast<double>(kUnitsPerEm) / unitsPerEm) {}

  UnitPoint At(const ExactPoint& point) const { return {Nearest(point.x), Nearest(point.y)}; }

 private:
  int Nearest(double coordinate) const {
    const double value = coordinate * m_factor + 0.5;
    const int whole = static_cast<int>(value);
    return whole - (value < whole ? 1 : 0);
  }

  double m_factor;
};

ExactPoint PointAt(int x, int y) {
  return {static_cast<double>(x), static_cast<double>(y)};
}

ExactPiece PieceOf(const stbtt_vertex& vertex) {
  using Kind = OutlinePiece::Kind;
  const Kind kind = vertex.type == STBTT_vmove   ? Kind::kMove
                    : vertex.type == STBTT_vline ? Kind::kLine
                                                 : Kind::kCurve;
  return {.kind = kind, .to = PointAt(vertex.x, vertex.y), .control = PointAt(vertex.cx, vertex.cy)};
}

// Where one curve goes over into the next, a control point that mirrors the one before but for the rounding
// is put just there: documents have a short form for that.
void Smoothen(OutlinePiece& piece, const OutlinePiece& before) {
  using Kind = OutlinePiece::Kind;
  if (piece.kind != Kind::kCurve || before.kind != Kind::kCurve) {
    return;
  }
  const UnitPoint mirrored{2 * before.to.x - before.control.x, 2 * before.to.y - before.control.y};
  if (std::abs(mirrored.x - piece.control.x) <= 1 && std::abs(mirrored.y - piece.control.y) <= 1) {
    piece.control = mirrored;
  }
}

// Reads a glyph from the font.
void DecodeGlyph(const FontFace& face, int glyph, Outline& outline) {
  alignas(std::max_align_t) std::array<std::byte, kArenaSize> buffer;
  std::pmr::monotonic_buffer_resource arena(buffer.data(), buffer.size(), std::pmr::new_delete_resource());
  stbtt_fontinfo info = face.info;
  info.userdata = &arena;
  stbtt_vertex* vertices = nullptr;
  const int count = stbtt_GetGlyphShape(&info, glyph, &vertices);
  std::vector<ExactPiece> pieces;
  pieces.reserve(static_cast<std::size_t>(count));
  for (const stbtt_vertex& vertex : std::span(vertices, static_cast<std::size_t>(count))) {
    pieces.push_back(PieceOf(vertex));
  }
  const Quantiser quantiser(face.unitsPerEm);
  for (const ExactPiece& piece : WithFewerCurves(pieces, kTolerance * face.unitsPerEm)) {
    OutlinePiece quantised{piece.kind, quantiser.At(piece.to), quantiser.At(piece.control)};
    if (!outline.empty()) {
      Smoothen(quantised, outline.back());
    }
    outline.push_back(quantised);
  }
}

double InUnits(const FontFace& face, int length) {
  return static_cast<double>(length) * kUnitsPerEm / face.unitsPerEm;
}

double AdvanceOf(const FontFace& face, int glyph) {
  int advance = 0;
  int bearing = 0;
  stbtt_GetGlyphHMetrics(&face.info, glyph, &advance, &bearing);
  return InUnits(face, advance);
}

GlyphReach ReachOf(const Outline& outline) {
  GlyphReach reach;
  const auto include = [&reach](const UnitPoint& point) {
    reach = {std::min(reach.left, point.x), std::max(reach.right, point.x), std::max(reach.top, point.y),
             std::max(reach.bottom, -point.y)};
  };
  for (const OutlinePiece& piece : outline) {
    include(piece.to);
    if (piece.kind == OutlinePiece::Kind::kCurve) {
      include(piece.control);
    }
  }
  return reach;
}

void ReadOrdinaryGlyphs(FontFace& face) {
  face.ordinaryNumbers.fill(kNotKept);
  Outline outline;
  for (std::size_t i = 0; i < kOrdinaryGlyphs; ++i) {
    const int glyph = stbtt_FindGlyphIndex(&face.info, static_cast<int>(kFirstOrdinary + i));
    face.glyphs[i] = static_cast<std::int16_t>(glyph);
    face.pieceBegins[i + 1] = face.pieceBegins[i];
    const auto begin = static_cast<std::size_t>(face.pieceBegins[i]);
    outline.clear();
    DecodeGlyph(face, glyph, outline);
    if (glyph == kNoGlyph || glyph >= kNumberedGlyphs || begin + outline.size() > kOrdinaryPieces) {
      continue;
    }
    face.ordinaryNumbers[static_cast<std::size_t>(glyph)] = static_cast<std::int16_t>(i);
    face.advances[i] = AdvanceOf(face, glyph);
    face.reaches[i] = ReachOf(outline);
    std::copy(outline.begin(), outline.end(), face.pieces.begin() + face.pieceBegins[i]);
    face.pieceBegins[i + 1] = static_cast<std::int16_t>(begin + outline.size());
  }
}

FontFace ReadFace() {
  FontFace face;
  const std::span<const std::uint8_t> file = EmbeddedRobotoFont();
  stbtt_InitFont(&face.info, file.data(), 0);
  // The em in the font's units is what one pixel for an em divides by.
  face.unitsPerEm = static_cast<int>(std::lround(1.0F / stbtt_ScaleForMappingEmToPixels(&face.info, 1.0F)));
  int gap = 0;
  stbtt_GetFontVMetrics(&face.info, &face.ascent, &face.descent, &gap);
  int left = 0;
  int bottom = 0;
  int right = 0;
  stbtt_GetCodepointBox(&face.info, 'H', &left, &bottom, &right, &face.capHeight);
  ReadOrdinaryGlyphs(face);
  return face;
}

const FontFace& TheFace() {
  static const FontFace face = ReadFace();
  return face;
}

void AppendContour(const std::array<UnitPoint, 4>& corners, Outline& outline) {
  outline.push_back({.kind = OutlinePiece::Kind::kMove, .to = corners[0], .control = {}});
  for (const std::size_t corner : {1U, 2U, 3U, 0U}) {
    outline.push_back({.kind = OutlinePiece::Kind::kLine, .to = corners[corner], .control = {}});
  }
}

// Clockwise outside and the other way round inside, as the font's own contours run.
void AppendPlaceholder(Outline& outline) {
  constexpr int kInnerLeft = kBoxLeft + kBoxStroke;
  constexpr int kInnerRight = kBoxRight - kBoxStroke;
  constexpr int kInnerTop = kBoxTop - kBoxStroke;
  AppendContour({{{kBoxLeft, 0}, {kBoxLeft, kBoxTop}, {kBoxRight, kBoxTop}, {kBoxRight, 0}}}, outline);
  AppendContour({{{kInnerLeft, kBoxStroke},
                  {kInnerRight, kBoxStroke},
                  {kInnerRight, kInnerTop},
                  {kInnerLeft, kInnerTop}}},
                outline);
}

// The font maps some of them to glyphs without ink, which nobody would miss.
bool IsControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

}  // namespace

Font::Font() : m_face(TheFace()) {}

std::optional<int> Font::FindGlyph(char32_t character) const {
  int glyph = kNoGlyph;
  if (character >= kFirstOrdinary && character < kFirstOrdinary + kOrdinaryGlyphs) {
    glyph = m_face.glyphs[character - kFirstOrdinary];
  } else if (!IsControl(character)) {
    glyph = stbtt_FindGlyphIndex(&m_face.info, static_cast<int>(character));
  }
  return glyph == kNoGlyph ? std::nullopt : std::optional<int>(glyph);
}

std::optional<int> Font::OrdinaryNumber(int glyph) const {
  if (glyph < 0 || glyph >= kNumberedGlyphs) {
    return std::nullopt;
  }
  const int number = m_face.ordinaryNumbers[static_cast<std::size_t>(glyph)];
  return number == kNotKept ? std::nullopt : std::optional<int>(number);
}

double Font::Advance(int glyph) const {
  if (glyph == kPlaceholderGlyph) {
    return kBoxAdvance;
  }
  const std::optional<int> number = OrdinaryNumber(glyph);
  return number ? m_face.advances[static_cast<std::size_t>(*number)] : AdvanceOf(m_face, glyph);
}

double Font::Ascent() const {
  return InUnits(m_face, m_face.ascent);
}

double Font::Descent() const {
  return InUnits(m_face, -m_face.descent);
}

double Font::CapHeight() const {
  return InUnits(m_face, m_face.capHeight);
}

Outline Font::GlyphOutline(int glyph) const {
  Outline outline;
  AppendOutline(glyph, outline);
  return outline;
}

void Font::AppendOutline(int glyph, Outline& outline) const {
  if (glyph == kPlaceholderGlyph) {
    AppendPlaceholder(outline);
    return;
  }
  const std::optional<int> number = OrdinaryNumber(glyph);
  if (!number) {
    DecodeGlyph(m_face, glyph, outline);
    return;
  }
  const auto slot = static_cast<std::size_t>(*number);
  outline.insert(outline.end(), m_face.pieces.begin() + m_face.pieceBegins[slot],
                 m_face.pieces.begin() + m_face.pieceBegins[slot + 1]);
}

GlyphReach Font::Reach(int glyph) const {
  const std::optional<int> number = OrdinaryNumber(glyph);
  return number ? m_face.reaches[static_cast<std::size_t>(*number)] : ReachOf(GlyphOutline(glyph));
}

}  // namespace barcode::label
