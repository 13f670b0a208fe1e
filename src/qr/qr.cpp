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
  PrintLine("Warning: Invalid QR Code version (", static_cast<std::int32_t>(version), "). Setting to auto.");
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

ModuleMatrix QR::Encode(const std::string& text) const {
  QREncoder encoder(m_encodeMode, m_version, m_errorCorrectionLevel);
  encoder.Encode(text);
  return encoder.Matrix();
}

MatrixDrawing QR::Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                         PixelGrid grid) const {
  const int size = matrix.Columns();
  const ModuleSize module = StretchedModules(width, height, size, size, m_fitWidth);
  const bool whole = grid == PixelGrid::kWhole;
  return {.width = width,
          .height = height,
          .module = module,
          .grid = whole ? RoundedGrid(module, size, size, 0, 0) : ExactGrid(module, size, size),
          .rule = {.adjust = static_cast<double>(m_pxAdjustBlack),
                   .skip = whole ? SkipModules::kEmptyRect : SkipModules::kEmptyCell}};
}

void QR::ReportSymbol(const ModuleMatrix& matrix, const MatrixDrawing& /*drawing*/) const {
  PrintModules("【Debug: QRコードのビットパターン出力】", matrix);
}

}  // namespace barcode
