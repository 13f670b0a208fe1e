#include "core/barcode_base.h"

#include <stdexcept>

#include "base/base64.h"

namespace barcode {
namespace {

// A transparent image of 1 x 1 pixels.
constexpr std::string_view kFallbackUri =
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVQI12P4//8/AAX+Av7czFnnAAAAAElFTkSuQmCC";

}  // namespace

void BarcodeBase::SetForegroundColor(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) {
  m_foreColor = {r, g, b, a};
}

void BarcodeBase::SetBackgroundColor(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a) {
  m_backColor = {r, g, b, a};
}

bool BarcodeBase::Draw(const std::string& /*text*/, int x, int y, std::uint32_t width, std::uint32_t height) {
  return PrepareCanvas(x, y, width, height);
}

bool BarcodeBase::PrepareCanvas(int /*x*/, int /*y*/, std::uint32_t width, std::uint32_t height) {
  m_drawWidth = width;
  m_drawHeight = height;
  return !IsRasterFormat() || m_canvas.Prepare(width, height, m_backColor);
}

std::vector<std::uint8_t> BarcodeBase::GetImageData() {
  return m_canvas.Encode();
}

std::string BarcodeBase::GetImageBase64() {
  try {
    if (IsSvgOutput()) {
      throw std::runtime_error("GetImageBase64() is not available in SVG mode. Use GetSvg() instead.");
    }
    const std::vector<std::uint8_t> png = GetImageData();
    std::string uri;
    if (png.empty()) {
      uri = kFallbackUri;
    } else {
      uri.append("data:").append(MimeType()).append(";base64,");
      AppendBase64(uri, png);
    }
    m_canvas.Release();
    return uri;
  } catch (const std::exception& error) {
    return std::string("Error: ") + error.what();
  }
}

// "jpg" and "jpeg" change only the type that is named; the bytes are a PNG file all the same. This is
// intended.
std::string_view BarcodeBase::MimeType() const {
  return m_format == "jpg" || m_format == "jpeg" ? "image/jpeg" : "image/png";
}

const std::string& BarcodeBase::GetSvg() const {
  if (!IsSvgOutput()) {
    throw std::runtime_error("GetSvg() requires SVG output mode. Use constructor with \"svg\" parameter.");
  }
  return GetSvgDocument();
}

}  // namespace barcode
