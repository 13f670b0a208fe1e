// What the table of fields says, as JSON: the list of types and the schema of a request.
#include <algorithm>
#include <cstddef>
#include <vector>

#include "label/field_table.h"
#include "label/fields.h"
#include "label/json_writer.h"

namespace barcode::label {
namespace {

// Bytes of either document, roughly.
constexpr std::size_t kLikelySize = 32'000;

// What the symbol says is no option of it, nor is its type.
bool IsOption(const FieldInfo& field) {
  return field.id != FieldId::kType && field.id != FieldId::kText && field.id != FieldId::kTextBase64;
}

std::string_view KindWord(FieldKind kind) {
  switch (kind) {
    case FieldKind::kString:
    case FieldKind::kBase64:
      return "string";
    case FieldKind::kInteger:
    case FieldKind::kAngle:
      return "integer";
    case FieldKind::kNumber:
      return "number";
    case FieldKind::kBoolean:
      return "boolean";
    case FieldKind::kKeyword:
      return "keyword";
    case FieldKind::kColour:
      return "color";
    case FieldKind::kQuietZone:
      break;
  }
  return "quiet_zone";
}

bool HasRange(const FieldInfo& field) {
  return field.kind == FieldKind::kInteger || field.kind == FieldKind::kNumber ||
         field.kind == FieldKind::kQuietZone;
}

template <class Values>
void WriteValues(JsonWriter& json, const Values& values) {
  json.BeginArray();
  for (const auto& value : values) {
    json.Value(value);
  }
  json.EndArray();
}

std::vector<std::string_view> WordsFor(const FieldInfo& field, Type type) {
  if (field.id != FieldId::kForm) {
    return {field.words.begin(), field.words.end()};
  }
  std::vector<std::string_view> words;
  for (const Form form : FormsOf(type)) {
    words.push_back(WordOf(form));
  }
  return words;
}

std::vector<std::string_view> AliasesOf(const TypeInfo& type) {
  std::vector<std::string_view> aliases;
  for (std::string_view rest = type.aliases; !rest.empty();) {
    aliases.push_back(rest.substr(0, rest.find(' ')));
    rest.remove_prefix(std::min(rest.size(), aliases.back().size() + 1));
  }
  return aliases;
}

// ---- The list of types ----

void WriteOption(JsonWriter& json, const FieldInfo& field, const TypeInfo& type) {
  json.BeginObject();
  json.Member("name", field.name);
  json.Member("kind", KindWord(field.kind));
  if (field.kind == FieldKind::kAngle) {
    json.Key("values");
    WriteValues(json, kAngles);
  } else if (!field.words.empty()) {
    json.Key("values");
    WriteValues(json, WordsFor(field, type.type));
  }
  if (HasRange(field)) {
    json.Member("min", field.minimum);
    json.Member("max", field.maximum);
  }
  if (const std::string standard = DefaultJson(field, type); !standard.empty()) {
    json.MemberJson("default", standard);
  }
  json.EndObject();
}

void WriteType(JsonWriter& json, const TypeInfo& type) {
  json.BeginObject();
  json.Member("name", type.name);
  json.Member("title", type.title);
  json.Member("number", static_cast<int>(type.type));
  json.Key("aliases");
  WriteValues(json, AliasesOf(type));
  json.Member("two_dimensional", type.twoDimensional);
  json.Key("options");
  json.BeginArray();
  for (const FieldInfo& field : AllFields()) {
    if (IsOption(field) && Takes(type.type, field)) {
      WriteOption(json, field, type);
    }
  }
  json.EndArray();
  json.Key("readers");
  json.BeginObject();
  json.Member("zxing", type.readers.zxing);
  json.Member("zbar", type.readers.zbar);
  json.Member("zxing_wasm", type.readers.zxingWasm);
  json.EndObject();
  json.EndObject();
}

std::string MakeTypesJson() {
  JsonWriter json(kLikelySize);
  json.BeginArray();
  for (const TypeInfo& type : AllTypes()) {
    WriteType(json, type);
  }
  json.EndArray();
  return json.Take();
}

// ---- The schema ----

constexpr std::string_view kColourPattern = "^#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$";
constexpr std::string_view kBase64Pattern =
    "^([A-Za-z0-9+/]{4})*([A-Za-z0-9+/][AQgw]==|[A-Za-z0-9+/]{2}[AEIMQUYcgkosw048]=)?$";

void WriteRange(JsonWriter& json, const FieldInfo& field, std::string_view jsonType) {
  json.Member("type", jsonType);
  json.Member("minimum", field.minimum);
  json.Member("maximum", field.maximum);
}

void WriteEnum(JsonWriter& json, std::span<const std::string_view> words) {
  json.Key("enum");
  WriteValues(json, words);
}

// The members of a subschema: {"anyOf": [{"enum": words}, {one(json)}]}.
template <class WriteOne>
void WriteWordsOr(JsonWriter& json, std::span<const std::string_view> words, WriteOne one) {
  json.Key("anyOf");
  json.BeginArray();
  json.BeginObject();
  WriteEnum(json, words);
  json.EndObject();
  json.BeginObject();
  one();
  json.EndObject();
  json.EndArray();
}

void WriteColour(JsonWriter& json) {
  json.Member("type", "string");
  json.Member("pattern", kColourPattern);
}

void WriteKind(JsonWriter& json, const FieldInfo& field) {
  switch (field.kind) {
    case FieldKind::kString:
      return json.Member("type", "string");
    case FieldKind::kBase64:
      json.Member("type", "string");
      json.Member("contentEncoding", "base64");
      return json.Member("pattern", kBase64Pattern);
    case FieldKind::kInteger:
      return WriteRange(json, field, "integer");
    case FieldKind::kNumber:
      return WriteRange(json, field, "number");
    case FieldKind::kBoolean:
      return json.Member("type", "boolean");
    case FieldKind::kKeyword:
      return WriteEnum(json, field.words);
    case FieldKind::kColour:
      return field.words.empty() ? WriteColour(json)
                                 : WriteWordsOr(json, field.words, [&] { WriteColour(json); });
    case FieldKind::kQuietZone:
      return WriteWordsOr(json, field.words, [&] { WriteRange(json, field, "integer"); });
    case FieldKind::kAngle:
      json.Key("enum");
      return WriteValues(json, kAngles);
  }
}

std::vector<std::string_view> NamesOf(const TypeInfo& type) {
  std::vector<std::string_view> names = {type.name};
  const std::vector<std::string_view> aliases = AliasesOf(type);
  names.insert(names.end(), aliases.begin(), aliases.end());
  return names;
}

void WriteProperties(JsonWriter& json) {
  json.Key("properties");
  json.BeginObject();
  for (const FieldInfo& field : AllFields()) {
    json.Key(field.name);
    json.BeginObject();
    json.Member("description", field.meaning);
    if (field.id == FieldId::kType) {
      std::vector<std::string_view> names;
      for (const TypeInfo& type : AllTypes()) {
        const std::vector<std::string_view> more = NamesOf(type);
        names.insert(names.end(), more.begin(), more.end());
      }
      WriteEnum(json, names);
    } else {
      WriteKind(json, field);
    }
    if (!field.defaultJson.empty()) {
      json.MemberJson("default", field.defaultJson);
    }
    json.EndObject();
  }
  json.EndObject();
}

std::string_view NameOf(FieldId id) {
  return InfoOf(id).name;
}

// {"required": [names]} as the members of a subschema.
void WriteRequired(JsonWriter& json, const std::vector<std::string_view>& names) {
  json.Key("required");
  WriteValues(json, names);
}

void WriteNeeds(JsonWriter& json, std::span<const FieldPair> needs) {
  json.Key("dependentRequired");
  json.BeginObject();
  for (const FieldPair& pair : needs) {
    json.Key(NameOf(pair.field));
    WriteValues(json, std::vector{NameOf(pair.other)});
  }
  json.EndObject();
}

void WriteExclusion(JsonWriter& json, const FieldPair& pair) {
  json.BeginObject();
  json.Key("not");
  json.BeginObject();
  WriteRequired(json, {NameOf(pair.field), NameOf(pair.other)});
  json.EndObject();
  json.EndObject();
}

// Members of the object {"properties": {...}} that a type narrows: its own forms, the fields of others.
void WriteNarrowed(JsonWriter& json, const TypeInfo& type) {
  json.Key("properties");
  json.BeginObject();
  for (const FieldInfo& field : AllFields()) {
    if (!Takes(type.type, field)) {
      json.MemberJson(field.name, "false");
      continue;
    }
    const std::string standard = DefaultJson(field, type);
    const bool narrowsWords = field.id == FieldId::kForm;
    if (!narrowsWords && standard == field.defaultJson) {
      continue;
    }
    json.Key(field.name);
    json.BeginObject();
    if (narrowsWords) {
      WriteEnum(json, WordsFor(field, type.type));
    }
    if (!standard.empty()) {
      json.MemberJson("default", standard);
    }
    json.EndObject();
  }
  json.EndObject();
}

// "pairs_per_row" wants "form", and that the one form that takes it.
void WriteFormOfPairs(JsonWriter& json) {
  json.Key("dependentSchemas");
  json.BeginObject();
  json.Key(NameOf(FieldId::kPairsPerRow));
  json.BeginObject();
  json.Key("properties");
  json.BeginObject();
  json.Key(NameOf(FieldId::kForm));
  json.BeginObject();
  json.Member("const", WordOf(kFormOfPairs));
  json.EndObject();
  json.EndObject();
  WriteRequired(json, {NameOf(FieldId::kForm)});
  json.EndObject();
  json.EndObject();
}

void WriteTypeRules(JsonWriter& json, const TypeInfo& type) {
  json.BeginObject();
  json.Key("if");
  json.BeginObject();
  json.Key("properties");
  json.BeginObject();
  json.Key(NameOf(FieldId::kType));
  json.BeginObject();
  WriteEnum(json, NamesOf(type));
  json.EndObject();
  json.EndObject();
  WriteRequired(json, {NameOf(FieldId::kType)});
  json.EndObject();
  json.Key("then");
  json.BeginObject();
  WriteNarrowed(json, type);
  if (!HasBarHeight(type.type)) {
    WriteNeeds(json, std::span(&kHeightNeedsWidth, 1));
  }
  if (Takes(type.type, InfoOf(FieldId::kPairsPerRow))) {
    WriteFormOfPairs(json);
  }
  json.EndObject();
  json.EndObject();
}

}  // namespace

const std::string& TypesJson() {
  static const std::string text = MakeTypesJson();
  return text;
}

std::string RequestSchema() {
  JsonWriter json(kLikelySize);
  json.BeginObject();
  json.Member("$schema", "https://json-schema.org/draft/2020-12/schema");
  json.Member("title", "A request of libbarcode_label");
  json.Member("description",
              "Words are given in one spelling here; a request may write them in upper or lower case, and "
              "names of types with or without separators. A null counts as absent.");
  json.Member("type", "object");
  WriteProperties(json);
  json.Member("additionalProperties", false);
  WriteRequired(json, {NameOf(FieldId::kType)});
  json.Key("anyOf");
  json.BeginArray();
  for (const FieldId id : {FieldId::kText, FieldId::kTextBase64}) {
    json.BeginObject();
    WriteRequired(json, {NameOf(id)});
    json.EndObject();
  }
  json.EndArray();
  WriteNeeds(json, Needs());
  json.Key("allOf");
  json.BeginArray();
  for (const FieldPair& pair : Exclusions()) {
    WriteExclusion(json, pair);
  }
  for (const TypeInfo& type : AllTypes()) {
    WriteTypeRules(json, type);
  }
  json.EndArray();
  json.EndObject();
  return json.Take();
}

}  // namespace barcode::label
