#pragma once

#include <array>
#include <utility>
#include <vector>

#include "barcode.h"

namespace barcode::test {

// The numbers of every symbology that the library makes: from 0 up to the first that it refuses.
inline std::vector<int> EverySymbology() {
  std::vector<int> types;
  for (int type = 0;; ++type) {
    const BarcodeHandle handle = barcode_create(type);
    if (handle == nullptr) {
      return types;
    }
    barcode_destroy(handle);
    types.push_back(type);
  }
}

constexpr bool IsTwoDimensional(int type) {
  return type == BARCODE_QR || type == BARCODE_DATAMATRIX || type == BARCODE_PDF417;
}

// A text that the symbology accepts in every one of its forms; null when none is listed here, which the tests
// of every symbology take for a failure: a new symbology gets its line.
inline const char* ValidText(int type) {
  static constexpr auto kTexts = std::to_array<std::pair<BarcodeSymbology, const char*>>({
      {BARCODE_CODE39, "ABC"},
      {BARCODE_CODE93, "ABC"},
      {BARCODE_CODE128, "ABC"},
      {BARCODE_GS1_128, "{FNC1}0104912345678904"},
      {BARCODE_NW7, "12345"},
      {BARCODE_MATRIX_2OF5, "12345"},
      {BARCODE_NEC_2OF5, "12345"},
      {BARCODE_JAN8, "4901234"},
      {BARCODE_JAN13, "490123456789"},
      {BARCODE_UPC_A, "01234567890"},
      {BARCODE_UPC_E, "123456"},
      {BARCODE_ITF, "123456"},
      {BARCODE_GS1_DATABAR_14, "2001234567890"},
      {BARCODE_GS1_DATABAR_LIMITED, "0012345678901"},
      {BARCODE_GS1_DATABAR_EXPANDED, "{AI}0190012345678908"},
      {BARCODE_YUBIN_CUSTOMER, "1234567"},
      {BARCODE_QR, "HELLO"},
      {BARCODE_DATAMATRIX, "HELLO"},
      {BARCODE_PDF417, "HELLO"},
  });
  for (const auto& [symbology, text] : kTexts) {
    if (symbology == type) {
      return text;
    }
  }
  return nullptr;
}

}  // namespace barcode::test
