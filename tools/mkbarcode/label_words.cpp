#include "mkbarcode/label_words.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "base/line.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using label::FieldId;
using label::FieldInfo;
using label::FieldKind;

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

// A field that stands in a sentence by its name: quoted, or as a word that is none of English.
const FieldInfo* FieldOf(std::string_view word, bool isQuoted) {
  if (!isQuoted && word.find('_') == std::string_view::npos) {
    return nullptr;
  }
  return label::FindField(word);
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

// "a, b or c".
std::string ListOf(std::span<const std::string_view> words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) {
      list += i + 1 == words.size() ? " or " : ", ";
    }
    list += words[i];
  }
  return list;
}

std::string RangeOf(const FieldInfo& field) {
  return Line(field.minimum, " to ", field.maximum);
}

// The JSON as people write it.
std::string PlainValue(std::string_view json) {
  if (json == "true") {
    return "on";
  }
  if (json == "false") {
    return "off";
  }
  const bool isQuoted = json.size() > 1 && json.front() == '"';
  return std::string(isQuoted ? json.substr(1, json.size() - 2) : json);
}

struct DefaultOfTypes {
  std::string value;
  std::string types;
  std::size_t count = 0;
};

std::vector<DefaultOfTypes> DefaultsOfTypes(const FieldInfo& field) {
  std::vector<DefaultOfTypes> defaults;
  for (const label::TypeInfo& type : label::AllTypes()) {
    const std::string value = PlainValue(label::DefaultJson(field, type));
    if (!label::Takes(type.type, field) || value.empty()) {
      continue;
    }
    auto known = std::ranges::find(defaults, value, &DefaultOfTypes::value);
    if (known == defaults.end()) {
      known = defaults.insert(known, {value, "", 0});
    }
    known->types += Concat({known->count == 0 ? "" : ", ", type.name});
    ++known->count;
  }
  return defaults;
}

std::string NamesOfTypes(const FieldInfo& field) {
  std::string names;
  for (const label::TypeInfo& type : label::AllTypes()) {
    if (label::Takes(type.type, field)) {
      names += Concat({names.empty() ? "" : ", ", type.name});
    }
  }
  return names;
}

}  // namespace

std::string OptionName(const FieldInfo& field) {
  std::string name(field.name);
  std::ranges::replace(name, '_', '-');
  return name;
}

std::string NameForUsers(const FieldInfo& field) {
  switch (field.id) {
    case FieldId::kType:
      return "TYPE";
    case FieldId::kText:
      return "TEXT";
    default:
      return Concat({"--", OptionName(field)});
  }
}

std::string InWordsOfOptions(std::string_view sentence) {
  std::string told;
  while (!sentence.empty()) {
    const auto* const end = std::ranges::find_if_not(sentence, IsWordCharacter);
    const std::string_view word = sentence.substr(0, static_cast<std::size_t>(end - sentence.begin()));
    const bool isQuoted = told.ends_with('"') && sentence.substr(word.size()).starts_with('"');
    if (const FieldInfo* const field = FieldOf(word, isQuoted)) {
      told += NameForUsers(*field);
    } else {
      told += word;
    }
    sentence.remove_prefix(word.size());
    if (!sentence.empty()) {
      told += sentence.front();
      sentence.remove_prefix(1);
    }
  }
  ReplaceAll(told, "he field ", "he option ");
  ReplaceAll(told, "he option \"TEXT\"", "he text");
  ReplaceAll(told, "he option \"TYPE\"", "he type");
  return told;
}

std::string AcceptedValues(const FieldInfo& field) {
  switch (field.kind) {
    case FieldKind::kString:
    case FieldKind::kBoolean:
    case FieldKind::kBase64:
      return "";
    case FieldKind::kInteger:
    case FieldKind::kNumber:
      return RangeOf(field);
    case FieldKind::kKeyword:
      return ListOf(field.words);
    case FieldKind::kColour: {
      std::vector<std::string_view> words = {"#rgb", "#rrggbb", "#rrggbbaa"};
      words.insert(words.end(), field.words.begin(), field.words.end());
      return ListOf(words);
    }
    case FieldKind::kQuietZone:
      return Concat({ListOf(field.words), " or ", RangeOf(field)});
    case FieldKind::kAngle:
      break;
  }
  return Line(label::kAngles[0], ", ", label::kAngles[1], ", ", label::kAngles[2], " or ", label::kAngles[3]);
}

std::string DefaultValue(const FieldInfo& field) {
  // Two fields alone have a default of the type's own.
  if (field.id != FieldId::kModule && field.id != FieldId::kForm) {
    return PlainValue(field.defaultJson);
  }
  std::string text;
  for (const DefaultOfTypes& known : DefaultsOfTypes(field)) {
    const bool isOfMost = known.count > label::kTypeCount / 2;
    text +=
        Concat({text.empty() ? "" : "; ", isOfMost ? "" : known.types, isOfMost ? "" : ": ", known.value});
  }
  return text;
}

std::string GroupOf(const FieldInfo& field) {
  if (field.types == kEveryType) {
    return "Options of every type";
  }
  const auto isOfBars = [&field](const label::TypeInfo& type) {
    return label::Takes(type.type, field) == label::HasBarHeight(type.type);
  };
  return std::ranges::all_of(label::AllTypes(), isOfBars) ? "Options of the linear types, yubin excepted"
                                                          : Concat({"Options of ", NamesOfTypes(field)});
}

}  // namespace barcode::tool
