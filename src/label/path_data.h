#pragma once

#include <array>
#include <charconv>
#include <string>

namespace barcode::label {

// The data of an SVG path, in whole numbers and without a character too many.
class PathData {
 public:
  explicit PathData(std::string& out) : m_out(out) {}

  PathData& Command(char command) {
    m_out += command;
    m_apart = true;
    return *this;
  }

  PathData& Number(int value) {
    std::array<char, 16> buffer;
    char* const begin = buffer.data();
    char* end = begin;
    if (!m_apart && value >= 0) {
      *end++ = ' ';
    }
    if (value >= 0 && value <= 9) {
      *end++ = static_cast<char>('0' + value);
    } else {
      end = std::to_chars(end, begin + buffer.size(), value).ptr;
    }
    m_out.append(begin, end);
    m_apart = false;
    return *this;
  }

  // Half of a number that is not negative.
  PathData& Half(int value) {
    Number(value / 2);
    if (value % 2 != 0) {
      m_out += ".5";
    }
    return *this;
  }

 private:
  std::string& m_out;
  bool m_apart = true;  // no digit stands before
};

}  // namespace barcode::label
