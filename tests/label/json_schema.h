#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace barcode::test {

// Whether a value is valid under a JSON Schema (draft 2020-12), of which the keywords are known that the
// schema of requests uses; any other throws std::invalid_argument.
bool IsValid(const nlohmann::json& schema, const nlohmann::json& value);

}  // namespace barcode::test
