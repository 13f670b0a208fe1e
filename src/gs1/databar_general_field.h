#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The general-purpose data compaction field of GS1 DataBar Expanded (ISO/IEC 24724).
namespace barcode {

// Bits from the most significant on, as '0' and '1'.
using BitText = std::string;

void AppendBits(BitText& bits, std::uint32_t value, std::size_t count);

// True for the characters that the field can hold: those of the ISO/IEC 646 mode and FNC1 (as kGs1Separator).
bool IsGeneralFieldText(std::string_view text);

enum class GeneralFieldMode : std::uint8_t { kNumeric, kAlphanumeric, kIso646 };

struct GeneralField {
  BitText bits;
  GeneralFieldMode mode = GeneralFieldMode::kNumeric;  // at the end of the text
  char lastDigit = '\0';  // a digit left over in numeric mode; its bits depend on the room in the symbol
};

// The text must satisfy IsGeneralFieldText and not end with FNC1. Stops early when the field has become
// longer than `limit` bits.
GeneralField EncodeGeneralField(std::string_view text, std::size_t limit);

}  // namespace barcode
