#pragma once

#include <random>
#include <string>
#include <vector>

#include "datamatrix/schemes.h"

namespace barcode::datamatrix {

// Seeded random texts: stretches of the characters that each scheme packs best, with a few that it does not.
class Corpus {
 public:
  explicit Corpus(unsigned seed) : m_random(seed) {}

  // Any bytes.
  std::string Mixed(std::size_t longest) {
    std::string text;
    const std::size_t size = Size(longest);
    while (text.size() < size) {
      const std::string& alphabet = Alphabets()[Below(Alphabets().size())];
      for (std::size_t run = 1 + Below(10); run > 0 && text.size() < size; --run) {
        text.push_back(Below(20) == 0 ? static_cast<char>(Below(256)) : Pick(alphabet));
      }
    }
    return text;
  }

  // Bytes that the scheme has.
  std::string ForScheme(Scheme scheme, std::size_t longest) {
    if (scheme != Scheme::kX12 && scheme != Scheme::kEdifact) {
      return Mixed(longest);
    }
    std::string text(Size(longest), ' ');
    for (char& c : text) {
      c = scheme == Scheme::kX12 ? Pick("\r*> 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ")
                                 : static_cast<char>(32 + Below(63));
    }
    return text;
  }

  std::size_t Below(std::size_t bound) {
    return static_cast<std::size_t>(m_random() % static_cast<std::mt19937::result_type>(bound));
  }

 private:
  static const std::vector<std::string>& Alphabets() {
    static const std::vector<std::string> kAlphabets = {"0123456789",
                                                        "ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789",
                                                        "abcdefghijklmnopqrstuvwxyz 0123456789",
                                                        "\r*> AB12",
                                                        "AZ09!@#$%^*()-+[]",
                                                        "aA1! \x80\xE9\xC9",
                                                        "Aa",
                                                        "A\xE9\xC9"};
    return kAlphabets;
  }

  std::size_t Size(std::size_t longest) { return 1 + Below(Below(2) == 0 ? longest / 4 + 1 : longest); }
  char Pick(const std::string& alphabet) { return alphabet[Below(alphabet.size())]; }

  std::mt19937 m_random;
};

}  // namespace barcode::datamatrix
