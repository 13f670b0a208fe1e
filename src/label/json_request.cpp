#include "label/json_request.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "base/ascii.h"
#include "base/base64.h"
#include "base/line.h"
#include "base/utf8.h"
#include "label/error.h"
#include "label/excerpt.h"
#include "label/field_table.h"

namespace barcode::label {
namespace {

constexpr std::string_view kObjectWanted = "it must be a JSON object, {\"type\": ..., \"text\": ...}.";

LabelError BadRequest(const std::string& message) {
  return {ErrorCode::kBadRequest, "", message};
}

LabelError ZeroByte(std::size_t position) {
  return BadRequest(Line("The request has a zero byte at byte ", position, "; ", kObjectWanted));
}

LabelError NoObject() {
  return BadRequest(Line("The request is something else; ", kObjectWanted));
}

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

// Builds a request from what the JSON parser meets. The parser names the functions. It never goes deeper than
// the members of one object: a value that is an object or an array is refused where it begins.
class RequestBuilder {
 public:
  using number_integer_t = nlohmann::json::number_integer_t;
  using number_unsigned_t = nlohmann::json::number_unsigned_t;
  using number_float_t = nlohmann::json::number_float_t;
  using string_t = nlohmann::json::string_t;
  using binary_t = nlohmann::json::binary_t;

  explicit RequestBuilder(std::string_view document) : m_document(document) {}

  Request Take() { return std::move(m_request); }

  bool start_object(std::size_t) {
    if (m_isInside) {
      throw BadValue(Field());
    }
    m_isInside = true;
    return true;
  }
  bool end_object() const { return m_isInside; }
  bool start_array(std::size_t) { throw BadValue(Field()); }
  bool end_array() const { return m_isInside; }

  bool key(string_t& name) {
    m_field = FindField(name);
    if (m_field == nullptr) {
      throw LabelError(ErrorCode::kUnknownField, Excerpt(name),
                       Line("There is no field \"", ExcerptForMessage(name),
                            "\"; barcode_label_types() lists those of each type."));
    }
    const auto index = static_cast<std::size_t>(m_field->id);
    if (m_seen.test(index)) {
      throw LabelError(ErrorCode::kBadValue, m_field->name,
                       Line("The field \"", m_field->name, "\" stands twice; give it once."));
    }
    m_seen.set(index);
    return true;
  }

  bool null() const {
    (void)Field();
    return true;
  }

  bool boolean(bool value) {
    const FieldInfo& field = Field();
    if (field.kind != FieldKind::kBoolean) {
      throw BadValue(field);
    }
    MemberOf<bool>(m_request, field) = value;
    return true;
  }

  bool number_integer(number_integer_t value) { return Number(static_cast<double>(value)); }
  bool number_unsigned(number_unsigned_t value) { return Number(static_cast<double>(value)); }
  bool number_float(number_float_t value, const string_t&) { return Number(value); }

  bool string(string_t& value) {
    const FieldInfo& field = Field();
    switch (field.kind) {
      case FieldKind::kString:
        MemberOf<std::string>(m_request, field) = std::move(value);
        return true;
      case FieldKind::kBase64:
        return Bytes(field, value);
      case FieldKind::kKeyword:
        return Keyword(field, value);
      case FieldKind::kColour:
        return ColourOrWord(field, value);
      case FieldKind::kQuietZone:
        if (PlaceOf(field, value)) {
          return true;  // the same as none
        }
        break;
      default:
        break;
    }
    throw BadValue(field);
  }

  // JSON has none.
  bool binary(binary_t&) { throw BadValue(Field()); }

  template <class Exception>
  bool parse_error(std::size_t position, const std::string&, const Exception& error) {
    constexpr int kNumberOverflow = 406;
    if (error.id == kNumberOverflow) {
      throw BadValue(Field());
    }
    if (m_document.find_first_not_of(" \t\n\r") == std::string_view::npos) {
      throw BadRequest(Line("The request is empty; ", kObjectWanted));
    }
    if (position == 0 || position > m_document.size()) {
      throw BadRequest(Line("The request ends too early, at byte ", m_document.size(), "; ", kObjectWanted));
    }
    if (m_document[position - 1] == '\0') {
      throw ZeroByte(position);
    }
    throw BadRequest(Line("The request is no ", IsUtf8(m_document) ? "valid JSON" : "JSON in UTF-8",
                          ": something is wrong at byte ", position, "; ", kObjectWanted));
  }

 private:
  // The field whose value is met.
  const FieldInfo& Field() const {
    if (m_field == nullptr) {
      throw NoObject();
    }
    return *m_field;
  }

  bool Number(double value) {
    const FieldInfo& field = Field();
    if (field.kind == FieldKind::kNumber && InRange(field, value)) {
      MemberOf<double>(m_request, field) = value;
      return true;
    }
    const bool isWhole = InRange(field, value) && value == std::trunc(value);
    if (isWhole && (field.kind == FieldKind::kInteger || field.kind == FieldKind::kQuietZone)) {
      MemberOf<int>(m_request, field) = static_cast<int>(value);
      return true;
    }
    if (isWhole && field.kind == FieldKind::kAngle) {
      return Angle(field, static_cast<int>(value));
    }
    throw BadValue(field);
  }

  bool Angle(const FieldInfo& field, int degrees) {
    const auto* const found = std::find(kAngles.begin(), kAngles.end(), degrees);
    if (found == kAngles.end()) {
      throw BadValue(field);
    }
    MemberOf<Rotation>(m_request, field) = static_cast<Rotation>(found - kAngles.begin());
    return true;
  }

  bool Bytes(const FieldInfo& field, std::string_view text) {
    std::optional<std::string> bytes = Base64Decode(text);
    if (!bytes) {
      throw BadValue(field);
    }
    MemberOf<std::string>(m_request, field) = std::move(bytes);
    return true;
  }

  bool Keyword(const FieldInfo& field, std::string_view word) {
    const std::optional<std::size_t> place = PlaceOf(field, word);
    if (!place) {
      throw BadValue(field);
    }
    std::visit([&](auto member) { Set(m_request.*member, field, *place); }, field.member);
    return true;
  }

  template <class Value>
  static void Set(std::optional<Value>& value, const FieldInfo& field, std::size_t place) {
    if constexpr (std::is_same_v<Value, std::string>) {
      value = field.words[place];
    } else if constexpr (std::is_enum_v<Value>) {
      value = static_cast<Value>(place);
    }
  }

  bool ColourOrWord(const FieldInfo& field, std::string_view text) {
    constexpr Colour kNone = {255, 255, 255, 0};
    const std::optional<Colour> colour = PlaceOf(field, text) ? kNone : ParseColour(text);
    if (!colour) {
      throw BadValue(field);
    }
    MemberOf<Colour>(m_request, field) = colour;
    return true;
  }

  std::string_view m_document;
  Request m_request;
  const FieldInfo* m_field = nullptr;  // the last that was named
  std::bitset<kFieldCount> m_seen;
  bool m_isInside = false;
};

}  // namespace

Request ParseRequest(std::string_view json) {
  RequestBuilder builder(json);
  if (!nlohmann::json::sax_parse(json.begin(), json.end(), &builder)) {
    throw NoObject();  // not reached: whatever stops the parser has thrown
  }
  // The parser takes a zero byte for the end.
  if (const std::size_t zero = json.find('\0'); zero != std::string_view::npos) {
    throw ZeroByte(zero + 1);
  }
  return builder.Take();
}

}  // namespace barcode::label
