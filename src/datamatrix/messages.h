#pragma once

#include <string_view>
#include <vector>

namespace barcode {

// Messages of the Data Matrix encoder for standard output, in order, each with its line break. The encoder
// itself writes to no stream.
using EncoderMessages = std::vector<std::string_view>;

}  // namespace barcode
