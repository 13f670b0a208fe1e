#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "datamatrix/messages.h"

namespace barcode {

// The encodation schemes of ISO/IEC 16022.
enum class EncodationScheme : std::uint8_t { kAscii, kC40, kText, kX12, kEdifact, kBase256 };

inline constexpr int kEncodationSchemes = 6;

// The scheme option: the number of a scheme or one of these.
inline constexpr int kAutomaticScheme = -1;
inline constexpr int kNoEncodation = -2;

// Codewords with a meaning of their own while the ASCII scheme is in effect.
inline constexpr std::uint8_t kPadCodeword = 129;
inline constexpr std::uint8_t kDigitPairBase = 130;
inline constexpr std::uint8_t kUpperShiftCodeword = 235;

// Latch from ASCII into a scheme other than ASCII.
std::uint8_t LatchCodeword(EncodationScheme scheme);

// Leaves C40, TEXT or X12 for ASCII. Stands where a triplet would begin.
inline constexpr std::uint8_t kTripletUnlatch = 254;

// Leaves EDIFACT for ASCII. Stands where a character would.
inline constexpr std::uint8_t kEdifactUnlatch = 31;

// Completes the last triplet of a C40 or TEXT text.
inline constexpr std::uint8_t kTripletPad = 0;

// Longest Base 256 field of stated length; a field to the end of the largest symbol holds one byte more.
inline constexpr std::size_t kLongestBase256Field = 1555;
// Fields beyond this state their length in two codewords.
inline constexpr std::size_t kShortBase256Field = 249;

constexpr bool UsesTriplets(EncodationScheme scheme) {
  return scheme == EncodationScheme::kC40 || scheme == EncodationScheme::kText ||
         scheme == EncodationScheme::kX12;
}

constexpr bool IsUpperByte(std::uint8_t byte) {
  return byte >= 128;
}

constexpr bool IsEdifactByte(std::uint8_t byte) {
  return byte >= 32 && byte <= 94;
}

// The C40, TEXT or X12 values of one byte, shifts included. Empty for a byte that X12 does not have.
std::span<const std::uint8_t> TripletValues(EncodationScheme scheme, std::uint8_t byte);

// Do the two digits at `position` make one ASCII codeword?
bool IsDigitPair(std::string_view text, std::size_t position);

// Codewords of text[position, end) in the ASCII scheme, for every position; one element more than the text
// has bytes. Digit pairs are taken greedily from the left.
std::vector<std::size_t> AsciiLengths(std::string_view text);

// ISO/IEC 16022 annex B randomising of the codeword at a position (1 for the first of the symbol): of pads
// beyond the first (253-state) and of Base 256 fields (255-state, with its inverse). A codeword that is none
// gives 0 and appends to `messages`.
std::uint8_t Randomize253State(int codeword, std::size_t position, EncoderMessages& messages);
std::uint8_t Randomize255State(std::uint8_t codeword, std::size_t position);
std::uint8_t Unrandomize255State(int codeword, std::size_t position, EncoderMessages& messages);

}  // namespace barcode
