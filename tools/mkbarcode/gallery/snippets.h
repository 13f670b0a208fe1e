#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "mkbarcode/library/draw.h"

namespace barcode::tool {

enum class Language : std::uint8_t { kShell, kPython, kNode, kC };

// Code that writes a picture of the gallery into a file, whole, as it is to be copied.
struct Snippet {
  Language language;
  std::string code;
};

// How a label is made: with mkbarcode, with the packages, with barcode_label.h. The request has its "format".
std::vector<Snippet> LabelSnippets(const nlohmann::ordered_json& request, std::string_view file);

// How a picture is drawn through the functions of barcode.h, as a PNG file.
std::vector<Snippet> LibrarySnippets(const DrawRequest& request, std::string_view file);

// For people: "Shell". For the page's code: "shell".
std::string_view TitleOf(Language language);
std::string_view WordOf(Language language);

}  // namespace barcode::tool
