#include "label/symbol.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/gs1_check_digit.h"
#include "base/line.h"
#include "gs1/databar_14_encoder.h"
#include "label/symbol_picture.h"
#include "linear/ean_upc_encoder.h"
#include "linear/yubin_customer_encoder.h"
#include "support/mixed_text.h"
#include "support/pattern.h"
#include "support/processor_time.h"
#include "support/random_text.h"
#include "support/readers.h"

namespace barcode::label {
namespace {

using test::Digits;
using test::RandomText;
using test::Reading;
using testing::ElementsAre;
using testing::IsEmpty;

Request TextRequest(std::string text) {
  Request request;
  request.text = std::move(text);
  return request;
}

Request BytesRequest(std::string bytes) {
  Request request;
  request.textBytes = std::move(bytes);
  return request;
}

// A request with one more field.
template <class Member, class Value>
Request With(Request request, Member Request::*member, Value value) {
  request.*member = std::move(value);
  return request;
}

Symbol Encoded(Type type, const std::string& text) {
  return EncodeSymbol(type, TextRequest(text));
}

const RunVector& PatternOf(const Symbol& symbol) {
  return std::get<LinearSymbol>(symbol.modules).pattern;
}

const StackedSymbol& StackedOf(const Symbol& symbol) {
  return std::get<StackedSymbol>(symbol.modules);
}

const ModuleMatrix& MatrixOf(const Symbol& symbol) {
  return std::get<MatrixSymbol>(symbol.modules).matrix;
}

struct Refusal {
  ErrorCode code;
  std::string field;
  std::string message;

  bool operator==(const Refusal&) const = default;
};

void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << static_cast<int>(refusal.code) << ' ' << refusal.field << ": " << refusal.message;
}

Refusal RefusalOf(Type type, const Request& request) {
  try {
    EncodeSymbol(type, request);
  } catch (const LabelError& error) {
    return {error.Code(), error.Field(), error.what()};
  }
  return {ErrorCode::kBadRequest, "", "was not refused"};
}

void ExpectBadText(Type type, const Request& request, const std::string& message) {
  const std::string field = request.text ? "text" : "text_base64";
  EXPECT_EQ(RefusalOf(type, request), (Refusal{ErrorCode::kBadText, field, message}));
}

void ExpectBadText(Type type, const std::string& text, const std::string& message) {
  ExpectBadText(type, TextRequest(text), message);
}

void ExpectTooLong(Type type, const Request& request, const std::string& message) {
  const std::string field = request.text ? "text" : "text_base64";
  EXPECT_EQ(RefusalOf(type, request), (Refusal{ErrorCode::kTooLong, field, message}));
}

void ExpectTooLong(Type type, const std::string& text, const std::string& message) {
  ExpectTooLong(type, TextRequest(text), message);
}

constexpr std::array kTypes = {
    Type::kCode39,        Type::kCode93,  Type::kCode128,    Type::kGs1_128,        Type::kNw7,
    Type::kMatrix2of5,    Type::kNec2of5, Type::kJan8,       Type::kJan13,          Type::kUpcA,
    Type::kUpcE,          Type::kItf,     Type::kDataBar14,  Type::kDataBarLimited, Type::kDataBarExpanded,
    Type::kYubinCustomer, Type::kQr,      Type::kDataMatrix, Type::kPdf417};
static_assert(kTypes.size() == kTypeCount);

// ---- All types ----

TEST(EncodeSymbol, RefusesEmptyTexts) {
  for (const Type type : kTypes) {
    ExpectBadText(type, "", "The text is empty; give at least one character.");
    ExpectBadText(type, BytesRequest(""), "The text is empty; give at least one character.");
  }
}

TEST(EncodeSymbol, RefusesHugeTextsAtOnce) {
  Request request = TextRequest("");
  request.text.emplace(100'000'000, '1');
  for (const Type type : kTypes) {
    const double seconds = test::ProcessorTime(
        [&] { ExpectTooLong(type, request, "No label takes more than 10000 bytes of text; shorten it."); });
    EXPECT_LT(seconds, 1);
  }
}

// Any bytes, up to the limit of length, are encoded or refused as labels are.
TEST(EncodeSymbol, ThrowsNothingButLabelErrors) {
  RandomText random(1);
  for (const Type type : kTypes) {
    for (int i = 0; i < 150; ++i) {
      std::string text = test::MixedText(random, i % 15 == 0 ? 40 : 6);
      text += std::string(i % 50 == 49 ? 9'000 : 0, 'A');
      const bool raw = random.Number(0, 1) == 0;
      Request request = raw ? BytesRequest(text) : TextRequest(text);
      if (random.Number(0, 1) == 0) {
        request.stringEncoding = "shift-jis";
        request.form = Form::kStacked;
        request.encodeScheme = random.Number(0, 1) == 0 ? "AUTO" : "X12";
      }
      try {
        EncodeSymbol(type, request);
      } catch (const LabelError& error) {
        EXPECT_TRUE(error.Code() == ErrorCode::kBadText || error.Code() == ErrorCode::kTooLong);
        EXPECT_EQ(error.Field(), raw ? "text_base64" : "text");
        EXPECT_THAT(error.what(), testing::EndsWith("."));
      }
    }
  }
}

// ---- Linear ----

TEST(Code39Symbol, UpperCaseAndStars) {
  const Symbol symbol = Encoded(Type::kCode39, "abc-1");
  EXPECT_EQ(symbol.text, "ABC-1");
  EXPECT_THAT(symbol.lines, ElementsAre("*ABC-1*"));
  EXPECT_EQ(PatternOf(symbol), PatternOf(Encoded(Type::kCode39, "ABC-1")));
  const Request plain = With(TextRequest("ABC"), &Request::showStartStop, false);
  EXPECT_THAT(EncodeSymbol(Type::kCode39, plain).lines, ElementsAre("ABC"));
}

TEST(Code39Symbol, Refusals) {
  ExpectBadText(Type::kCode39, "AB_C",
                "Code 39 takes letters, digits, the space and - . $ / + %; replace the character \"_\" at "
                "position 3.");
  ExpectBadText(Type::kCode39,
                "AB\xC3\xA9"
                "\xE3\x81\x82",
                "Code 39 takes letters, digits, the space and - . $ / + %; replace the character U+00E9 at "
                "position 3.");
  ExpectBadText(Type::kCode39, "\xF0\x9F\x98\x80",
                "Code 39 takes letters, digits, the space and - . $ / + %; replace the character U+1F600 at "
                "position 1.");
  ExpectBadText(
      Type::kCode39, BytesRequest("A\xE3"),
      "Code 39 takes letters, digits, the space and - . $ / + %; replace the byte 0xE3 at position 2.");
  ExpectBadText(Type::kCode39, "A\"",
                "Code 39 takes letters, digits, the space and - . $ / + %; replace the character U+0022 at "
                "position 2.");
  ExpectBadText(Type::kCode39, "*ABC*",
                "Code 39 sets its start and stop character * by itself; leave out the character \"*\" at "
                "position 1.");
}

TEST(Code39Symbol, TenThousandCharactersAndNoMore) {
  EXPECT_EQ(Encoded(Type::kCode39, std::string(10'000, 'A')).text.size(), 10'000U);
  ExpectTooLong(Type::kCode39, std::string(10'001, 'A'),
                "No label takes more than 10000 bytes of text; shorten it.");
}

TEST(Code93Symbol, ShiftCharactersStandInFrontOfLetters) {
  EXPECT_EQ(Encoded(Type::kCode93, "!a1>Z?o?z").text, "!A1>Z?O?Z");
  EXPECT_THAT(Encoded(Type::kCode93, "ab").lines, ElementsAre("AB"));
  ExpectBadText(
      Type::kCode93, "A!1",
      "A Code 93 shift character stands in front of a letter, A to Z; leave out the character \"!\" at "
      "position 2 or put such a letter behind it.");
  ExpectBadText(
      Type::kCode93, "A<",
      "A Code 93 shift character stands in front of a letter, A to Z; leave out the character \"<\" at "
      "position 2 or put such a letter behind it.");
  ExpectBadText(Type::kCode93, "?P",
                "A Code 93 shift character stands in front of a letter, A to O or Z; leave out the character "
                "\"?\" at position 1 or put such a letter behind it.");
  ExpectBadText(Type::kCode93, "A@",
                "Code 93 takes letters, digits, the space, - . $ / + % and for the shift characters < > ? !; "
                "replace the character \"@\" at position 2.");
}

Request Code128Request(const std::string& text, const char* mode) {
  return With(TextRequest(text), &Request::codeMode, mode);
}

TEST(Code128Symbol, SetsByTheStandard) {
  const Symbol symbol = Encoded(Type::kCode128, "ABC");
  EXPECT_EQ(symbol.text, "ABC");
  EXPECT_THAT(symbol.lines, ElementsAre("ABC"));
  // Start A and the values 33, 34, 35 of "ABC".
  EXPECT_EQ(Digits(PatternOf(symbol)).substr(0, 24),
            "211412"
            "111323"
            "131123"
            "131321");
  EXPECT_EQ(PatternOf(EncodeSymbol(Type::kCode128, Code128Request("ABC", "A"))), PatternOf(symbol));
  EXPECT_EQ(Encoded(Type::kCode128, std::string("\0a\x7F", 3)).text, std::string("\0a\x7F", 3));
}

TEST(Code128Symbol, Refusals) {
  ExpectBadText(Type::kCode128, "A\xC2\x80",
                "Code 128 takes ASCII characters; replace the character U+0080 at position 2.");
  ExpectBadText(Type::kCode128, BytesRequest("A\xF1"),
                "Code 128 takes ASCII characters; replace the byte 0xF1 at position 2.");
  ExpectBadText(
      Type::kCode128, Code128Request("ABc", "A"),
      "Set A of Code 128 takes ASCII characters up to \"_\"; replace the character \"c\" at position 3 "
      "or choose code_mode AUTO.");
  ExpectBadText(Type::kCode128, Code128Request("AB\n", "B"),
                "Set B of Code 128 takes ASCII characters from the space on; replace the character U+000A at "
                "position 3 or choose code_mode AUTO.");
  ExpectBadText(
      Type::kCode128, Code128Request("12a", "C"),
      "Set C of Code 128 takes the digits 0 to 9; replace the character \"a\" at position 3 or choose "
      "code_mode AUTO.");
  ExpectBadText(Type::kCode128, Code128Request("123", "C"),
                "Set C of Code 128 takes pairs of digits and the text has 3; put a zero in front or choose "
                "code_mode AUTO.");
}

TEST(Nw7Symbol, StartAndStopCharacters) {
  const Symbol framed = Encoded(Type::kNw7, "a12-3b");
  EXPECT_EQ(framed.text, "A12-3B");
  EXPECT_THAT(framed.lines, ElementsAre("A12-3B"));
  const Symbol plain = Encoded(Type::kNw7, "12-3");
  EXPECT_EQ(plain.text, "C12-3C");
  EXPECT_THAT(plain.lines, ElementsAre("12-3"));
  const Request hidden = With(TextRequest("A1B"), &Request::showStartStop, false);
  EXPECT_THAT(EncodeSymbol(Type::kNw7, hidden).lines, ElementsAre("1"));
}

TEST(Nw7Symbol, Refusals) {
  const std::string frame =
      "NW-7 has a start and a stop character, each A to D; give both or leave both out.";
  ExpectBadText(Type::kNw7, "A12", frame);
  ExpectBadText(Type::kNw7, "12d", frame);
  ExpectBadText(Type::kNw7, "A", frame);
  ExpectBadText(
      Type::kNw7, "AB",
      "Between start and stop character NW-7 has at least one other; give a digit or one of - $ : / . "
      "+.");
  const std::string characters =
      "Between start and stop character NW-7 takes the digits 0 to 9 and - $ : / . +; replace the character ";
  ExpectBadText(Type::kNw7, "A1B2C", characters + "\"B\" at position 3.");
  ExpectBadText(Type::kNw7, "1E2", characters + "\"E\" at position 2.");
}

TEST(TwoOfFiveSymbols, AsPublished) {
  EXPECT_EQ(Digits(PatternOf(Encoded(Type::kMatrix2of5, "12"))), "31111131113113113131111");
  EXPECT_EQ(Digits(PatternOf(Encoded(Type::kNec2of5, "12"))), "3131111331113131133");
  for (const Type type : {Type::kMatrix2of5, Type::kNec2of5}) {
    EXPECT_EQ(Encoded(type, "0012").text, "0012");
    EXPECT_THAT(Encoded(type, "0012").lines, ElementsAre("0012"));
  }
  ExpectBadText(Type::kNec2of5, "1-2",
                "NEC 2 of 5 takes the digits 0 to 9; replace the character \"-\" at position 2.");
  ExpectBadText(Type::kMatrix2of5, "1 2",
                "Matrix 2 of 5 takes the digits 0 to 9; replace the character U+0020 at position 2.");
}

TEST(ItfSymbol, AnOddNumberOfDigitsGetsAZeroInFront) {
  EXPECT_EQ(Encoded(Type::kItf, "123").text, "0123");
  EXPECT_THAT(Encoded(Type::kItf, "123").lines, ElementsAre("0123"));
  ExpectBadText(Type::kItf, "12A", "ITF takes the digits 0 to 9; replace the character \"A\" at position 3.");
}

TEST(YubinSymbol, NothingIsCut) {
  const Symbol symbol = Encoded(Type::kYubinCustomer, "26300233-20-8a");
  EXPECT_EQ(symbol.text, "26300233-20-8A");
  EXPECT_THAT(symbol.lines, IsEmpty());
  EXPECT_EQ(std::get<FourStateBars>(symbol.modules).bars, EncodeYubinCustomer("26300233-20-8A").bars);
  EXPECT_EQ(Encoded(Type::kYubinCustomer, std::string(20, '1')).text.size(), 20U);
  EXPECT_EQ(Encoded(Type::kYubinCustomer, std::string(10, 'Z')).text.size(), 10U);
  const std::string message =
      "The postal code has 20 positions, of which a letter takes two, and the text takes ";
  ExpectTooLong(Type::kYubinCustomer, std::string(21, '1'), message + "21; shorten it.");
  ExpectTooLong(Type::kYubinCustomer, std::string(19, '1') + "A", message + "21; shorten it.");
  ExpectBadText(
      Type::kYubinCustomer, "263 0023",
      "The postal code takes digits, the hyphen and letters; replace the character U+0020 at position 4.");
}

// ---- EAN and UPC ----

TEST(RetailSymbols, CheckDigitsAreCompletedAndVerified) {
  struct Example {
    Type type;
    std::string text;
    std::string code;
    const GuardBarStyle* guard;
  };
  const std::vector<Example> examples = {
      {Type::kJan13, "490123456789", "4901234567894", &kJan13Style},
      {Type::kJan13, "4901234567894", "4901234567894", &kJan13Style},
      {Type::kJan8, "4901234", "49012347", &kJan8Style},
      {Type::kJan8, "49012347", "49012347", &kJan8Style},
      {Type::kUpcA, "03600029145", "036000291452", &kUpcAStyle},
      {Type::kUpcA, "036000291452", "036000291452", &kUpcAStyle},
      {Type::kUpcE, "654321", "06543217", &kUpcEStyle},
      {Type::kUpcE, "0654321", "06543217", &kUpcEStyle},
      {Type::kUpcE, "1654321", "16543214", &kUpcEStyle},
      {Type::kUpcE, "16543214", "16543214", &kUpcEStyle},
  };
  for (const Example& example : examples) {
    const Symbol symbol = Encoded(example.type, example.text);
    EXPECT_EQ(symbol.text, example.code);
    EXPECT_THAT(symbol.lines, ElementsAre(example.code));
    EXPECT_EQ(std::get<LinearSymbol>(symbol.modules).guard, example.guard) << example.text;
  }
}

TEST(RetailSymbols, UpcEHasTheStandardsParities) {
  for (const std::string code : {"06543217", "16543214", "01000009"}) {
    EXPECT_EQ(PatternOf(Encoded(Type::kUpcE, code)), EncodeUpcE(code, UpcEParityRule::kStandard));
  }
  EXPECT_NE(PatternOf(Encoded(Type::kUpcE, "1654321")), PatternOf(Encoded(Type::kUpcE, "0654321")));
}

TEST(RetailSymbols, Refusals) {
  ExpectBadText(Type::kJan13, "4901234567895",
                "The check digit is 5 but must be 4; correct it or leave it out.");
  ExpectBadText(Type::kUpcE, "06543210", "The check digit is 0 but must be 7; correct it or leave it out.");
  ExpectBadText(
      Type::kJan13, "12345",
      "JAN-13 takes 12 digits, or 13 with the check digit, and the text has 5; add what is missing.");
  ExpectTooLong(Type::kJan8, "123456789",
                "JAN-8 takes 7 digits, or 8 with the check digit, and the text has 9; shorten it.");
  ExpectTooLong(Type::kUpcA, "1234567890123",
                "UPC-A takes 11 digits, or 12 with the check digit, and the text has 13; shorten it.");
  ExpectBadText(Type::kUpcA, "0360-0029145",
                "UPC-A takes the digits 0 to 9; replace the character \"-\" at position 5.");
  ExpectBadText(Type::kUpcE, "2654321",
                "The number system of UPC-E is 0 or 1, and the text begins with 2; correct it or use UPC-A.");
  const std::string lengths =
      "UPC-E takes 6 digits, 7 with the number system in front, or 8 with the check digit too, and the text "
      "has ";
  ExpectBadText(Type::kUpcE, "12345", lengths + "5; add what is missing.");
  ExpectTooLong(Type::kUpcE, "123456789", lengths + "9; shorten it.");
}

// ---- GS1 ----

TEST(Gs1_128Symbol, ElementsAsPeopleWriteThem) {
  const Symbol symbol = Encoded(Type::kGs1_128, "(01)04912345678904(10)LOT42(17)261231");
  EXPECT_EQ(symbol.text, "(01)04912345678904(10)LOT42(17)261231");
  EXPECT_THAT(symbol.lines, ElementsAre(symbol.text));
  EXPECT_THAT(symbol.warnings, IsEmpty());
  for (const std::string text : {"010491234567890410LOT42{FNC1}17261231",
                                 "{FNC1}010491234567890410LOT42\x1D"
                                 "17261231"}) {
    EXPECT_EQ(PatternOf(Encoded(Type::kGs1_128, text)), PatternOf(symbol)) << text;
    EXPECT_EQ(Encoded(Type::kGs1_128, text).text, symbol.text);
  }
  // Start C and FNC1 in front.
  EXPECT_EQ(Digits(PatternOf(symbol)).substr(0, 12),
            "211232"
            "411131");
}

TEST(Gs1_128Symbol, FortyEightCharacters) {
  const std::string message =
      "GS1-128 holds 48 characters, application identifiers and the FNC1 between fields included; shorten "
      "the "
      "text.";
  // 4 + 22 + FNC1 + 2 and what follows.
  const std::string start = "(20)12(10)" + std::string(20, 'A') + "(21)";
  EXPECT_EQ(Encoded(Type::kGs1_128, start + std::string(19, 'B')).text, start + std::string(19, 'B'));
  ExpectTooLong(Type::kGs1_128, start + std::string(20, 'B'), message);
  ExpectTooLong(Type::kGs1_128, "(10)" + std::string(5'000, 'A'), message);
}

TEST(Gs1_128Symbol, TellsOfMissingPartners) {
  const Symbol symbol = Encoded(Type::kGs1_128, "(8020)ABC");
  ASSERT_EQ(symbol.warnings.size(), 1U);
  EXPECT_EQ(symbol.warnings.front().code, ErrorCode::kGs1Association);
  EXPECT_THAT(symbol.warnings.front().message, testing::HasSubstr("415"));
}

TEST(Gs1_128Symbol, WhatIsNoElementStringIsBadText) {
  for (const std::string text : {"ABC", "(01)04912345678905", "(01)123", "(99", "(17)261331"}) {
    const Refusal refusal = RefusalOf(Type::kGs1_128, TextRequest(text));
    EXPECT_EQ(refusal.code, ErrorCode::kBadText) << text;
    EXPECT_EQ(refusal.field, "text");
    EXPECT_THAT(refusal.message, testing::EndsWith("."));
  }
}

Request PaymentRequest(const std::string& text) {
  return With(TextRequest(text), &Request::form, Form::kPayment);
}

TEST(PaymentSymbol, TwoLines) {
  const std::string digits =
      "919123450000000000000000000000"
      "3912311"
      "0012345";
  ASSERT_EQ(digits.size(), 44U);
  const std::string data = digits.substr(0, 43);
  const std::string code = data + Gs1CheckDigit(data);
  for (const std::string& text :
       {data, code, "{FNC1}" + code, "(91)" + data.substr(2), "{FNC1}(91)" + code.substr(2)}) {
    const Symbol symbol = EncodeSymbol(Type::kGs1_128, PaymentRequest(text));
    EXPECT_EQ(symbol.text, "(91)" + code.substr(2));
    EXPECT_THAT(symbol.lines,
                ElementsAre("(91)912345-0000000000000000000000", "391231-1-001234-" + code.substr(43)));
    // Start C, FNC1, 22 pairs, check and stop.
    EXPECT_EQ(test::Modules(PatternOf(symbol)), 11U * 25 + 13);
  }
}

TEST(PaymentSymbol, Refusals) {
  const std::string data = "91" + std::string(41, '1');
  const char check = Gs1CheckDigit(data);
  const char wrong = check == '9' ? '0' : static_cast<char>(check + 1);
  ExpectBadText(
      Type::kGs1_128, PaymentRequest(data + wrong),
      std::string("The check digit is ") + wrong + " but must be " + check + "; correct it or leave it out.");
  const std::string lengths =
      "A payment slip's code has 43 digits, or 44 with the check digit, and here are ";
  ExpectBadText(Type::kGs1_128, PaymentRequest(data.substr(1)), lengths + "42; add what is missing.");
  ExpectTooLong(Type::kGs1_128, PaymentRequest(data + "12"), lengths + "45; shorten it.");
  ExpectBadText(Type::kGs1_128, PaymentRequest("(91)12-4"),
                "A payment slip's code takes the digits 0 to 9; replace the character \"-\" at position 7.");
  ExpectBadText(Type::kGs1_128, PaymentRequest(std::string(43, '1')),
                "A payment slip's code begins with its application identifier 91; put it in front.");
}

TEST(DataBarSymbols, TakeGtinsInAllTheirForms) {
  for (const std::string text : {"491234567890", "0491234567890", "04912345678904", "(01)04912345678904"}) {
    for (const Type type : {Type::kDataBar14, Type::kDataBarLimited}) {
      const Symbol symbol = Encoded(type, text);
      EXPECT_EQ(symbol.text, "(01)04912345678904");
      EXPECT_THAT(symbol.lines, ElementsAre("(01)04912345678904"));
      EXPECT_EQ(PatternOf(symbol).front(), 0U);
    }
  }
  EXPECT_EQ(Encoded(Type::kDataBar14, "1").text, "(01)00000000000017");
  EXPECT_EQ(Encoded(Type::kDataBarLimited, "12345678").text, "(01)00000123456784");
}

TEST(DataBarSymbols, Refusals) {
  ExpectBadText(Type::kDataBar14, "04912345678905",
                "The check digit is 5 but must be 4; correct it or leave it out.");
  ExpectBadText(Type::kDataBar14, "(01)0491234567890",
                "Behind (01) DataBar takes the 14 digits of a GTIN, and here are 13; add what is missing.");
  ExpectTooLong(Type::kDataBar14, "(01)049123456789041",
                "Behind (01) DataBar takes the 14 digits of a GTIN, and here are 15; shorten it.");
  ExpectTooLong(
      Type::kDataBar14, "123456789012345",
      "DataBar takes 1 to 13 digits of a GTIN without its check digit, or 14 with it, and the text has "
      "15; shorten it.");
  ExpectBadText(
      Type::kDataBarLimited, "1234567",
      "DataBar Limited takes 8 to 13 digits of a GTIN without its check digit, or 14 with it, and the "
      "text has 7; add what is missing.");
  ExpectBadText(
      Type::kDataBarLimited, "2491234567890",
      "DataBar Limited takes a GTIN whose first digit is 0 or 1, and here it is 2; use DataBar instead.");
  ExpectBadText(
      Type::kDataBarLimited, "24912345678908",
      "DataBar Limited takes a GTIN whose first digit is 0 or 1, and here it is 2; use DataBar instead.");
  ExpectBadText(Type::kDataBar14, "(01)0491234567890A",
                "DataBar takes the digits 0 to 9; replace the character \"A\" at position 18.");
}

TEST(DataBarSymbols, StackedForms) {
  Request request = With(TextRequest("04912345678904"), &Request::form, Form::kStacked);
  const Symbol stacked = EncodeSymbol(Type::kDataBar14, request);
  EXPECT_EQ(StackedOf(stacked).defaultHeight, 13);
  ASSERT_EQ(StackedOf(stacked).rows.size(), 3U);
  request.form = Form::kStackedOmnidirectional;
  const Symbol omnidirectional = EncodeSymbol(Type::kDataBar14, request);
  EXPECT_EQ(StackedOf(omnidirectional).defaultHeight, 69);
  EXPECT_EQ(StackedOf(omnidirectional).rows.size(), 5U);
  EXPECT_EQ(omnidirectional.text, "(01)04912345678904");
  // Runs are whole, and the modules those of the encoder.
  const auto encoded = EncodeDataBar14("0491234567890", DataBar14Type::kStackedOmnidirectional);
  for (std::size_t i = 0; i < encoded.rows.size(); ++i) {
    const RunVector& widths = StackedOf(omnidirectional).rows[i].widths;
    EXPECT_EQ(test::ModuleText(widths), test::ModuleText(encoded.rows[i].widths));
    EXPECT_EQ(std::count(widths.begin() + 1, widths.end(), 0U), 0);
  }
}

TEST(DataBarExpandedSymbol, RowAndStackedForms) {
  const std::string text = "(01)04912345678904(10)LOT42";
  const Symbol row = Encoded(Type::kDataBarExpanded, text);
  EXPECT_EQ(row.text, text);
  EXPECT_THAT(row.lines, ElementsAre(text));
  EXPECT_EQ(PatternOf(row).front(), 0U);
  EXPECT_EQ(std::count(PatternOf(row).begin() + 1, PatternOf(row).end(), 0U), 0);
  Request request = With(TextRequest(text), &Request::form, Form::kStacked);
  const Symbol stacked = EncodeSymbol(Type::kDataBarExpanded, request);
  ASSERT_EQ(StackedOf(stacked).rows.size(), 9U);  // three rows of two pairs
  EXPECT_EQ(StackedOf(stacked).defaultHeight, 3 * 34 + 6);
  request.pairsPerRow = 10;
  const Symbol one = EncodeSymbol(Type::kDataBarExpanded, request);
  EXPECT_EQ(StackedOf(one).defaultHeight, 34);
  EXPECT_EQ(StackedOf(one).rows.size(), 1U);
  EXPECT_EQ(Encoded(Type::kDataBarExpanded, "(8020)ABC").warnings.size(), 1U);
}

TEST(DataBarExpandedSymbol, Refusals) {
  const std::string tooLong =
      "DataBar Expanded holds at most 74 digits or 41 other characters, application identifiers included; "
      "shorten the text.";
  ExpectTooLong(Type::kDataBarExpanded,
                "(90)" + std::string(30, 'a') + "(91)" + std::string(30, 'b') + "(92)" + std::string(30, 'c'),
                tooLong);
  ExpectTooLong(Type::kDataBarExpanded, std::string(9'000, '1'), tooLong);
  ExpectBadText(
      Type::kDataBarExpanded, "(8010)1234#A",
      "DataBar Expanded has no character \"#\", which the data of (8010) holds; leave it out or use "
      "GS1-128.");
  EXPECT_EQ(RefusalOf(Type::kDataBarExpanded, TextRequest("04912345678904")).code, ErrorCode::kBadText);
}

// ---- Matrix ----

Request QrRequest(const std::string& text, const char* level) {
  return With(TextRequest(text), &Request::errorCorrectionLevel, level);
}

TEST(QrSymbol, VersionsAndLevels) {
  EXPECT_EQ(MatrixOf(Encoded(Type::kQr, "A")).Columns(), 21);
  EXPECT_EQ(MatrixOf(EncodeSymbol(Type::kQr, With(TextRequest("A"), &Request::qrVersion, 5))).Columns(), 37);
  EXPECT_EQ(
      MatrixOf(EncodeSymbol(Type::kQr, With(TextRequest(std::string(100, 'A')), &Request::qrVersion, 1)))
          .Columns(),
      41);
  EXPECT_EQ(MatrixOf(EncodeSymbol(Type::kQr, QrRequest(std::string(2953, 'A'), "L"))).Columns(), 177);
  EXPECT_EQ(MatrixOf(EncodeSymbol(Type::kQr, QrRequest(std::string(1273, 'A'), "H"))).Columns(), 177);
  const Symbol symbol = Encoded(Type::kQr, "A");
  EXPECT_EQ(symbol.text, "A");
  EXPECT_THAT(symbol.lines, IsEmpty());
  EXPECT_EQ(std::get<MatrixSymbol>(symbol.modules).rowHeight, 1);
}

TEST(QrSymbol, Refusals) {
  ExpectTooLong(
      Type::kQr, QrRequest(std::string(1274, 'A'), "H"),
      "At error correction level H QR Code holds 1273 bytes and the text has 1274; shorten it or choose "
      "a lower level.");
  ExpectTooLong(Type::kQr, QrRequest(std::string(2954, 'A'), "L"),
                "At error correction level L QR Code holds 2953 bytes and the text has 2954; shorten it.");
  Request digits = QrRequest(std::string(7089, '7'), "L");
  digits.encodeMode = "NUMERIC";
  EXPECT_EQ(MatrixOf(EncodeSymbol(Type::kQr, digits)).Columns(), 177);
  digits.text = std::string(7090, '7');
  ExpectTooLong(Type::kQr, digits,
                "At error correction level L QR Code holds 7089 digits and the text has 7090; shorten it.");
  digits.text = "12a";
  ExpectBadText(Type::kQr, digits,
                "The mode NUMERIC takes the digits 0 to 9; replace the character \"a\" at position 3.");
}

// U+3042, NUL, "A" and U+30A2.
const std::string kJapanese("\xE3\x81\x82\0A\xE3\x82\xA2", 8);
const std::string kJapaneseShiftJis("\x82\xA0\0A\x83\x41", 6);

TEST(MatrixSymbols, ShiftJisTextIsConvertedAroundNul) {
  for (const Type type : {Type::kQr, Type::kDataMatrix, Type::kPdf417}) {
    for (const char* word : {"shift-jis", "shift_jis"}) {
      const Symbol symbol = EncodeSymbol(type, With(TextRequest(kJapanese), &Request::stringEncoding, word));
      EXPECT_EQ(symbol.text, kJapanese);
      const Symbol bytes = EncodeSymbol(type, BytesRequest(kJapaneseShiftJis));
      EXPECT_EQ(MatrixOf(symbol), MatrixOf(bytes));
    }
    const Symbol utf8 = EncodeSymbol(type, With(TextRequest(kJapanese), &Request::stringEncoding, "utf-8"));
    EXPECT_EQ(MatrixOf(utf8), MatrixOf(EncodeSymbol(type, BytesRequest(kJapanese))));
    EXPECT_EQ(MatrixOf(utf8), MatrixOf(Encoded(type, kJapanese)));
  }
}

TEST(MatrixSymbols, BytesAreNeverConverted) {
  for (const Type type : {Type::kQr, Type::kDataMatrix, Type::kPdf417}) {
    const Symbol plain = EncodeSymbol(type, BytesRequest(kJapanese));
    const Symbol asked =
        EncodeSymbol(type, With(BytesRequest(kJapanese), &Request::stringEncoding, "shift-jis"));
    EXPECT_EQ(MatrixOf(plain), MatrixOf(asked));
    EXPECT_EQ(EncodeSymbol(type, BytesRequest("A\x82\xA0\xE3\x81\x82"
                                              "B"))
                  .text,
              "A\xEF\xBF\xBD\xEF\xBF\xBD\xE3\x81\x82"
              "B");
  }
}

TEST(MatrixSymbols, WhatShiftJisLacksIsNamed) {
  const auto request = [](const std::string& text) {
    return With(TextRequest(text), &Request::stringEncoding, "shift-jis");
  };
  for (const Type type : {Type::kQr, Type::kDataMatrix, Type::kPdf417}) {
    ExpectBadText(type, request(std::string("A?\0", 3) + "\xE3\x81\x82\xC3\xA9"),
                  "Shift-JIS lacks the character U+00E9 at position 5; replace it or choose string_encoding "
                  "utf-8.");
    ExpectBadText(type, request("\xF0\x9F\x98\x80"),
                  "Shift-JIS lacks the character U+1F600 at position 1; replace it or choose string_encoding "
                  "utf-8.");
    EXPECT_EQ(EncodeSymbol(type, request("??")).text, "??");
    EXPECT_EQ(EncodeSymbol(type, request("\xC2\xA5")).text, "\xC2\xA5");  // as 0x5C
  }
}

Request DataMatrixRequest(const std::string& text, const char* scheme, const char* size) {
  return With(With(TextRequest(text), &Request::encodeScheme, scheme), &Request::codeSize, size);
}

TEST(DataMatrixSymbol, SizesAndSchemes) {
  EXPECT_EQ(MatrixOf(Encoded(Type::kDataMatrix, "123456")).Columns(), 10);
  const Symbol rectangle = EncodeSymbol(Type::kDataMatrix, DataMatrixRequest("1", "AUTO", "8x18"));
  EXPECT_EQ(MatrixOf(rectangle).Columns(), 18);
  EXPECT_EQ(MatrixOf(rectangle).Rows(), 8);
  const std::string letters(20, 'A');
  const Symbol ascii = Encoded(Type::kDataMatrix, letters);
  const Symbol automatic = EncodeSymbol(Type::kDataMatrix, DataMatrixRequest(letters, "AUTO", "AUTO"));
  EXPECT_GT(MatrixOf(ascii).Columns(), MatrixOf(automatic).Columns());
  EXPECT_EQ(MatrixOf(Encoded(Type::kDataMatrix, std::string(3116, '1'))).Columns(), 144);
  EXPECT_EQ(MatrixOf(EncodeSymbol(Type::kDataMatrix,
                                  DataMatrixRequest(std::string(1556, '\x7F'), "BASE256", "AUTO")))
                .Columns(),
            144);
}

TEST(DataMatrixSymbol, Refusals) {
  ExpectTooLong(
      Type::kDataMatrix, std::string(3117, '1'),
      "Data Matrix holds 1558 codewords, at most 3116 digits or 1556 bytes, and the text takes more; "
      "shorten it or choose encode_scheme AUTO.");
  ExpectTooLong(
      Type::kDataMatrix, DataMatrixRequest(std::string(10'000, 'a'), "AUTO", "AUTO"),
      "Data Matrix holds 1558 codewords, at most 3116 digits or 1556 bytes, and the text takes more; "
      "shorten it.");
  ExpectTooLong(
      Type::kDataMatrix, DataMatrixRequest("ABCD", "ASCII", "10x10"),
      "A symbol of 10x10 modules holds 3 codewords and the text takes 4; shorten it, choose a larger "
      "code_size or choose encode_scheme AUTO.");
  ExpectTooLong(
      Type::kDataMatrix, DataMatrixRequest(std::string(4'000, 'a'), "AUTO", "8x18"),
      "Data Matrix holds 1558 codewords, at most 3116 digits or 1556 bytes, and the text takes more; "
      "shorten it.");
  ExpectBadText(Type::kDataMatrix, DataMatrixRequest("ABc", "X12", "AUTO"),
                "The scheme X12 takes A to Z, 0 to 9, the space, the carriage return, * and >; replace the "
                "character \"c\" at position 3 or choose another encode_scheme.");
  ExpectBadText(
      Type::kDataMatrix, DataMatrixRequest("AB_", "EDIFACT", "AUTO"),
      "The scheme EDIFACT takes ASCII characters from the space to \"^\"; replace the character \"_\" at "
      "position 3 or choose another encode_scheme.");
  Request japanese = DataMatrixRequest("A\xE3\x81\x82", "EDIFACT", "AUTO");
  japanese.stringEncoding = "shift-jis";
  ExpectBadText(
      Type::kDataMatrix, japanese,
      "The scheme EDIFACT takes ASCII characters from the space to \"^\"; replace the character U+3042 at "
      "position 2 or choose another encode_scheme.");
}

TEST(Pdf417Symbol, ShapesAndRowHeight) {
  const Symbol symbol = Encoded(Type::kPdf417, "PDF417");
  EXPECT_EQ(std::get<MatrixSymbol>(symbol.modules).rowHeight, 3);
  Request request = TextRequest(std::string(100, 'A'));
  request.yHeight = 5;
  EXPECT_EQ(std::get<MatrixSymbol>(EncodeSymbol(Type::kPdf417, request).modules).rowHeight, 5);
  request.aspectRatio = 0.1;
  const int wide = MatrixOf(EncodeSymbol(Type::kPdf417, request)).Columns();
  request.aspectRatio = 2;
  EXPECT_GT(wide, MatrixOf(EncodeSymbol(Type::kPdf417, request)).Columns());
  EXPECT_EQ(Encoded(Type::kPdf417, std::string(2710, '1')).text.size(), 2710U);
}

TEST(Pdf417Symbol, Refusals) {
  const std::string message =
      "PDF417 holds at most 1108 bytes, 1850 characters of ASCII or 2710 digits, and the text takes more; "
      "shorten "
      "it.";
  ExpectTooLong(Type::kPdf417, std::string(2711, '1'), message);
  ExpectTooLong(Type::kPdf417, std::string(1851, 'A'), message);
  ExpectTooLong(Type::kPdf417, BytesRequest(std::string(1109, '\x80')), message);
  ExpectTooLong(Type::kPdf417, std::string(10'000, 'A'), message);
  EXPECT_EQ(Encoded(Type::kPdf417, std::string(1850, 'A')).text.size(), 1850U);
  EXPECT_EQ(EncodeSymbol(Type::kPdf417, BytesRequest(std::string(1108, '\x80'))).text.size(), 3U * 1108);
}

// ---- Independent readers ----

struct Case {
  Type type;
  Request request;
  Reading reading;  // by ZXing
};

void ExpectZxing(const Case& example) {
  const Symbol symbol = EncodeSymbol(example.type, example.request);
  EXPECT_EQ(test::ReadWithZxing(PictureOf(symbol), example.reading.format), example.reading);
}

TEST(SymbolReadBack, LinearSymbols) {
  RandomText random(2);
  for (int i = 0; i < 100; ++i) {
    const std::string code39 = random.Of("ABCXYZ019-. $/+%", 1, 20);
    ExpectZxing({Type::kCode39, TextRequest(code39), {"Code39", code39}});
    const std::string code93 = random.Of("ABCXYZ019-. $/+%", 1, 20);
    ExpectZxing({Type::kCode93, TextRequest(code93), {"Code93", code93}});
    const std::string code128 = random.Bytes(1, 8, 0, 127) + random.Digits(0, 6) + random.Bytes(1, 8, 0, 127);
    ExpectZxing({Type::kCode128, TextRequest(code128), {"Code128", code128}});
    const std::string setA = random.Bytes(1, 12, 0, 95);
    ExpectZxing({Type::kCode128, Code128Request(setA, "A"), {"Code128", setA}});
    const std::string nw7 = "A" + random.Of("0123456789-$:/.+", 3, 12) + "B";
    ExpectZxing({Type::kNw7, TextRequest(nw7), {"Codabar", nw7}});
    std::string itf = random.Digits(6, 20);
    itf.resize(itf.size() / 2 * 2);
    ExpectZxing({Type::kItf, TextRequest(itf), {"ITF", itf}});
  }
}

TEST(SymbolReadBack, RetailSymbols) {
  RandomText random(3);
  for (int i = 0; i < 100; ++i) {
    const std::string jan13 = "1" + random.Digits(11, 11);
    ExpectZxing({Type::kJan13, TextRequest(jan13), {"EAN-13", jan13 + Gs1CheckDigit(jan13)}});
    const std::string jan8 = random.Digits(7, 7);
    ExpectZxing({Type::kJan8, TextRequest(jan8), {"EAN-8", jan8 + Gs1CheckDigit(jan8)}});
    const std::string upcA = random.Digits(11, 11);
    const auto reading = test::ReadWithZxing(PictureOf(Encoded(Type::kUpcA, upcA)), "UPC-A");
    ASSERT_TRUE(reading);
    EXPECT_THAT(reading->data, testing::EndsWith(upcA + Gs1CheckDigit(upcA)));
    // Both number systems, all check digits.
    const Symbol upcE =
        Encoded(Type::kUpcE, std::string(1, static_cast<char>('0' + i % 2)) + random.Digits(6, 6));
    EXPECT_EQ(test::ReadWithZxing(PictureOf(upcE), "UPC-E"), (Reading{"UPC-E", upcE.text})) << upcE.text;
  }
}

TEST(SymbolReadBack, Gs1_128) {
  RandomText random(4);
  for (int i = 0; i < 100; ++i) {
    const std::string lot = random.Of("ABCabc0123456789-/", 1, 20);
    const std::string serial = random.Of("XYZxyz0123456789", 1, 20);
    ExpectZxing({Type::kGs1_128,
                 TextRequest(Line("(10)", lot, "(21)", serial)),
                 {"Code128", Line("10", lot, '\x1D', "21", serial)}});
  }
  const std::string data = "91" + std::string(41, '7');
  ExpectZxing({Type::kGs1_128, PaymentRequest(data), {"Code128", data + Gs1CheckDigit(data)}});
}

TEST(SymbolReadBack, MatrixSymbols) {
  RandomText random(5);
  for (int i = 0; i < 40; ++i) {
    const std::string bytes = random.Bytes(1, 60);
    const char* const level = std::array{"L", "M", "Q", "H"}[static_cast<std::size_t>(i % 4)];
    ExpectZxing(
        {Type::kQr, With(BytesRequest(bytes), &Request::errorCorrectionLevel, level), {"QRCode", bytes}});
    ExpectZxing({Type::kDataMatrix, BytesRequest(bytes), {"DataMatrix", bytes}});
    ExpectZxing({Type::kPdf417, BytesRequest(bytes), {"PDF417", bytes}});
    const std::string digits = random.Digits(1, 60);
    ExpectZxing({Type::kQr, With(TextRequest(digits), &Request::encodeMode, "NUMERIC"), {"QRCode", digits}});
  }
}

TEST(SymbolReadBack, DataBarInAllForms) {
  RandomText random(6);
  std::vector<test::GreyImage> images;
  std::vector<std::string> expected;
  const auto add = [&](Type type, const Request& request, const std::string& data) {
    images.push_back(PictureOf(EncodeSymbol(type, request)));
    expected.push_back(data);
  };
  for (int i = 0; i < 30; ++i) {
    const std::string gtin = (i % 2 == 0 ? "0" : "1") + random.Digits(12, 12);
    const std::string data = "01" + gtin + Gs1CheckDigit(gtin);
    add(Type::kDataBar14, TextRequest(gtin), data);
    add(Type::kDataBar14, With(TextRequest(gtin), &Request::form, Form::kStacked), data);
    add(Type::kDataBar14, With(TextRequest(gtin), &Request::form, Form::kStackedOmnidirectional), data);
    add(Type::kDataBarLimited, TextRequest(gtin), data);
    const std::string lot = random.Of("ABC0123456789", 1, 10);
    const std::string elements = Line("(01)", data.substr(2), "(10)", lot);
    add(Type::kDataBarExpanded, TextRequest(elements), Line(data, "10", lot));
    Request stacked = With(TextRequest(elements), &Request::form, Form::kStacked);
    stacked.pairsPerRow = 1 + i % 5;
    add(Type::kDataBarExpanded, stacked, Line(data, "10", lot));
  }
  const auto readings = test::ReadWithWasm(images);
  ASSERT_EQ(readings.size(), expected.size());
  for (std::size_t i = 0; i < readings.size(); ++i) {
    ASSERT_TRUE(readings[i]) << i << ": " << expected[i];
    EXPECT_EQ(readings[i]->data, expected[i]) << i << ' ' << readings[i]->format;
  }
}

}  // namespace
}  // namespace barcode::label
