#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace barcode::test {

// Calls visit(text) for every sequence of up to maxLength of the pieces, the empty one included.
template <class Visit>
void ForAllTexts(const std::vector<std::string>& pieces, std::size_t maxLength, Visit visit) {
  std::vector<std::string> texts = {""};
  for (std::size_t length = 0; length <= maxLength; ++length) {
    for (const std::string& text : texts) {
      visit(text);
    }
    std::vector<std::string> longer;
    for (const std::string& text : texts) {
      for (const std::string& piece : pieces) {
        longer.push_back(text + piece);
      }
    }
    texts = std::move(longer);
  }
}

}  // namespace barcode::test
