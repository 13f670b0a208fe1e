#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

#include "label/text_writer.h"

namespace barcode::label {

// Adds a text in quotes. What is not UTF-8 becomes U+FFFD: the document always is.
void AddJsonString(TextWriter& out, std::string_view text);

// Puts a document together, piece by piece, with the commas between them.
class JsonWriter {
 public:
  // likelySize: bytes of the whole, at a guess.
  explicit JsonWriter(std::size_t likelySize) : m_out(likelySize) {}

  void BeginObject() { Begin('{'); }
  void EndObject() { End('}'); }
  void BeginArray() { Begin('['); }
  void EndArray() { End(']'); }

  // Of the member whose value comes next; a plain word.
  void Key(std::string_view name) {
    Separate();
    m_out.Add('"', name, "\":");
    m_wantsComma = false;
  }

  void Value(std::string_view text) {
    Separate();
    AddJsonString(m_out, text);
  }
  void Value(const char* text) { Value(std::string_view(text)); }
  void Value(bool value) { Json(value ? "true" : "false"); }
  template <class Number>
  requires std::integral<Number> || std::floating_point<Number>
  void Value(Number number) {
    Separate();
    m_out.Add(number);
  }
  // A value that is JSON already.
  void Json(std::string_view json) {
    Separate();
    m_out.Add(json);
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

  // The document; the writer is done.
  std::string Take() { return m_out.Take(); }

 private:
  void Begin(char bracket) {
    Separate();
    m_out.Add(bracket);
    m_wantsComma = false;
  }
  void End(char bracket) {
    m_out.Add(bracket);
    m_wantsComma = true;
  }
  void Separate() {
    if (m_wantsComma) {
      m_out.Add(',');
    }
    m_wantsComma = true;
  }

  TextWriter m_out;
  bool m_wantsComma = false;
};

}  // namespace barcode::label
