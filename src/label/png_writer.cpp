#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "label/coverage.h"
#include "label/text_outline.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

using Row = std::vector<std::uint8_t>;

// Shades from background to foreground, of a picture with text and of one without.
constexpr unsigned kTextBits = 4;
constexpr unsigned kBarBits = 1;

// Levels of compression, found by measuring: with text, a higher one takes half as long again for 5%;
// without, the highest one takes twice as long for 2%.
constexpr int kTextLevel = 4;
constexpr int kBarLevel = 6;

// Rows of text that are made at once.
constexpr int kTextRows = 32;

constexpr double kMetresPerInch = 0.0254;

std::size_t RowBytes(int width, unsigned bits) {
  return (static_cast<std::size_t>(width) * bits + 7) / 8;
}

// Sets the bits from `first` to the one before `last`; the highest bit of a byte comes first.
void SetBits(Row& row, std::size_t first, std::size_t last) {
  const std::size_t firstByte = first / 8;
  const std::size_t lastByte = last / 8;
  const auto head = static_cast<std::uint8_t>(0xFFU >> (first % 8));
  const auto tail = static_cast<std::uint8_t>(~(0xFFU >> (last % 8)));
  if (firstByte == lastByte) {
    row[firstByte] |= static_cast<std::uint8_t>(head & tail);
    return;
  }
  row[firstByte] |= head;
  std::fill(row.begin() + static_cast<std::ptrdiff_t>(firstByte) + 1,
            row.begin() + static_cast<std::ptrdiff_t>(lastByte), std::uint8_t{0xFF});
  if (tail != 0) {
    row[lastByte] |= tail;
  }
}

// The bars, row by row from the top. A dot is `bits` zeros, or as many ones where it is dark.
class BarRows {
 public:
  BarRows(const Drawing& drawing, unsigned bits)
      : m_bits(bits), m_height(drawing.height), m_row(RowBytes(drawing.width, bits)) {
    m_rects.reserve(drawing.dark.size());
    for (const DotRect& rect : drawing.dark) {
      m_rects.push_back(&rect);
    }
    std::stable_sort(m_rects.begin(), m_rects.end(),
                     [](const DotRect* a, const DotRect* b) { return a->y < b->y; });
  }

  // Goes down to row y.
  void MoveTo(int y) {
    if (y < m_end) {
      return;
    }
    std::erase_if(m_active, [y](const DotRect* rect) { return rect->y + rect->height <= y; });
    for (; m_next < m_rects.size() && m_rects[m_next]->y <= y; ++m_next) {
      m_active.push_back(m_rects[m_next]);
    }
    m_end = m_next < m_rects.size() ? m_rects[m_next]->y : m_height;
    std::fill(m_row.begin(), m_row.end(), std::uint8_t{0});
    for (const DotRect* rect : m_active) {
      m_end = std::min(m_end, rect->y + rect->height);
      SetBits(m_row, static_cast<std::size_t>(rect->x) * m_bits,
              static_cast<std::size_t>(rect->x + rect->width) * m_bits);
    }
  }

  const Row& Current() const { return m_row; }
  // The first row below that differs.
  int End() const { return m_end; }

 private:
  unsigned m_bits;
  int m_height;
  int m_end = 0;
  std::vector<const DotRect*> m_rects;  // from the top
  std::size_t m_next = 0;               // the first below the current row
  std::vector<const DotRect*> m_active;
  Row m_row;
};

// A glyph with ink, and the dots that it touches.
struct InkedGlyph {
  Outline outline;
  OutlinePlace place;
  DotBox box;
};

OutlinePlace PlaceOf(const PlacedText& text) {
  return {text.glyphs.front().x, text.glyphs.front().y, text.size / kUnitsPerEm};
}

// What lies outside of the picture is cut off.
DotBox Common(const DotBox& a, const DotBox& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

bool IsEmpty(const DotBox& box) {
  return box.left >= box.right || box.top >= box.bottom;
}

// Glyphs from the top.
std::vector<InkedGlyph> InkedGlyphs(const Drawing& drawing) {
  const DotBox picture{0, 0, drawing.width, drawing.height};
  std::vector<InkedGlyph> inked;
  for (const PlacedText& text : drawing.texts) {
    for (const PlacedGlyph& glyph : text.glyphs) {
      Outline outline;
      AppendGlyphOutline(text, glyph, outline);
      if (outline.empty()) {
        continue;
      }
      const OutlinePlace place = PlaceOf(text);
      const DotBox box = Common(picture, BoundsOf(outline, place));
      if (!IsEmpty(box)) {
        inked.push_back({std::move(outline), place, box});
      }
    }
  }
  std::stable_sort(inked.begin(), inked.end(),
                   [](const InkedGlyph& a, const InkedGlyph& b) { return a.box.top < b.box.top; });
  return inked;
}

// The text over some rows of the bars.
class TextRows {
 public:
  explicit TextRows(std::vector<InkedGlyph> glyphs) : m_glyphs(std::move(glyphs)) {}

  // Whether row y has text, and the first row below for which the answer may be another.
  bool Covers(int y) const {
    return std::any_of(m_glyphs.begin(), m_glyphs.end(),
                       [y](const InkedGlyph& glyph) { return glyph.box.top <= y && y < glyph.box.bottom; });
  }
  int NextEdge(int y) const {
    int edge = std::numeric_limits<int>::max();
    for (const InkedGlyph& glyph : m_glyphs) {
      for (const int candidate : {glyph.box.top, glyph.box.bottom}) {
        if (candidate > y) {
          edge = std::min(edge, candidate);
        }
      }
    }
    return edge;
  }

  // Draws the glyphs into rows, of which the first is row y.
  void DrawInto(std::span<Row> rows, int y) const {
    const DotBox band{0, y, std::numeric_limits<int>::max(), y + static_cast<int>(rows.size())};
    for (const InkedGlyph& glyph : m_glyphs) {
      const DotBox box = Common(glyph.box, band);
      if (!IsEmpty(box)) {
        DrawLevels(CoverageOf(glyph.outline, glyph.place, box), box, rows, y);
      }
    }
  }

 private:
  static void DrawLevels(const std::vector<std::uint8_t>& levels, const DotBox& box, std::span<Row> rows,
                         int y) {
    std::size_t i = 0;
    for (int row = box.top; row < box.bottom; ++row) {
      for (int x = box.left; x < box.right; ++x, ++i) {
        if (levels[i] != 0) {
          DrawDot(rows[static_cast<std::size_t>(row - y)], static_cast<std::size_t>(x), levels[i]);
        }
      }
    }
  }

  // The darker one of what is there and the level.
  static void DrawDot(Row& row, std::size_t x, unsigned level) {
    const unsigned shift = x % 2 == 0 ? 4 : 0;
    std::uint8_t& dots = row[x / 2];
    const unsigned there = dots >> shift & 15U;
    if (level > there) {
      dots = static_cast<std::uint8_t>((dots & ~(15U << shift)) | level << shift);
    }
  }

  std::vector<InkedGlyph> m_glyphs;
};

struct Shades {
  std::array<png_color, 1U << kTextBits> colours;
  std::array<png_byte, 1U << kTextBits> alphas;
  int count = 0;
  int translucent = 0;  // up to the last one that is
};

// `coverage` of `full` of the foreground over the background.
Colour Blend(const Colour& foreground, const Colour& background, unsigned coverage, unsigned full) {
  constexpr unsigned kOpaque = 255;
  const unsigned above = foreground.a * coverage;
  const unsigned below = background.a * (kOpaque * full - above);
  const unsigned sum = above * kOpaque + below;
  if (sum == 0) {
    return {255, 255, 255, 0};  // white for those who ignore the alpha
  }
  const auto channel = [&](unsigned over, unsigned under) {
    return static_cast<std::uint8_t>((over * above * kOpaque + under * below + sum / 2) / sum);
  };
  const unsigned whole = kOpaque * full;
  return {channel(foreground.r, background.r), channel(foreground.g, background.g),
          channel(foreground.b, background.b), static_cast<std::uint8_t>((sum + whole / 2) / whole)};
}

Shades MakeShades(const Drawing& drawing, unsigned bits) {
  Shades shades;
  shades.count = 1 << bits;
  const auto full = static_cast<unsigned>(shades.count - 1);
  for (unsigned level = 0; level <= full; ++level) {
    const Colour colour = Blend(drawing.foreground, drawing.background, level, full);
    shades.colours[level] = {colour.r, colour.g, colour.b};
    shades.alphas[level] = colour.a;
    if (colour.a != 255) {
      shades.translucent = static_cast<int>(level) + 1;
    }
  }
  return shades;
}

// A PNG file that is written into a string. libpng tells failures by jumping out of its functions: it is
// called from functions only whose frames hold nothing that must be destroyed.
class PngFile {
 public:
  explicit PngFile(std::string& out)
      : m_png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning)),
        m_info(m_png == nullptr ? nullptr : png_create_info_struct(m_png)) {
    if (m_info == nullptr) {
      png_destroy_write_struct(&m_png, nullptr);
      throw std::bad_alloc();
    }
    png_set_write_fn(m_png, &out, OnBytes, nullptr);
  }
  ~PngFile() { png_destroy_write_struct(&m_png, &m_info); }
  PngFile(const PngFile&) = delete;
  PngFile& operator=(const PngFile&) = delete;

  void WriteHeader(const Drawing& drawing, unsigned bits);

  // imageData: the rows, compressed.
  void WriteRest(std::string_view imageData) {
    Guarded([this, imageData] {
      png_write_chunk(m_png, kImageData.data(), reinterpret_cast<png_const_bytep>(imageData.data()),
                      imageData.size());
      png_write_chunk(m_png, kEnd.data(), nullptr, 0);
    });
  }

 private:
  using ChunkName = std::array<png_byte, 5>;  // with a zero behind it
  static constexpr ChunkName kImageData = {'I', 'D', 'A', 'T'};
  static constexpr ChunkName kEnd = {'I', 'E', 'N', 'D'};

  // The arguments are in order, so that nothing but memory can fail.
  template <class Calls>
  void Guarded(const Calls& calls) {
    if (!Try(m_png, calls)) {
      throw std::bad_alloc();
    }
  }

  template <class Calls>
  static bool Try(png_structp png, const Calls& calls) {
    if (setjmp(png_jmpbuf(png)) != 0) {  // NOLINT(cert-err52-cpp): libpng's way
      return false;
    }
    calls();
    return true;
  }

  [[noreturn]] static void OnError(png_structp png, png_const_charp /*message*/) { png_longjmp(png, 1); }
  static void OnWarning(png_structp /*png*/, png_const_charp /*message*/) {}

  static bool Append(std::string& out, const png_byte* bytes, std::size_t size) noexcept {
    try {
      out.append(reinterpret_cast<const char*>(bytes), size);
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }
  static void OnBytes(png_structp png, png_bytep bytes, std::size_t size) {
    if (!Append(*static_cast<std::string*>(png_get_io_ptr(png)), bytes, size)) {
      png_error(png, "out of memory");
    }
  }

  png_structp m_png;
  png_infop m_info;
};

bool IsGrey(const Drawing& drawing) {
  return (drawing.foreground == kBlack && drawing.background == kWhite) ||
         (drawing.foreground == kWhite && drawing.background == kBlack);
}

void PngFile::WriteHeader(const Drawing& drawing, unsigned bits) {
  const Shades shades = MakeShades(drawing, bits);
  const bool grey = IsGrey(drawing);
  const auto width = static_cast<png_uint_32>(drawing.width);
  const auto height = static_cast<png_uint_32>(drawing.height);
  const auto perMetre = static_cast<png_uint_32>(std::lround(drawing.dpi.value_or(0) / kMetresPerInch));
  Guarded([&] {
    png_set_user_limits(m_png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_IHDR(m_png, m_info, width, height, static_cast<int>(bits),
                 grey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!grey) {
      png_set_PLTE(m_png, m_info, shades.colours.data(), shades.count);
      if (shades.translucent > 0) {
        png_set_tRNS(m_png, m_info, shades.alphas.data(), shades.translucent, nullptr);
      }
    }
    if (drawing.dpi) {
      png_set_pHYs(m_png, m_info, perMetre, perMetre, PNG_RESOLUTION_METER);
    }
    png_write_info(m_png, m_info);
  });
}

// The image data of a file: rows from the top, each behind the byte of its filter, compressed. libpng would
// look at each row and copy it several times over.
class ImageData {
 public:
  ImageData(const Drawing& drawing, unsigned bits, bool inverted)
      : m_inverted(inverted), m_rowBytes(RowBytes(drawing.width, bits)) {
    const std::size_t size = (m_rowBytes + 1) * static_cast<std::size_t>(drawing.height);
    const int level = bits == kTextBits ? kTextLevel : kBarLevel;
    if (deflateInit2(&m_stream, level, Z_DEFLATED, WindowBits(size), kMemoryLevel, Z_FILTERED) != Z_OK) {
      throw std::bad_alloc();
    }
  }
  ~ImageData() { deflateEnd(&m_stream); }
  ImageData(const ImageData&) = delete;
  ImageData& operator=(const ImageData&) = delete;

  // The same row of coverage, `count` times. One like the one above is nothing but zeros beside it.
  void Write(const Row& row, int count) {
    m_row.resize(m_rowBytes + 1);
    m_row[0] = PNG_FILTER_VALUE_NONE;
    const unsigned inversion = m_inverted ? 0xFF : 0;
    std::transform(row.begin(), row.end(), m_row.begin() + 1,
                   [inversion](unsigned byte) { return static_cast<std::uint8_t>(byte ^ inversion); });
    Deflate(m_row, Z_NO_FLUSH);
    for (auto rest = static_cast<std::size_t>(count) - 1; rest > 0;) {
      const std::size_t rows = std::min(rest, std::max<std::size_t>(1, kRepeatedBytes / m_row.size()));
      Deflate(std::span(Repeated(rows)).first(rows * m_row.size()), Z_NO_FLUSH);
      rest -= rows;
    }
  }

  std::string Take() {
    Deflate({}, Z_FINISH);
    return std::move(m_data);
  }

 private:
  // The best there is, as libpng has it.
  static constexpr int kMemoryLevel = 8;
  static constexpr int kLeastWindowBits = 9;
  // Repeated rows are compressed together, about so many bytes of them.
  static constexpr std::size_t kRepeatedBytes = 4096;

  // The smallest window that holds everything and what the compressor looks ahead.
  static int WindowBits(std::size_t size) {
    constexpr std::size_t kLookAhead = 262;
    int bits = MAX_WBITS;
    while (bits > kLeastWindowBits && size + kLookAhead <= std::size_t{1} << (bits - 1)) {
      --bits;
    }
    return bits;
  }

  // At least so many rows like the ones above them.
  const Row& Repeated(std::size_t rows) {
    while (m_repeated.size() < rows * m_row.size()) {
      m_repeated.push_back(PNG_FILTER_VALUE_UP);
      m_repeated.resize(m_repeated.size() + m_rowBytes);
    }
    return m_repeated;
  }

  void Deflate(std::span<const std::uint8_t> bytes, int flush) {
    // The compressor does not write to its input, though it does not say so.
    m_stream.next_in = const_cast<Bytef*>(bytes.data());
    m_stream.avail_in = static_cast<uInt>(bytes.size());
    do {
      std::array<std::uint8_t, 4096> out;
      m_stream.next_out = out.data();
      m_stream.avail_out = out.size();
      deflate(&m_stream, flush);
      m_data.append(reinterpret_cast<const char*>(out.data()), out.size() - m_stream.avail_out);
    } while (m_stream.avail_out == 0);
  }

  bool m_inverted;
  std::size_t m_rowBytes;
  Row m_row;       // behind its filter
  Row m_repeated;  // the same, repeated
  z_stream m_stream = {};
  std::string m_data;
};

void WriteRows(const Drawing& drawing, BarRows& bars, const TextRows& text, ImageData& data) {
  std::vector<Row> lines;
  for (int y = 0; y < drawing.height;) {
    bars.MoveTo(y);
    int end = std::min(bars.End(), text.NextEdge(y));
    if (!text.Covers(y)) {
      data.Write(bars.Current(), end - y);
    } else {
      end = std::min(end, y + kTextRows);
      lines.assign(static_cast<std::size_t>(end - y), bars.Current());
      text.DrawInto(lines, y);
      for (const Row& line : lines) {
        data.Write(line, 1);
      }
    }
    y = end;
  }
}

}  // namespace

std::string WritePng(const Drawing& drawing) {
  std::vector<InkedGlyph> glyphs = InkedGlyphs(drawing);
  const unsigned bits = glyphs.empty() ? kBarBits : kTextBits;
  BarRows bars(drawing, bits);
  const TextRows text(std::move(glyphs));
  // In grey, 0 is black.
  ImageData data(drawing, bits, IsGrey(drawing) && drawing.foreground == kBlack);
  WriteRows(drawing, bars, text, data);
  std::string bytes;
  PngFile file(bytes);
  file.WriteHeader(drawing, bits);
  file.WriteRest(data.Take());
  return bytes;
}

}  // namespace barcode::label
