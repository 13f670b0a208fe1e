#pragma once

#include <span>
#include <string_view>

#include "label/request.h"

// What is known of each symbology: one table for names, quiet zones, smallest sizes and readers.
namespace barcode::label {

// Quiet zones in modules.
struct QuietZone {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;

  bool operator==(const QuietZone&) const = default;
};

// What an independent reader makes of the type: nothing, some of its forms, all.
struct Readers {
  std::string_view zxing;  // "yes", "no" or what it cannot do, in words
  std::string_view zbar;
  std::string_view zxingWasm;
};

struct TypeInfo {
  Type type;
  std::string_view name;
  std::string_view title;
  std::string_view aliases;  // lower case, without separators, with a space between them
  bool twoDimensional;
  std::string_view standard;  // that the following come from
  QuietZone quietZone;
  int defaultModule;        // dots
  double smallestModuleMm;  // X-dimension that the standard allows; below it, small_module
  double standardHeight;    // modules of the bars; 0: the larger of 30 modules and 15% of the width
  bool anyReader;           // false: no common scanner knows it, no_reader
  Readers readers;
};

// All types, in the order of their numbers.
std::span<const TypeInfo> AllTypes();

const TypeInfo& InfoOf(Type type);

// The type of a name or an alias, upper and lower case, "-", "_" and spaces not distinguished; null for any
// other text.
const TypeInfo* FindType(std::string_view name);

}  // namespace barcode::label
