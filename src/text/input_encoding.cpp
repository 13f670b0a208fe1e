#include "text/input_encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <utility>

#include "base/keywords.h"
#include "base/utf8.h"

namespace barcode {
namespace {

// Every other keyword means UTF-8.
constexpr Keywords<CharacterSet, 3> kCharacterSets = {{
    {"shift-jis", CharacterSet::kShiftJis},
    {"Shift-JIS", CharacterSet::kShiftJis},
    {"shift_jis", CharacterSet::kShiftJis},
}};

constexpr const char* kIconvUtf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
constexpr const char* kIconvShiftJis = "CP932";

constexpr const char* kNoShiftJisDecoder =
    "Character set conversion is not available: cannot read Shift-JIS (CP932).";
constexpr const char* kNoShiftJisEncoder =
    "Character set conversion is not available: cannot write Shift-JIS (CP932).";

// After an error iconv converts the text before it once more. Short chunks keep that repetition, and with it
// the whole conversion, linear however many characters have no mapping.
constexpr std::size_t kChunk = 64;

constexpr char16_t kUndefinedShiftJis = 0x30FB;
constexpr char kUnmappable = '?';

// Single bytes that code page 932 maps one to one and iconv does not know.
struct SingleByte {
  std::uint8_t byte;
  char16_t unit;
};
constexpr std::array<SingleByte, 5> kExtraSingleBytes = {
    {{0x80, 0x0080}, {0xA0, 0x00A0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}}};

class Iconv {
 public:
  enum class Stop { kNone, kIllegal, kIncomplete };

  // Throws std::runtime_error with the message when the C library has no such converter or cannot open it.
  Iconv(const char* to, const char* from, const char* message) : m_descriptor(iconv_open(to, from)) {
    if (m_descriptor == Invalid()) {
      throw std::runtime_error(message);
    }
  }
  ~Iconv() { iconv_close(m_descriptor); }
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;

  // Converts from the front of `in`, which shrinks to what is left, and appends to `out`. `in` holds at most
  // kChunk units.
  template <class In, class Out>
  Stop Append(std::span<const In>& in, std::basic_string<Out>& out) {
    std::array<Out, kChunk * 2> buffer;
    // iconv's parameter lacks a const; the input is not written to.
    char* source = const_cast<char*>(reinterpret_cast<const char*>(in.data()));  // NOLINT(*-const-cast)
    char* target = reinterpret_cast<char*>(buffer.data());
    std::size_t sourceLeft = in.size_bytes();
    std::size_t targetLeft = sizeof(buffer);
    const std::size_t result = iconv(m_descriptor, &source, &sourceLeft, &target, &targetLeft);
    const int error = errno;
    out.append(buffer.data(), (sizeof(buffer) - targetLeft) / sizeof(Out));
    in = in.last(sourceLeft / sizeof(In));
    if (result != static_cast<std::size_t>(-1)) {
      return Stop::kNone;
    }
    return error == EINVAL ? Stop::kIncomplete : Stop::kIllegal;
  }

 private:
  static iconv_t Invalid() { return reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1)); }  // NOLINT

  iconv_t m_descriptor;
};

std::u16string Utf8ToUtf16(std::string_view bytes) {
  std::u16string units;
  units.reserve(bytes.size());
  while (!bytes.empty()) {
    const char32_t character = TakeCharacter(bytes);
    if (character < 0x10000) {
      units.push_back(static_cast<char16_t>(character));
    } else {
      const std::uint32_t offset = character - 0x10000;
      units.push_back(static_cast<char16_t>(0xD800 + (offset >> 10U)));
      units.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FFU)));
    }
  }
  return units;
}

// `units` comes from one of the decoders here: surrogates stand in pairs.
std::string Utf16ToUtf8(std::u16string_view units) {
  std::string bytes;
  bytes.reserve(units.size() * 3);
  for (std::size_t i = 0; i < units.size(); ++i) {
    std::uint32_t value = units[i];
    if (IsSurrogate(value)) {
      ++i;
      value = 0x10000 + ((value - 0xD800) << 10U) + (units[i] - 0xDC00U);
    }
    AppendUtf8(bytes, value);
  }
  return bytes;
}

// Replaces what iconv stopped at: a single byte of the code page, or an undefined double-byte code, whose
// second byte goes with it.
void DecodeUndefined(std::span<const char>& rest, std::u16string& units) {
  const auto byte = static_cast<std::uint8_t>(rest.front());
  const auto single = std::find_if(kExtraSingleBytes.begin(), kExtraSingleBytes.end(),
                                   [byte](const SingleByte& entry) { return entry.byte == byte; });
  if (single != kExtraSingleBytes.end()) {
    units.push_back(single->unit);
    rest = rest.subspan(1);
    return;
  }
  units.push_back(kUndefinedShiftJis);
  rest = rest.subspan(std::min<std::size_t>(2, rest.size()));
}

std::u16string ShiftJisToUtf16(std::string_view bytes) {
  Iconv converter(kIconvUtf16, kIconvShiftJis, kNoShiftJisDecoder);
  std::u16string units;
  units.reserve(bytes.size());
  std::span<const char> rest(bytes);
  while (!rest.empty()) {
    std::span<const char> chunk = rest.first(std::min(kChunk, rest.size()));
    const std::size_t size = chunk.size();
    const Iconv::Stop stop = converter.Append(chunk, units);
    rest = rest.subspan(size - chunk.size());
    // A code split by the end of the chunk is simply the start of the next one, unless nothing follows.
    if (stop == Iconv::Stop::kIllegal || (stop == Iconv::Stop::kIncomplete && rest.size() == 1)) {
      DecodeUndefined(rest, units);
    }
  }
  return units;
}

char EncodeUnmapped(char16_t unit) {
  const auto single = std::find_if(kExtraSingleBytes.begin(), kExtraSingleBytes.end(),
                                   [unit](const SingleByte& entry) { return entry.unit == unit; });
  return single == kExtraSingleBytes.end() ? kUnmappable : static_cast<char>(single->byte);
}

std::string Utf16ToShiftJis(std::u16string units) {
  Iconv converter(kIconvShiftJis, kIconvUtf16, kNoShiftJisEncoder);
  std::string bytes;
  // The code page holds nothing outside the basic plane, and iconv drops some of those characters silently:
  // each half of a pair becomes a character that certainly has no mapping.
  std::replace_if(units.begin(), units.end(), IsSurrogate, char16_t{kReplacementCharacter});
  bytes.reserve(units.size() * 2);
  std::span<const char16_t> rest(units);
  while (!rest.empty()) {
    std::span<const char16_t> chunk = rest.first(std::min(kChunk, rest.size()));
    const std::size_t size = chunk.size();
    const Iconv::Stop stop = converter.Append(chunk, bytes);
    rest = rest.subspan(size - chunk.size());
    if (stop != Iconv::Stop::kNone) {
      bytes.push_back(EncodeUnmapped(rest.front()));
      rest = rest.subspan(1);
    }
  }
  return bytes;
}

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<std::uint8_t>(c) < 0x80; });
}

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const Utf8Sequence sequence = ReadUtf8Sequence(bytes);
    if (!sequence.complete) {
      return false;
    }
    bytes.remove_prefix(sequence.length);
  }
  return true;
}

std::string ConvertEncoding(std::string_view bytes, CharacterSet from, CharacterSet to) {
  const std::string_view text = bytes.substr(0, bytes.find('\0'));
  if (IsAscii(text)) {
    return std::string(text);
  }
  std::u16string units = from == CharacterSet::kShiftJis ? ShiftJisToUtf16(text) : Utf8ToUtf16(text);
  return to == CharacterSet::kShiftJis ? Utf16ToShiftJis(std::move(units)) : Utf16ToUtf8(units);
}

std::string ConvertInputEncoding(std::string_view bytes, std::string_view stringEncoding) {
  const CharacterSet wanted = FindKeyword(kCharacterSets, stringEncoding).value_or(CharacterSet::kUtf8);
  const CharacterSet given = IsValidUtf8(bytes) ? CharacterSet::kUtf8 : CharacterSet::kShiftJis;
  return given == wanted ? std::string(bytes) : ConvertEncoding(bytes, given, wanted);
}

}  // namespace barcode
