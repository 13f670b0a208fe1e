#pragma once

#include <iterator>
#include <string>

#include "support/random_text.h"

namespace barcode::test {

// Three bytes of UTF-8: hiragana, katakana or a kanji.
inline std::string Utf8Character(RandomText& random) {
  const int code = random.Number(0, 1) == 0 ? random.Number(0x3041, 0x30F0) : random.Number(0x4E00, 0x9DFF);
  return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
          static_cast<char>(0x80 | (code & 0x3F))};
}

// A half-width katakana, or two bytes of which the second may look like ASCII.
inline std::string ShiftJisCharacter(RandomText& random) {
  if (random.Number(0, 2) == 0) {
    return {static_cast<char>(random.Number(0xA1, 0xDF))};
  }
  const int trail = random.Number(0, 1) == 0 ? random.Number(0x40, 0x7E) : random.Number(0x80, 0xFC);
  return {static_cast<char>(random.Number(0x82, 0x9F)), static_cast<char>(trail)};
}

// Texts of the kinds that hosts send, in pieces that follow each other without order: digits, ASCII, UTF-8,
// Shift-JIS, bytes. The lengths of the pieces lie on both sides of the bounds at which an encoder changes its
// mode. lowest: the smallest byte value among the bytes, 1 where the text is to be a C string.
inline std::string MixedText(RandomText& random, int maxPieces, int lowest = 0) {
  static constexpr int kLengths[] = {1, 1, 1, 2, 2, 3, 4, 5, 6, 7, 11, 12, 13, 14, 43, 44, 45, 89};
  std::string text;
  for (int pieces = random.Number(1, maxPieces); pieces > 0; --pieces) {
    const int length = kLengths[random.Number(0, std::size(kLengths) - 1)];
    const int kind = random.Number(0, 6);
    const std::size_t end = text.size() + static_cast<std::size_t>(length);
    while (text.size() < end) {
      switch (kind) {
        case 0:
          text += random.Digits(1, 1);
          break;
        case 1:
          text += random.Bytes(1, 1, ' ', '~');
          break;
        case 2:
          text += random.Of("abcxyz ABC,.;\r\n\t-*!", 1, 1);
          break;
        case 3:
          text += random.Bytes(1, 1, lowest, 255);
          break;
        case 4:
          text += random.Bytes(1, 1, 128, 255);
          break;
        case 5:
          text += Utf8Character(random);
          break;
        default:
          text += ShiftJisCharacter(random);
          break;
      }
    }
  }
  return text;
}

}  // namespace barcode::test
