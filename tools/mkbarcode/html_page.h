#pragma once

#include <span>
#include <string>
#include <string_view>

#include "mkbarcode/library/types.h"

namespace barcode::tool {

// What a page says around its samples, as HTML.
struct PageFrame {
  std::string_view title;
  std::string_view introduction;
  std::string_view footer;
  std::string_view bodyClass;
};

// One sample of a page. Those of one type stand together.
struct PageEntry {
  const TypeInfo* type = nullptr;
  std::string article;  // HTML
};

// The HTML page, complete in itself but for the images: a section for each type, and links to them.
std::string HtmlPage(const PageFrame& frame, std::span<const PageEntry> entries);

// An article of the page.
std::string HtmlArticle(std::string_view caption, std::string_view content);

// A text of the program's kind, with its line breaks.
std::string HtmlCode(std::string_view kind, std::string_view text);

}  // namespace barcode::tool
