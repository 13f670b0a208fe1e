#pragma once

#include <cstddef>
#include <string_view>

#include "base/encoder_lines.h"
#include "datamatrix/schemes.h"

namespace barcode::datamatrix {

// Codewords that the buffer of an encoding holds.
inline constexpr std::size_t kCodewordBuffer = 4096;

// Encoded lengths are counted in twelfths of a codeword: a triplet value takes 8, an EDIFACT character 9.
inline constexpr int kCodewordLength = 12;

enum class ChannelStatus : std::uint8_t { kValid, kInvalid, kFatal };

// An encoding under way: how far it is, not its codewords, which follow from the scheme of each byte (see
// SchemeRun). Copying one is cheap.
struct Channel {
  Scheme scheme = Scheme::kAscii;
  ChannelStatus status = ChannelStatus::kValid;
  std::size_t position = 0;  // bytes of the text taken
  int length = 0;            // twelfths of a codeword, open triplets and quadruplets included
  // What is open: the values of a triplet, the characters of an EDIFACT quadruplet, the bytes of a Base 256
  // field, or one digit of an ASCII pair.
  int open = 0;

  bool Valid() const { return status == ChannelStatus::kValid; }
};

// A channel at the beginning of the text, latched into the scheme.
Channel StartChannel(Scheme scheme);

// Unlatches from the channel's scheme and latches into the target. The channel becomes invalid where its
// scheme cannot be left: inside a triplet.
void ChangeScheme(Channel& channel, Scheme target, EncoderLines& lines);

// Takes one byte of the text in the target scheme, which must be the channel's. The channel becomes invalid
// when the scheme does not have the byte, fatal when the buffer is full or the channel is in no order.
void EncodeNext(Channel& channel, Scheme target, std::string_view text, EncoderLines& lines);

}  // namespace barcode::datamatrix
