#include "reading_tables/texts.h"

#include <stdexcept>

namespace barcode::test {
namespace {

// Up to the character `end`, which is taken too.
std::string_view Upto(std::string_view& rest, char end) {
  const std::size_t length = rest.find(end);
  if (length == std::string_view::npos) {
    throw std::runtime_error("a pattern without its " + std::string(1, end));
  }
  const std::string_view taken = rest.substr(0, length);
  rest.remove_prefix(length + 1);
  return taken;
}

std::string CharactersOf(std::string_view set) {
  std::string characters;
  for (std::size_t i = 0; i < set.size(); ++i) {
    const bool isRange = i + 2 < set.size() && set[i + 1] == '-';
    const char last = isRange ? set[i + 2] : set[i];
    for (int c = set[i]; c <= last; ++c) {
      characters += static_cast<char>(c);
    }
    i += isRange ? 2 : 0;
  }
  return characters;
}

// The check digit is added where it is missing.
std::string WithCheckDigit(const std::string& digits, std::size_t length) {
  return digits.size() == length ? digits : digits + Gs1CheckDigit(digits);
}

std::string GtinOf(const std::string& digits) {
  constexpr std::size_t kLength = 13;
  const std::string padded = std::string(kLength - digits.size(), '0') + digits;
  return padded + Gs1CheckDigit(padded);
}

std::string ElementsOf(std::string text) {
  constexpr std::string_view kMarker = "{FNC1}";
  if (text.starts_with(kMarker)) {
    text.erase(0, kMarker.size());
  }
  for (std::size_t at = text.find(kMarker); at != std::string::npos; at = text.find(kMarker)) {
    text.replace(at, kMarker.size(), "\x1D");
  }
  return text;
}

std::string UpcEOf(const std::string& digits) {
  const std::string code = "0" + digits;
  return code + UpcAOfUpcE(code + "0").back();
}

std::string DataOf(Symbology symbology, const std::string& text) {
  switch (symbology) {
    case Symbology::kNw7:
      return text.front() >= 'A' ? text : "C" + text + "C";
    case Symbology::kJan8:
      return WithCheckDigit(text, 8);
    case Symbology::kJan13:
      return WithCheckDigit(text, 13);
    case Symbology::kUpcA:
      return WithCheckDigit(text, 12);
    case Symbology::kUpcE:
      return UpcEOf(text);
    case Symbology::kItf:
      return text.size() % 2 == 0 ? text : "0" + text;
    case Symbology::kDataBar14:
    case Symbology::kDataBarLimited:
      return "01" + GtinOf(text);
    case Symbology::kGs1_128:
      // The payment form's 43 digits are completed.
      return text.size() == 43 ? WithCheckDigit(text, 44) : ElementsOf(text);
    case Symbology::kDataBarExpanded:
      return ElementsOf(text);
    default:
      return text;
  }
}

}  // namespace

std::string TextOf(std::string_view pattern, RandomText& random) {
  std::string text;
  for (std::string_view rest = pattern; !rest.empty();) {
    const char first = rest.front();
    rest.remove_prefix(1);
    if (first != '[') {
      text += first;
      continue;
    }
    const std::string characters = CharactersOf(Upto(rest, ']'));
    int fewest = 1;
    int most = 1;
    if (rest.starts_with('{')) {
      rest.remove_prefix(1);
      const std::string count(Upto(rest, '}'));
      fewest = std::stoi(count);
      const std::size_t comma = count.find(',');
      most = comma == std::string::npos ? fewest : std::stoi(count.substr(comma + 1));
    }
    text += random.Of(characters, fewest, most);
  }
  return text;
}

Content ContentOf(Symbology symbology, const std::string& text) {
  Content content;
  content.text = text;
  content.data = DataOf(symbology, text);
  return content;
}

}  // namespace barcode::test
