#pragma once

#include <cstdint>

namespace barcode {

// The bars of a four-state symbol: long bars are three thirds high, semi-long bars two, timing bars the
// middle one.
enum class FourState : std::uint8_t { kLong, kUpperSemiLong, kLowerSemiLong, kTiming };

}  // namespace barcode
