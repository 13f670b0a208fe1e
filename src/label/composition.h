#pragma once

#include <optional>
#include <string>
#include <vector>

#include "label/drawing.h"
#include "label/error.h"
#include "label/request.h"
#include "label/symbol.h"
#include "label/types.h"

namespace barcode::label {

// A picture of more dots is refused, unless the caller says otherwise.
inline constexpr long long kMaxPixels = 100'000'000;

struct Composition {
  Drawing drawing;
  int module = 0;           // dots
  int columns = 0;          // modules of the symbol without its quiet zone
  int rows = 0;             // 1 for linear symbols
  QuietZone quietZone;      // in modules, as drawn before the turn
  std::string displayText;  // what is written under the symbol; "" when nothing is
  std::vector<Warning> warnings;
};

// The picture of a symbol: its natural size in whole modules or the largest that fits the box that the
// request names, quiet zone, text, turn. Pure. Throws LabelError with kTooSmall, kTooLarge.
Composition Compose(const TypeInfo& type, const Request& request, const Symbol& symbol,
                    long long maxPixels = kMaxPixels);

}  // namespace barcode::label
