// ZXing's text() is bytes (UTF-8) instead of wide characters.
#define ZX_USE_UTF8 1

#include <ZXing/ReadBarcode.h>

#include "support/readers.h"

namespace barcode::test {

std::optional<Reading> ReadWithZxing(const GreyImage& image, const std::string& formats, Turns turns) {
  ZXing::DecodeHints hints;
  hints.setTryHarder(true);
  hints.setTryRotate(turns == Turns::kAll);
  hints.setReturnCodabarStartEnd(true);
  if (!formats.empty()) {
    hints.setFormats(ZXing::BarcodeFormatsFromString(formats));
  }
  const ZXing::ImageView view(image.pixels.data(), image.width, image.height, ZXing::ImageFormat::Lum);
  const ZXing::Result result = ZXing::ReadBarcode(view, hints);
  if (!result.isValid()) {
    return std::nullopt;
  }
  const ZXing::ByteArray& bytes = result.bytes();
  return Reading{ZXing::ToString(result.format()), std::string(bytes.begin(), bytes.end())};
}

}  // namespace barcode::test
