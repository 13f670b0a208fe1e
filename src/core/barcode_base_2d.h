#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/module_matrix.h"
#include "core/barcode_base.h"
#include "core/sdl_ptr.h"
#include "layout/matrix_layout.h"

namespace barcode {

// Where a raster draw goes: a renderer and the rectangle on it, in pixels. Move-only.
struct MatrixTarget {
  SDL_Renderer* renderer = nullptr;
  RendererPtr owned;  // the renderer, when the draw made it
  int x = 0;
  int y = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
};

// What matrix and stacked symbols share: the character set of the encoded text, the square draws and the
// steps from a module matrix to pixels or rectangles. A class draws in raster as
//
//     auto target = PrepareTarget(x, y, width, height, Progress::kPrinted);   // none: the draw has failed
//     matrix = ...                                                            // may throw, see Reported
//     FillTarget(*target);
//     PaintModules(*target, matrix, StretchedModules(target->width, ...), m_pxAdjustBlack);
//     FinishTarget(*target);
//
// and in SVG with WriteSvg.
class BarcodeBase2D : public BarcodeBase {
 public:
  explicit BarcodeBase2D(std::string_view format) : BarcodeBase(format) {}

  // Converts the text to the chosen character set and hands it to DrawMatrix.
  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

  // Draws text that is already in the character set of the symbol. By default nothing is drawn.
  virtual bool DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
  virtual bool DrawMatrixSquare(const std::string& text, int x, int y, std::uint32_t size);
  virtual bool DrawSquare(const std::string& text, int x, int y, std::uint32_t size);

  // "utf-8", "shift-jis" or one of their spellings; any other keyword counts as UTF-8.
  void SetStringEncoding(std::string_view encoding) { m_stringEncoding = encoding; }

  // A renderer of the caller that raster draws go to instead of the object's own canvas, at the x and y of
  // the draw; null ends that. It must outlive the draws. No exported function sets it.
  void SetProvidedCanvas(SDL_Renderer* canvas) { m_providedCanvas = canvas; }

 protected:
  enum class Progress { kPrinted, kSilent };

  // The renderer of the caller with the given rectangle, or a new surface of that size, through the base
  // class's draw, with a renderer for it. Progress::kPrinted reports every step and failure on standard
  // output.
  std::optional<MatrixTarget> PrepareTarget(int x, int y, std::uint32_t width, std::uint32_t height,
                                            Progress progress);

  // Fills the whole rectangle with the background.
  void FillTarget(const MatrixTarget& target);

  // Fills the dark modules, from the top-left corner of the rectangle, at edges rounded to whole pixels.
  // adjust: pixels added to the width and height of each.
  void PaintModules(const MatrixTarget& target, const ModuleMatrix& matrix, const ModuleSize& module,
                    std::int32_t adjust) const;

  // Presents the caller's renderer; executes and destroys one made by PrepareTarget.
  static void FinishTarget(MatrixTarget& target);

  // "1" and "0" for the modules of each column, a line per column, to standard output, between the header
  // line and the end line. header: without the line break.
  static void PrintModules(std::string_view header, const ModuleMatrix& matrix);

  // A whole document of that size: the background, then the dark modules.
  void WriteSvg(std::uint32_t width, std::uint32_t height, const ModuleMatrix& matrix, const ModuleGrid& grid,
                const ModuleRule& rule);

  std::string m_stringEncoding = "utf-8";

 private:
  SDL_Renderer* m_providedCanvas = nullptr;
};

}  // namespace barcode
