#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/encoder_lines.h"
#include "datamatrix/schemes.h"

namespace barcode::datamatrix {

// A stretch text[begin, end) encoded in one scheme.
struct SchemeRun {
  Scheme scheme;
  std::size_t begin;
  std::size_t end;

  bool operator==(const SchemeRun&) const = default;
};

// The scheme of every byte of a text: runs without gaps, neighbours of different schemes.
using SchemePlan = std::vector<SchemeRun>;

// The whole text in one scheme; nothing when the scheme cannot hold the text.
std::optional<SchemePlan> FixedPlan(std::string_view text, Scheme scheme, EncoderLines& lines);

// Six channels run side by side, one per scheme; each keeps the shortest way to end in its scheme after every
// byte. The plans of the channels that took the whole text, in the order of the schemes they end in.
std::vector<SchemePlan> OptimizePlans(std::string_view text, EncoderLines& lines);

}  // namespace barcode::datamatrix
