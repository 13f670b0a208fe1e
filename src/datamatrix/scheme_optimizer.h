#pragma once

#include <string_view>
#include <vector>

#include "datamatrix/encodation.h"
#include "datamatrix/messages.h"

namespace barcode {

// A stretch text[begin, end) encoded in one scheme.
struct SchemeRun {
  EncodationScheme scheme;
  std::size_t begin;
  std::size_t end;

  bool operator==(const SchemeRun&) const = default;
};

// The scheme of every byte of a text: runs without gaps, neighbours of different schemes.
using SchemePlan = std::vector<SchemeRun>;

// The whole text in one scheme: one plan, or none when the scheme cannot hold the text.
std::vector<SchemePlan> FixedPlan(std::string_view text, EncodationScheme scheme, EncoderMessages& messages);

// Six channels run side by side, one per scheme; each keeps the shortest way to end in its scheme after every
// byte. The plans of the channels that took the whole text, in the order of the schemes they end in.
std::vector<SchemePlan> OptimizePlans(std::string_view text, EncoderMessages& messages);

}  // namespace barcode
