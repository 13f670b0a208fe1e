#include "mkbarcode/batch/name_template.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <type_traits>

#include "base/base64.h"
#include "base/line.h"
#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

using label::FieldId;
using label::FieldInfo;

constexpr std::string_view kRowNumber = "n";
// As many as the largest number has.
constexpr std::size_t kMostDigits = 20;

UsageError BadTemplate(std::string_view what) {
  const std::string message = Line("--name ", what);
  return UsageError{message};
}

// The text without what would lead elsewhere, or what FAT does not take. UTF-8 has the control characters
// from U+0080 on as C2 and a second byte.
void AppendHarmless(std::string& name, std::string_view value) {
  constexpr std::string_view kForbidden = "\"*/:<>?\\|";
  constexpr char kDelete = '\x7F';
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    const bool isControl = static_cast<unsigned char>(c) < ' ' || c == kDelete;
    const bool isLateControl =
        c == '\xC2' && i + 1 < value.size() && static_cast<unsigned char>(value[i + 1]) < 0xA0;
    if (isLateControl) {
      ++i;
    }
    name += isControl || isLateControl || kForbidden.find(c) != std::string_view::npos ? '_' : c;
  }
}

void AppendNumber(std::string& name, std::uint64_t number, std::size_t digits) {
  const std::string text = std::to_string(number);
  name.append(digits - std::min(digits, text.size()), '0');
  name += text;
}

// No part of a name ends with a dot or a space: FAT drops them, and two dots lead above.
void MendEnds(std::string& name) {
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool isLast = i + 1 == name.size() || name[i + 1] == '/';
    if (isLast && (name[i] == '.' || name[i] == ' ')) {
      name[i] = '_';
    }
  }
}

std::string HexColour(const Colour& colour) {
  std::array<char, 10> text{};
  const int length =
      colour.a == 255 ? std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour.r, colour.g, colour.b)
                      : std::snprintf(text.data(), text.size(), "#%02x%02x%02x%02x", colour.r, colour.g,
                                      colour.b, colour.a);
  return {text.data(), static_cast<std::size_t>(length)};
}

template <class Value>
std::string TextOf(const Value& value, const FieldInfo& field) {
  if constexpr (std::is_same_v<Value, std::string>) {
    return field.id == FieldId::kTextBase64
               ? Base64Encode({reinterpret_cast<const std::uint8_t*>(value.data()), value.size()})
               : value;
  } else if constexpr (std::is_same_v<Value, bool>) {
    return value ? "true" : "false";
  } else if constexpr (std::is_same_v<Value, Colour>) {
    return HexColour(value);
  } else if constexpr (std::is_same_v<Value, label::Rotation>) {
    return Line(label::kAngles.at(static_cast<std::size_t>(value)));
  } else if constexpr (std::is_enum_v<Value>) {
    return std::string(label::WordOf(value));
  } else {
    return Line(value);
  }
}

}  // namespace

NameTemplate::NameTemplate(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool isDoubled = (c == '{' || c == '}') && text.substr(i + 1).starts_with(c);
    if (isDoubled) {
      ++i;
    } else if (c == '}') {
      throw BadTemplate("has a } that closes nothing; a brace itself is written twice");
    }
    if (c != '{' || isDoubled) {
      AddLiteral(c);
      continue;
    }
    const std::size_t end = text.find('}', i);
    if (end == std::string_view::npos) {
      throw BadTemplate("has a { that nothing closes; a brace itself is written twice");
    }
    AddPlaceholder(text.substr(i + 1, end - i - 1));
    i = end;
  }
  CheckParts();
}

void NameTemplate::AddLiteral(char character) {
  if (m_pieces.empty() || !std::holds_alternative<std::string>(m_pieces.back())) {
    m_pieces.emplace_back(std::string());
  }
  std::get<std::string>(m_pieces.back()) += character;
}

void NameTemplate::AddPlaceholder(std::string_view placeholder) {
  const std::size_t colon = placeholder.find(':');
  const std::string_view name = placeholder.substr(0, colon);
  if (name.empty()) {
    throw BadTemplate("has braces without a name; {n} is the number of the row");
  }
  if (colon != std::string_view::npos) {
    const std::string_view width = placeholder.substr(colon + 1);
    const bool isWidth = width.size() >= 2 && width.size() <= 3 && width.front() == '0' &&
                         width.find_first_not_of("0123456789") == std::string_view::npos;
    const std::size_t digits = isWidth ? std::stoul(std::string(width)) : 0;
    if (name != kRowNumber || digits < 1 || digits > kMostDigits) {
      throw BadTemplate(
          Line("has {", placeholder, "}; a number of digits is for the row's number, as in {n:06}"));
    }
    m_pieces.emplace_back(Number{digits});
    return;
  }
  if (name == kRowNumber) {
    m_pieces.emplace_back(Number{});
    return;
  }
  if (const FieldInfo* const field = label::FindField(name)) {
    m_pieces.emplace_back(field);
    return;
  }
  const auto known = std::find(m_extraColumns.begin(), m_extraColumns.end(), name);
  m_pieces.emplace_back(Extra{static_cast<std::size_t>(known - m_extraColumns.begin())});
  if (known == m_extraColumns.end()) {
    m_extraColumns.emplace_back(name);
  }
}

// Of what stands in the template itself: what values bring is harmless.
void NameTemplate::CheckParts() const {
  std::string name;
  for (const Piece& piece : m_pieces) {
    const auto* const literal = std::get_if<std::string>(&piece);
    name += literal == nullptr ? "x" : *literal;
  }
  if (name.starts_with('/')) {
    throw BadTemplate("must not begin with /: names are below the directory");
  }
  std::string_view rest = name;
  while (true) {
    const std::string_view part = rest.substr(0, rest.find('/'));
    if (part.empty()) {
      throw BadTemplate("has a part without a name");
    }
    if (part == "." || part == "..") {
      throw BadTemplate(Line("must not have the part ", part, ": names are below the directory"));
    }
    if (part.size() == rest.size()) {
      return;
    }
    rest.remove_prefix(part.size() + 1);
  }
}

// A part that holds the number once, and beside it only what has one length in all rows.
bool NameTemplate::IsUnique() const {
  int numbers = 0;
  bool isFixed = true;
  const auto ends = [&] { return numbers == 1 && isFixed; };
  for (const Piece& piece : m_pieces) {
    if (const auto* const literal = std::get_if<std::string>(&piece)) {
      if (literal->find('/') == std::string::npos) {
        continue;
      }
      if (ends()) {
        return true;
      }
      numbers = 0;
      isFixed = true;
      continue;
    }
    const auto* const field = std::get_if<const FieldInfo*>(&piece);
    const bool isFormat = field != nullptr && (*field)->id == FieldId::kFormat;
    numbers += std::holds_alternative<Number>(piece) ? 1 : 0;
    isFixed = isFixed && (isFormat || std::holds_alternative<Number>(piece));
  }
  return ends();
}

std::string NameTemplate::NameOf(std::uint64_t row, const Job& job) const {
  std::string name;
  for (const Piece& piece : m_pieces) {
    if (const auto* const literal = std::get_if<std::string>(&piece)) {
      name += *literal;
    } else if (const auto* const number = std::get_if<Number>(&piece)) {
      AppendNumber(name, row, number->digits);
    } else if (const auto* const field = std::get_if<const FieldInfo*>(&piece)) {
      AppendValue(name, **field, job);
    } else {
      AppendValue(name, std::get<Extra>(piece), job);
    }
  }
  MendEnds(name);
  return name;
}

void NameTemplate::AppendValue(std::string& name, const FieldInfo& field, const Job& job) const {
  const std::string value = TextOfField(job.request, field);
  if (value.empty()) {
    throw label::LabelError(label::ErrorCode::kBadValue, field.name,
                            Line("The name wants {", field.name, "}, and the row has none."));
  }
  AppendHarmless(name, value);
}

void NameTemplate::AppendValue(std::string& name, Extra extra, const Job& job) const {
  const std::string& value = job.extraValues[extra.index];
  if (value.empty()) {
    throw label::LabelError(
        label::ErrorCode::kBadValue, m_extraColumns[extra.index],
        Line("The name wants {", m_extraColumns[extra.index], "}, and the row has none."));
  }
  AppendHarmless(name, value);
}

std::string WithNumber(std::string_view name, std::uint64_t number) {
  const std::size_t slash = name.find_last_of('/');
  const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
  const std::size_t dot = name.find_last_of('.');
  const std::size_t end = dot == std::string_view::npos || dot <= start ? name.size() : dot;
  return Line(name.substr(0, end), '-', number, name.substr(end));
}

std::string TextOfField(const label::Request& request, const FieldInfo& field) {
  if (field.id == FieldId::kFormat) {
    return std::string(label::WordOf(request.format.value_or(label::Format::kPng)));
  }
  return std::visit(
      [&](auto member) {
        const auto& value = request.*member;
        return value ? TextOf(*value, field) : std::string();
      },
      field.member);
}

}  // namespace barcode::tool
