#include "label/json_request.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "label/refusal.h"

namespace barcode::label {
namespace {

using namespace std::string_literals;

std::string Refusal(std::string_view json) {
  return RefusalOf([&] { ParseRequest(json); });
}

std::string CodeAndField(std::string_view json) {
  return CodeAndFieldOf([&] { ParseRequest(json); });
}

TEST(JsonRequest, FillsEveryField) {
  const Request request = ParseRequest(R"({
    "type": "QR", "text": "h\u00e9\n", "form": "stacked-omnidirectional", "format": "pdf",
    "module": 3, "height": 40, "width": 50, "dpi": 600, "module_mm": 0.33, "height_mm": 12.5,
    "quiet_zone": 7, "rotate": 270, "foreground": "#0a0", "background": "#01020304",
    "show_text": false, "caption": "\u6f22", "text_scale": 1.5, "text_gap": 0.5, "even_spacing": true,
    "show_start_stop": false, "extended_guard": true, "bar_adjust": -2,
    "code_mode": "b", "string_encoding": "Shift-JIS", "qr_version": 40, "error_correction_level": "h",
    "encode_mode": "Numeric", "code_size": "16X48", "encode_scheme": "base256", "aspect_ratio": 0.25,
    "y_height": 4, "pairs_per_row": 5, "strict": true})");
  EXPECT_EQ(request.type, "QR");
  EXPECT_EQ(request.text, "h\xC3\xA9\n");
  EXPECT_EQ(request.textBytes, std::nullopt);
  EXPECT_EQ(request.form, Form::kStackedOmnidirectional);
  EXPECT_EQ(request.format, Format::kPdf);
  EXPECT_EQ(request.module, 3);
  EXPECT_EQ(request.height, 40);
  EXPECT_EQ(request.width, 50);
  EXPECT_EQ(request.dpi, 600);
  EXPECT_EQ(request.moduleMm, 0.33);
  EXPECT_EQ(request.heightMm, 12.5);
  EXPECT_EQ(request.quietZone, 7);
  EXPECT_EQ(request.rotate, Rotation::kThreeQuarters);
  EXPECT_EQ(request.foreground, (Colour{0, 170, 0, 255}));
  EXPECT_EQ(request.background, (Colour{1, 2, 3, 4}));
  EXPECT_EQ(request.showText, false);
  EXPECT_EQ(request.caption, "\xE6\xBC\xA2");
  EXPECT_EQ(request.textScale, 1.5);
  EXPECT_EQ(request.textGap, 0.5);
  EXPECT_EQ(request.evenSpacing, true);
  EXPECT_EQ(request.showStartStop, false);
  EXPECT_EQ(request.extendedGuard, true);
  EXPECT_EQ(request.barAdjust, -2);
  EXPECT_EQ(request.codeMode, "B");
  EXPECT_EQ(request.stringEncoding, "shift-jis");
  EXPECT_EQ(request.qrVersion, 40);
  EXPECT_EQ(request.errorCorrectionLevel, "H");
  EXPECT_EQ(request.encodeMode, "NUMERIC");
  EXPECT_EQ(request.codeSize, "16x48");
  EXPECT_EQ(request.encodeScheme, "BASE256");
  EXPECT_EQ(request.aspectRatio, 0.25);
  EXPECT_EQ(request.yHeight, 4);
  EXPECT_EQ(request.pairsPerRow, 5);
  EXPECT_EQ(request.strict, true);
}

TEST(JsonRequest, WhatIsNotNamedOrNullIsAbsent) {
  const Request request = ParseRequest(
      R"({"type": null, "text": null, "module": null, "format": null, "strict": null, "background": null})");
  EXPECT_FALSE(request.type || request.text || request.module || request.format || request.strict ||
               request.background || request.caption);
  EXPECT_FALSE(ParseRequest("{}").type);
}

TEST(JsonRequest, TheStandardQuietZoneIsThatOfNoField) {
  EXPECT_EQ(ParseRequest(R"({"quiet_zone": "Standard"})").quietZone, std::nullopt);
  EXPECT_EQ(ParseRequest(R"({"quiet_zone": 0})").quietZone, 0);
}

TEST(JsonRequest, WordsInAnyCase) {
  EXPECT_EQ(ParseRequest(R"({"format": "SVG"})").format, Format::kSvg);
  EXPECT_EQ(ParseRequest(R"({"form": "Row"})").form, Form::kRow);
  EXPECT_EQ(ParseRequest(R"({"string_encoding": "SHIFT_JIS"})").stringEncoding, "shift_jis");
  EXPECT_EQ(ParseRequest(R"({"background": "Transparent"})").background->a, 0);
  EXPECT_EQ(CodeAndField(R"({"format": "SVG "})"), "bad_value of format");
}

TEST(JsonRequest, Colours) {
  const auto foreground = [](const std::string& text) {
    return *ParseRequest(R"({"foreground": ")" + text + "\"}").foreground;
  };
  EXPECT_EQ(foreground("#fAb"), (Colour{0xFF, 0xAA, 0xBB, 255}));
  EXPECT_EQ(foreground("#12eF00"), (Colour{0x12, 0xEF, 0x00, 255}));
  EXPECT_EQ(foreground("#12ef0080"), (Colour{0x12, 0xEF, 0x00, 0x80}));
  for (const char* const text : {"", "#", "#12", "#1234", "#12345", "#1234567", "#123456789", "123",
                                 "1234567", "#12g", "#+12", "black", "#12345\xC3\xA9"}) {
    EXPECT_EQ(CodeAndField(R"({"foreground": ")"s + text + "\"}"), "bad_value of foreground") << text;
  }
}

TEST(JsonRequest, WholeNumbersInAnyNotation) {
  for (const char* const number : {"2", "2.0", "2e0", "20e-1", "0.2E1"}) {
    EXPECT_EQ(ParseRequest(R"({"module": )"s + number + "}").module, 2) << number;
  }
  for (const char* const number : {"-0", "-0.0", "0e5", "0"}) {
    EXPECT_EQ(ParseRequest(R"({"bar_adjust": )"s + number + "}").barAdjust, 0) << number;
    EXPECT_EQ(CodeAndField(R"({"module": )"s + number + "}"), "bad_value of module") << number;
  }
  for (const char* const number :
       {"2.5", "1e400", "-1e400", "1e18", "-1e18", "18446744073709551616", "9223372036854775808",
        "4294967298", "1e-400", "0.9999999999999999", "\"2\"", "true", "[2]", "{}"}) {
    EXPECT_EQ(CodeAndField(R"({"module": )"s + number + "}"), "bad_value of module") << number;
  }
  EXPECT_EQ(CodeAndField(R"({"text_scale": 1e400})"), "bad_value of text_scale");
  EXPECT_EQ(CodeAndField(R"({"text_scale": -0.0})"), "bad_value of text_scale");
  EXPECT_EQ(CodeAndField(R"({"rotate": 90.5})"), "bad_value of rotate");
  EXPECT_EQ(ParseRequest(R"({"rotate": 180.0})").rotate, Rotation::kHalf);
  EXPECT_EQ(ParseRequest(R"({"aspect_ratio": 0.001})").aspectRatio, 0.001);
}

TEST(JsonRequest, BytesInBase64) {
  EXPECT_EQ(ParseRequest(R"({"text_base64": "AP9B"})").textBytes, "\0\xFF"s + "A");
  EXPECT_EQ(ParseRequest(R"({"text_base64": ""})").textBytes, "");
  EXPECT_EQ(ParseRequest(R"({"text_base64": "\/w=="})").textBytes, "\xFF");
  for (const char* const text : {"A", "AA", "AAA", "AAAAA", "AA=A", "AA==AAAA", "====", "A===", "AA= ",
                                 " AA=", "QQ==\\n", "QR==", "QUF=", "-_-_", "AA\\u0000="}) {
    EXPECT_EQ(
        Refusal(R"({"text_base64": ")"s + text + "\"}"),
        "bad_value of text_base64: The field \"text_base64\" must be a string in Base64 (RFC 4648, with "
        "padding).")
        << text;
  }
}

TEST(JsonRequest, AZeroInATextIsKept) {
  EXPECT_EQ(ParseRequest(R"({"text": "a\u0000b"})").text, "a\0b"s);
}

TEST(JsonRequest, CharactersBeyondTheBasicPlane) {
  EXPECT_EQ(ParseRequest(R"({"text": "\ud83d\ude00"})").text, "\xF0\x9F\x98\x80");
  EXPECT_EQ(CodeAndField(R"({"text": "\ud83d"})"), "bad_request of ");
  EXPECT_EQ(CodeAndField(R"({"text": "\ude00"})"), "bad_request of ");
}

TEST(JsonRequest, FieldsThatAreNotKnown) {
  EXPECT_EQ(Refusal(R"({"colour": 1})"),
            "unknown_field of colour: There is no field \"colour\"; barcode_label_types() lists those of "
            "each type.");
  EXPECT_EQ(CodeAndField(R"({"colour": null})"), "unknown_field of colour");
  EXPECT_EQ(CodeAndField(R"({"Type": "qr"})"), "unknown_field of Type");
  EXPECT_EQ(CodeAndField(R"({"": 1})"), "unknown_field of ");
  EXPECT_EQ(CodeAndField(R"({"type\u0000": 1})"), "unknown_field of type\0"s);
  // A name without end does not become a report without end.
  EXPECT_EQ(CodeAndField("{\"" + std::string(1'000'000, 'x') + "\": 1}"),
            "unknown_field of " + std::string(60, 'x') + "\xE2\x80\xA6");
}

TEST(JsonRequest, NamesThatStandTwice) {
  EXPECT_EQ(Refusal(R"({"type": "qr", "text": "a", "type": "qr"})"),
            "bad_value of type: The field \"type\" stands twice; give it once.");
  EXPECT_EQ(CodeAndField(R"({"type": null, "type": null})"), "bad_value of type");
  EXPECT_EQ(CodeAndField(R"({"module": 2, "modul\u0065": 2})"), "bad_value of module");
}

TEST(JsonRequest, TheFirstThingThatIsWrongIsNamed) {
  EXPECT_EQ(CodeAndField(R"({"module": "x", "colour": 1, "text": )"), "bad_value of module");
  EXPECT_EQ(CodeAndField(R"({"colour": 1, "module": "x"})"), "unknown_field of colour");
  EXPECT_EQ(CodeAndField(R"({"text": "a", , "module": "x"})"), "bad_request of ");
}

TEST(JsonRequest, NumbersOutOfRangeAreNamedBeforeWhatFollows) {
  EXPECT_EQ(CodeAndField(R"({"module": 0})"), "bad_value of module");
  EXPECT_EQ(CodeAndField(R"({"module": 0, "no_field": 1})"), "bad_value of module");
  EXPECT_EQ(CodeAndField(R"({"module": 101, "width": 0})"), "bad_value of module");
}

TEST(JsonRequest, WhatIsNoObject) {
  for (const char* const json : {"null", "true", "1", "-1", "1.5", "\"a\"", "[]", "[{}]", "1e400"}) {
    EXPECT_EQ(
        Refusal(json),
        "bad_request of : The request is something else; it must be a JSON object, {\"type\": ..., \"text\": "
        "...}.")
        << json;
  }
  for (const char* const json : {"", " ", "\n\t\r "}) {
    EXPECT_EQ(
        Refusal(json),
        "bad_request of : The request is empty; it must be a JSON object, {\"type\": ..., \"text\": ...}.");
  }
}

TEST(JsonRequest, WhatIsNoJsonIsToldWithItsPlace) {
  const auto place = [](const std::string& json) {
    const std::string refusal = Refusal(json);
    return refusal.substr(0, refusal.find(';'));
  };
  EXPECT_EQ(place("{type: 1}"),
            "bad_request of : The request is no valid JSON: something is wrong at byte 3");
  EXPECT_EQ(place("{} x"), "bad_request of : The request is no valid JSON: something is wrong at byte 4");
  EXPECT_EQ(place("{}{}"), "bad_request of : The request is no valid JSON: something is wrong at byte 3");
  EXPECT_EQ(place(R"({"text": "a",})"),
            "bad_request of : The request is no valid JSON: something is wrong at byte 14");
  EXPECT_EQ(place(R"({"text": 'a'})"),
            "bad_request of : The request is no valid JSON: something is wrong at byte 10");
  EXPECT_EQ(place("{\"text\": \"a\nb\"}"),
            "bad_request of : The request is no valid JSON: something is wrong at byte 12");
  EXPECT_EQ(place("{\"text\": \"\xFF\"}"),
            "bad_request of : The request is no JSON in UTF-8: something is wrong at byte 11");
  EXPECT_EQ(place(R"({"text": "a")"), "bad_request of : The request ends too early, at byte 12");
  EXPECT_EQ(place("{"), "bad_request of : The request ends too early, at byte 1");
  EXPECT_EQ(place("{}\0"s), "bad_request of : The request has a zero byte at byte 3");
  EXPECT_EQ(place("{}\0{}"s), "bad_request of : The request has a zero byte at byte 3");
  EXPECT_EQ(place("\0"s), "bad_request of : The request has a zero byte at byte 1");
  EXPECT_EQ(place("{\"text\": \"\0\"}"s), "bad_request of : The request has a zero byte at byte 11");
  for (const char* const json :
       {"{/**/}", "{\"bar_adjust\": 02}", "{\"module\": 02}", "{\"module\": 0002}", "{\"module\": -02}",
        "{\"quiet_zone\": 1000 2}", "{\"module\": 0", "{\"module\": +2}", "{\"module\": .5}",
        "{\"bar_adjust\": 2.}", "{\"strict\": True}", "{\"module\": NaN}", "{\"text\": \"\xC0\x80\"}",
        "{\"text\": \"\xED\xA0\x80\"}", "{\"text\": \"\xF4\x90\x80\x80\"}", "{\"text\": \"\xE3\x81\"}",
        "{\"text\" \"a\"}", "{\"text\"}", "}"}) {
    EXPECT_EQ(CodeAndField(json), "bad_request of ") << json;
  }
}

TEST(JsonRequest, AByteOrderMarkInFrontIsSkipped) {
  EXPECT_EQ(ParseRequest("\xEF\xBB\xBF{\"type\": \"qr\"}").type, "qr");
  EXPECT_EQ(CodeAndField("\xEF\xBB{}"), "bad_request of ");
  EXPECT_EQ(CodeAndField("{}\xEF\xBB\xBF"), "bad_request of ");
  EXPECT_EQ(CodeAndField("\xFF\xFE{\0}\0"s), "bad_request of ");
}

TEST(JsonRequest, DepthDoesNotMatter) {
  const std::string deep(100'000, '[');
  EXPECT_EQ(CodeAndField(deep), "bad_request of ");
  EXPECT_EQ(CodeAndField("{\"text\": " + deep), "bad_value of text");
  std::string objects;
  for (int i = 0; i < 100'000; ++i) {
    objects += "{\"text\":";
  }
  EXPECT_EQ(CodeAndField(objects), "bad_value of text");
}

TEST(JsonRequest, LongTextsAreTaken) {
  const std::string text(5'000'000, 'a');
  EXPECT_EQ(ParseRequest("{\"text\": \"" + text + "\"}").text, text);
}

}  // namespace
}  // namespace barcode::label
