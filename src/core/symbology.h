#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace barcode {

// What every symbology offers to the exported functions.
class IBarcodeSymbology {
 public:
  IBarcodeSymbology() = default;
  IBarcodeSymbology(const IBarcodeSymbology&) = delete;
  IBarcodeSymbology& operator=(const IBarcodeSymbology&) = delete;

  virtual void SetForegroundColor(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) = 0;
  virtual void SetBackgroundColor(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) = 0;

  // Draws the text into the box of width x height pixels at (x, y). False, with a line on standard error
  // where the text is at fault, when nothing was drawn.
  virtual bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) = 0;

  // The canvas as a PNG file; empty when there is none.
  virtual std::vector<std::uint8_t> GetImageData() = 0;

  // The canvas as a data URI; releases it. Errors become a text "Error: " + message.
  virtual std::string GetImageBase64() = 0;

  virtual ~IBarcodeSymbology() = default;

  // The same draw into an SVG document.
  virtual bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
};

}  // namespace barcode
