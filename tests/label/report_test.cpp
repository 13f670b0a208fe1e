#include "label/report.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

namespace barcode::label {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

Composition SomeComposition() {
  Composition composition;
  composition.drawing.width = 300;
  composition.drawing.height = 100;
  composition.module = 2;
  composition.columns = 95;
  composition.rows = 1;
  composition.quietZone = {.left = 11, .right = 7, .top = 0, .bottom = 0};
  composition.displayText = "4901234567894";
  return composition;
}

Symbol SomeSymbol() {
  Symbol symbol;
  symbol.text = "4901234567894";
  return symbol;
}

std::string ReportOf(const Symbol& symbol, const Composition& composition,
                     const std::vector<Warning>& warnings) {
  return DeliveredReport({.type = InfoOf(Type::kJan13),
                          .format = Format::kSvg,
                          .symbol = symbol,
                          .composition = composition,
                          .warnings = warnings,
                          .bytes = 12345});
}

TEST(LabelReport, OfADeliveredLabel) {
  EXPECT_EQ(
      ReportOf(SomeSymbol(), SomeComposition(), {}),
      R"({"ok":true,"warnings":[],"type":"jan13","text":"4901234567894","display_text":"4901234567894",)"
      R"("width":300,"height":100,"module":2,"modules":{"columns":95,"rows":1},)"
      R"("quiet_zone":{"left":11,"right":7,"top":0,"bottom":0},"format":"svg","bytes":12345})");
}

TEST(LabelReport, WithADpiTheSizeIsInMillimetresToo) {
  Composition composition = SomeComposition();
  composition.drawing.dpi = 300;
  const json report = json::parse(ReportOf(SomeSymbol(), composition, {}));
  EXPECT_EQ(report["width_mm"], 25.4);
  EXPECT_EQ(report["height_mm"], 8.46667);
  composition.drawing.width = 100'000'000;
  composition.drawing.height = 1;
  composition.drawing.dpi = 4800;
  const json extreme = json::parse(ReportOf(SomeSymbol(), composition, {}));
  EXPECT_EQ(extreme["width_mm"], 529167);
  EXPECT_EQ(extreme["height_mm"], 0.00529167);
}

TEST(LabelReport, MembersStandInTheirOrder) {
  Composition composition = SomeComposition();
  composition.drawing.dpi = 300;
  const auto report = ordered_json::parse(ReportOf(SomeSymbol(), composition, {}));
  std::string names;
  for (const auto& [name, value] : report.items()) {
    names += name + ' ';
  }
  EXPECT_EQ(
      names,
      "ok warnings type text display_text width height width_mm height_mm module modules quiet_zone format "
      "bytes ");
}

TEST(LabelReport, Warnings) {
  const json report = json::parse(ReportOf(
      SomeSymbol(), SomeComposition(), {{ErrorCode::kQuietZone, "One."}, {ErrorCode::kNoReader, "Two."}}));
  EXPECT_EQ(report["warnings"], json::parse(R"([{"code": "quiet_zone", "message": "One."},
                                                {"code": "no_reader", "message": "Two."}])"));
}

TEST(LabelReport, AnyTextMakesJson) {
  Symbol symbol;
  symbol.text = std::string("\0\"\\\x1F\xFF\xC3", 6);
  Composition composition = SomeComposition();
  composition.displayText = "\xE6\xBC";
  const json report = json::parse(ReportOf(symbol, composition, {}));
  EXPECT_EQ(report["text"].get<std::string>(), std::string("\0\"\\\x1F\xEF\xBF\xBD\xEF\xBF\xBD", 10));
}

TEST(LabelReport, OfARefusedLabel) {
  const LabelError error(ErrorCode::kTooSmall, "width", "The picture is \"too\" small.", Size{210, 40});
  EXPECT_EQ(
      RefusedReport(error, &InfoOf(Type::kQr)),
      R"({"ok":false,"error":{"code":"too_small","field":"width","message":"The picture is \"too\" small.",)"
      R"("needed":{"width":210,"height":40}},"warnings":[],"type":"qr"})");
  EXPECT_EQ(RefusedReport({ErrorCode::kBadRequest, "", "No."}, nullptr),
            R"({"ok":false,"error":{"code":"bad_request","field":"","message":"No."},"warnings":[]})");
  EXPECT_TRUE(json::accept(RefusedReport({ErrorCode::kUnknownField, "\xFF\"", "\xC3."}, nullptr)));
}

TEST(LabelReport, WithoutMemoryItIsConstant) {
  const json report = json::parse(kOutOfMemoryReport);
  EXPECT_EQ(report["ok"], false);
  EXPECT_EQ(report["error"]["code"], "out_of_memory");
  const json made = json::parse(
      RefusedReport({ErrorCode::kOutOfMemory, "", report["error"]["message"].get<std::string>()}, nullptr));
  EXPECT_EQ(made, report);
}

TEST(LabelReport, WordsOfTheCodes) {
  EXPECT_EQ(WordOf(ErrorCode::kBadRequest), "bad_request");
  EXPECT_EQ(WordOf(ErrorCode::kUnknownField), "unknown_field");
  EXPECT_EQ(WordOf(ErrorCode::kBadValue), "bad_value");
  EXPECT_EQ(WordOf(ErrorCode::kUnknownType), "unknown_type");
  EXPECT_EQ(WordOf(ErrorCode::kBadText), "bad_text");
  EXPECT_EQ(WordOf(ErrorCode::kTooLong), "too_long");
  EXPECT_EQ(WordOf(ErrorCode::kTooSmall), "too_small");
  EXPECT_EQ(WordOf(ErrorCode::kTooLarge), "too_large");
  EXPECT_EQ(WordOf(ErrorCode::kOutOfMemory), "out_of_memory");
  EXPECT_EQ(WordOf(ErrorCode::kLowContrast), "low_contrast");
  EXPECT_EQ(WordOf(ErrorCode::kLightOnDark), "light_on_dark");
  EXPECT_EQ(WordOf(ErrorCode::kSmallModule), "small_module");
  EXPECT_EQ(WordOf(ErrorCode::kQuietZone), "quiet_zone");
  EXPECT_EQ(WordOf(ErrorCode::kTextShrunk), "text_shrunk");
  EXPECT_EQ(WordOf(ErrorCode::kTextLeftOut), "text_left_out");
  EXPECT_EQ(WordOf(ErrorCode::kMissingGlyph), "missing_glyph");
  EXPECT_EQ(WordOf(ErrorCode::kNoReader), "no_reader");
  EXPECT_EQ(WordOf(ErrorCode::kGs1Association), "gs1_association");
}

}  // namespace
}  // namespace barcode::label
