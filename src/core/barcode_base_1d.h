#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "base/run_vector.h"
#include "core/barcode_base.h"
#include "layout/drawing.h"
#include "layout/linear_options.h"

namespace barcode {

class TextPainter;

// What a class makes of a text.
struct SymbolDrawing {
  Drawing drawing;
  // The line on standard output for a class that has one of its own, in raster and SVG alike; else a raster
  // draw ends with the size report.
  std::string report = {};
};

// What a layout is told beside the text.
struct DrawContext {
  Box box;
  PixelGrid grid;
  const TextMeasure& measure;  // of the canvas that a raster draw goes to
};

// The options of linear symbols and their two draws, raster and SVG. A class supplies its tag and its layout.
class BarcodeBase1D : public BarcodeBase {
 public:
  // Draws the text into the box. False for bad text, with tag + message on standard error, and when there is
  // no canvas.
  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) final;
  bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) final;

  std::string_view Tag() const final { return m_tag; }

  void SetShowText(bool show) { m_showText = show; }
  void SetTextFontScale(float scale) { m_textFontScale = scale; }
  void SetTextGap(float gap) { m_textGap = gap; }
  void SetTextEvenSpacing(bool even) { m_textEvenSpacing = even; }

 protected:
  // tag: the prefix of error lines, "[Code39] "; a constant.
  BarcodeBase1D(std::string_view format, std::string_view tag);

  // Encodes and lays out; nothing when there is nothing to draw, which fails without a message. Throws on bad
  // text.
  virtual std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const = 0;

  // The box that is drawn when a host asks for `box`; nothing: the draw is refused without a message.
  virtual std::optional<Box> DrawnBox(const std::string& text, const Box& box) const;

  // A second drawing of a class, beside Draw.
  struct DrawKind {
    std::string_view tag;
    std::string_view fontError = "TTF_OpenFont error: ";  // before the reason when a font cannot be opened
    std::function<std::optional<SymbolDrawing>(const DrawContext&)> layout = {};
  };
  // Draws it in raster or SVG, as the output format says.
  bool DrawInFormat(const DrawKind& kind, const Box& box);

  LinearOptions Options() const;

  // The plain linear layout: bars of one height above the text.
  SymbolDrawing PlainDrawing(const RunVector& pattern, std::string displayText,
                             const DrawContext& context) const;

  bool m_showText = true;
  float m_textFontScale = 1.0F;
  float m_textMarginScale = 1.0F;
  float m_textGap = 1.0F;
  bool m_textEvenSpacing = true;
  float m_barHeight = 0.0F;  // a result of the last draw

 private:
  DrawKind KindOf(const std::string& text) const;
  bool DrawRaster(const DrawKind& kind, const Box& box);
  bool DrawVector(const DrawKind& kind, const Box& box);
  void PaintRaster(const Drawing& drawing, TextPainter& texts);
  void PrintSizeReport(const Box& box, float drawnWidth) const;

  std::string_view m_tag;
};

}  // namespace barcode
