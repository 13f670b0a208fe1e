#pragma once

#include <string_view>

#include "barcode.h"

namespace barcode::same {

inline constexpr int kTypes = BARCODE_PDF417 + 1;

inline constexpr std::string_view kTypeNames[kTypes] = {
    "code39",      "code93",   "code128",    "gs1-128",         "nw7",
    "matrix-2of5", "nec-2of5", "jan8",       "jan13",           "upc-a",
    "upc-e",       "itf",      "databar-14", "databar-limited", "databar-expanded",
    "yubin",       "qr",       "datamatrix", "pdf417"};

constexpr bool IsMatrix(int type) {
  return type >= BARCODE_QR;
}

}  // namespace barcode::same
