#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/encoder_lines.h"
#include "base/geometry.h"
#include "base/module_matrix.h"
#include "core/barcode_base.h"
#include "core/sdl_ptr.h"
#include "layout/drawing.h"
#include "layout/matrix_layout.h"

namespace barcode {

// How the raster draw of a matrix class goes about it.
struct MatrixDrawStyle {
  std::string_view tag;       // the prefix of error lines, "[QR] "
  bool encodesFirst = false;  // before the canvas is made, which a refused text then leaves as it was
  bool printsSteps = true;    // every step and failure on standard output
  std::string_view doneLine;  // printed at the end, unless empty
};

// What matrix and stacked symbols share: the character set of the encoded text and the two draws, raster and
// SVG. A class supplies its encoder and its layout.
class BarcodeBase2D : public BarcodeBase {
 public:
  // Converts the text to the chosen character set and hands it to DrawMatrix.
  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) final;

  // Draws text that is already in the character set of the symbol.
  virtual bool DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
  virtual bool DrawMatrixSquare(const std::string& text, int x, int y, std::uint32_t size);
  virtual bool DrawSquare(const std::string& text, int x, int y, std::uint32_t size);

  std::string_view Tag() const final { return m_style.tag; }

  // "utf-8", "shift-jis" or one of their spellings; any other keyword counts as UTF-8.
  void SetStringEncoding(std::string_view encoding) { m_stringEncoding = encoding; }

 protected:
  BarcodeBase2D(std::string_view format, const MatrixDrawStyle& style)
      : BarcodeBase(format), m_style(style) {}

  // The symbol of a text; empty where the class draws nothing. What the encoder says is printed on standard
  // output, also when it throws, as it does on bad text.
  virtual ModuleMatrix Encode(const std::string& text, EncoderLines& lines) const = 0;

  // Where the modules of a symbol stand in a box at the origin.
  virtual MatrixDrawing Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                               PixelGrid grid) const = 0;

  // The box that is drawn when a host asks for `box`.
  virtual Box DrawnBox(const ModuleMatrix& matrix, const Box& box) const;

  // Lines about the symbol, printed before a raster draw paints it.
  virtual void ReportSymbol(const ModuleMatrix& matrix, const MatrixDrawing& drawing) const;

  // "1" and "0" for the modules of each column, a line per column, to standard output, between the header
  // line and the end line. header: without the line break.
  static void PrintModules(std::string_view header, const ModuleMatrix& matrix);

  std::string m_stringEncoding = "utf-8";

 private:
  ModuleMatrix EncodeAndPrint(const std::string& text) const;
  bool DrawRaster(const std::string& text, const Box& box);
  bool DrawVector(const std::string& text, const Box& box);
  // A renderer for the canvas, which is made through the base class's draw; null when there is none.
  RendererPtr PrepareTarget(const Box& box);
  void Paint(SDL_Renderer& target, const ModuleMatrix& matrix, const MatrixDrawing& drawing);

  MatrixDrawStyle m_style;
};

}  // namespace barcode
