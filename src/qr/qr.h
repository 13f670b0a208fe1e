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
  explicit QR(std::string_view format)
      : BarcodeBase2D(format, {.tag = "[QR] ", .doneLine = "--- QR::Draw 終了 (成功) ---"}) {}

  // "L", "M", "Q" or "H"; any other text selects M.
  void SetErrorCorrectionLevel(std::string_view level);

  // The least version, 1 to 40; 0 leaves it to the text. Any other number prints a warning and sets 0.
  void SetVersion(std::uint32_t version);

  // "AUTO", "BYTE", "NUMERIC", "ALPHANUMERIC" or "KANJI". Only "NUMERIC" makes a difference: all else, any
  // other text included, encodes bytes.
  void SetEncodeMode(std::string_view mode);

 protected:
  // An empty text has no symbol; its raster draw paints the background alone.
  ModuleMatrix Encode(const std::string& text, EncoderLines& lines) const override;
  MatrixDrawing Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                       PixelGrid grid) const override;
  void ReportSymbol(const ModuleMatrix& matrix, const MatrixDrawing& drawing) const override;

 private:
  QrOptions m_options;
};

}  // namespace barcode
