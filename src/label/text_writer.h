#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/line.h"

namespace barcode::label {

// Puts a document together from many small pieces, those of base/line.h. It writes into room that it has made
// before, which costs less than a string that is asked for each piece. Throws std::bad_alloc.
class TextWriter {
 public:
  // likelySize: bytes of the whole, at a guess.
  explicit TextWriter(std::size_t likelySize) : m_text(likelySize, '\0') { Resume(0); }
  TextWriter(const TextWriter&) = delete;
  TextWriter& operator=(const TextWriter&) = delete;
  ~TextWriter() = default;

  void Add(char character) {
    *MakeRoom(1) = character;
    ++m_at;
  }

  void Add(std::string_view text) { m_at += text.copy(MakeRoom(text.size()), text.size()); }
  void Add(const char* text) { Add(std::string_view(text)); }

  template <std::integral Integer>
  void Add(Integer value) {
    m_at = WriteInteger(MakeRoom(kLongestInteger), static_cast<std::int64_t>(value));
  }

  template <std::floating_point Real>
  void Add(Real value) {
    AddPiece(value);
  }
  void Add(const General& number) { AddPiece(number); }

  template <class First, class Second, class... Others>
  void Add(const First& first, const Second& second, const Others&... others) {
    Add(first);
    Add(second);
    (Add(others), ...);
  }

  // For loops of their own: room for so many bytes at the place where the next one belongs, and that place
  // behind what was written there.
  char* MakeRoom(std::size_t size) {
    if (static_cast<std::size_t>(m_end - m_at) < size) {
      Grow(size);
    }
    return m_at;
  }
  char* RoomEnd() const { return m_end; }
  void WroteTo(char* end) { m_at = end; }

  std::size_t Size() const { return static_cast<std::size_t>(m_at - m_text.data()); }
  // What was written, until more is.
  std::string_view Written() const { return {m_text.data(), Size()}; }
  // Takes back what was written behind a size.
  void Shorten(std::size_t size) { m_at = m_text.data() + size; }

  // The document; the writer is done.
  std::string Take() {
    m_text.resize(Size());
    return std::move(m_text);
  }

  static constexpr std::size_t kLongestInteger = 20;

  // Writes a number to where there is room for it; returns the end.
  static char* WriteInteger(char* out, std::int64_t value) {
    if (value >= 0 && value < 10) {
      *out = static_cast<char>('0' + value);
      return out + 1;
    }
    return WriteLongInteger(out, value);
  }

 private:
  template <class Piece>
  void AddPiece(const Piece& piece) {
    std::string text;
    AppendPiece(text, piece);
    Add(std::string_view(text));
  }

  static char* WriteLongInteger(char* out, std::int64_t value);
  void Grow(std::size_t size);
  void Resume(std::size_t written) {
    m_at = m_text.data() + written;
    m_end = m_text.data() + m_text.size();
  }

  std::string m_text;  // what was written, and the room behind it
  char* m_at = nullptr;
  char* m_end = nullptr;
};

void AddUtf8(TextWriter& out, char32_t character);

}  // namespace barcode::label
