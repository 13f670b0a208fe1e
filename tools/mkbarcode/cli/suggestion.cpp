#include "mkbarcode/cli/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// A row of distances between the beginnings of two words.
using Row = std::vector<std::size_t>;

// Damerau and Levenshtein's, every letter being changed once at most.
std::size_t Distance(std::string_view a, std::string_view b) {
  Row beforeLast(b.size() + 1);
  Row last(b.size() + 1);
  Row row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) {
    last[j] = j;
  }
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
      }
    }
    std::swap(beforeLast, last);
    std::swap(last, row);
  }
  return last[b.size()];
}

std::string LowerLetters(std::string_view word) {
  std::string lower(word);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return lower;
}

std::optional<std::string> OnlyOneWith(std::string_view beginning, std::span<const std::string> candidates) {
  constexpr std::size_t kFewest = 4;
  const auto begins = [beginning](const std::string& word) { return word.starts_with(beginning); };
  if (beginning.size() < kFewest || std::ranges::count_if(candidates, begins) != 1) {
    return std::nullopt;
  }
  return *std::ranges::find_if(candidates, begins);
}

}  // namespace

std::optional<std::string> Nearest(std::string_view word, std::span<const std::string> candidates) {
  const std::string typed = LowerLetters(word);
  // A third of the letters may be wrong.
  constexpr std::size_t kLettersForAnError = 3;
  std::size_t most = (std::max<std::size_t>(typed.size(), kLettersForAnError)) / kLettersForAnError;
  std::optional<std::string> nearest;
  for (const std::string& candidate : candidates) {
    const std::size_t distance = Distance(typed, LowerLetters(candidate));
    if (distance < most || (distance == most && !nearest)) {
      most = distance;
      nearest = candidate;
    }
  }
  return nearest ? nearest : OnlyOneWith(typed, candidates);
}

std::string DidYouMean(std::string_view word, std::span<const std::string> candidates) {
  const std::optional<std::string> nearest = Nearest(word, candidates);
  return nearest ? Concat({"; did you mean \"", *nearest, "\"?"}) : ".";
}

}  // namespace barcode::tool
