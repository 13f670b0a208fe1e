#include "mkbarcode/label_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "label/field_values.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/label_words.h"

namespace barcode::tool {
namespace {

using label::FieldId;
using label::FieldInfo;
using label::FieldKind;
using label::Request;

Request Parsed(std::vector<std::string> arguments) {
  Request request;
  CLI::App app;
  AddLabelOptions(app, request);
  std::reverse(arguments.begin(), arguments.end());
  app.parse(std::move(arguments));
  return request;
}

std::string Refusal(const std::vector<std::string>& arguments) {
  try {
    Parsed(arguments);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "";
}

bool IsText(const FieldInfo& field) {
  return field.id == FieldId::kType || field.id == FieldId::kText || field.id == FieldId::kTextBase64;
}

// A value that the field takes.
std::string ValueFor(const FieldInfo& field) {
  if (!field.words.empty() && field.kind != FieldKind::kQuietZone) {
    return std::string(field.words.back());
  }
  switch (field.kind) {
    case FieldKind::kInteger:
    case FieldKind::kQuietZone:
      return std::to_string(static_cast<int>(field.maximum));
    case FieldKind::kNumber:
      return "0.5";
    case FieldKind::kColour:
      return "#010203";
    case FieldKind::kAngle:
      return "90";
    default:
      return "a text";
  }
}

TEST(LabelOptions, EveryFieldIsAnOptionWithTheFieldsValues) {
  for (const FieldInfo& field : label::AllFields()) {
    const std::string option = "--" + OptionName(field);
    if (IsText(field)) {
      EXPECT_THROW(Parsed({option, "x"}), CLI::ParseError) << option;
      continue;
    }
    if (field.kind == FieldKind::kBoolean) {
      const auto member = std::get<std::optional<bool> Request::*>(field.member);
      EXPECT_EQ(Parsed({option}).*member, true) << option;
      EXPECT_EQ(Parsed({"--no-" + OptionName(field)}).*member, false) << option;
      continue;
    }
    Request expected;
    label::SetFromText(expected, field, ValueFor(field));
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{option, ValueFor(field)}, {option + "=" + ValueFor(field)}}) {
      const Request request = Parsed(arguments);
      std::visit([&](auto member) { EXPECT_TRUE(request.*member == expected.*member) << option; },
                 field.member);
      EXPECT_TRUE(label::IsGiven(request, field)) << option;
    }
  }
}

TEST(LabelOptions, WhatIsNotGivenIsNotSet) {
  const Request request = Parsed({});
  for (const FieldInfo& field : label::AllFields()) {
    EXPECT_FALSE(label::IsGiven(request, field)) << field.name;
  }
}

TEST(LabelOptions, TakeValuesAsTheyAre) {
  EXPECT_EQ(Parsed({"--bar-adjust", "-3"}).barAdjust, -3);
  EXPECT_EQ(Parsed({"--caption", ""}).caption, "");
  for (const std::string text : {"-x", "--", "[a,b]", "{}", "%%", "a=b", "\"q\"", "a,b", "\xE3\x81\x82"}) {
    EXPECT_EQ(Parsed({"--caption", text}).caption, text);
    EXPECT_EQ(Parsed({"--caption=" + text}).caption, text);
  }
}

TEST(LabelOptions, ARefusalNamesTheOptionAndWhatWouldDo) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"--module", "0"}, "The option \"--module\" must be a whole number from 1 to 100."},
      {{"--module", "2.5"}, "The option \"--module\" must be a whole number from 1 to 100."},
      {{"--qr-version", "41"}, "The option \"--qr-version\" must be a whole number from 1 to 40."},
      {{"--rotate", "45"}, "The option \"--rotate\" must be 0, 90, 180 or 270."},
      {{"--format", "gif"}, "The option \"--format\" must be \"png\", \"svg\" or \"pdf\"."},
      {{"--show-text=banana"}, "The option \"--show-text\" must be true or false."},
      {{"--no-show-text=banana"}, "The option \"--show-text\" must be true or false."},
      {{"--module", "2", "--module", "3"}, "The option \"--module\" stands twice; give it once."},
      {{"--strict", "--no-strict"}, "The option \"--strict\" stands twice; give it once."},
  };
  for (const auto& [arguments, message] : cases) {
    EXPECT_EQ(Refusal(arguments), message);
  }
}

TEST(LabelOptions, HelpNamesEveryValue) {
  Request request;
  CLI::App app;
  AddLabelOptions(app, request);
  const std::string help = app.help();
  for (const FieldInfo& field : label::AllFields()) {
    if (IsText(field)) {
      continue;
    }
    EXPECT_THAT(help, testing::HasSubstr("--" + OptionName(field)));
    EXPECT_THAT(help, testing::HasSubstr(AcceptedValues(field)));
  }
}

TEST(LabelWords, SentencesOfTheLibrarySpeakOfOptions) {
  EXPECT_EQ(InWordsOfOptions("The field \"width\" needs the field \"height\" beside it."),
            "The option \"--width\" needs the option \"--height\" beside it.");
  EXPECT_EQ(
      InWordsOfOptions("Leave out \"quiet_zone\"; choose string_encoding utf-8, or leave the field out."),
      "Leave out \"--quiet-zone\"; choose --string-encoding utf-8, or leave the option out.");
  EXPECT_EQ(InWordsOfOptions("The width and the height of \"_\" and \"w\"."),
            "The width and the height of \"_\" and \"w\".");
}

}  // namespace
}  // namespace barcode::tool
