#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace barcode::tool {

// The candidate that was probably meant by a word that is none of them: the one that differs in the fewest
// letters (left out, added, replaced, two exchanged), or else the only one that begins with the word. Nothing
// when none is near.
std::optional<std::string> Nearest(std::string_view word, std::span<const std::string> candidates);

// '; did you mean "X"?' or '.', as the end of a message.
std::string DidYouMean(std::string_view word, std::span<const std::string> candidates);

}  // namespace barcode::tool
