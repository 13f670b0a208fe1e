// libbarcode_label for C++: labels that scan, as objects that free themselves, with errors that are thrown.
//
//     try {
//       libbarcode::LabelRequest request("jan13", "490123456789");
//       const libbarcode::Label label(request.set("format", "svg"));
//       label.save("label.svg");
//     } catch (const libbarcode::LabelError& error) {
//       std::cerr << error.code() << " " << error.field() << ": " << error.what() << '\n';
//     }
//
// Header-only over barcode_label.h, which is the manual of requests, reports and pictures; docs/labels.md has
// every field. C++17 or later, with a standard library that has std::to_chars for numbers with a fraction
// (GCC 11, Clang 14 and later). Link libbarcode_label. What holds for the whole header:
//
// - Names: everything is in the namespace libbarcode, in both headers for C++; no macro is defined. The
//   namespace is not called after the symbologies, so that a host's own "barcode" is free.
// - Errors: a refused label is a LabelError, exhausted memory is std::bad_alloc, a file that cannot be
//   written std::system_error; each function says what it throws. What is noexcept, moves, swaps, destructors
//   and all that reads a label among it, throws nothing. Label::try_make makes labels without exceptions;
//   with -fno-exceptions a function that would throw calls std::abort.
// - Texts are UTF-8. A null pointer is a value that is not there: the library says which field is missing. A
//   zero byte is data, in every text whose length is known.
// - Threads: const functions of one object may be called on any number of threads at the same time, all
//   others on one thread at a time. Different objects never touch one another.
// - An object that was moved from, or from which the label was released, is empty: it reads as a refused
//   label without a report. It may be destroyed and assigned to.
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "barcode_label.h"
#include "barcode_types.hpp"

namespace libbarcode {

namespace detail {

// Appends a character's UTF-8; a surrogate becomes the replacement character.
inline void append_utf8(std::string& text, std::uint32_t character) {
  if (character >= 0xD800 && character <= 0xDFFF) {
    character = 0xFFFD;
  }
  const auto append = [&text](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0U | character >> 6U);
    append(0x80U | (character & 0x3FU));
  } else if (character < 0x10000) {
    append(0xE0U | character >> 12U);
    append(0x80U | (character >> 6U & 0x3FU));
    append(0x80U | (character & 0x3FU));
  } else {
    append(0xF0U | character >> 18U);
    append(0x80U | (character >> 12U & 0x3FU));
    append(0x80U | (character >> 6U & 0x3FU));
    append(0x80U | (character & 0x3FU));
  }
}

// Reads the members of a report that errors and warnings are made of and passes over all others, whatever
// they hold: a later library may add some. A text that is no report reads as one without these members.
class ReportReader {
 public:
  explicit ReportReader(std::string_view text) noexcept : m_rest(text) {}

  // An object: readValue(key) has to read or skip each value. False when there is none, or it is broken.
  template <class ReadValue>
  bool object(ReadValue readValue) {
    return elements('{', '}', [this, &readValue] {
      std::string key;
      return string(&key) && take(':') && readValue(std::string_view(key));
    });
  }

  // An array: readElement() has to read or skip each element.
  template <class ReadElement>
  bool array(ReadElement readElement) {
    return elements('[', ']', readElement);
  }

  // A string, stored unless `value` is null.
  bool string(std::string* value) {
    if (!take('"')) {
      return false;
    }
    if (value != nullptr) {
      value->clear();
    }
    while (!m_rest.empty()) {
      const std::size_t plain = m_rest.find_first_of("\"\\");
      append(value, m_rest.substr(0, plain));
      m_rest.remove_prefix(plain == std::string_view::npos ? m_rest.size() : plain);
      if (take_next('"')) {
        return true;
      }
      if (take_next('\\') && !escape(value)) {
        return false;
      }
    }
    return false;
  }

  // Any value.
  bool skip() {
    std::size_t depth = 0;
    do {
      skip_space();
      if (m_rest.empty()) {
        return false;
      }
      const char next = m_rest.front();
      if (next == '"') {
        if (!string(nullptr)) {
          return false;
        }
      } else if (next == '{' || next == '[') {
        ++depth;
        m_rest.remove_prefix(1);
      } else if (next == '}' || next == ']') {
        if (depth == 0) {
          return false;
        }
        --depth;
        m_rest.remove_prefix(1);
      } else if (depth > 0 && (next == ',' || next == ':')) {
        m_rest.remove_prefix(1);
      } else if (!skip_word()) {
        return false;
      }
    } while (depth > 0);
    return true;
  }

 private:
  template <class ReadElement>
  bool elements(char begin, char end, ReadElement readElement) {
    if (!take(begin)) {
      return false;
    }
    if (take(end)) {
      return true;
    }
    do {
      if (!readElement()) {
        return false;
      }
    } while (take(','));
    return take(end);
  }

  static void append(std::string* value, std::string_view text) {
    if (value != nullptr) {
      value->append(text);
    }
  }

  void skip_space() noexcept {
    const std::size_t begin = m_rest.find_first_not_of(" \t\r\n");
    m_rest.remove_prefix(begin == std::string_view::npos ? m_rest.size() : begin);
  }

  // A number, true, false or null.
  bool skip_word() noexcept {
    const std::size_t end = m_rest.find_first_of(",:{}[]\" \t\r\n");
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end);
    return end != 0;
  }

  bool take_next(char wanted) noexcept {
    if (m_rest.empty() || m_rest.front() != wanted) {
      return false;
    }
    m_rest.remove_prefix(1);
    return true;
  }

  bool take(char wanted) noexcept {
    skip_space();
    return take_next(wanted);
  }

  // Four hexadecimal digits.
  bool code_unit(std::uint32_t& unit) noexcept {
    constexpr std::size_t kDigits = 4;
    if (m_rest.size() < kDigits) {
      return false;
    }
    const char* const end = m_rest.data() + kDigits;
    const std::from_chars_result result = std::from_chars(m_rest.data(), end, unit, 16);
    m_rest.remove_prefix(kDigits);
    return result.ec == std::errc() && result.ptr == end;
  }

  // What follows a backslash.
  bool escape(std::string* value) {
    if (m_rest.empty()) {
      return false;
    }
    const char kind = m_rest.front();
    m_rest.remove_prefix(1);
    if (kind == 'u') {
      return character(value);
    }
    constexpr std::string_view kKinds = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    const std::size_t place = kKinds.find(kind);
    if (place == std::string_view::npos) {
      return false;
    }
    append(value, kMeanings.substr(place, 1));
    return true;
  }

  // What follows "\u": a character, or two surrogates that are one.
  bool character(std::string* value) {
    std::uint32_t first = 0;
    if (!code_unit(first)) {
      return false;
    }
    const bool isHigh = first >= 0xD800 && first <= 0xDBFF;
    if (isHigh && m_rest.substr(0, 2) == "\\u") {
      const std::string_view behindFirst = m_rest;
      m_rest.remove_prefix(2);
      std::uint32_t second = 0;
      if (!code_unit(second)) {
        return false;
      }
      if (second >= 0xDC00 && second <= 0xDFFF) {
        first = 0x10000U + ((first - 0xD800U) << 10U) + (second - 0xDC00U);
      } else {
        m_rest = behindFirst;
      }
    }
    if (value != nullptr) {
      append_utf8(*value, first);
    }
    return true;
  }

  std::string_view m_rest;
};

// Appends a JSON string. What is no UTF-8 stays as it is, for the library to refuse.
inline void append_json_string(std::string& json, std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  const auto isPlain = [](char character) {
    return static_cast<unsigned char>(character) >= 0x20 && character != '"' && character != '\\';
  };
  json.push_back('"');
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && isPlain(text[plain])) {
      ++plain;
    }
    json.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (!text.empty()) {
      const auto byte = static_cast<unsigned char>(text.front());
      json.append("\\u00");
      json.push_back(kHex[byte >> 4U]);
      json.push_back(kHex[byte & 0xFU]);
      text.remove_prefix(1);
    }
  }
  json.push_back('"');
}

inline std::string base64(const unsigned char* data, std::size_t size) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((size + 2) / 3 * 4);
  for (std::size_t at = 0; at < size; at += 3) {
    const std::size_t count = size - at < 3 ? size - at : 3;
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      bits = bits << 8U | (i < count ? data[at + i] : 0U);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text.push_back(i <= count ? kDigits[bits >> (18U - 6U * i) & 0x3FU] : '=');
    }
  }
  return text;
}

// The types that are numbers to a request, among those of arithmetic.
template <class Value>
inline constexpr bool kIsCharacter =
    std::is_same_v<Value, char> || std::is_same_v<Value, wchar_t> || std::is_same_v<Value, char16_t> ||
#if defined(__cpp_char8_t)
    std::is_same_v<Value, char8_t> ||
#endif
    std::is_same_v<Value, char32_t>;

template <class Value>
inline constexpr bool kIsJsonValue = std::is_arithmetic_v<Value> && !kIsCharacter<Value>;

struct FreeLabel {
  void operator()(BarcodeLabel* label) const noexcept { barcode_label_free(label); }
};

}  // namespace detail

// Why a label was refused. code() is one of the words under "Errors" in barcode_label.h, field() the field of
// the request that is to blame, "" where none is; what() is one English sentence. Later libraries may add
// codes. Copies share their texts; copying never throws, nor does reading.
class LabelError : public std::invalid_argument {
 public:
  // Throws std::bad_alloc.
  LabelError(std::string code, std::string field, const std::string& message)
      : std::invalid_argument(message),
        m_parts(std::make_shared<const Parts>(Parts{std::move(code), std::move(field)})) {}
  // There is no move, which would leave an error without its texts.
  LabelError(const LabelError&) noexcept = default;
  LabelError& operator=(const LabelError&) noexcept = default;
  ~LabelError() override = default;

  [[nodiscard]] const std::string& code() const noexcept { return m_parts->code; }
  [[nodiscard]] const std::string& field() const noexcept { return m_parts->field; }

 private:
  struct Parts {
    std::string code;
    std::string field;
  };
  std::shared_ptr<const Parts> m_parts;
};

// What stands against a label that was delivered: a word under "Warnings" in barcode_label.h, and one English
// sentence.
struct LabelWarning {
  std::string code;
  std::string message;
};

namespace detail {

inline LabelError read_error(std::string_view report) {
  std::string code;
  std::string field;
  std::string message;
  ReportReader reader(report);
  reader.object([&](std::string_view member) {
    if (member != "error") {
      return reader.skip();
    }
    return reader.object([&](std::string_view name) {
      std::string* const text = name == "code"      ? &code
                                : name == "field"   ? &field
                                : name == "message" ? &message
                                                    : nullptr;
      return text == nullptr ? reader.skip() : reader.string(text);
    });
  });
  return {std::move(code), std::move(field), message};
}

inline std::vector<LabelWarning> read_warnings(std::string_view report) {
  std::vector<LabelWarning> list;
  ReportReader reader(report);
  reader.object([&](std::string_view member) {
    if (member != "warnings") {
      return reader.skip();
    }
    return reader.array([&] {
      LabelWarning warning;
      const bool isRead = reader.object([&](std::string_view name) {
        std::string* const text = name == "code"      ? &warning.code
                                  : name == "message" ? &warning.message
                                                      : nullptr;
        return text == nullptr ? reader.skip() : reader.string(text);
      });
      list.push_back(std::move(warning));
      return isRead;
    });
  });
  return list;
}

}  // namespace detail

// A request, field by field, for those who have no JSON at hand. It checks nothing: the library does, when
// the label is made. Every function may throw std::bad_alloc.
class LabelRequest {
 public:
  // type: a name or an alias. text: in UTF-8. What is null is missing.
  LabelRequest(Text type, Text text) {
    set("type", type);
    set("text", text);
  }

  // A request for bytes that are no text: "text_base64" in place of "text".
  // data: `size` bytes, copied; null is the same as none.
  static LabelRequest of_bytes(Text type, const void* data, std::size_t size) {
    LabelRequest request(type);
    const auto* const bytes = static_cast<const unsigned char*>(data);
    request.set("text_base64", detail::base64(bytes, bytes == nullptr ? 0 : size));
    return request;
  }

  // Sets a field to a string; set again, it is replaced. A null value is the same as a field that is absent.
  LabelRequest& set(Text field, Text value) {
    std::string json;
    if (value.is_null()) {
      json = "null";
    } else {
      json.reserve(value.view().size() + 2);
      detail::append_json_string(json, value.view());
    }
    return put(field, std::move(json));
  }

  // Sets a field to a number or, from a bool, to true or false. What JSON has no number for, infinity and
  // NaN, is sent as a number too large for every field: refused with the name of the field.
  template <class Value, std::enable_if_t<detail::kIsJsonValue<Value>, int> = 0>
  LabelRequest& set(Text field, Value value) {
    if constexpr (std::is_same_v<Value, bool>) {
      return put(field, value ? "true" : "false");
    } else {
      if constexpr (std::is_floating_point_v<Value>) {
        if (!std::isfinite(value)) {
          return put(field, "1e999");
        }
      }
      // The longest: a long double with all its digits and an exponent of five.
      constexpr std::size_t kLongest = 64;
      std::array<char, kLongest> digits{};
      const std::to_chars_result result = std::to_chars(digits.data(), digits.data() + kLongest, value);
      return put(field, std::string(digits.data(), result.ptr));
    }
  }

  // The request as JSON, its fields in the order in which they were set first.
  [[nodiscard]] std::string json() const {
    std::string text;
    std::size_t length = 2;
    for (const Field& field : m_fields) {
      length += field.name.size() + field.value.size() + 4;
    }
    text.reserve(length);
    for (const Field& field : m_fields) {
      text.push_back(text.empty() ? '{' : ',');
      detail::append_json_string(text, field.name);
      text.push_back(':');
      text += field.value;
    }
    text.push_back('}');
    return text;
  }

 private:
  struct Field {
    std::string name;
    std::string value;
  };

  explicit LabelRequest(Text type) { set("type", type); }

  LabelRequest& put(Text field, std::string json) {
    for (Field& known : m_fields) {
      if (known.name == field.view()) {
        known.value = std::move(json);
        return *this;
      }
    }
    m_fields.push_back({std::string(field.view()), std::move(json)});
    return *this;
  }

  std::vector<Field> m_fields;
};

// One label, delivered or refused, and the memory that it takes.
class Label {
 public:
  // An empty one: not ok, no bytes, no report.
  Label() noexcept = default;

  // Makes a label.
  // request: JSON in UTF-8, see "Requests" in barcode_label.h; not used after the call. Null is an empty
  // request. Throws LabelError when the label is refused, std::bad_alloc when memory is exhausted.
  explicit Label(Text request) : Label(try_make(request)) {
    if (m_label == nullptr) {
      detail::raise<std::bad_alloc>();
    }
    if (!ok()) {
      throw_refusal();
    }
  }
  explicit Label(const LabelRequest& request) : Label(Text(std::string_view(request.json()))) {}

  // The same without exceptions: look at ok(), then at error() or report(). The label is empty when memory is
  // exhausted so far that not even a report can be made.
  [[nodiscard]] static Label try_make(Text request) noexcept {
    return adopt(barcode_label_make(request.view().data(), request.view().size()));
  }
  // Throws std::bad_alloc when there is no memory for the request.
  [[nodiscard]] static Label try_make(const LabelRequest& request) {
    return try_make(Text(std::string_view(request.json())));
  }

  // Takes over a label that barcode_label_make returned, and frees it. Null makes an empty one.
  [[nodiscard]] static Label adopt(BarcodeLabel* label) noexcept {
    Label result;
    result.m_label.reset(label);
    return result;
  }

  // There is a picture.
  [[nodiscard]] bool ok() const noexcept { return barcode_label_ok(get()) == 1; }
  [[nodiscard]] explicit operator bool() const noexcept { return ok(); }

  // The picture; empty when there is none. Like all that is returned here by reference, the bytes stay as
  // they are, and where they are, until the label is freed: by its destructor, by an assignment, by whoever
  // got it from release(). A move leaves them in place.
  [[nodiscard]] Bytes data() const noexcept {
    std::size_t length = 0;
    const unsigned char* const bytes = barcode_label_data(get(), &length);
    return {bytes, length};
  }

  // "image/png", "image/svg+xml" or "application/pdf"; "" when there is no picture.
  [[nodiscard]] std::string_view media_type() const noexcept { return barcode_label_media_type(get()); }

  // The report, JSON in UTF-8, see "Reports" in barcode_label.h; "" when the object is empty. A zero byte
  // follows it.
  [[nodiscard]] std::string_view report() const noexcept { return barcode_label_report(get()); }

  // Why the label was refused; with empty texts when it was not, or the object is empty. Throws
  // std::bad_alloc.
  [[nodiscard]] LabelError error() const { return detail::read_error(report()); }

  // What stands against the label, in the order of the report. Throws std::bad_alloc.
  [[nodiscard]] std::vector<LabelWarning> warnings() const { return detail::read_warnings(report()); }

  // Writes the picture to a file, which is made or replaced.
  // Throws LabelError when the label was refused, std::logic_error when the object is empty,
  // std::system_error when the file cannot be written (see libbarcode::save), std::bad_alloc.
  void save(const std::string& path) const {
    if (m_label == nullptr) {
      detail::raise<std::logic_error>("There is no label: it was moved, released or never made");
    }
    if (!ok()) {
      throw_refusal();
    }
    libbarcode::save(data(), path);
  }

  // The label for the functions of barcode_label.h, still owned by this object; null when it is empty.
  [[nodiscard]] const BarcodeLabel* get() const noexcept { return m_label.get(); }

  // Gives the label away: the caller frees it with barcode_label_free. This object is empty then.
  [[nodiscard]] BarcodeLabel* release() noexcept { return m_label.release(); }

  void swap(Label& other) noexcept { m_label.swap(other.m_label); }
  friend void swap(Label& first, Label& second) noexcept { first.swap(second); }

 private:
  [[noreturn]] void throw_refusal() const {
    const LabelError refusal = error();
    if (refusal.code() == "out_of_memory") {
      detail::raise<std::bad_alloc>();
    }
    detail::raise<LabelError>(refusal);
  }

  std::unique_ptr<BarcodeLabel, detail::FreeLabel> m_label;
};

// The symbologies, as a JSON array; see barcode_label_types in barcode_label.h. The text stays for as long as
// the library is loaded.
[[nodiscard]] inline std::string_view label_types() noexcept {
  return barcode_label_types();
}

// The version of the library that runs, "1.0.0".
[[nodiscard]] inline std::string_view label_version() noexcept {
  return barcode_label_version();
}

}  // namespace libbarcode
