#include "reading_tables/several_symbols.h"

#include <ZXing/ReadBarcode.h>

namespace barcode::test {

std::size_t ReadSeveralWithZxing(const GreyImage& image) {
  ZXing::DecodeHints hints;
  hints.setTryHarder(true);
  const ZXing::ImageView view(image.pixels.data(), image.width, image.height, ZXing::ImageFormat::Lum);
  return ZXing::ReadBarcodes(view, hints).size();
}

}  // namespace barcode::test
