#include "api/symbology_factory.h"

#include <string_view>

#include "barcode.h"
#include "datamatrix/datamatrix.h"
#include "gs1/gs1_128.h"
#include "gs1/gs1_databar_14.h"
#include "gs1/gs1_databar_expanded.h"
#include "gs1/gs1_databar_limited.h"
#include "linear/code128.h"
#include "linear/code39.h"
#include "linear/code93.h"
#include "linear/itf.h"
#include "linear/jan13.h"
#include "linear/jan8.h"
#include "linear/matrix_2of5.h"
#include "linear/nec_2of5.h"
#include "linear/nw7.h"
#include "linear/upc_a.h"
#include "linear/upc_e.h"
#include "linear/yubin_customer.h"
#include "pdf417/pdf417.h"
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
    case BARCODE_CODE93:
      return Make<Code93>();
    case BARCODE_CODE128:
      return Make<Code128>();
    case BARCODE_GS1_128:
      return Make<GS1_128>();
    case BARCODE_NW7:
      return Make<NW7>();
    case BARCODE_MATRIX_2OF5:
      return Make<Matrix2of5>();
    case BARCODE_NEC_2OF5:
      return Make<NEC2of5>();
    case BARCODE_JAN8:
      return Make<Jan8>();
    case BARCODE_JAN13:
      return Make<Jan13>();
    case BARCODE_UPC_A:
      return Make<UpcA>();
    case BARCODE_UPC_E:
      return Make<UpcE>();
    case BARCODE_ITF:
      return Make<ITF>();
    case BARCODE_GS1_DATABAR_14:
      return Make<GS1DataBar14>();
    case BARCODE_GS1_DATABAR_LIMITED:
      return Make<GS1DataBarLimited>();
    case BARCODE_GS1_DATABAR_EXPANDED:
      return Make<GS1DataBarExpanded>();
    case BARCODE_YUBIN_CUSTOMER:
      return Make<YubinCustomer>();
    case BARCODE_QR:
      return Make<QR>();
    case BARCODE_DATAMATRIX:
      return Make<DataMatrix>();
    case BARCODE_PDF417:
      return Make<PDF417>();
    default:
      return nullptr;
  }
}

}  // namespace barcode
