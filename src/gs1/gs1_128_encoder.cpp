#include "gs1/gs1_128_encoder.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "gs1/gs1_ai_tables.h"

namespace barcode {
namespace {

// Lower than the usual four, as this symbology is meant to be.
constexpr int kLeadingDigitsForSetC = 3;
constexpr std::size_t kDigitsForSwitchToC = 4;

// Length of the marker at a position, 0 when none stands there.
std::size_t MarkerLength(std::string_view text, std::size_t pos) {
  const std::string_view rest = text.substr(pos);
  if (rest.starts_with(kFnc1Marker)) {
    return kFnc1Marker.size();
  }
  return rest.starts_with(kAiMarker) ? kAiMarker.size() : 0;
}

bool IsControl(char character) {
  return static_cast<unsigned char>(character) < 0x20;
}

// Characters that set B has and set A has not; DEL, though it is one of those too, does not count.
bool IsBOnly(char character) {
  return character >= '`' && character <= '~';
}

// The value of a character in set A or B in the standard's order (ISO/IEC 15417), or -1.
int CharacterValue(Code128Set set, char character) {
  const int byte = static_cast<unsigned char>(character);
  if (set == Code128Set::kA) {
    if (byte < 0x20) {
      return byte + 64;
    }
    return byte <= 0x5F ? byte - 0x20 : -1;
  }
  return byte >= 0x20 && byte <= 0x7F ? byte - 0x20 : -1;
}

bool StartsWithDigits(std::string_view text) {
  int count = 0;
  std::size_t pos = 0;
  while (pos + 1 < text.size() && count < kLeadingDigitsForSetC) {  // the last character is not looked at
    if (const std::size_t marker = MarkerLength(text, pos); marker > 0) {
      pos += marker;
      continue;
    }
    if (!IsDigit(text[pos])) {
      return false;
    }
    ++count;
    ++pos;
  }
  return count >= kLeadingDigitsForSetC;
}

// For every position, whether the text from there on holds a control character before any B-only one; a
// marker counts as the characters it is written with. One pass from the right keeps long texts linear.
std::vector<bool> FindRestsForSetA(std::string_view text) {
  std::vector<bool> rests(text.size() + 1, false);
  for (std::size_t pos = text.size(); pos-- > 0;) {
    rests[pos] = IsControl(text[pos]) || (!IsBOnly(text[pos]) && rests[pos + 1]);
  }
  return rests;
}

class Encoder {
 public:
  explicit Encoder(std::string_view text) : m_text(text), m_restsForSetA(FindRestsForSetA(text)) {
    m_values.reserve(text.size() + 4);
  }

  Code128Values Run() {
    m_set = StartsWithDigits(m_text) ? Code128Set::kC : SetForRest();
    m_values.push_back(StartValue(m_set));
    while (m_pos < m_text.size()) {
      if (!EncodeMarker()) {
        EncodeData();
      }
    }
    AppendCheckAndStop(m_values);
    return std::move(m_values);
  }

 private:
  [[nodiscard]] Code128Set SetForRest() const {
    return m_restsForSetA[m_pos] ? Code128Set::kA : Code128Set::kB;
  }

  // FNC1 is the same value in every set and leaves the set as it is.
  bool EncodeMarker() {
    if (m_text.substr(m_pos).starts_with(kFnc1Marker)) {
      m_values.push_back(kCode128Fnc1);
    }
    const std::size_t marker = MarkerLength(m_text, m_pos);
    m_pos += marker;
    return marker > 0;
  }

  void EncodeData() {
    if (m_set == Code128Set::kC) {
      EncodeInSetC();
    } else {
      EncodeInSetAOrB();
    }
  }

  void EncodeInSetC() {
    const int pair = CharValue(Code128Set::kC, m_text, m_pos);
    if (pair >= 0) {
      m_values.push_back(pair);
      m_pos += 2;
      return;
    }
    SwitchTo(SetForRest());
    EncodeCharacter();
  }

  void EncodeInSetAOrB() {
    const char character = m_text[m_pos];
    const std::string_view next = m_text.substr(m_pos, kDigitsForSwitchToC);
    if (next.size() == kDigitsForSwitchToC && AllDigits(next)) {
      SwitchTo(Code128Set::kC);
      return;  // the digits follow as pairs
    }
    if (m_set == Code128Set::kA && IsBOnly(character)) {
      SwitchTo(Code128Set::kB);
    }
    if (m_set == Code128Set::kB && IsControl(character)) {
      SwitchTo(Code128Set::kA);
    }
    EncodeCharacter();
  }

  void SwitchTo(Code128Set set) {
    m_values.push_back(SwitchValue(set));
    m_set = set;
  }

  // A character that the set does not hold is left out of the symbol.
  void EncodeCharacter() {
    const int value = CharacterValue(m_set, m_text[m_pos]);
    if (value >= 0) {
      m_values.push_back(value);
    }
    ++m_pos;
  }

  std::string_view m_text;
  std::vector<bool> m_restsForSetA;
  std::size_t m_pos = 0;
  Code128Set m_set = Code128Set::kB;
  Code128Values m_values;
};

// The text without its markers, as Code 128 plans it. Data that would be taken for FNC1 is refused.
std::string MarkedText(std::string_view text) {
  if (text.find(kCode128Fnc1Mark) != std::string_view::npos) {
    throw std::runtime_error("No code set holds a byte above 0x7F");
  }
  std::string marked;
  marked.reserve(text.size());
  for (std::size_t pos = 0; pos < text.size();) {
    const std::size_t marker = MarkerLength(text, pos);
    if (marker == 0) {
      marked += text[pos++];
      continue;
    }
    if (marker == kFnc1Marker.size()) {
      marked += kCode128Fnc1Mark;
    }
    pos += marker;
  }
  return marked;
}

// Length of the application identifier that a field begins with.
std::size_t AiLength(std::string_view field) {
  const auto* entry = std::find_if(kGs1_128AiLengths.begin(), kGs1_128AiLengths.end(),
                                   [&](const Gs1_128AiLength& ai) { return field.starts_with(ai.prefix); });
  return entry == kGs1_128AiLengths.end() ? kGs1_128OtherAiLength : entry->length;
}

// Position of the next marker, or the text's end.
std::size_t FindMarker(std::string_view text, std::size_t pos) {
  pos = text.find('{', pos);
  while (pos != std::string_view::npos && MarkerLength(text, pos) == 0) {
    pos = text.find('{', pos + 1);
  }
  return std::min(pos, text.size());
}

}  // namespace

RunVector EncodeGs1_128(std::string_view text, Gs1_128Rule rule) {
  return ValuesToPattern(Gs1_128Values(text, rule));
}

Code128Values Gs1_128Values(std::string_view text, Gs1_128Rule rule) {
  return rule == Gs1_128Rule::kFewestValues ? EncodeValuesWithFnc1(MarkedText(text)) : Encoder(text).Run();
}

std::string Gs1_128DisplayText(std::string_view text) {
  std::size_t end = FindMarker(text, 0);
  std::string display(text.substr(0, end));
  while (end < text.size()) {
    const std::size_t begin = end + MarkerLength(text, end);
    end = FindMarker(text, begin);
    const std::string_view field = text.substr(begin, end - begin);
    if (field.empty()) {
      continue;
    }
    const std::string_view ai = field.substr(0, AiLength(field));
    display.append("(").append(ai).append(")").append(field.substr(ai.size()));
  }
  return display;
}

}  // namespace barcode
