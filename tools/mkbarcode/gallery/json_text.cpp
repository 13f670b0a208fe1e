#include "mkbarcode/gallery/json_text.h"

#include "mkbarcode/quoting.h"

namespace barcode::tool {

std::string SpacedJson(const nlohmann::ordered_json& object) {
  std::string members;
  for (const auto& [name, value] : object.items()) {
    members += Concat({members.empty() ? "" : ", ", nlohmann::ordered_json(name).dump(), ": ", value.dump()});
  }
  return Concat({"{", members, "}"});
}

}  // namespace barcode::tool
