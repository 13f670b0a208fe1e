#pragma once

#include <array>
#include <string_view>

#include "barcode.h"

namespace barcode::same {

// A symbology as the recorder knows it; the rows stand in the order of the numbers.
struct RecordedType {
  std::string_view name;
  bool isMatrix = false;  // two-dimensional
};

inline constexpr auto kRecordedTypes = std::to_array<RecordedType>({
    {"code39"},
    {"code93"},
    {"code128"},
    {"gs1-128"},
    {"nw7"},
    {"matrix-2of5"},
    {"nec-2of5"},
    {"jan8"},
    {"jan13"},
    {"upc-a"},
    {"upc-e"},
    {"itf"},
    {"databar-14"},
    {"databar-limited"},
    {"databar-expanded"},
    {"yubin"},
    {"qr", true},
    {"datamatrix", true},
    {"pdf417", true},
});

inline constexpr int kTypes = static_cast<int>(kRecordedTypes.size());

constexpr std::string_view TypeName(int type) {
  return kRecordedTypes[static_cast<std::size_t>(type)].name;
}

constexpr bool IsMatrix(int type) {
  return kRecordedTypes[static_cast<std::size_t>(type)].isMatrix;
}

}  // namespace barcode::same
