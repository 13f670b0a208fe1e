#include "label/field_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <system_error>
#include <type_traits>
#include <utility>

#include "base/ascii.h"
#include "base/base64.h"

namespace barcode::label {
namespace {

std::optional<int> HexDigit(char c) {
  if (IsDigit(c)) {
    return c - '0';
  }
  const char upper = ToUpper(c);
  return upper >= 'A' && upper <= 'F' ? std::optional(upper - 'A' + 10) : std::nullopt;
}

// "#rgb", "#rrggbb" or "#rrggbbaa".
std::optional<Colour> ParseColour(std::string_view text) {
  const bool isShort = text.size() == 4;
  if (!(isShort || text.size() == 7 || text.size() == 9) || text.front() != '#') {
    return std::nullopt;
  }
  text.remove_prefix(1);
  std::array<std::uint8_t, 4> bytes = {0, 0, 0, 255};
  const std::size_t digits = isShort ? 1 : 2;
  for (std::size_t i = 0; i * digits < text.size(); ++i) {
    const std::optional<int> high = HexDigit(text[i * digits]);
    const std::optional<int> low = HexDigit(text[i * digits + digits - 1]);
    if (!high || !low) {
      return std::nullopt;
    }
    bytes[i] = static_cast<std::uint8_t>(*high * 16 + *low);
  }
  return Colour{bytes[0], bytes[1], bytes[2], bytes[3]};
}

bool SameWord(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return ToUpper(x) == ToUpper(y); });
}

// The place of a word, in any case, among those of a field.
std::optional<std::size_t> PlaceOf(const FieldInfo& field, std::string_view word) {
  const auto found = std::find_if(field.words.begin(), field.words.end(),
                                  [word](std::string_view known) { return SameWord(known, word); });
  return found == field.words.end() ? std::nullopt : std::optional<std::size_t>(found - field.words.begin());
}

template <class Value>
std::optional<Value>& MemberOf(Request& request, const FieldInfo& field) {
  return request.*std::get<std::optional<Value> Request::*>(field.member);
}

void SetAngle(Request& request, const FieldInfo& field, int degrees) {
  const auto* const found = std::find(kAngles.begin(), kAngles.end(), degrees);
  if (found == kAngles.end()) {
    throw BadValue(field);
  }
  MemberOf<Rotation>(request, field) = static_cast<Rotation>(found - kAngles.begin());
}

void SetBytes(Request& request, const FieldInfo& field, std::string_view text) {
  std::optional<std::string> bytes = Base64Decode(text);
  if (!bytes) {
    throw BadValue(field);
  }
  MemberOf<std::string>(request, field) = std::move(bytes);
}

template <class Value>
void SetWord(std::optional<Value>& value, const FieldInfo& field, std::size_t place) {
  if constexpr (std::is_same_v<Value, std::string>) {
    value = field.words[place];
  } else if constexpr (std::is_enum_v<Value>) {
    value = static_cast<Value>(place);
  }
}

void SetKeyword(Request& request, const FieldInfo& field, std::string_view word) {
  const std::optional<std::size_t> place = PlaceOf(field, word);
  if (!place) {
    throw BadValue(field);
  }
  std::visit([&](auto member) { SetWord(request.*member, field, *place); }, field.member);
}

void SetColour(Request& request, const FieldInfo& field, std::string_view text) {
  constexpr Colour kNone = {255, 255, 255, 0};
  const std::optional<Colour> colour = PlaceOf(field, text) ? kNone : ParseColour(text);
  if (!colour) {
    throw BadValue(field);
  }
  MemberOf<Colour>(request, field) = colour;
}

std::optional<double> ParseNumber(std::string_view text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end && !text.empty() ? std::optional(value) : std::nullopt;
}

std::optional<bool> ParseBoolean(std::string_view text) {
  if (text == "1" || SameWord(text, "true")) {
    return true;
  }
  if (text == "0" || SameWord(text, "false")) {
    return false;
  }
  return std::nullopt;
}

}  // namespace

void SetNumber(Request& request, const FieldInfo& field, double value) {
  if (field.kind == FieldKind::kNumber && InRange(field, value)) {
    MemberOf<double>(request, field) = value;
    return;
  }
  const bool isWhole = InRange(field, value) && value == std::trunc(value);
  if (isWhole && (field.kind == FieldKind::kInteger || field.kind == FieldKind::kQuietZone)) {
    MemberOf<int>(request, field) = static_cast<int>(value);
    return;
  }
  if (isWhole && field.kind == FieldKind::kAngle) {
    SetAngle(request, field, static_cast<int>(value));
    return;
  }
  throw BadValue(field);
}

void SetBoolean(Request& request, const FieldInfo& field, bool value) {
  if (field.kind != FieldKind::kBoolean) {
    throw BadValue(field);
  }
  MemberOf<bool>(request, field) = value;
}

void SetString(Request& request, const FieldInfo& field, std::string value) {
  switch (field.kind) {
    case FieldKind::kString:
      MemberOf<std::string>(request, field) = std::move(value);
      return;
    case FieldKind::kBase64:
      SetBytes(request, field, value);
      return;
    case FieldKind::kKeyword:
      SetKeyword(request, field, value);
      return;
    case FieldKind::kColour:
      SetColour(request, field, value);
      return;
    case FieldKind::kQuietZone:
      if (PlaceOf(field, value)) {
        MemberOf<int>(request, field).reset();  // the standard's is the one that stands without
        return;
      }
      break;
    default:
      break;
  }
  throw BadValue(field);
}

void SetFromText(Request& request, const FieldInfo& field, std::string_view text) {
  if (field.kind == FieldKind::kBoolean) {
    const std::optional<bool> value = ParseBoolean(text);
    if (!value) {
      throw BadValue(field);
    }
    SetBoolean(request, field, *value);
    return;
  }
  const bool mayBeNumber = field.kind == FieldKind::kInteger || field.kind == FieldKind::kNumber ||
                           field.kind == FieldKind::kQuietZone || field.kind == FieldKind::kAngle;
  if (const std::optional<double> value = mayBeNumber ? ParseNumber(text) : std::nullopt) {
    SetNumber(request, field, *value);
    return;
  }
  SetString(request, field, std::string(text));
}

}  // namespace barcode::label
