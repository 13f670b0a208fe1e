#pragma once

#include <string>

#include "base/line.h"

namespace barcode {

// What an encoder has to say beyond its result: lines in order. Encoders write to no stream; they take one of
// these as their last parameter, and the class prints it, also when the encoder has thrown.
class EncoderLines {
 public:
  // A line of pieces (see AppendPieces); the line break is added.
  template <class... Pieces>
  void Add(const Pieces&... pieces) {
    AppendPieces(m_text, pieces..., '\n');
  }

  // All lines, each with its line break.
  const std::string& Text() const { return m_text; }
  bool Empty() const { return m_text.empty(); }

 private:
  std::string m_text;
};

}  // namespace barcode
