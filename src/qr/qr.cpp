#include "qr/qr.h"

#include <algorithm>
#include <array>

#include "base/ascii.h"
#include "base/number_format.h"
#include "core/diagnostics.h"
#include "qr/qr_encoder.h"
#include "qr/qr_tables.h"

namespace barcode {
namespace {

constexpr std::array<std::string_view, kQrLevels> kLevels = {"L", "M", "Q", "H"};
constexpr std::uint32_t kLevelM = 1;
constexpr std::string_view kByteMode = "B";
constexpr std::array<std::string_view, 4> kModes = {"N", "A", kByteMode, "K"};

}  // namespace

void QR::SetErrorCorrectionLevel(std::string_view level) {
  m_errorCorrectionLevel = kLevelM;
  for (std::uint32_t i = 0; i < kLevels.size(); ++i) {
    if (level == kLevels[i]) {
      m_errorCorrectionLevel = i;
    }
  }
}

void QR::SetVersion(std::uint32_t version) {
  if (version <= kQrMaxVersion) {
    m_version = version;
    return;
  }
  m_version = 0;
  std::string warning = "Warning: Invalid QR Code version (";
  AppendInt(warning, static_cast<std::int32_t>(version));
  PrintLine(warning += "). Setting to auto.");
}

void QR::SetEncodeMode(std::string_view mode) {
  const auto letter = std::find(kModes.begin(), kModes.end(), ToUpper(mode));
  if (letter != kModes.end()) {
    m_encodeMode = *letter;
    return;
  }
  m_encodeMode = kByteMode;
  PrintLine(std::string("Warning: Invalid QR Code encode mode ('")
                .append(mode)
                .append("'). Setting to Binary ('B')."));
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
  const ModuleMatrix matrix = Encode(text);
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
  const ModuleMatrix matrix = Encode(text);
  if (matrix.Empty()) {
    return false;
  }
  const int size = matrix.Columns();
  const ModuleSize module = StretchedModules(width, height, size, size, m_fitWidth);
  WriteSvg(width, height, matrix, ExactGrid(module, size, size),
           {.adjust = static_cast<double>(m_pxAdjustBlack), .skip = SkipModules::kEmptyCell});
  return true;
}

ModuleMatrix QR::Encode(const std::string& text) const {
  QREncoder encoder(m_encodeMode, m_version, m_errorCorrectionLevel);
  encoder.Encode(text);
  return encoder.Matrix();
}

}  // namespace barcode
