#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "barcode.h"

namespace barcode::tool {

// One per option setter of barcode.h, barcode_set_output_format excepted (that one is --format).
enum class OptionId : std::uint8_t {
  kForegroundColor,
  kBackgroundColor,
  kFitWidth,
  kPxAdjustBlack,
  kPxAdjustWhite,
  kShowText,
  kTextEvenSpacing,
  kTextFontScale,
  kTextGap,
  kShowStartStop,
  kExtendedGuard,
  kCodeMode,
  kStringEncoding,
  kVersion,
  kErrorCorrectionLevel,
  kEncodeMode,
  kCodeSize,
  kEncodeScheme,
  kColumns,
  kRows,
  kErrorLevel,
  kAspectRatio,
  kYHeight,
  kSymbolType14,
  kSymbolTypeExp,
  kNoOfColumns,
};

// A set of options, one bit per OptionId.
using OptionSet = std::uint32_t;

constexpr OptionSet SetOf(OptionId id) {
  return OptionSet{1} << static_cast<unsigned>(id);
}

enum class Dimension : std::uint8_t { kLinear, kTwoDimensional };

// All the tool knows of one symbology.
struct TypeInfo {
  BarcodeSymbology number;
  std::string_view constant;  // the enumerator of barcode.h
  std::string_view name;      // the name the tool prints
  std::string_view title;
  std::string_view aliases;  // further names, separated by spaces
  Dimension dimension;
  OptionSet options;  // the options it serves

  bool Serves(OptionId id) const { return (options & SetOf(id)) != 0; }
  bool IsTwoDimensional() const { return dimension == Dimension::kTwoDimensional; }
};

// Every symbology of barcode.h in the order of its numbers.
std::span<const TypeInfo> AllTypes();

// The type of that name or alias, or null. Case, spaces, '-' and '_' do not matter: "GS1-128" is "gs1_128".
const TypeInfo* FindType(std::string_view name);

const TypeInfo& TypeOf(BarcodeSymbology number);

// Whether the library that the tool runs with makes objects of this type.
bool IsOffered(const TypeInfo& type);

// The names of the types that serve an option, as "jan8, jan13".
std::string NamesOfTypesServing(OptionId id);

}  // namespace barcode::tool
