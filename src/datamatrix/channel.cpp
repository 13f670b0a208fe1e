#include "datamatrix/channel.h"

#include <array>

#include "base/ascii.h"

namespace barcode {
namespace {

constexpr int kTripletValueLength = 8;
constexpr int kEdifactLength = 9;
constexpr int kTripletSize = 3;
constexpr int kQuadrupletSize = 4;

void Fail(Channel& channel, ChannelStatus status, std::string_view message, EncoderMessages& messages) {
  channel.status = status;
  messages.push_back(message);
}

void PushLength(Channel& channel, int twelfths, EncoderMessages& messages) {
  constexpr int kLimit = static_cast<int>(kCodewordBuffer) * kCodewordLength;
  if (channel.length > kLimit - twelfths) {
    Fail(channel, ChannelStatus::kFatal, "Can't push input word, encoded length exceeds limits!\n", messages);
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
  } else if (channel.scheme == EncodationScheme::kEdifact) {
    groupSize = kQuadrupletSize;
    unitLength = kEdifactLength;
  }
  const bool openInRange = unitLength == 0 || (channel.open >= 0 && channel.open < groupSize);
  return openInRange && channel.length >= 0 &&
         channel.length % kCodewordLength == channel.open * unitLength % kCodewordLength;
}

// The EDIFACT unlatch takes the next six bits; the rest of its codeword stays empty.
int EdifactUnlatchLength(int openCharacters) {
  constexpr std::array<int, kQuadrupletSize> kCodewords = {1, 2, 3, 3};
  return kCodewords[static_cast<std::size_t>(openCharacters)] * kCodewordLength -
         openCharacters * kEdifactLength;
}

void Unlatch(Channel& channel, EncoderMessages& messages) {
  if (UsesTriplets(channel.scheme)) {
    if (channel.open != 0) {
      channel.status = ChannelStatus::kInvalid;
      return;
    }
    PushLength(channel, kCodewordLength, messages);
  } else if (channel.scheme == EncodationScheme::kEdifact) {
    PushLength(channel, EdifactUnlatchLength(channel.open), messages);
  }
  channel.scheme = EncodationScheme::kAscii;
  channel.open = 0;
}

void EncodeAscii(Channel& channel, std::uint8_t byte, EncoderMessages& messages) {
  if (channel.length % kCodewordLength != 0) {
    Fail(channel, ChannelStatus::kFatal, "Invalid current length detected encoding ascii code\n", messages);
    return;
  }
  const bool digit = IsDigit(static_cast<char>(byte));
  if (digit && channel.open == 1) {
    channel.open = 0;
    return;
  }
  channel.open = digit ? 1 : 0;
  PushLength(channel, (IsUpperByte(byte) ? 2 : 1) * kCodewordLength, messages);
}

void EncodeTripletValues(Channel& channel, std::uint8_t byte, EncoderMessages& messages) {
  const int values = static_cast<int>(TripletValues(channel.scheme, byte).size());
  if (values == 0) {
    channel.status = ChannelStatus::kInvalid;
    return;
  }
  channel.open = (channel.open + values) % kTripletSize;
  PushLength(channel, values * kTripletValueLength, messages);
}

void EncodeEdifact(Channel& channel, std::uint8_t byte, EncoderMessages& messages) {
  if (!IsEdifactByte(byte)) {
    channel.status = ChannelStatus::kInvalid;
    return;
  }
  channel.open = (channel.open + 1) % kQuadrupletSize;
  PushLength(channel, kEdifactLength, messages);
}

void EncodeBase256(Channel& channel, EncoderMessages& messages) {
  if (channel.open > static_cast<int>(kLongestBase256Field)) {
    Fail(channel, ChannelStatus::kInvalid, "Encoding length out of range!\n", messages);
    return;
  }
  ++channel.open;
  const bool lengthGrows = channel.open == static_cast<int>(kShortBase256Field) + 1;
  PushLength(channel, (lengthGrows ? 2 : 1) * kCodewordLength, messages);
}

// False, with the channel fatal, when the channel cannot take a byte at all.
bool CheckReady(Channel& channel, EncodationScheme target, std::size_t textSize, EncoderMessages& messages) {
  std::string_view message;
  if (channel.scheme != target) {
    message = "For encoding, channel scheme must equal target scheme!\n";
  } else if (channel.position > textSize) {
    message = "Channel input index exceeds range!\n";
  } else if (channel.position == textSize) {
    message = "Input index out of range while encoding!\n";
  } else if (channel.length < 0) {
    message = "Invalid encoding length!\n";
  } else if (target == EncodationScheme::kEdifact && !HasConsistentLength(channel)) {
    message = "Error checking for end of symbol edifact\n";
  } else {
    return true;
  }
  Fail(channel, ChannelStatus::kFatal, message, messages);
  return false;
}

}  // namespace

Channel StartChannel(EncodationScheme scheme) {
  Channel channel;
  if (scheme != EncodationScheme::kAscii) {
    EncoderMessages none;
    ChangeScheme(channel, scheme, none);
  }
  return channel;
}

void ChangeScheme(Channel& channel, EncodationScheme target, EncoderMessages& messages) {
  if (channel.scheme == target) {
    Fail(channel, ChannelStatus::kFatal, "Target scheme already equals channel scheme, cannot be changed!\n",
         messages);
    return;
  }
  if (!HasConsistentLength(channel)) {
    Fail(channel, ChannelStatus::kFatal, "Error changing encryption scheme, current length is invalid!\n",
         messages);
    return;
  }
  // The latch into the scheme is the least that stands before.
  if (channel.scheme != EncodationScheme::kAscii && channel.length < kCodewordLength) {
    Fail(channel, ChannelStatus::kFatal, "Error while changing encoding scheme, invalid first code word!\n",
         messages);
    return;
  }
  Unlatch(channel, messages);
  if (!channel.Valid() || target == EncodationScheme::kAscii) {
    return;
  }
  channel.scheme = target;
  channel.open = 0;
  // A Base 256 field begins with its length.
  PushLength(channel, (target == EncodationScheme::kBase256 ? 2 : 1) * kCodewordLength, messages);
}

void EncodeNext(Channel& channel, EncodationScheme target, std::string_view text, EncoderMessages& messages) {
  if (!CheckReady(channel, target, text.size(), messages)) {
    return;
  }
  const auto byte = static_cast<std::uint8_t>(text[channel.position]);
  if (target == EncodationScheme::kAscii) {
    EncodeAscii(channel, byte, messages);
  } else if (target == EncodationScheme::kEdifact) {
    EncodeEdifact(channel, byte, messages);
  } else if (target == EncodationScheme::kBase256) {
    EncodeBase256(channel, messages);
  } else {
    EncodeTripletValues(channel, byte, messages);
  }
  ++channel.position;
}

}  // namespace barcode
