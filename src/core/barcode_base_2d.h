#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/barcode_base.h"

namespace barcode {

// What matrix and stacked symbols share: the character set of the encoded text and the square draws.
class BarcodeBase2D : public BarcodeBase {
 public:
  explicit BarcodeBase2D(std::string_view format) : BarcodeBase(format) {}

  // Draw converts the text to the chosen character set and hands it to DrawMatrix.
  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

  // Draws text that is already in the character set of the symbol.
  virtual bool DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
  virtual bool DrawMatrixSquare(const std::string& text, int x, int y, std::uint32_t size);
  virtual bool DrawSquare(const std::string& text, int x, int y, std::uint32_t size);

  // "utf-8", "shift-jis" or one of their spellings; any other keyword counts as UTF-8.
  void SetStringEncoding(std::string_view encoding) { m_stringEncoding = encoding; }

 protected:
  std::string m_stringEncoding = "utf-8";
};

}  // namespace barcode
