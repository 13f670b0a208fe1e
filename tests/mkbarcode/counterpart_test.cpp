#include "mkbarcode/gallery/counterpart.h"

#include <gtest/gtest.h>

#include <string>

#include "label/label.h"

namespace barcode::tool {
namespace {

std::optional<DrawRequest> CounterpartOf(BarcodeSymbology type, const std::string& members) {
  const std::string request = R"({"type": ")" + std::string(TypeOf(type).name) + R"(", )" + members + "}";
  const label::Label label = label::MakeFromJson(request);
  EXPECT_TRUE(label.ok) << label.report;
  return LibraryCounterpart(TypeOf(type), nlohmann::ordered_json::parse(request),
                            nlohmann::json::parse(label.report));
}

std::string CommandOf(BarcodeSymbology type, const std::string& members) {
  const std::optional<DrawRequest> request = CounterpartOf(type, members);
  const std::string command = CommandText(request.value(), "x.png");
  return command.substr(command.find(TypeOf(type).name));
}

TEST(LibraryCounterpart, HasTheBoxOfSymbolAndText) {
  EXPECT_EQ(CommandOf(BARCODE_CODE39, R"("text": "ABC-123")"), "code39 ABC-123 --size 286x78 -o x.png");
  EXPECT_EQ(CommandOf(BARCODE_CODE39, R"("text": "ABC-123", "rotate": 90)"),
            "code39 ABC-123 --size 286x78 -o x.png");
  EXPECT_EQ(CommandOf(BARCODE_CODE39, R"("text": "ABC-123", "quiet_zone": 7)"),
            "code39 ABC-123 --size 286x78 -o x.png");
  EXPECT_EQ(CommandOf(BARCODE_QR, R"("text": "hello", "caption": "Hello")"), "qr hello --size 84 -o x.png");
  EXPECT_EQ(CommandOf(BARCODE_DATAMATRIX, R"("text": "1", "code_size": "8x18")"),
            "datamatrix 1 --size 72x32 --code-size 8x18 -o x.png");
  EXPECT_EQ(CommandOf(BARCODE_YUBIN_CUSTOMER, R"("text": "26300233-20-12")"),
            "yubin 26300233-20-12 --size 12 -o x.png");
}

// The digits beside the bars need the room of the quiet zones.
TEST(LibraryCounterpart, HasTheWholeWidthOfLabelsWithDigitsOutside) {
  EXPECT_EQ(CommandOf(BARCODE_JAN13, R"("text": "490123456789")"),
            "jan13 490123456789 --size 226x161 -o x.png");
  EXPECT_EQ(CommandOf(BARCODE_JAN13, R"("text": "490123456789", "show_text": false, "height": 50)"),
            "jan13 490123456789 --size 190x60 --no-show-text -o x.png");
}

TEST(LibraryCounterpart, HasTheOptions) {
  EXPECT_EQ(
      CommandOf(BARCODE_CODE128,
                R"("text": "AB", "foreground": "#12f", "background": "transparent", "bar_adjust": -1,
                         "text_scale": 2, "even_spacing": false, "code_mode": "B")"),
      "code128 AB --size 114x92 --foreground-color '#1122ff' --background-color '#ffffff00' "
      "--px-adjust-black -1 --no-text-even-spacing --text-font-scale 2 --code-mode B --px-adjust-white 1 "
      "-o x.png");
}

TEST(LibraryCounterpart, HasTheForms) {
  EXPECT_EQ(CounterpartOf(BARCODE_GS1_128,
                          R"("form": "payment", "text": "9191234512345678901234567890122611300012300")")
                ->form,
            Form::kConvenience);
  EXPECT_EQ(CounterpartOf(BARCODE_GS1_DATABAR_EXPANDED, R"("form": "stacked", "text": "(10)ABC")")->form,
            Form::kStacked);
  EXPECT_EQ(CounterpartOf(BARCODE_GS1_DATABAR_14, R"("form": "stacked", "text": "0491234567890")")->settings,
            std::vector{MakeSetting(OptionId::kSymbolType14, "STACKED")});
}

TEST(LibraryCounterpart, HasTheLibrarysNotationOfElements) {
  EXPECT_EQ(CounterpartOf(BARCODE_GS1_128, R"j("text": "(01)04912345678904(10)LOT42(17)261231")j")->text,
            "{FNC1}0104912345678904{AI}10LOT42{FNC1}17261231");
  EXPECT_EQ(
      CounterpartOf(BARCODE_GS1_DATABAR_EXPANDED, R"j("text": "(01)90012345678908(3103)001750")j")->text,
      "0190012345678908{AI}3103001750");
  EXPECT_EQ(CounterpartOf(BARCODE_GS1_DATABAR_LIMITED, R"j("text": "(01)15012345678907")j")->text,
            "1501234567890");
}

TEST(LibraryCounterpart, IsMissingForBytesThatNoTextHolds) {
  EXPECT_EQ(CounterpartOf(BARCODE_QR, R"("text_base64": "AAECA//+/fw=")"), std::nullopt);
}

}  // namespace
}  // namespace barcode::tool
