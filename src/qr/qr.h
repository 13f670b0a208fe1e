#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/barcode_base_2d.h"
#include "qr/qr_options.h"

namespace barcode {

// QR Code (ISO/IEC 18004, Model 2): one segment of bytes or digits, versions 1 to 40, levels L, M, Q, H.
class QR : public BarcodeBase2D {
 public:
  static constexpr std::string_view kTag = "[QR] ";

  using BarcodeBase2D::BarcodeBase2D;

  // "L", "M", "Q" or "H"; any other text selects M.
  void SetErrorCorrectionLevel(std::string_view level);

  // The least version, 1 to 40; 0 leaves it to the text. Any other number prints a warning and sets 0.
  void SetVersion(std::uint32_t version);

  // "AUTO", "BYTE", "NUMERIC", "ALPHANUMERIC" or "KANJI". Only "NUMERIC" makes a difference: all else, any
  // other text included, encodes bytes.
  void SetEncodeMode(std::string_view mode);

  bool DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

 private:
  bool DrawRaster(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
  bool DrawSvgDocument(const std::string& text, std::uint32_t width, std::uint32_t height);

  QrOptions m_options;
};

}  // namespace barcode
