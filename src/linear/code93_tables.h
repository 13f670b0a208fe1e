#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace barcode {

// The characters of Code 93 by value. '<', '>', '?' and '!' stand for the four shift characters, 43 to 46.
inline constexpr std::string_view kCode93Characters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%<>?!";

// Element widths in modules by value, bar first (AIM USS Code 93, character table).
inline constexpr std::array<std::string_view, 47> kCode93Widths = {
    "131112", "111213", "111312", "111411", "121113", "121212", "121311", "111114", "131211", "141111",
    "211113", "211212", "211311", "221112", "221211", "231111", "112113", "112212", "112311", "122112",
    "132111", "111123", "111222", "111321", "121122", "131121", "212112", "212211", "211122", "211221",
    "221121", "222111", "112122", "112221", "122121", "123111", "121131", "311112", "311211", "321111",
    "112131", "113121", "211131", "121221", "312111", "311121", "122211",
};
inline constexpr std::string_view kCode93Start = "111141";
inline constexpr std::string_view kCode93Stop = "1111411";  // with the termination bar

static_assert(kCode93Characters.size() == kCode93Widths.size());

// Values by byte; -1 for bytes that are not in the set.
inline constexpr std::array<int, 256> kCode93Values = [] {
  std::array<int, 256> values{};
  values.fill(-1);
  for (std::size_t value = 0; value < kCode93Characters.size(); ++value) {
    values[static_cast<unsigned char>(kCode93Characters[value])] = static_cast<int>(value);
  }
  return values;
}();

}  // namespace barcode
