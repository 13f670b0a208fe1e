#include "core/barcode_base.h"

#include <algorithm>
#include <bit>
#include <exception>
#include <span>
#include <stdexcept>

#include "base/base64.h"
#include "core/diagnostics.h"
#include "core/png_writer.h"

namespace barcode {
namespace {

constexpr int kBitsPerPixel = 32;
constexpr Uint32 kPixelFormat = SDL_PIXELFORMAT_ABGR8888;  // bytes R, G, B, A in memory

// A transparent image of 1 x 1 pixels.
constexpr std::string_view kFallbackUri =
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVQI12P4//8/AAX+Av7czFnnAAAAAElFTkSuQmCC";

// Pixels above this many bytes are refused before anything is allocated.
constexpr std::uint64_t kMaxSurfaceBytes = 0x7FFF'FFFF;

SurfacePtr CreateSurface(std::uint32_t width, std::uint32_t height) {
  const bool isNegative = static_cast<int>(width) < 0 || static_cast<int>(height) < 0;
  if (!isNegative && std::uint64_t{width} * height > kMaxSurfaceBytes / (kBitsPerPixel / 8)) {
    SDL_OutOfMemory();
    return nullptr;
  }
  // SDL takes ints: sizes above their range arrive as negative numbers, which it refuses in its own words.
  return SurfacePtr(SDL_CreateRGBSurfaceWithFormat(0, static_cast<int>(width), static_cast<int>(height),
                                                   kBitsPerPixel, kPixelFormat));
}

// Writes the pixels directly: many times faster than clearing through the renderer. The renderer's queue must
// be empty.
void FillSurface(SDL_Surface& surface, const Colour& colour) {
  const auto pixel = std::bit_cast<std::uint32_t>(colour);
  auto* row = static_cast<std::uint8_t*>(surface.pixels);
  for (int y = 0; y < surface.h; ++y, row += surface.pitch) {
    const std::span pixels(reinterpret_cast<std::uint32_t*>(row), static_cast<std::size_t>(surface.w));
    std::fill(pixels.begin(), pixels.end(), pixel);
  }
}

}  // namespace

BarcodeBase::~BarcodeBase() {
  ReleaseCanvas();
}

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
  if (!IsRasterFormat()) {
    return true;
  }

  ReleaseCanvas();
  m_surface = CreateSurface(width, height);
  if (m_surface == nullptr) {
    ErrorLine("サーフェス作成に失敗: ", SDL_GetError());
    return false;
  }
  m_canvas.reset(SDL_CreateSoftwareRenderer(m_surface.get()));
  if (m_canvas == nullptr) {
    ErrorLine("レンダラー作成に失敗: ", SDL_GetError());
    m_surface.reset();
    return false;
  }
  // Bars and modules are stored as they are; only text is blended.
  SDL_SetRenderDrawBlendMode(m_canvas.get(), SDL_BLENDMODE_NONE);
  FillSurface(*m_surface, m_backColor);
  return true;
}

void BarcodeBase::FillBackground() {
  if (m_surface == nullptr) {
    return;
  }
  PresentCanvas();
  FillSurface(*m_surface, m_backColor);
}

void BarcodeBase::PresentCanvas() {
  if (m_canvas != nullptr) {
    SDL_RenderPresent(m_canvas.get());
  }
}

bool BarcodeBase::Reported(std::string_view tag, const std::function<bool()>& draw) {
  try {
    return draw();
  } catch (const std::exception& error) {
    ErrorLine(tag, error.what());
    return false;
  }
}

void BarcodeBase::ReleaseCanvas() {
  m_canvas.reset();
  m_surface.reset();
}

std::vector<std::uint8_t> BarcodeBase::GetImageData() {
  PresentCanvas();
  return SaveSurfaceToMemory(m_surface.get());
}

std::string BarcodeBase::GetImageBase64() {
  try {
    if (IsSvgOutput()) {
      throw std::runtime_error("GetImageBase64() is not available in SVG mode. Use GetSvg() instead.");
    }
    const std::vector<std::uint8_t> png = GetImageData();
    ReleaseCanvas();
    if (png.empty()) {
      return std::string(kFallbackUri);
    }
    std::string uri = "data:";
    uri.append(MimeType()).append(";base64,");
    AppendBase64(uri, png);
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
