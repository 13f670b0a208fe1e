#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace barcode {

// The words that users type for the values of one option.
template <class Value, std::size_t Size>
using Keywords = std::array<std::pair<std::string_view, Value>, Size>;

// The value of exactly this word, nothing for any other text.
template <class Value, std::size_t Size>
constexpr std::optional<Value> FindKeyword(const Keywords<Value, Size>& keywords, std::string_view word) {
  const auto found = std::find_if(keywords.begin(), keywords.end(),
                                  [word](const auto& keyword) { return keyword.first == word; });
  return found == keywords.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace barcode
