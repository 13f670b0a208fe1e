#include "core/barcode_base_2d.h"

namespace barcode {

bool BarcodeBase2D::Draw(const std::string& /*text*/, int /*x*/, int /*y*/, std::uint32_t /*width*/,
                         std::uint32_t /*height*/) {
  return false;
}

bool BarcodeBase2D::DrawMatrix(const std::string& /*text*/, int /*x*/, int /*y*/, std::uint32_t /*width*/,
                               std::uint32_t /*height*/) {
  return false;
}

bool BarcodeBase2D::DrawMatrixSquare(const std::string& text, int x, int y, std::uint32_t size) {
  return DrawMatrix(text, x, y, size, size);
}

bool BarcodeBase2D::DrawSquare(const std::string& text, int x, int y, std::uint32_t size) {
  return Draw(text, x, y, size, size);
}

}  // namespace barcode
