#pragma once

#include <string_view>

#include "base/module_matrix.h"
#include "qr/qr_options.h"

namespace barcode {

struct QrSymbol {
  ModuleMatrix matrix;  // empty when the text is empty
  int version = 0;      // 1 to 40, the one in use; 0 when the text is empty
  QrLevel level = QrLevel::kM;
  int mask = 0;  // 0 to 7
};

// Encodes the bytes of the text as a QR Code (ISO/IEC 18004, Model 2) of one segment. In numeric mode the
// characters are not checked: each counts as its code minus that of "0". Throws std::runtime_error when the
// text is too long for version 40, and std::invalid_argument when a version above 40 is asked for.
QrSymbol EncodeQr(std::string_view text, const QrOptions& options);

}  // namespace barcode
