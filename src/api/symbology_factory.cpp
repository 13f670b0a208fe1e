#include "api/symbology_factory.h"

#include <string_view>

#include "barcode.h"
#include "datamatrix/datamatrix.h"
#include "linear/code39.h"
#include "qr/qr.h"

namespace barcode {
namespace {

constexpr std::string_view kDefaultFormat = "png";

template <class Symbology>
std::unique_ptr<BarcodeBase> Make() {
  return std::make_unique<Symbology>(kDefaultFormat);
}

}  // namespace

std::unique_ptr<BarcodeBase> CreateSymbology(int type) {
  switch (type) {
    case BARCODE_CODE39:
      return Make<Code39>();
    case BARCODE_QR:
      return Make<QR>();
    case BARCODE_DATAMATRIX:
      return Make<DataMatrix>();
    default:
      return nullptr;
  }
}

}  // namespace barcode
