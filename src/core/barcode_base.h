#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "core/canvas.h"
#include "core/diagnostics.h"
#include "core/svg_writer.h"
#include "core/symbology.h"

namespace barcode {

// What all symbologies share: colours, output format, raster canvas, SVG document, pixel adjustments.
class BarcodeBase : public IBarcodeSymbology {
 public:
  explicit BarcodeBase(std::string_view format) : m_format(format) {}

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

  // The prefix of error lines, "[Code39] ".
  virtual std::string_view Tag() const = 0;

 protected:
  // Makes a new canvas of width x height, filled with the background. True without doing so when the format
  // is no raster format: an earlier canvas remains. False, with a line on standard error, when SDL fails;
  // there is no canvas then.
  bool PrepareCanvas(int x, int y, std::uint32_t width, std::uint32_t height);

  // Runs a draw; an exception becomes tag + message on standard error and false. tag: "[Code39] ".
  template <class Draw>
  static bool Reported(std::string_view tag, Draw draw) {
    try {
      return draw();
    } catch (const std::exception& error) {
      ErrorLine(tag, error.what());
      return false;
    }
  }

  Colour m_foreColor = kBlack;
  Colour m_backColor = kWhite;
  Canvas m_canvas;
  std::string m_format;
  bool m_fitWidth = false;
  std::int32_t m_pxAdjustBlack = 0;
  std::int32_t m_pxAdjustWhite = 0;
  SvgWriter m_svgStream;

  // Results of the last draw that only derived classes and a debugger read.
  std::uint32_t m_drawWidth = 0;
  std::uint32_t m_drawHeight = 0;

 private:
  bool IsRasterFormat() const { return m_format == "png" || m_format == "jpg" || m_format == "jpeg"; }
  std::string_view MimeType() const;
};

}  // namespace barcode
