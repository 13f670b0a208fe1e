#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "base/line.h"

namespace barcode::label {

// Appends a text in quotes. What is not UTF-8 becomes U+FFFD: the document always is.
void AppendJsonString(std::string& out, std::string_view text);

// Appends a document, piece by piece, and the commas between them.
class JsonWriter {
 public:
  explicit JsonWriter(std::string& out) : m_out(out) {}

  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }

  // Of the member whose value comes next; a plain word.
  void Key(std::string_view name) {
    Separate();
    AppendPieces(m_out, '"', name, "\":");
    m_wantsComma = false;
  }

  void Value(std::string_view text) {
    Separate();
    AppendJsonString(m_out, text);
  }
  void Value(const char* text) { Value(std::string_view(text)); }
  void Value(bool value) { Json(value ? "true" : "false"); }
  template <class Number>
  requires std::integral<Number> || std::floating_point<Number>
  void Value(Number number) {
    Separate();
    AppendPiece(m_out, number);
  }
  // A value that is JSON already.
  void Json(std::string_view json) {
    Separate();
    m_out += json;
  }

  template <class Type>
  void Member(std::string_view name, const Type& value) {
    Key(name);
    Value(value);
  }
  void MemberJson(std::string_view name, std::string_view json) {
    Key(name);
    Json(json);
  }

 private:
  void Begin(char bracket) {
    Separate();
    m_out += bracket;
    m_wantsComma = false;
  }
  void End(char bracket) {
    m_out += bracket;
    m_wantsComma = true;
  }
  void Separate() {
    if (m_wantsComma) {
      m_out += ',';
    }
    m_wantsComma = true;
  }

  std::string& m_out;
  bool m_wantsComma = false;
};

}  // namespace barcode::label
