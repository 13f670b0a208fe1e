#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace barcode::tool {

// The object on one line, with spaces for people: {"type": "qr", "text": "hello"}.
std::string SpacedJson(const nlohmann::ordered_json& object);

}  // namespace barcode::tool
