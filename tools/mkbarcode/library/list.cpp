#include "mkbarcode/library/list.h"

#include <algorithm>
#include <string_view>

#include "mkbarcode/library/types.h"

namespace barcode::tool {
namespace {

std::string Padded(std::string_view text, std::size_t width) {
  std::string padded(text);
  padded.resize(std::max(width, text.size()) + 2, ' ');
  return padded;
}

}  // namespace

std::string ListText() {
  std::size_t nameWidth = 0;
  std::size_t titleWidth = 0;
  for (const TypeInfo& type : AllTypes()) {
    nameWidth = std::max(nameWidth, type.name.size());
    titleWidth = std::max(titleWidth, type.title.size());
  }
  std::string text;
  for (const TypeInfo& type : AllTypes()) {
    if (!IsOffered(type)) {
      continue;
    }
    std::string line =
        Padded(type.name, nameWidth) + Padded(type.title, titleWidth) + std::string(type.aliases);
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace barcode::tool
