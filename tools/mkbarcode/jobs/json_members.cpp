#include "mkbarcode/jobs/json_members.h"

#include <cstddef>
#include <nlohmann/json.hpp>

#include "label/json_writer.h"
#include "label/text_writer.h"

namespace barcode::tool {
namespace {

constexpr std::string_view kSpace = " \t\r\n";

// Walks along a text that is known to be JSON.
class MemberWalk {
 public:
  explicit MemberWalk(std::string_view json) : m_json(json) {}

  std::vector<JsonMember> Members() {
    std::vector<JsonMember> members;
    SkipSpace();
    ++m_position;  // the brace
    SkipSpace();
    while (m_json[m_position] != '}') {
      const std::string_view name = Value();
      SkipSpace();
      ++m_position;  // the colon
      SkipSpace();
      members.push_back({nlohmann::json::parse(name).get<std::string>(), name, Value()});
      SkipSpace();
      if (m_json[m_position] == ',') {
        ++m_position;
        SkipSpace();
      }
    }
    return members;
  }

 private:
  void SkipSpace() { m_position = m_json.find_first_not_of(kSpace, m_position); }

  // The value here, up to what ends it.
  std::string_view Value() {
    const std::size_t start = m_position;
    int depth = 0;
    while (depth > 0 || !IsAtDelimiter()) {
      const char character = m_json[m_position];
      if (character == '"') {
        SkipString();
        continue;
      }
      depth += character == '{' || character == '[' ? 1 : character == '}' || character == ']' ? -1 : 0;
      ++m_position;
    }
    return m_json.substr(start, m_position - start);
  }

  bool IsAtDelimiter() const {
    const char character = m_json[m_position];
    return character == ',' || character == ':' || character == '}' ||
           kSpace.find(character) != std::string_view::npos;
  }

  void SkipString() {
    ++m_position;
    while (m_json[m_position] != '"') {
      m_position += m_json[m_position] == '\\' ? 2 : 1;
    }
    ++m_position;
  }

  std::string_view m_json;
  std::size_t m_position = 0;
};

}  // namespace

std::optional<std::vector<JsonMember>> MembersOf(std::string_view json) {
  const std::size_t start = json.find_first_not_of(kSpace);
  const bool isObject = start != std::string_view::npos && json[start] == '{' &&
                        json.find('\0') == std::string_view::npos && nlohmann::json::accept(json);
  return isObject ? std::optional(MemberWalk(json).Members()) : std::nullopt;
}

std::string PlainText(std::string_view value) {
  if (value == "null") {
    return "";
  }
  return value.starts_with('"') ? nlohmann::json::parse(value).get<std::string>() : std::string(value);
}

std::string JsonString(std::string_view text) {
  label::TextWriter writer(text.size() + 2);
  label::AddJsonString(writer, text);
  return writer.Take();
}

}  // namespace barcode::tool
