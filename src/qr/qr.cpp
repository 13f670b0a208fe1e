#include "qr/qr.h"

#include "qr/qr_encoder.h"
#include "qr/qr_tables.h"

namespace barcode {

void QR::SetErrorCorrectionLevel(std::string_view level) {
  m_options.level = FindKeyword(kQrLevelKeywords, level).value_or(QrLevel::kM);
}

void QR::SetVersion(std::uint32_t version) {
  if (version <= kQrMaxVersion) {
    m_options.minVersion = static_cast<int>(version);
    return;
  }
  m_options.minVersion = 0;
  PrintLine("Warning: Invalid QR Code version (", static_cast<std::int32_t>(version), "). Setting to auto.");
}

void QR::SetEncodeMode(std::string_view mode) {
  m_options.mode = FindKeyword(kQrModeKeywords, mode).value_or(QrMode::kByte);
}

ModuleMatrix QR::Encode(const std::string& text, EncoderLines& /*lines*/) const {
  return EncodeQr(text, m_options).matrix;
}

MatrixDrawing QR::Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                         PixelGrid grid) const {
  const SkipModules skip = grid == PixelGrid::kWhole ? SkipModules::kEmptyRect : SkipModules::kEmptyCell;
  return LayoutStretched(matrix, width, height, m_fitWidth, grid,
                         {.adjust = static_cast<double>(m_pxAdjustBlack), .skip = skip});
}

void QR::ReportSymbol(const ModuleMatrix& matrix, const MatrixDrawing& /*drawing*/) const {
  PrintModules("【Debug: QRコードのビットパターン出力】", matrix);
}

}  // namespace barcode
