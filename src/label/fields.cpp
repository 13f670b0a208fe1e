#include "label/fields.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "base/line.h"
#include "base/utf8.h"
#include "label/excerpt.h"
#include "label/field_table.h"

namespace barcode::label {
namespace {

std::string Named(const FieldInfo& field) {
  return Line("The field \"", field.name, '"');
}

LabelError Refused(const FieldInfo& field, const std::string& message) {
  return {ErrorCode::kBadValue, field.name, message};
}

// ---- The fields, each for itself ----

std::string NamesOfTypes(const FieldInfo& field) {
  std::string names;
  for (const TypeInfo& type : AllTypes()) {
    if (Takes(type.type, field)) {
      AppendPieces(names, names.empty() ? "" : ", ", type.name);
    }
  }
  return names;
}

void RequireTaken(const TypeInfo& type, const FieldInfo& field) {
  if (!Takes(type.type, field)) {
    throw LabelError(ErrorCode::kUnknownField, field.name,
                     Line(Named(field), " is none of ", type.name, "; leave it out. It belongs to ",
                          NamesOfTypes(field), '.'));
  }
}

bool IsAllowed(const FieldInfo& field, const std::string& text) {
  if (!field.words.empty()) {
    return std::find(field.words.begin(), field.words.end(), text) != field.words.end();
  }
  return field.kind == FieldKind::kBase64 || IsUtf8(text);
}

template <class Value>
bool IsAllowed(const FieldInfo& field, const Value& value) {
  if constexpr (std::is_same_v<Value, int> || std::is_same_v<Value, double>) {
    return InRange(field, static_cast<double>(value));
  } else {
    return true;
  }
}

void RequireAllowed(const FieldInfo& field, const Request& request) {
  const bool allowed = std::visit(
      [&](auto member) { return !(request.*member) || IsAllowed(field, *(request.*member)); }, field.member);
  if (!allowed) {
    throw BadValue(field);
  }
}

void RequireForm(const TypeInfo& type, const Request& request) {
  if (!request.form) {
    return;
  }
  const std::span<const Form> forms = FormsOf(type.type);
  if (std::find(forms.begin(), forms.end(), *request.form) == forms.end()) {
    throw BadForm(type);
  }
}

void RequireFormOfPairs(const Request& request) {
  if (request.pairsPerRow && request.form != kFormOfPairs) {
    const FieldInfo& field = InfoOf(FieldId::kPairsPerRow);
    throw LabelError(ErrorCode::kUnknownField, field.name,
                     Line(Named(field), " belongs to the form \"", WordOf(kFormOfPairs),
                          "\"; ask for that form, or leave the field out."));
  }
}

// ---- The fields among themselves ----

class GivenFields {
 public:
  explicit GivenFields(const Request& request) {
    for (const FieldInfo& field : AllFields()) {
      m_fields |= std::uint64_t{IsGiven(request, field)} << static_cast<unsigned>(field.id);
    }
  }

  bool Has(FieldId id) const { return (m_fields >> static_cast<unsigned>(id) & 1U) != 0; }

 private:
  static_assert(kFieldCount <= 64);

  std::uint64_t m_fields = 0;  // one bit each
};

void RequireText(GivenFields given) {
  if (!given.Has(FieldId::kText) && !given.Has(FieldId::kTextBase64)) {
    const FieldInfo& field = InfoOf(FieldId::kText);
    throw Refused(
        field, Line(Named(field), " is missing; give it, or \"", InfoOf(FieldId::kTextBase64).name, "\"."));
  }
}

void RequireApart(const FieldPair& pair, GivenFields given) {
  if (given.Has(pair.field) && given.Has(pair.other)) {
    const FieldInfo& field = InfoOf(pair.field);
    const FieldInfo& other = InfoOf(pair.other);
    throw Refused(field,
                  Line(Named(field), " must not stand beside \"", other.name, "\"; leave one of them out."));
  }
}

bool Misses(const FieldPair& pair, GivenFields given) {
  return given.Has(pair.field) && !given.Has(pair.other);
}

LabelError Missing(const FieldPair& pair, std::string_view why) {
  const FieldInfo& field = InfoOf(pair.field);
  const FieldInfo& other = InfoOf(pair.other);
  return Refused(field, Line(Named(field), " needs the field \"", other.name, "\" beside it", why, '.'));
}

void RequireOrder(const TypeInfo& type, GivenFields given) {
  for (const FieldPair& pair : Exclusions()) {
    RequireApart(pair, given);
  }
  for (const FieldPair& pair : Needs()) {
    if (Misses(pair, given)) {
      throw Missing(pair, "");
    }
  }
  if (!HasBarHeight(type.type) && Misses(kHeightNeedsWidth, given)) {
    throw Missing(kHeightNeedsWidth,
                  Line("; give both: a symbol of ", type.name, " has no height of its own"));
  }
}

const TypeInfo& TypeOf(const Request& request) {
  const FieldInfo& field = InfoOf(FieldId::kType);
  if (!request.type) {
    throw Refused(field, Line(Named(field), " is missing; it names the symbology."));
  }
  const TypeInfo* const type = FindType(*request.type);
  if (type == nullptr) {
    throw LabelError(ErrorCode::kUnknownType, field.name,
                     Line("There is no type \"", ExcerptForMessage(*request.type),
                          "\"; barcode_label_types() lists the names of all."));
  }
  return *type;
}

}  // namespace

const TypeInfo& ValidateRequest(const Request& request) {
  const TypeInfo& type = TypeOf(request);
  const GivenFields given(request);
  for (const FieldInfo& field : AllFields()) {
    if (given.Has(field.id)) {
      RequireTaken(type, field);
      RequireAllowed(field, request);
    }
  }
  RequireForm(type, request);
  RequireFormOfPairs(request);
  RequireText(given);
  RequireOrder(type, given);
  return type;
}

}  // namespace barcode::label
