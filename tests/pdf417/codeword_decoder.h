#pragma once

#include <optional>
#include <span>
#include <string>

#include "base/module_matrix.h"

namespace barcode::test {

// What a reader of ISO/IEC 15438 makes of the data codewords of a symbol (length descriptor first, error
// correction left out): the bytes, or nothing when the codewords break a rule. Written from the reader's side
// and shares no table or routine with the encoder.
std::optional<std::string> DecodePDF417Codewords(std::span<const int> data);

// One symbol read back from its modules: the codewords row by row, and what the row indicators say.
struct ReadPDF417Symbol {
  std::vector<int> codewords;
  int columns = 0;
  int rows = 0;
  int errorLevel = 0;
};

// Nothing when a row lacks its start or stop pattern, a symbol character is unknown to the row's cluster, or
// the row indicators disagree.
std::optional<ReadPDF417Symbol> ReadPDF417Modules(const ModuleMatrix& modules);

// True when the codewords, error correction included, are a multiple of the generator polynomial: every power
// 3^1 ... 3^n is a root.
bool HasZeroSyndromes(std::span<const int> codewords, int errorCodewords);

}  // namespace barcode::test
