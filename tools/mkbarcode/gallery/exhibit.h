#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "mkbarcode/library/draw.h"

namespace barcode::tool {

// What the functions of barcode.h drew.
struct LibraryPicture {
  std::string name;  // of the PNG file without directory
  DrawRequest request;
  std::size_t width = 0;
  std::size_t height = 0;
  std::string failure = {};  // empty when it was drawn
};

// A label beside the library's picture of the same.
struct LabelExhibit {
  std::string caption;
  const TypeInfo* type = nullptr;
  std::string name;                // of its files without suffix and directory
  nlohmann::ordered_json request;  // for its SVG
  nlohmann::json report;           // of that
  std::optional<LibraryPicture> library = std::nullopt;
  bool isSamePicture = false;  // the label's without its quiet zone is the library's, pixel for pixel
};

// A picture of the library alone.
struct LibraryExhibit {
  std::string caption;
  LibraryPicture picture;
};

// All of one symbology.
struct TypeExhibits {
  const TypeInfo* type = nullptr;
  std::vector<LabelExhibit> labels = {};
  std::vector<LibraryExhibit> library = {};
};

// Where the files of either kind are, beside the page.
inline constexpr std::string_view kLabelDirectory = "labels";
inline constexpr std::string_view kLibraryDirectory = "library";

}  // namespace barcode::tool
