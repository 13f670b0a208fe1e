#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace barcode::tool {

// A member of a JSON object, as it is written.
struct JsonMember {
  std::string name;
  std::string_view nameAsWritten;  // in quotes
  std::string_view value;
};

// The members of an object in their order; nothing for a text that is no JSON object.
std::optional<std::vector<JsonMember>> MembersOf(std::string_view json);

// The value as a plain text: of a string its characters, of anything else what is written, of null nothing.
std::string PlainText(std::string_view value);

// A text as a JSON string, in quotes; what is not UTF-8 in it becomes U+FFFD.
std::string JsonString(std::string_view text);

}  // namespace barcode::tool
