#pragma once

#include <cstdint>
#include <vector>

namespace barcode {

// Module pattern of a linear symbol: the widths, in modules, of its elements. Elements alternate bar, space,
// bar, ...; the first is always a bar.
using RunVector = std::vector<std::uint32_t>;

}  // namespace barcode
