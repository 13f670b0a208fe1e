#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "label_proof/proof_label.h"
#include "label_proof/reading_rules.h"

namespace barcode::test {

enum class Outcome : std::uint8_t {
  kNotKnown,         // the reader does not know the symbology
  kRead,             // from the picture as it was drawn
  kReadEnlargedAt1,  // a picture of one dot a module, only when each dot was made a square of dots
  kReadEnlarged,     // a picture of more dots a module, the same
  kMisreadAt1,       // as kReadEnlargedAt1, by a reader that reading_rules.cpp says to misread single dots
  kLimit,            // nothing, or something else, for a reason that reading_rules.cpp lists
  kMissing,
  kWrong,
};
inline constexpr std::size_t kOutcomes = 8;

struct TypeCount {
  int drawn = 0;
  int refused = 0;   // or without a picture
  int faulty = 0;    // labels with a fault in report or picture
  int unequal = 0;   // labels that another format shows differently
  int compared = 0;  // with other formats
  std::array<int, 3> formats{};
  int moduleOfOne = 0;
  std::array<std::array<int, kOutcomes>, kReaders> readers{};
  std::array<int, kReaders> ofContent{};  // of kLimit, those for which the text is the reason
  std::map<std::string, int> limits;      // "zbar: wants six digits"
  std::vector<std::string> failures;      // in words, with the request

  int Of(ReaderId reader, Outcome outcome) const {
    return readers[static_cast<std::size_t>(reader)][static_cast<std::size_t>(outcome)];
  }
  void Add(const TypeCount& other);
  // Compares what barcode_label_types() says of the readers with what they read; adds failures.
  void CheckClaims(const SymbologyInfo& info);
  // Whether every label was made, was right and was read by every reader that has to.
  bool Holds() const;
};

// "proof type=code39 drawn=10000 ...".
std::string LineOf(const SymbologyInfo& info, const TypeCount& count);

// Labels first to first + labels - 1 of a type: made, checked and read.
TypeCount ProveLabels(const SymbologyInfo& info, std::uint64_t seed, int first, int labels);

}  // namespace barcode::test
