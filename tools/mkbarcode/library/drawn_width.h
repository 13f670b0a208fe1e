#pragma once

#include <optional>
#include <string_view>

// How wide the library has drawn a symbol, in pixels: it returns a picture of the box whether the symbol fits
// it or not.
namespace barcode::tool {

// From what it prints of a linear symbol in a picture; nothing where it prints no width.
std::optional<double> PrintedWidth(std::string_view diagnostics);

// From its document: where the rightmost bar or module ends, 0 without any.
double WidthOfDocument(std::string_view svg);

}  // namespace barcode::tool
