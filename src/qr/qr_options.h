#pragma once

#include <cstdint>

#include "base/keywords.h"

namespace barcode {

// Error-correction levels, in the order of the capacity that they leave.
enum class QrLevel : std::uint8_t { kL, kM, kQ, kH };

enum class QrMode : std::uint8_t { kNumeric, kByte };

struct QrOptions {
  QrLevel level = QrLevel::kM;
  int minVersion = 0;  // at most 40; a text that needs a larger version gets it
  QrMode mode = QrMode::kByte;
};

inline constexpr Keywords<QrLevel, 4> kQrLevelKeywords = {
    {{"L", QrLevel::kL}, {"M", QrLevel::kM}, {"Q", QrLevel::kQ}, {"H", QrLevel::kH}}};

// The text is never analysed: what is not declared numeric is encoded as bytes, whatever it consists of.
inline constexpr Keywords<QrMode, 5> kQrModeKeywords = {{{"AUTO", QrMode::kByte},
                                                         {"BYTE", QrMode::kByte},
                                                         {"NUMERIC", QrMode::kNumeric},
                                                         {"ALPHANUMERIC", QrMode::kByte},
                                                         {"KANJI", QrMode::kByte}}};

}  // namespace barcode
