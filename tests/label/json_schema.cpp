#include "label/json_schema.h"

#include <regex.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace barcode::test {
namespace {

using nlohmann::json;

bool HasType(const json& value, const std::string& type) {
  if (type == "integer") {
    return value.is_number() && value.get<double>() == std::floor(value.get<double>());
  }
  const std::map<std::string, bool> types = {{"object", value.is_object()},
                                             {"string", value.is_string()},
                                             {"number", value.is_number()},
                                             {"boolean", value.is_boolean()}};
  return types.at(type);
}

bool HasAll(const json& value, const json& names) {
  return std::all_of(names.begin(), names.end(), [&](const json& name) { return value.contains(name); });
}

// pattern: of what POSIX's extended expressions and JSON Schema's have in common.
bool Matches(const std::string& text, const std::string& pattern) {
  regex_t compiled;
  if (regcomp(&compiled, pattern.c_str(), REG_EXTENDED | REG_NOSUB) != 0) {
    throw std::runtime_error("no pattern: " + pattern);
  }
  const bool matches = regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
  regfree(&compiled);
  return matches;
}

bool PropertiesAreValid(const json& schema, const json& value) {
  return std::all_of(schema.items().begin(), schema.items().end(), [&](const auto& property) {
    return !value.contains(property.key()) || IsValid(property.value(), value[property.key()]);
  });
}

// A keyword's subschema, the value, and the schema that the keyword stands in.
using Keyword = std::function<bool(const json& rule, const json& value, const json& schema)>;

bool HasNoOthers(const json& rule, const json& value, const json& schema) {
  if (rule != json(false)) {
    throw std::invalid_argument("additionalProperties that are not false");
  }
  return std::all_of(value.items().begin(), value.items().end(),
                     [&](const auto& member) { return schema.at("properties").contains(member.key()); });
}

const std::map<std::string, Keyword>& ForObjects() {
  static const std::map<std::string, Keyword> keywords = {
      {"properties",
       [](const json& rule, const json& value, const json&) { return PropertiesAreValid(rule, value); }},
      {"additionalProperties", HasNoOthers},
      {"required", [](const json& rule, const json& value, const json&) { return HasAll(value, rule); }},
      {"dependentRequired",
       [](const json& rule, const json& value, const json&) {
         return std::all_of(rule.items().begin(), rule.items().end(), [&](const auto& need) {
           return !value.contains(need.key()) || HasAll(value, need.value());
         });
       }},
      {"dependentSchemas",
       [](const json& rule, const json& value, const json&) {
         return std::all_of(rule.items().begin(), rule.items().end(), [&](const auto& need) {
           return !value.contains(need.key()) || IsValid(need.value(), value);
         });
       }},
  };
  return keywords;
}

const std::map<std::string, Keyword>& ForAll() {
  static const std::map<std::string, Keyword> keywords = {
      {"type", [](const json& rule, const json& value, const json&) { return HasType(value, rule); }},
      {"enum", [](const json& rule, const json& value,
                  const json&) { return std::find(rule.begin(), rule.end(), value) != rule.end(); }},
      {"const", [](const json& rule, const json& value, const json&) { return value == rule; }},
      {"allOf",
       [](const json& rule, const json& value, const json&) {
         return std::all_of(rule.begin(), rule.end(), [&](const json& one) { return IsValid(one, value); });
       }},
      {"anyOf",
       [](const json& rule, const json& value, const json&) {
         return std::any_of(rule.begin(), rule.end(), [&](const json& one) { return IsValid(one, value); });
       }},
      {"not", [](const json& rule, const json& value, const json&) { return !IsValid(rule, value); }},
      {"if", [](const json& rule, const json& value,
                const json& schema) { return !IsValid(rule, value) || IsValid(schema.at("then"), value); }},
      {"minimum",
       [](const json& rule, const json& value, const json&) { return !value.is_number() || value >= rule; }},
      {"maximum",
       [](const json& rule, const json& value, const json&) { return !value.is_number() || value <= rule; }},
      {"pattern",
       [](const json& rule, const json& value, const json&) {
         return !value.is_string() || Matches(value.get<std::string>(), rule.get<std::string>());
       }},
  };
  return keywords;
}

bool IsAnnotation(const std::string& keyword) {
  return keyword == "$schema" || keyword == "title" || keyword == "description" || keyword == "default" ||
         keyword == "contentEncoding" || keyword == "then";
}

bool Fulfils(const std::string& keyword, const json& schema, const json& value) {
  if (IsAnnotation(keyword)) {
    return true;
  }
  if (const auto found = ForObjects().find(keyword); found != ForObjects().end()) {
    return !value.is_object() || found->second(schema[keyword], value, schema);
  }
  const auto found = ForAll().find(keyword);
  if (found == ForAll().end()) {
    throw std::invalid_argument("an unknown keyword: " + keyword);
  }
  return found->second(schema[keyword], value, schema);
}

}  // namespace

bool IsValid(const nlohmann::json& schema, const nlohmann::json& value) {
  if (schema.is_boolean()) {
    return schema.get<bool>();
  }
  return std::all_of(schema.items().begin(), schema.items().end(),
                     [&](const auto& member) { return Fulfils(member.key(), schema, value); });
}

}  // namespace barcode::test
