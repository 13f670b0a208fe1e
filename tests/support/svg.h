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

}  // namespace barcode::test
