#pragma once

#include <string_view>
#include <vector>

#include "base/encoder_lines.h"
#include "base/module_matrix.h"
#include "pdf417/layout.h"
#include "pdf417/options.h"

namespace barcode::pdf417 {

struct Symbol {
  Layout layout;
  std::vector<int> codewords;  // data, padding and error correction, row by row
  // (17 x columns + 69) columns and one row of modules for each row of codewords.
  ModuleMatrix modules;
};

// The line that opens what a draw prints: the options as they were set. stringEncoding: the host's keyword.
void AddProperties(const Options& options, std::string_view stringEncoding, EncoderLines& lines);

// The symbol of a text of any bytes; its codewords and rows are told in `lines`. Throws std::runtime_error
// for an empty text and std::out_of_range for one that is too long; the message is then a line too.
Symbol Encode(std::string_view text, const Options& options, EncoderLines& lines);

}  // namespace barcode::pdf417
