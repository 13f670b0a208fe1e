#include "label/font.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <memory_resource>
#include <span>

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

// The placeholder in units, as wide and high as a capital letter.
constexpr int kBoxAdvance = 64;
constexpr int kBoxLeft = 7;
constexpr int kBoxRight = kBoxAdvance - kBoxLeft;
constexpr int kBoxTop = 91;
constexpr int kBoxStroke = 7;

// Where the tables of the font stand; read once, never changed.
struct Face {
  stbtt_fontinfo info = {};
  int unitsPerEm = 0;
  int ascent = 0;
  int descent = 0;
  int capHeight = 0;
};

Face ReadFace() {
  Face face;
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
  return face;
}

const Face& TheFace() {
  static const Face face = ReadFace();
  return face;
}

double InUnits(int length) {
  return static_cast<double>(length) * kUnitsPerEm / TheFace().unitsPerEm;
}

// Coordinates of the font to the nearest unit, halves upwards.
class Quantiser {
 public:
  explicit Quantiser(int unitsPerEm) : m_factor(static_cast<double>(kUnitsPerEm) / unitsPerEm) {}

  UnitPoint At(int x, int y) const { return {Nearest(x), Nearest(y)}; }

 private:
  int Nearest(int coordinate) const {
    const double value = coordinate * m_factor + 0.5;
    const int whole = static_cast<int>(value);
    return whole - (value < whole ? 1 : 0);
  }

  double m_factor;
};

OutlinePiece PieceOf(const stbtt_vertex& vertex, const Quantiser& quantiser) {
  const UnitPoint to = quantiser.At(vertex.x, vertex.y);
  if (vertex.type == STBTT_vmove) {
    return {.kind = OutlinePiece::Kind::kMove, .to = to, .control = {}, .smooth = false};
  }
  if (vertex.type == STBTT_vline) {
    return {.kind = OutlinePiece::Kind::kLine, .to = to, .control = {}, .smooth = false};
  }
  return {.kind = OutlinePiece::Kind::kCurve,
          .to = to,
          .control = quantiser.At(vertex.cx, vertex.cy),
          .smooth = false};
}

// The curves of a round contour go over into each other: a control point that stands where the one before is
// mirrored, but for what is lost by rounding, is put just there.
void Smoothen(OutlinePiece& piece, const OutlinePiece& before) {
  using Kind = OutlinePiece::Kind;
  if (piece.kind != Kind::kCurve || before.kind != Kind::kCurve) {
    return;
  }
  const UnitPoint mirrored{2 * before.to.x - before.control.x, 2 * before.to.y - before.control.y};
  piece.smooth = std::abs(mirrored.x - piece.control.x) <= 1 && std::abs(mirrored.y - piece.control.y) <= 1;
  if (piece.smooth) {
    piece.control = mirrored;
  }
}

void AppendContour(const std::array<UnitPoint, 4>& corners, Outline& outline) {
  outline.push_back({.kind = OutlinePiece::Kind::kMove, .to = corners[0], .control = {}, .smooth = false});
  for (const std::size_t corner : {1U, 2U, 3U, 0U}) {
    outline.push_back(
        {.kind = OutlinePiece::Kind::kLine, .to = corners[corner], .control = {}, .smooth = false});
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

std::optional<int> Font::FindGlyph(char32_t character) const {
  if (IsControl(character)) {
    return std::nullopt;
  }
  const int glyph = stbtt_FindGlyphIndex(&TheFace().info, static_cast<int>(character));
  return glyph == 0 ? std::nullopt : std::optional<int>(glyph);
}

double Font::Advance(int glyph) const {
  if (glyph == kPlaceholderGlyph) {
    return kBoxAdvance;
  }
  int advance = 0;
  int bearing = 0;
  stbtt_GetGlyphHMetrics(&TheFace().info, glyph, &advance, &bearing);
  return InUnits(advance);
}

double Font::Ascent() const {
  return InUnits(TheFace().ascent);
}

double Font::Descent() const {
  return InUnits(-TheFace().descent);
}

double Font::CapHeight() const {
  return InUnits(TheFace().capHeight);
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
  alignas(std::max_align_t) std::array<std::byte, kArenaSize> buffer;
  std::pmr::monotonic_buffer_resource arena(buffer.data(), buffer.size(), std::pmr::new_delete_resource());
  const Face& face = TheFace();
  stbtt_fontinfo info = face.info;
  info.userdata = &arena;
  stbtt_vertex* vertices = nullptr;
  const int count = stbtt_GetGlyphShape(&info, glyph, &vertices);
  const Quantiser quantiser(face.unitsPerEm);
  for (const stbtt_vertex& vertex : std::span(vertices, static_cast<std::size_t>(count))) {
    OutlinePiece piece = PieceOf(vertex, quantiser);
    if (!outline.empty()) {
      Smoothen(piece, outline.back());
    }
    outline.push_back(piece);
  }
}

}  // namespace barcode::label
