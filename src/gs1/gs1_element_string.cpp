#include "gs1/gs1_element_string.h"

#include <algorithm>

#include "base/ascii.h"
#include "gs1/gs1_ai_tables.h"
#include "gs1/gs1_markers.h"

namespace barcode {
namespace {

// The rule of the AI that a field begins with; a rule of length 0 when it begins with none.
Gs1AiRule RuleOf(std::string_view field) {
  const Gs1AiRule rule = Gs1AiRuleAt(field);
  return field.size() >= rule.aiLength && AllDigits(field.substr(0, rule.aiLength)) ? rule : Gs1AiRule{};
}

// Appends "(AI)" and returns the data behind it.
std::string_view AppendAi(std::string& out, std::string_view field, Gs1AiRule rule) {
  out.append("(").append(field.substr(0, rule.aiLength)).append(")");
  return field.substr(rule.aiLength);
}

// One AI with all the rest as its data.
void AppendMarkedField(std::string& out, std::string_view field) {
  const Gs1AiRule rule = RuleOf(field);
  out += rule.aiLength == 0 ? field : AppendAi(out, field, rule);
}

// Fields of predefined length and at most one of variable length at the end.
void AppendFields(std::string& out, std::string_view fields) {
  while (!fields.empty()) {
    const Gs1AiRule rule = RuleOf(fields);
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
