#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace barcode::datamatrix {

// The encodation schemes of ISO/IEC 16022.
enum class Scheme : std::uint8_t { kAscii, kC40, kText, kX12, kEdifact, kBase256 };

inline constexpr std::array kSchemes = {Scheme::kAscii, Scheme::kC40,     Scheme::kText,
                                        Scheme::kX12,   Scheme::kEdifact, Scheme::kBase256};

// Codewords with a meaning of their own while the ASCII scheme is in effect.
inline constexpr std::uint8_t kPadCodeword = 129;
inline constexpr std::uint8_t kDigitPairBase = 130;
inline constexpr std::uint8_t kUpperShiftCodeword = 235;

// Latch from ASCII into a scheme, which is not ASCII.
std::uint8_t LatchCodeword(Scheme scheme);

// Leaves C40, TEXT or X12 for ASCII. Stands where a triplet would begin.
inline constexpr std::uint8_t kTripletUnlatch = 254;

// Completes the last triplet of a C40 or TEXT text.
inline constexpr std::uint8_t kTripletPad = 0;

// Three C40, TEXT or X12 values make two codewords, four EDIFACT characters three.
inline constexpr int kTripletSize = 3;
inline constexpr int kTripletCodewords = 2;
inline constexpr int kQuadrupletSize = 4;
inline constexpr int kQuadrupletCodewords = 3;

// Leaves EDIFACT for ASCII. Stands where a character would.
inline constexpr std::uint8_t kEdifactUnlatch = 31;

// Codewords of an open quadruplet that an unlatch ends: six bits a character, the rest of the last one empty.
constexpr int EdifactUnlatchCodewords(int openCharacters) {
  return (6 * (openCharacters + 1) + 7) / 8;
}

// Longest Base 256 field of stated length; a field to the end of the largest symbol holds one byte more.
inline constexpr std::size_t kLongestBase256Field = 1555;
// Fields beyond this state their length in two codewords.
inline constexpr std::size_t kShortBase256Field = 249;

constexpr std::size_t Base256LengthCodewords(std::size_t fieldSize) {
  return fieldSize <= kShortBase256Field ? 1 : 2;
}

constexpr bool UsesTriplets(Scheme scheme) {
  return scheme == Scheme::kC40 || scheme == Scheme::kText || scheme == Scheme::kX12;
}

constexpr bool IsUpperByte(std::uint8_t byte) {
  return byte >= 128;
}

constexpr bool IsEdifactByte(std::uint8_t byte) {
  return byte >= 32 && byte <= 94;
}

// The C40, TEXT or X12 values of one byte, shifts included. Empty for a byte that X12 does not have.
std::span<const std::uint8_t> TripletValues(Scheme scheme, std::uint8_t byte);

// Do the two digits at `position` make one ASCII codeword?
bool IsDigitPair(std::string_view text, std::size_t position);

// Codewords of text[position, end) in the ASCII scheme, for every position; one element more than the text
// has bytes. Digit pairs are taken greedily from the left.
std::vector<std::size_t> AsciiLengths(std::string_view text);

// ISO/IEC 16022 annex B randomising of the codeword at a position (1 for the first of the symbol): of pads
// beyond the first (253-state) and of Base 256 fields (255-state).
std::uint8_t Randomize253State(std::uint8_t codeword, std::size_t position);
std::uint8_t Randomize255State(std::uint8_t codeword, std::size_t position);

}  // namespace barcode::datamatrix
