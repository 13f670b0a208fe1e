#pragma once

#include <string_view>

// What the page carries with it, so that it needs nothing from elsewhere.
namespace barcode::tool {

extern const std::string_view kPageStyle;
// The page works without: it adds copying, one choice of language for all, and marks the index.
extern const std::string_view kPageScript;

}  // namespace barcode::tool
