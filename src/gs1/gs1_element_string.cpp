#include "gs1/gs1_element_string.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/ascii.h"

namespace barcode {
namespace {

constexpr std::string_view kAiMarker = "{AI}";
constexpr std::string_view kFnc1Marker = "{FNC1}";

// The AIs that begin with the same two digits. totalLength: AI and data together where the standard
// predefines it; 0 where the field ends at a separator or with the text.
struct AiRule {
  std::uint8_t aiLength = 0;  // 0: no such AI
  std::uint8_t totalLength = 0;
};

using AiRules = std::array<AiRule, 100>;

constexpr void SetRules(AiRules& rules, std::size_t first, std::size_t last, AiRule rule) {
  for (std::size_t prefix = first; prefix <= last; ++prefix) {
    rules[prefix] = rule;
  }
}

// GS1 General Specifications: AI lengths and element strings with predefined length.
constexpr AiRules MakeAiRules() {
  AiRules rules{};
  SetRules(rules, 0, 0, {2, 20});
  SetRules(rules, 1, 3, {2, 16});
  SetRules(rules, 4, 4, {2, 18});
  SetRules(rules, 10, 10, {2, 0});
  SetRules(rules, 11, 19, {2, 8});
  SetRules(rules, 20, 20, {2, 4});
  SetRules(rules, 21, 22, {2, 0});
  SetRules(rules, 23, 25, {3, 0});
  SetRules(rules, 30, 30, {2, 0});
  SetRules(rules, 31, 36, {4, 10});
  SetRules(rules, 37, 37, {2, 0});
  SetRules(rules, 39, 39, {4, 0});
  SetRules(rules, 40, 40, {3, 0});
  SetRules(rules, 41, 41, {3, 16});
  SetRules(rules, 42, 42, {3, 0});
  SetRules(rules, 43, 43, {4, 0});
  SetRules(rules, 70, 70, {4, 0});
  SetRules(rules, 71, 71, {3, 0});
  SetRules(rules, 72, 72, {4, 0});
  SetRules(rules, 80, 82, {4, 0});
  SetRules(rules, 90, 99, {2, 0});
  return rules;
}

constexpr AiRules kAiRules = MakeAiRules();

// The rule of the AI that a field begins with; a rule of length 0 when it begins with none.
AiRule RuleOf(std::string_view field) {
  if (field.size() < 2 || !AllDigits(field.substr(0, 2))) {
    return {};
  }
  const int prefix = (field[0] - '0') * 10 + (field[1] - '0');
  const AiRule rule = kAiRules[static_cast<std::size_t>(prefix)];
  return field.size() >= rule.aiLength && AllDigits(field.substr(0, rule.aiLength)) ? rule : AiRule{};
}

// Appends "(AI)" and returns the data behind it.
std::string_view AppendAi(std::string& out, std::string_view field, AiRule rule) {
  out.append("(").append(field.substr(0, rule.aiLength)).append(")");
  return field.substr(rule.aiLength);
}

// One AI with all the rest as its data.
void AppendMarkedField(std::string& out, std::string_view field) {
  const AiRule rule = RuleOf(field);
  out += rule.aiLength == 0 ? field : AppendAi(out, field, rule);
}

// Fields of predefined length and at most one of variable length at the end.
void AppendFields(std::string& out, std::string_view fields) {
  while (!fields.empty()) {
    const AiRule rule = RuleOf(fields);
    const bool predefined = rule.totalLength != 0;
    const bool complete = fields.size() >= rule.totalLength && AllDigits(fields.substr(0, rule.totalLength));
    if (rule.aiLength == 0 || (predefined && !complete)) {
      out += fields;
      return;
    }
    const std::string_view field = fields.substr(0, predefined ? rule.totalLength : fields.size());
    out += AppendAi(out, field, rule);
    fields.remove_prefix(field.size());
  }
}

// Drops the marks from a position on.
void DropMarks(std::vector<std::size_t>& marks, std::size_t from) {
  while (!marks.empty() && marks.back() >= from) {
    marks.pop_back();
  }
}

void TrimSeparators(Gs1ElementString& elements) {
  std::string& text = elements.text;
  const std::size_t first = std::min(text.find_first_not_of(kGs1Separator), text.size());
  text.erase(0, first);
  text.erase(text.find_last_not_of(kGs1Separator) + 1);
  for (std::size_t& mark : elements.markedAis) {
    mark -= std::min(mark, first);
  }
  DropMarks(elements.markedAis, text.size());
  const auto repeated = std::unique(elements.markedAis.begin(), elements.markedAis.end());
  elements.markedAis.erase(repeated, elements.markedAis.end());
}

}  // namespace

Gs1ElementString ReadElementString(std::string_view input) {
  Gs1ElementString elements;
  std::string& text = elements.text;
  for (const char c : input) {
    text += c;
    if (c != '}') {
      continue;
    }
    if (text.ends_with(kAiMarker)) {
      text.resize(text.size() - kAiMarker.size());
      DropMarks(elements.markedAis, text.size());
      elements.markedAis.push_back(text.size());
    } else if (text.ends_with(kFnc1Marker)) {
      text.resize(text.size() - kFnc1Marker.size());
      DropMarks(elements.markedAis, text.size() + 1);
      text += kGs1Separator;
    }
  }
  TrimSeparators(elements);
  return elements;
}

std::string HumanReadable(const Gs1ElementString& elements) {
  const std::string_view text = elements.text;
  std::string out;
  auto mark = elements.markedAis.begin();
  for (std::size_t begin = 0; begin < text.size();) {
    while (mark != elements.markedAis.end() && *mark < begin) {
      ++mark;
    }
    const bool marked = mark != elements.markedAis.end() && *mark == begin;
    const auto nextMark = marked ? mark + 1 : mark;
    std::size_t end = std::min(text.find(kGs1Separator, begin), text.size());
    if (nextMark != elements.markedAis.end()) {
      end = std::min(end, *nextMark);
    }
    const std::string_view field = text.substr(begin, end - begin);
    marked ? AppendMarkedField(out, field) : AppendFields(out, field);
    begin = end < text.size() && text[end] == kGs1Separator ? end + 1 : end;
  }
  return out;
}

}  // namespace barcode
