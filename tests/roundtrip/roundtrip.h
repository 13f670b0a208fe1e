#pragma once

#include <functional>
#include <optional>
#include <string>

#include "support/barcode_object.h"
#include "support/image.h"
#include "support/random_text.h"
#include "support/readers.h"

namespace barcode::test {

// Modules of light margin around a symbol: more than any symbology asks for.
inline constexpr int kQuietModules = 12;

// A symbol drawn through the shared library as a reader would get it: PNG decoded, in a white quiet zone.
// draw: draws into the object; returns what the exported function returned. moduleSize: pixels per module.
std::optional<GreyImage> DrawnSymbol(int type, int moduleSize, const std::function<int(BarcodeHandle)>& draw);

// The plain case: barcode_draw_1d without text under the bars, `moduleSize` pixels a module, in a box wide
// enough for `modules` modules.
std::optional<GreyImage> DrawnLinear(int type, const std::string& text, int modules, int moduleSize = 2);

// The same for symbols whose number of modules depends on the text: the box is as wide as the bars. prepare
// sets the object's options.
std::optional<GreyImage> DrawnToFit(
    int type, const std::string& text, int moduleSize,
    const std::function<void(BarcodeHandle)>& prepare = [](BarcodeHandle) {});

}  // namespace barcode::test
