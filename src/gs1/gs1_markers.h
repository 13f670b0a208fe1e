#pragma once

#include <string_view>

namespace barcode {

// What users write into the texts of GS1 symbols. "{FNC1}" stands for the FNC1 character; "{AI}" encodes
// nothing and says that an application identifier (AI) begins.
inline constexpr std::string_view kFnc1Marker = "{FNC1}";
inline constexpr std::string_view kAiMarker = "{AI}";

// FNC1 between the fields of an element string.
inline constexpr char kGs1Separator = '\x1D';

}  // namespace barcode
