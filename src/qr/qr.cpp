#include "qr/qr.h"

#include "base/line.h"
#include "core/diagnostics.h"
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
  PrintLine(
      Line("Warning: Invalid QR Code version (", static_cast<std::int32_t>(version), "). Setting to auto."));
}

void QR::SetEncodeMode(std::string_view mode) {
  m_options.mode = FindKeyword(kQrModeKeywords, mode).value_or(QrMode::kByte);
}

bool QR::DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  return Reported(kTag, [&] {
    return IsSvgOutput() ? DrawSvgDocument(text, width, height) : DrawRaster(text, x, y, width, height);
  });
}

bool QR::DrawRaster(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  auto target = PrepareTarget(x, y, width, height, Progress::kPrinted);
  if (!target) {
    return false;
  }
  // An empty text is no error here: the background alone is drawn.
  const ModuleMatrix matrix = EncodeQr(text, m_options).matrix;
  PrintModules("【Debug: QRコードのビットパターン出力】", matrix);
  FillTarget(*target);
  PaintModules(*target, matrix,
               StretchedModules(target->width, target->height, matrix.Columns(), matrix.Rows(), m_fitWidth),
               m_pxAdjustBlack);
  FinishTarget(*target);
  PrintLine("--- QR::Draw 終了 (成功) ---");
  return true;
}

bool QR::DrawSvgDocument(const std::string& text, std::uint32_t width, std::uint32_t height) {
  const ModuleMatrix matrix = EncodeQr(text, m_options).matrix;
  if (matrix.Empty()) {
    return false;
  }
  const int size = matrix.Columns();
  const ModuleSize module = StretchedModules(width, height, size, size, m_fitWidth);
  WriteSvg(width, height, matrix, ExactGrid(module, size, size),
           {.adjust = static_cast<double>(m_pxAdjustBlack), .skip = SkipModules::kEmptyCell});
  return true;
}

}  // namespace barcode
