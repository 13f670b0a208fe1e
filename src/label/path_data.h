#pragma once

#include <cstddef>

#include "label/text_writer.h"

namespace barcode::label {

// Writes the data of an SVG path in whole numbers, without a character too many. What was written is in the
// text after Flush.
class PathData {
 public:
  explicit PathData(TextWriter& out) : m_out(out) { Continue(kLongest); }

  PathData& Command(char command) {
    MakeRoom();
    *m_at++ = command;
    m_apart = true;
    return *this;
  }

  PathData& Number(int value) {
    MakeRoom();
    if (!m_apart && value >= 0) {
      *m_at++ = ' ';
    }
    m_at = TextWriter::WriteInteger(m_at, value);
    m_apart = false;
    return *this;
  }

  // A move, and a line from there: in `direction` "h" or "v". All are relative.
  PathData& Line(int dx, int dy, char direction, int length) {
    MakeRoom(3 * kLongest);
    *m_at++ = 'm';
    m_at = TextWriter::WriteInteger(m_at, dx);
    if (dy >= 0) {
      *m_at++ = ' ';
    }
    m_at = TextWriter::WriteInteger(m_at, dy);
    *m_at++ = direction;
    m_at = TextWriter::WriteInteger(m_at, length);
    m_apart = false;
    return *this;
  }

  // Half of a number that is not negative.
  PathData& Half(int value) {
    Number(value / 2);
    if (value % 2 != 0) {
      MakeRoom();
      *m_at++ = '.';
      *m_at++ = '5';
    }
    return *this;
  }

  void Flush() { m_out.WroteTo(m_at); }

 private:
  // A number with the blank in front of it is the longest.
  static constexpr std::size_t kLongest = 1 + TextWriter::kLongestInteger;

  void MakeRoom(std::size_t size = kLongest) {
    if (static_cast<std::size_t>(m_end - m_at) < size) {
      m_out.WroteTo(m_at);
      Continue(size);
    }
  }
  void Continue(std::size_t size) {
    m_at = m_out.MakeRoom(size);
    m_end = m_out.RoomEnd();
  }

  TextWriter& m_out;
  char* m_at = nullptr;
  char* m_end = nullptr;
  bool m_apart = true;  // no digit stands before
};

}  // namespace barcode::label
