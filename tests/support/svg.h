#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace barcode::test {

// The lines of a document that hold elements of a name ("rect", "text"), in order.
inline std::vector<std::string> SvgElements(std::string_view document, std::string_view name) {
  const std::string start = "  <" + std::string(name) + " ";
  std::vector<std::string> elements;
  while (!document.empty()) {
    const std::size_t end = document.find('\n');
    const std::string_view line = document.substr(0, end);
    if (line.substr(0, start.size()) == start) {
      elements.emplace_back(line);
    }
    document.remove_prefix(end == std::string_view::npos ? document.size() : end + 1);
  }
  return elements;
}

// The value of an attribute of an element; "none" when it is absent.
inline std::string Attribute(const std::string& element, const std::string& name) {
  const std::size_t at = element.find(' ' + name + "=\"");
  if (at == std::string::npos) {
    return "none";
  }
  const std::size_t begin = at + name.size() + 3;
  return element.substr(begin, element.find('"', begin) - begin);
}

// The text of a text element.
inline std::string Content(const std::string& element) {
  const std::size_t begin = element.find('>') + 1;
  return element.substr(begin, element.find('<', begin) - begin);
}

// The texts of some elements, one behind the other.
inline std::string Contents(const std::vector<std::string>& elements) {
  std::string text;
  for (const std::string& element : elements) {
    text += Content(element);
  }
  return text;
}

// The rectangles of a document without the first, which is the background.
inline std::vector<std::string> BarElements(std::string_view document) {
  std::vector<std::string> rects = SvgElements(document, "rect");
  if (!rects.empty()) {
    rects.erase(rects.begin());
  }
  return rects;
}

}  // namespace barcode::test
