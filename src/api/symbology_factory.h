#pragma once

#include <memory>

#include "core/barcode_base.h"

namespace barcode {

// A new symbology object of one of the numbers of barcode_create (enum BarcodeSymbology), with the output
// format "png"; null for any number that stands for none.
std::unique_ptr<BarcodeBase> CreateSymbology(int type);

}  // namespace barcode
