#include "mkbarcode/single/list.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "label/types.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using label::Readers;
using label::TypeInfo;

constexpr std::array<std::pair<std::string_view, std::string_view Readers::*>, 3> kReaders = {
    {{"ZXing", &Readers::zxing}, {"ZBar", &Readers::zbar}, {"zxing-wasm", &Readers::zxingWasm}}};

// A line for all readers that the table says the same of: "ZXing, zxing-wasm: yes".
std::vector<std::string> LinesOfReaders(const Readers& readers) {
  std::vector<std::pair<std::string, std::string_view>> groups;
  for (const auto& [name, member] : kReaders) {
    const std::string_view ability = readers.*member;
    const auto group = std::ranges::find(groups, ability, &std::pair<std::string, std::string_view>::second);
    if (group == groups.end()) {
      groups.emplace_back(name, ability);
    } else {
      group->first += Concat({", ", name});
    }
  }
  std::vector<std::string> lines;
  lines.reserve(groups.size());
  for (const auto& [names, ability] : groups) {
    lines.push_back(Concat({names, ": ", ability}));
  }
  return lines;
}

std::size_t WidestName() {
  std::size_t width = 0;
  for (const TypeInfo& type : label::AllTypes()) {
    width = std::max(width, type.name.size());
  }
  return width;
}

}  // namespace

std::string ListOfLabels() {
  const std::size_t column = WidestName() + 2;
  const std::string indent(column, ' ');
  std::string text = "Types with their aliases, and what readers read of them:\n";
  for (const TypeInfo& type : label::AllTypes()) {
    std::string name(type.name);
    name.resize(column, ' ');
    text += Concat({"\n", name, type.title, "\n"});
    if (!type.aliases.empty()) {
      text += Concat({indent, "also ", type.aliases, "\n"});
    }
    for (const std::string& line : LinesOfReaders(type.readers)) {
      text += Concat({indent, line, "\n"});
    }
  }
  return text;
}

}  // namespace barcode::tool
