#include "label/json_request.h"

#include <bitset>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>

#include "base/line.h"
#include "base/utf8.h"
#include "label/error.h"
#include "label/excerpt.h"
#include "label/field_table.h"
#include "label/field_values.h"

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

// Builds a request from what the JSON parser meets. The parser names the functions. It never goes deeper than
// the members of one object: a value that is an object or an array is refused where it begins.
class RequestBuilder {
 public:
  using number_integer_t = nlohmann::json::number_integer_t;
  using number_unsigned_t = nlohmann::json::number_unsigned_t;
  using number_float_t = nlohmann::json::number_float_t;
  using string_t = nlohmann::json::string_t;
  using binary_t = nlohmann::json::binary_t;

  RequestBuilder(std::string_view document, Request defaults)
      : m_document(document), m_request(std::move(defaults)) {}

  Request Take() { return std::move(m_request); }

  bool start_object(std::size_t) {
    if (m_isInside) {
      throw BadValue(Field());
    }
    m_isInside = true;
    return true;
  }
  bool end_object() const {
    RequireLastNumber();
    return m_isInside;
  }
  bool start_array(std::size_t) { throw BadValue(Field()); }
  bool end_array() const { return m_isInside; }

  bool key(string_t& name) {
    RequireLastNumber();
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
    SetBoolean(m_request, Field(), value);
    return true;
  }

  bool number_integer(number_integer_t value) { return Number(static_cast<double>(value)); }
  bool number_unsigned(number_unsigned_t value) { return Number(static_cast<double>(value)); }
  bool number_float(number_float_t value, const string_t&) { return Number(value); }

  bool string(string_t& value) {
    SetString(m_request, Field(), std::move(value));
    return true;
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

  // What follows a number tells whether it is one: of 02, which is no JSON, the parser takes the 0 first. A
  // value that the field does not take is therefore refused by what comes next.
  bool Number(double value) {
    const FieldInfo& field = Field();
    try {
      SetNumber(m_request, field, value);
    } catch (const LabelError& error) {
      m_badNumber = error;
    }
    return true;
  }

  void RequireLastNumber() const {
    if (m_badNumber) {
      throw LabelError(*m_badNumber);
    }
  }

  std::string_view m_document;
  Request m_request;
  const FieldInfo* m_field = nullptr;  // the last that was named
  std::bitset<kFieldCount> m_seen;
  bool m_isInside = false;
  std::optional<LabelError> m_badNumber;  // the last number, where the field does not take it
};

}  // namespace

Request ParseRequest(std::string_view json, const Request& defaults) {
  RequestBuilder builder(json, defaults);
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
