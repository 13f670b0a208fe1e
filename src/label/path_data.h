#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <string>

namespace barcode::label {

// Writes the data of an SVG path in whole numbers, without a character too many. What was written
// is in the text after Flush.
class PathData {
 public:
  explicit PathData(std::string& out) : m_out(out) {}

  PathData& Command(char command) {
    Put(command);
    m_apart = true;
    return *this;
  }

  PathData& Number(int value) {
    MakeRoom();
    if (!m_apart && value >= 0) {
      m_buffer[m_size++] = ' ';
    }
    if (value >= 0 && value <= 9) {
      m_buffer[m_size++] = static_cast<char>('0' + value);
    } else {
      char* const begin = m_buffer.data() + m_size;
      m_size += static_cast<std::size_t>(std::to_chars(begin, m_buffer.data() + kSize, value).ptr - begin);
    }
    m_apart = false;
    return *this;
  }

  // Half of a number that is not negative.
  PathData& Half(int value) {
    Number(value / 2);
    if (value % 2 != 0) {
      Put('.');
      Put('5');
    }
    return *this;
  }

  void Flush() {
    m_out.append(m_buffer.data(), m_size);
    m_size = 0;
  }

 private:
  static constexpr std::size_t kSize = 512;
  static constexpr std::size_t kLongestNumber = 16;

  void MakeRoom() {
    if (m_size + kLongestNumber > kSize) {
      Flush();
    }
  }
  void Put(char character) {
    MakeRoom();
    m_buffer[m_size++] = character;
  }

  std::string& m_out;
  std::array<char, kSize> m_buffer;
  std::size_t m_size = 0;
  bool m_apart = true;  // no digit stands before
};

}  // namespace barcode::label
