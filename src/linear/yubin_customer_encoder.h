#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "base/four_state.h"

namespace barcode {

inline constexpr std::size_t kYubinBars = 67;

struct FourStateSymbol {
  std::vector<FourState> bars;  // start, twenty codes, check character, stop
  int checkValue = 0;           // 0 to 18
};

// The customer barcode of the Japanese postal service. Encodes any text: letters count as upper case,
// characters that the symbology lacks are dropped, free positions are filled with CC4, and what follows the
// twentieth position is ignored.
FourStateSymbol EncodeYubinCustomer(std::string_view text);

}  // namespace barcode
