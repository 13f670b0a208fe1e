#include "datamatrix/channel.h"

#include "base/ascii.h"

namespace barcode::datamatrix {
namespace {

constexpr int kTripletValueLength = kCodewordLength * kTripletCodewords / kTripletSize;
constexpr int kEdifactLength = kCodewordLength * kQuadrupletCodewords / kQuadrupletSize;

void Fail(Channel& channel, ChannelStatus status, std::string_view message, EncoderLines& lines) {
  channel.status = status;
  lines.Add(message);
}

void PushLength(Channel& channel, int twelfths, EncoderLines& lines) {
  constexpr int kLimit = static_cast<int>(kCodewordBuffer) * kCodewordLength;
  if (channel.length > kLimit - twelfths) {
    Fail(channel, ChannelStatus::kFatal, "Can't push input word, encoded length exceeds limits!", lines);
    return;
  }
  channel.length += twelfths;
}

// Does the length exceed whole codewords by what the open triplet or quadruplet has so far?
bool HasConsistentLength(const Channel& channel) {
  int groupSize = 1;
  int unitLength = 0;
  if (UsesTriplets(channel.scheme)) {
    groupSize = kTripletSize;
    unitLength = kTripletValueLength;
  } else if (channel.scheme == Scheme::kEdifact) {
    groupSize = kQuadrupletSize;
    unitLength = kEdifactLength;
  }
  const bool openInRange = unitLength == 0 || (channel.open >= 0 && channel.open < groupSize);
  return openInRange && channel.length >= 0 &&
         channel.length % kCodewordLength == channel.open * unitLength % kCodewordLength;
}

void Unlatch(Channel& channel, EncoderLines& lines) {
  if (UsesTriplets(channel.scheme)) {
    if (channel.open != 0) {
      channel.status = ChannelStatus::kInvalid;
      return;
    }
    PushLength(channel, kCodewordLength, lines);
  } else if (channel.scheme == Scheme::kEdifact) {
    // The open characters are counted already.
    const int codewords = EdifactUnlatchCodewords(channel.open);
    PushLength(channel, codewords * kCodewordLength - channel.open * kEdifactLength, lines);
  }
  channel.scheme = Scheme::kAscii;
  channel.open = 0;
}

void EncodeAscii(Channel& channel, std::uint8_t byte, EncoderLines& lines) {
  if (channel.length % kCodewordLength != 0) {
    Fail(channel, ChannelStatus::kFatal, "Invalid current length detected encoding ascii code", lines);
    return;
  }
  const bool digit = IsDigit(static_cast<char>(byte));
  if (digit && channel.open == 1) {
    channel.open = 0;
    return;
  }
  channel.open = digit ? 1 : 0;
  PushLength(channel, (IsUpperByte(byte) ? 2 : 1) * kCodewordLength, lines);
}

void EncodeTripletValues(Channel& channel, std::uint8_t byte, EncoderLines& lines) {
  const int values = static_cast<int>(TripletValues(channel.scheme, byte).size());
  if (values == 0) {
    channel.status = ChannelStatus::kInvalid;
    return;
  }
  channel.open = (channel.open + values) % kTripletSize;
  PushLength(channel, values * kTripletValueLength, lines);
}

void EncodeEdifact(Channel& channel, std::uint8_t byte, EncoderLines& lines) {
  if (!IsEdifactByte(byte)) {
    channel.status = ChannelStatus::kInvalid;
    return;
  }
  channel.open = (channel.open + 1) % kQuadrupletSize;
  PushLength(channel, kEdifactLength, lines);
}

void EncodeBase256(Channel& channel, EncoderLines& lines) {
  if (channel.open > static_cast<int>(kLongestBase256Field)) {
    Fail(channel, ChannelStatus::kInvalid, "Encoding length out of range!", lines);
    return;
  }
  const auto size = static_cast<std::size_t>(channel.open++);
  const bool lengthGrows = Base256LengthCodewords(size + 1) > Base256LengthCodewords(size);
  PushLength(channel, (lengthGrows ? 2 : 1) * kCodewordLength, lines);
}

// False, with the channel fatal, when the channel cannot take a byte at all.
bool CheckReady(Channel& channel, Scheme target, std::size_t textSize, EncoderLines& lines) {
  std::string_view message;
  if (channel.scheme != target) {
    message = "For encoding, channel scheme must equal target scheme!";
  } else if (channel.position > textSize) {
    message = "Channel input index exceeds range!";
  } else if (channel.position == textSize) {
    message = "Input index out of range while encoding!";
  } else if (channel.length < 0) {
    message = "Invalid encoding length!";
  } else if (target == Scheme::kEdifact && !HasConsistentLength(channel)) {
    message = "Error checking for end of symbol edifact";
  } else {
    return true;
  }
  Fail(channel, ChannelStatus::kFatal, message, lines);
  return false;
}

}  // namespace

Channel StartChannel(Scheme scheme) {
  Channel channel;
  if (scheme != Scheme::kAscii) {
    EncoderLines none;
    ChangeScheme(channel, scheme, none);
  }
  return channel;
}

void ChangeScheme(Channel& channel, Scheme target, EncoderLines& lines) {
  if (channel.scheme == target) {
    Fail(channel, ChannelStatus::kFatal, "Target scheme already equals channel scheme, cannot be changed!",
         lines);
    return;
  }
  if (!HasConsistentLength(channel)) {
    Fail(channel, ChannelStatus::kFatal, "Error changing encryption scheme, current length is invalid!",
         lines);
    return;
  }
  // The latch into the scheme is the least that stands before.
  if (channel.scheme != Scheme::kAscii && channel.length < kCodewordLength) {
    Fail(channel, ChannelStatus::kFatal, "Error while changing encoding scheme, invalid first code word!",
         lines);
    return;
  }
  Unlatch(channel, lines);
  if (!channel.Valid() || target == Scheme::kAscii) {
    return;
  }
  channel.scheme = target;
  channel.open = 0;
  // A Base 256 field begins with its length.
  PushLength(channel, (target == Scheme::kBase256 ? 2 : 1) * kCodewordLength, lines);
}

void EncodeNext(Channel& channel, Scheme target, std::string_view text, EncoderLines& lines) {
  if (!CheckReady(channel, target, text.size(), lines)) {
    return;
  }
  const auto byte = static_cast<std::uint8_t>(text[channel.position]);
  if (target == Scheme::kAscii) {
    EncodeAscii(channel, byte, lines);
  } else if (target == Scheme::kEdifact) {
    EncodeEdifact(channel, byte, lines);
  } else if (target == Scheme::kBase256) {
    EncodeBase256(channel, lines);
  } else {
    EncodeTripletValues(channel, byte, lines);
  }
  ++channel.position;
}

}  // namespace barcode::datamatrix
