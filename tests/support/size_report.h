#pragma once

#include <string>

namespace barcode::test {

// The three lines that a raster draw of a linear symbology prints. drawn: the width of the symbol as it is
// printed, in a box of width x height that has its canvas to itself.
inline std::string SizeReport(int width, int height, const std::string& drawn) {
  const std::string size = "width=" + std::to_string(width) + ", height=" + std::to_string(height) + "\n";
  return "指定サイズ: " + size + "実際の描画サイズ: width=" + drawn + "\nサーフェスサイズ: " + size;
}

}  // namespace barcode::test
