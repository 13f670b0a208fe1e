#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base.h"
#include "layout/linear_layout.h"

namespace barcode {

class TextPainter;
struct TextBox;

// What the plain linear draw needs of a class: the bars and the line under them.
struct LinearSymbol {
  RunVector pattern;
  std::string displayText;
};

// The options of linear symbols and the draw that the plain ones share.
class BarcodeBase1D : public BarcodeBase {
 public:
  explicit BarcodeBase1D(std::string_view format);

  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override = 0;

  void SetShowText(bool show) { m_showText = show; }
  void SetTextFontScale(float scale) { m_textFontScale = scale; }
  void SetTextGap(float gap) { m_textGap = gap; }
  void SetTextEvenSpacing(bool even) { m_textEvenSpacing = even; }

 protected:
  using MakeSymbol = std::function<LinearSymbol()>;

  // Sets m_barHeight to what is left of the box above the text. lines: 1 for one line of text; n above 1
  // reserves n + 2 lines.
  void LayoutBarHeight(std::uint32_t width, std::uint32_t height, int lines);

  // The human-readable line of the raster draw, across barsWidth pixels from x.
  void DrawText(std::string_view text, int x, int y, int barsWidth, std::uint32_t height);

  // The same line of the SVG draw.
  void DrawSvgText(std::string_view text, int x, int y, int barsWidth, std::uint32_t height);

  // One line of text of a font size (at least one byte) in width pixels from x, spread evenly or in one piece
  // around their middle: in the raster draw inside a box, in the SVG draw with its top at a height.
  void DrawTextLine(TextPainter& painter, std::string_view text, int x, int width, int size,
                    const TextBox& box) const;
  void SvgTextLine(std::string_view text, int x, int width, int size, double top);

  // The plain linear draw. tag: the prefix of error lines, "[Code39] ". makeSymbol encodes, and throws on bad
  // text.
  bool DrawLinear(std::string_view tag, int x, int y, std::uint32_t width, std::uint32_t height,
                  const MakeSymbol& makeSymbol);
  bool DrawLinearSvg(std::string_view tag, int x, int y, std::uint32_t width, std::uint32_t height,
                     const MakeSymbol& makeSymbol);

  // Steps of the draws, for classes with a layout of their own.

  // Canvas of the raster draw: false when it could not be made or the format is no raster format.
  bool HasPreparedCanvas(int x, int y, std::uint32_t width, std::uint32_t height);
  // The document opened and filled with the background.
  void BeginSvgDocument(std::uint32_t width, std::uint32_t height);
  ElementScale ScaleFor(std::uint32_t width, std::uint64_t modules) const;
  // The size report on standard output that ends every linear raster draw. drawnWidth in pixels.
  void PrintSizeReport(std::uint32_t width, std::uint32_t height, float drawnWidth) const;

  bool m_showText = true;
  float m_textFontScale = 1.0F;
  float m_textMarginScale = 1.0F;
  float m_textGap = 1.0F;
  bool m_textEvenSpacing = true;
  float m_barHeight = 0.0F;
};

// A class drawn by the plain linear draw alone. Derived supplies
//   static constexpr std::string_view kTag            "[Code39] "
//   RunVector Encode(const std::string& text)         throws on bad text
//   std::string DisplayText(const std::string& text)  the line under the bars
template <class Derived>
class PlainLinear : public BarcodeBase1D {
 public:
  using BarcodeBase1D::BarcodeBase1D;

  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override {
    if (IsSvgOutput()) {
      return DrawSvg(text, x, y, width, height);
    }
    return DrawLinear(Derived::kTag, x, y, width, height, [&] { return Symbol(text); });
  }

  bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override {
    return DrawLinearSvg(Derived::kTag, x, y, width, height, [&] { return Symbol(text); });
  }

 private:
  LinearSymbol Symbol(const std::string& text) {
    auto& self = static_cast<Derived&>(*this);
    return {self.Encode(text), self.DisplayText(text)};
  }
};

}  // namespace barcode
