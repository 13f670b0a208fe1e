#include "label/drawings.h"

#include <algorithm>
#include <cstdint>

#include "base/utf8.h"
#include "label/turn.h"

namespace barcode::label::test {
Drawing LinearDrawing(const RunVector& pattern, int module, int height) {
  Drawing drawing;
  int x = 10 * module;
  bool dark = true;
  for (const std::uint32_t run : pattern) {
    const int width = static_cast<int>(run) * module;
    if (dark && width > 0) {
      drawing.dark.push_back({x, 0, width, height});
    }
    x += width;
    dark = !dark;
  }
  drawing.width = x + 10 * module;
  drawing.height = height;
  return drawing;
}

Drawing MatrixDrawing(const ModuleMatrix& matrix, int module) {
  Drawing drawing;
  drawing.width = (matrix.Columns() + 8) * module;
  drawing.height = (matrix.Rows() + 8) * module;
  for (int y = 0; y < matrix.Rows(); ++y) {
    for (int x = 0; x < matrix.Columns(); ++x) {
      const int begin = x;
      while (x < matrix.Columns() && matrix.At(x, y)) {
        ++x;
      }
      if (x > begin) {
        drawing.dark.push_back({(4 + begin) * module, (4 + y) * module, (x - begin) * module, module});
      }
    }
  }
  return drawing;
}

PlacedText TextAt(std::string_view text, double size, double x, double y) {
  const Font font;
  PlacedText placed{.size = size, .rotation = Rotation::kNone, .glyphs = {}};
  while (!text.empty()) {
    const int glyph = font.FindGlyph(TakeCharacter(text)).value_or(kPlaceholderGlyph);
    placed.glyphs.push_back({glyph, x, y});
    x += font.Advance(glyph) * size / kUnitsPerEm;
  }
  return placed;
}

void AddLine(Drawing& drawing, std::string_view text, double size) {
  const Font font;
  const double scale = size / kUnitsPerEm;
  const PlacedText measured = TextAt(text, size, 0, 0);
  const PlacedGlyph& last = measured.glyphs.back();
  const double width = last.x + font.Advance(last.glyph) * scale;
  drawing.texts.push_back(
      TextAt(text, size, (drawing.width - width) / 2, drawing.height + 2 + font.Ascent() * scale));
  drawing.height += 4 + static_cast<int>((font.Ascent() + font.Descent()) * scale);
}

Drawing Turned(const Drawing& drawing, Rotation rotation) {
  Drawing turned = drawing;
  Turn(turned, rotation);
  return turned;
}

Drawing RandomDrawing(std::mt19937& random) {
  const auto upTo = [&random](int most) {
    return 1 + static_cast<int>(random() % static_cast<unsigned>(most));
  };
  Drawing drawing;
  drawing.width = upTo(120);
  drawing.height = upTo(120);
  for (int i = upTo(40); i > 0; --i) {
    const int width = upTo(drawing.width);
    const int height = upTo(std::min(drawing.height, 30));
    drawing.dark.push_back({upTo(drawing.width - width + 1) - 1, upTo(drawing.height - height + 1) - 1,
                            std::min(width, upTo(20)), height});
  }
  return drawing;
}

}  // namespace barcode::label::test
