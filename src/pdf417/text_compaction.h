#pragma once

#include <string_view>
#include <vector>

namespace barcode::pdf417 {

// Appends a text in Text Compaction of ISO/IEC 15438, beginning in the upper-case sub-mode, in the fewest
// codewords that the sub-mode latches and shifts allow. A byte that Text Compaction cannot express follows a
// shift to Byte Compaction (913).
void AppendText(std::vector<int>& codewords, std::string_view text);

}  // namespace barcode::pdf417
