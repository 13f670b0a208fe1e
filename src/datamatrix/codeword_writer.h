#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "datamatrix/scheme_optimizer.h"

namespace barcode::datamatrix {

// Turns a plan into codewords for a symbol of known capacity. The end-of-data rules of ISO/IEC 16022 let the
// last scheme go without its unlatch in the last one or two codewords of a symbol, so the same plan may take
// different numbers of codewords in symbols of different capacity.
class CodewordWriter {
 public:
  // The text and its ASCII lengths (see AsciiLengths) must outlive the writer. The plan is not empty.
  CodewordWriter(std::string_view text, const std::vector<std::size_t>& asciiLengths, const SchemePlan& plan);

  // Codewords of the plan in a symbol of that capacity; none when they do not fit. What fits a symbol fits
  // every larger one and every smaller one that has the capacity for as many codewords.
  std::optional<std::size_t> Count(std::size_t capacity) const;

  // The codewords themselves; none when they do not fit.
  std::vector<std::uint8_t> Write(std::size_t capacity) const;

 private:
  // How the last run ends in a symbol of given capacity.
  struct Ending {
    std::size_t count;       // codewords of the whole plan
    std::size_t split;       // the text from here on is in ASCII
    bool unlatch;            // an unlatch stands at the split
    bool openField = false;  // Base 256: the field extends to the end of the symbol
  };

  std::optional<Ending> FindEnding(std::size_t capacity) const;
  std::optional<Ending> FindTripletEnding(std::size_t capacity) const;
  std::optional<Ending> FindEdifactEnding(std::size_t capacity) const;
  std::optional<Ending> FindBase256Ending(std::size_t capacity) const;

  std::string_view m_text;
  const std::vector<std::size_t>& m_asciiLengths;
  SchemeRun m_last;                   // the last run that is not ASCII, or the only run
  std::vector<std::uint8_t> m_start;  // the codewords before its data, its latch included
  std::size_t m_tripletValues = 0;    // values of its bytes, if it is a triplet scheme
  bool m_writable = true;  // false: a Base 256 field before it is too long for its length codewords
};

}  // namespace barcode::datamatrix
