#include "mkbarcode/label_options.h"

#include <CLI/CLI.hpp>
#include <string>

#include "label/error.h"
#include "label/field_values.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/label_words.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using label::FieldId;
using label::FieldInfo;
using label::FieldKind;

std::string NamesFor(const FieldInfo& field) {
  const std::string name = OptionName(field);
  return field.kind == FieldKind::kBoolean ? Concat({"--", name, ",--no-", name, "{false}"})
                                           : Concat({"--", name});
}

// "Degrees clockwise: 0, 90, 180 or 270 (default 0)".
std::string HelpOf(const FieldInfo& field) {
  if (field.id == label::FieldId::kType) {
    return "The symbology: a name or an alias of mkbarcode --list";
  }
  std::string help(field.meaning);
  if (help.ends_with('.')) {
    help.pop_back();
  }
  if (const std::string values = AcceptedValues(field); !values.empty()) {
    help += Concat({": ", values});
  }
  if (const std::string value = DefaultValue(field); !value.empty()) {
    help += Concat({" (default ", value, ")"});
  }
  return help;
}

// What stands for the value in the help.
const char* PlaceholderOf(const FieldInfo& field) {
  switch (field.kind) {
    case FieldKind::kInteger:
    case FieldKind::kNumber:
      return "NUMBER";
    case FieldKind::kColour:
      return "COLOR";
    case FieldKind::kString:
      return "TEXT";
    case FieldKind::kKeyword:
      return "WORD";
    case FieldKind::kAngle:
      return "DEGREES";
    default:
      return "VALUE";
  }
}

// Also what --x=VALUE says to a boolean.
void Set(label::Request& request, const FieldInfo& field, const std::string& value) {
  try {
    label::SetFromText(request, field, value);
  } catch (const label::LabelError& error) {
    throw UsageError(InWordsOfOptions(error.what()));
  }
}

}  // namespace

CLI::Option* AddLabelOption(CLI::App& app, label::Request& request, const FieldInfo& field) {
  const std::string help = HelpOf(field);
  CLI::Option* const option = field.kind == FieldKind::kBoolean
                                  ? app.add_flag(NamesFor(field), help)
                                  : app.add_option(NamesFor(field), help)->type_name(PlaceholderOf(field));
  option->group(GroupOf(field));
  option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  return option->each([&request, &field, option](const std::string& value) {
    if (option->count() > 1) {
      throw UsageError(Concat({"The option \"", NameForUsers(field), "\" stands twice; give it once."}));
    }
    Set(request, field, value);
  });
}

void AddLabelOptions(CLI::App& app, label::Request& request) {
  // Those of every type first, as a group each in the help.
  for (const bool isOfEveryType : {true, false}) {
    for (const FieldInfo& field : label::AllFields()) {
      const bool isText =
          field.id == FieldId::kType || field.id == FieldId::kText || field.id == FieldId::kTextBase64;
      if (!isText && (field.types == kEveryType) == isOfEveryType) {
        AddLabelOption(app, request, field);
      }
    }
  }
}

}  // namespace barcode::tool
