#include "mkbarcode/cli/description.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>

#include "label/field_table.h"
#include "label/types.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/label_words.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

std::vector<std::string> SplitAt(char separator, std::string_view text) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    parts.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

OptionDescription DescribeOption(const CLI::Option& option, const WordsOf& wordsOf) {
  OptionDescription described;
  for (const std::string& name : option.get_snames()) {
    described.names.push_back(Concat({"-", name}));
  }
  const std::vector<std::string>& names = option.get_lnames();
  for (const std::string& name : names) {
    if (name == Concat({"no-", names.front()})) {
      described.opposite = Concat({"--", name});
    } else {
      described.names.push_back(Concat({"--", name}));
    }
  }
  described.help = option.get_description();
  described.group = option.get_group();
  described.valueIsOptional = HasOptionalValue(option);
  if (option.get_items_expected_max() == 0 && !described.valueIsOptional) {
    return described;
  }
  described.value = option.get_type_name().empty() ? "VALUE" : option.get_type_name();
  described.words = described.value.find('|') != std::string::npos ? SplitAt('|', described.value)
                    : names.empty()                                ? std::vector<std::string>()
                                                                   : wordsOf(names.front());
  return described;
}

// "library TYPE TEXT [OPTIONS]".
std::string UsageOf(const CommandDescription& command) {
  std::string usage = command.name;
  for (const ArgumentDescription& argument : command.arguments) {
    usage += Concat({usage.empty() ? "" : " ", argument.name});
  }
  return Concat({usage, " [OPTIONS]"});
}

}  // namespace

std::vector<std::string> WordsOfLabels(std::string_view name) {
  std::vector<std::string> words;
  if (name == "TYPE" || name == OptionName(label::InfoOf(label::FieldId::kType))) {
    for (const label::TypeInfo& type : label::AllTypes()) {
      words.emplace_back(type.name);
    }
    return words;
  }
  const auto fields = label::AllFields();
  const auto field = std::ranges::find_if(
      fields, [name](const label::FieldInfo& candidate) { return OptionName(candidate) == name; });
  if (field == fields.end()) {
    return words;
  }
  if (field->kind == label::FieldKind::kAngle) {
    for (const int angle : label::kAngles) {
      words.push_back(std::to_string(angle));
    }
  }
  if (field->kind == label::FieldKind::kKeyword) {
    words.assign(field->words.begin(), field->words.end());
  }
  return words;
}

CommandDescription Describe(const CLI::App& app, const WordsOf& wordsOf) {
  CommandDescription command;
  command.name = app.get_name();
  command.purpose = app.get_description();
  command.notes = app.get_footer();
  for (const CLI::Option* const option : app.get_options()) {
    if (option->get_positional()) {
      const std::string name = option->get_name(true);
      command.arguments.push_back({name, option->get_description(), wordsOf(name)});
    } else if (!option->get_group().empty()) {
      command.options.push_back(DescribeOption(*option, wordsOf));
    }
  }
  command.usage = {UsageOf(command)};
  return command;
}

}  // namespace barcode::tool
