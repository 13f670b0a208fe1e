#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "label_proof/made_label.h"
#include "support/random_text.h"

namespace barcode::test {

// In the order of the library's numbers.
enum class Symbology : std::uint8_t {
  kCode39,
  kCode93,
  kCode128,
  kGs1_128,
  kNw7,
  kMatrix2of5,
  kNec2of5,
  kJan8,
  kJan13,
  kUpcA,
  kUpcE,
  kItf,
  kDataBar14,
  kDataBarLimited,
  kDataBarExpanded,
  kYubinCustomer,
  kQr,
  kDataMatrix,
  kPdf417,
};

enum class Family : std::uint8_t { kLinear, kRetail, kFourState, kMatrix };

struct SymbologyInfo {
  Symbology symbology;
  std::string_view name;
  std::string_view aliases;  // further names, with a comma between them
  Family family;
};

std::span<const SymbologyInfo> EverySymbologyInfo();

// A text, what else of a request belongs to the symbology, and what the symbol has to hold by its standard:
// computed here, apart from the library.
struct Content {
  std::string text;      // bytes
  bool asBytes = false;  // to be given as text_base64
  Json options = Json::object();
  std::string data;            // what a reader finds; 0x1D where the standard wants FNC1 between elements
  std::string elements;        // GS1 element strings: the same with parentheses, "(01)04912345678904(10)A"
  std::string shown;           // the report's text; "" where it is not foretold
  std::optional<int> columns;  // of the symbol, where the options say it
  std::optional<int> rows;
  int roughColumns = 100;  // modules, a guess that keeps pictures at a size that readers are fast with
};

Content RandomContent(Symbology symbology, RandomText& random);

// The GS1 check digit: weights 3 and 1 from the right.
char Gs1CheckDigit(std::string_view digits);

// The 12 digits that an 8-digit UPC-E code stands for.
std::string UpcAOfUpcE(std::string_view code);

}  // namespace barcode::test
