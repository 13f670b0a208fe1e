#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "core/sdl_ptr.h"
#include "core/svg_writer.h"
#include "core/symbology.h"

namespace barcode {

// What all symbologies share: colours, output format, raster canvas, SVG document, pixel adjustments.
class BarcodeBase : public IBarcodeSymbology {
 public:
  explicit BarcodeBase(std::string_view format) : m_format(format) {}
  ~BarcodeBase() override;

  void SetForegroundColor(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) override;
  void SetBackgroundColor(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) override;

  // Prepares the canvas, draws nothing and returns true; false when the canvas could not be made.
  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;
  std::vector<std::uint8_t> GetImageData() override;
  std::string GetImageBase64() override;

  void SetOutputFormat(std::string_view format) { m_format = format; }
  void SetFitWidth(bool fit) { m_fitWidth = fit; }
  void SetPxAdjustBlack(std::int32_t pixels) { m_pxAdjustBlack = pixels; }
  void SetPxAdjustWhite(std::int32_t pixels) { m_pxAdjustWhite = pixels; }

  // True when the output format is exactly "svg" or "SVG".
  bool IsSvgOutput() const { return m_format == "svg" || m_format == "SVG"; }

  // The SVG document of the last SVG draw. Throws std::runtime_error when the output format is not SVG.
  const std::string& GetSvg() const;

  const std::string& GetSvgDocument() const { return m_svgStream.Document(); }

 protected:
  // Makes a new surface of width x height, filled with the background, and its renderer. True without doing
  // so when the format is no raster format: an earlier canvas remains. False, with a line on standard error,
  // when SDL fails; there is no canvas then.
  bool PrepareCanvas(int x, int y, std::uint32_t width, std::uint32_t height);

  // Fills the whole canvas with the background colour.
  void FillBackground();

  // Executes what is queued on the canvas.
  void PresentCanvas();

  // Runs a draw; an exception becomes tag + message on standard error and false. tag: "[Code39] ".
  static bool Reported(std::string_view tag, const std::function<bool()>& draw);

  void BeginSvg(std::uint32_t width, std::uint32_t height) { m_svgStream.Begin(width, height); }
  void SvgRect(double x, double y, double width, double height, const Colour& colour) {
    m_svgStream.Rect(x, y, width, height, colour);
  }
  void SvgText(double x, double y, std::string_view text, int fontSize, const Colour& colour,
               std::string_view anchor) {
    m_svgStream.Text(x, y, text, fontSize, colour, anchor);
  }
  void EndSvg() { m_svgStream.End(); }

  Colour m_foreColor = kBlack;
  Colour m_backColor = kWhite;
  RendererPtr m_canvas;
  std::string m_format;
  SurfacePtr m_surface;
  bool m_fitWidth = false;
  std::int32_t m_pxAdjustBlack = 0;
  std::int32_t m_pxAdjustWhite = 0;
  SvgWriter m_svgStream;
  std::uint32_t m_drawWidth = 0;
  std::uint32_t m_drawHeight = 0;

 private:
  bool IsRasterFormat() const { return m_format == "png" || m_format == "jpg" || m_format == "jpeg"; }
  std::string_view MimeType() const;
  // The renderer draws into the surface and goes first.
  void ReleaseCanvas();
};

}  // namespace barcode
