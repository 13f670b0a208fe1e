#include "mkbarcode/type_name.h"

#include <algorithm>
#include <string_view>

#include "mkbarcode/cli/suggestion.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {

const label::TypeInfo& RequireType(const std::string& name, std::vector<std::string> otherWords) {
  if (const label::TypeInfo* const type = label::FindType(name)) {
    return *type;
  }
  std::vector<std::string> names = std::move(otherWords);
  for (const label::TypeInfo& type : label::AllTypes()) {
    names.emplace_back(type.name);
    std::string_view rest = type.aliases;
    while (!rest.empty()) {
      const std::string_view alias = rest.substr(0, rest.find(' '));
      names.emplace_back(alias);
      rest.remove_prefix(std::min(rest.size(), alias.size() + 1));
    }
  }
  throw UsageError(Concat({"There is no type \"", name, "\"", DidYouMean(name, names),
                           " \"mkbarcode --list\" names all types."}));
}

void CheckDefaultType(const label::Request& defaults) {
  if (defaults.type) {
    RequireType(*defaults.type);
  }
}

}  // namespace barcode::tool
