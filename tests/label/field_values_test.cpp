#include "label/field_values.h"

#include <gtest/gtest.h>

#include <string>

#include "label/error.h"
#include "label/json_request.h"

namespace barcode::label {
namespace {

void Set(Request& request, FieldId id, std::string_view text) {
  SetFromText(request, InfoOf(id), text);
}

std::string Refusal(FieldId id, std::string_view text) {
  Request request;
  try {
    Set(request, id, text);
  } catch (const LabelError& error) {
    EXPECT_EQ(error.Code(), ErrorCode::kBadValue);
    EXPECT_EQ(error.Field(), InfoOf(id).name);
    EXPECT_FALSE(IsGiven(request, InfoOf(id)));
    return error.what();
  }
  return "taken";
}

TEST(FieldValues, AreReadAsPeopleWriteThem) {
  Request request;
  Set(request, FieldId::kModule, "3");
  Set(request, FieldId::kModuleMm, "0.25");
  Set(request, FieldId::kRotate, "270");
  Set(request, FieldId::kQuietZone, "5");
  Set(request, FieldId::kForm, "Stacked");
  Set(request, FieldId::kErrorCorrectionLevel, "h");
  Set(request, FieldId::kBackground, "TRANSPARENT");
  Set(request, FieldId::kForeground, "#123");
  Set(request, FieldId::kTextBase64, "AP8=");
  Set(request, FieldId::kCaption, "7");
  EXPECT_EQ(request.module, 3);
  EXPECT_EQ(request.moduleMm, 0.25);
  EXPECT_EQ(request.rotate, Rotation::kThreeQuarters);
  EXPECT_EQ(request.quietZone, 5);
  EXPECT_EQ(request.form, Form::kStacked);
  EXPECT_EQ(request.errorCorrectionLevel, "H");
  EXPECT_EQ(request.background->a, 0);
  EXPECT_EQ(request.foreground, (Colour{0x11, 0x22, 0x33, 255}));
  EXPECT_EQ(request.textBytes, std::string("\0\xFF", 2));
  EXPECT_EQ(request.caption, "7");
}

TEST(FieldValues, BooleansHaveTwoWordsAndTwoDigits) {
  Request request;
  for (const char* const yes : {"true", "TRUE", "1"}) {
    Set(request, FieldId::kStrict, "0");
    Set(request, FieldId::kStrict, yes);
    EXPECT_EQ(request.strict, true) << yes;
  }
  for (const char* const no : {"false", "False", "0"}) {
    Set(request, FieldId::kStrict, "1");
    Set(request, FieldId::kStrict, no);
    EXPECT_EQ(request.strict, false) << no;
  }
  EXPECT_EQ(Refusal(FieldId::kStrict, "yes"), R"(The field "strict" must be true or false.)");
  EXPECT_EQ(Refusal(FieldId::kStrict, ""), R"(The field "strict" must be true or false.)");
}

TEST(FieldValues, OfNumbersNothingStandsAround) {
  const std::string module = R"(The field "module" must be a whole number from 1 to 100.)";
  for (const char* const text :
       {"", " 3", "3 ", "3px", "0x3", "2.5", "0", "101", "nan", "inf", "1e400", "+3"}) {
    EXPECT_EQ(Refusal(FieldId::kModule, text), module) << text;
  }
  EXPECT_EQ(Refusal(FieldId::kRotate, "45"), R"(The field "rotate" must be 0, 90, 180 or 270.)");
  EXPECT_EQ(Refusal(FieldId::kModuleMm, "0,25"),
            R"(The field "module_mm" must be a number from 0.01 to 10.)");
}

TEST(FieldValues, TheStandardQuietZoneReplacesAnother) {
  Request request;
  Set(request, FieldId::kQuietZone, "5");
  Set(request, FieldId::kQuietZone, "standard");
  EXPECT_FALSE(request.quietZone);
}

TEST(FieldValues, AnObjectStandsOnDefaults) {
  Request defaults;
  Set(defaults, FieldId::kModule, "3");
  Set(defaults, FieldId::kQuietZone, "7");
  Set(defaults, FieldId::kType, "qr");
  const Request request = ParseRequest(R"({"module":null,"quiet_zone":"standard","type":"nw7"})", defaults);
  EXPECT_EQ(request.module, 3);
  EXPECT_FALSE(request.quietZone);
  EXPECT_EQ(request.type, "nw7");
}

}  // namespace
}  // namespace barcode::label
