#include "label/warnings.h"

#include <gtest/gtest.h>

#include <string>

#include "label/report.h"

namespace barcode::label {
namespace {

// A label of a type that nothing is wrong with.
struct Sample {
  explicit Sample(Type wanted) : type(InfoOf(wanted)) {
    composition.module = 4;
    composition.quietZone = type.quietZone;
  }

  // The codes, "quiet_zone small_module".
  std::string Codes() const {
    std::string codes;
    for (const Warning& warning : PrintWarnings(type, request, composition)) {
      codes += (codes.empty() ? "" : " ") + std::string(WordOf(warning.code));
    }
    return codes;
  }

  std::string Message() const {
    const std::vector<Warning> warnings = PrintWarnings(type, request, composition);
    return warnings.size() == 1 ? warnings.front().message : "";
  }

  const TypeInfo& type;
  Request request;
  Composition composition;
};

TEST(LabelWarnings, NoneForALabelAsItShouldBe) {
  for (const TypeInfo& type : AllTypes()) {
    EXPECT_EQ(Sample(type.type).Codes(), type.anyReader ? "" : "no_reader") << type.name;
  }
}

TEST(LabelWarnings, NoReader) {
  EXPECT_EQ(Sample(Type::kYubinCustomer).Message(),
            "No common scanner reads yubin; make sure that yours does.");
}

TEST(LabelWarnings, AdjustmentThatMakesBarsAlike) {
  Sample label(Type::kCode39);
  label.request.barAdjust = 3;
  EXPECT_EQ(label.Codes(), "");
  label.request.barAdjust = -4;
  EXPECT_EQ(
      label.Message(),
      "A bar_adjust of -4 makes narrow and wide alike where a module is 4 pixels; ask for less, or for a "
      "larger module.");
  label.request.barAdjust = 20;
  EXPECT_EQ(label.Codes(), "small_module");
}

TEST(LabelWarnings, QuietZone) {
  Sample jan(Type::kJan13);
  jan.composition.quietZone.left = 10;
  EXPECT_EQ(
      jan.Message(),
      "The quiet zone is smaller than that of the standard, 11 modules on the left and 7 on the right; leave "
      "out \"quiet_zone\", or keep that margin free around the picture.");
  jan.composition.quietZone = {.left = 11, .right = 6, .top = 0, .bottom = 0};
  EXPECT_EQ(jan.Codes(), "quiet_zone");
  jan.composition.quietZone = {.left = 50, .right = 50, .top = 50, .bottom = 50};
  EXPECT_EQ(jan.Codes(), "");
  for (int QuietZone::*const side :
       {&QuietZone::left, &QuietZone::right, &QuietZone::top, &QuietZone::bottom}) {
    Sample qr(Type::kQr);
    --(qr.composition.quietZone.*side);
    EXPECT_EQ(qr.Codes(), "quiet_zone");
  }
}

TEST(LabelWarnings, ModulesThatTheSymbologyIsNotMadeFor) {
  Sample jan(Type::kJan13);
  jan.request.dpi = 300;
  jan.composition.module = 3;  // 0.254 mm
  EXPECT_EQ(jan.Message(),
            "A module of 0.254 mm is smaller than the 0.264 mm that jan13 needs; ask for a larger one.");
  jan.composition.module = 4;
  EXPECT_EQ(jan.Codes(), "");
  // Without a dpi nobody knows its size.
  jan.composition.module = 1;
  jan.request.dpi.reset();
  EXPECT_EQ(jan.Codes(), "");
}

// Two dots at 300 dpi, 0.1693 mm, are what small GS1 symbols are printed with: 0.170 in the tables.
TEST(LabelWarnings, ASizeThatWasRoundedIsNotTooSmall) {
  Sample gs1(Type::kGs1_128);
  gs1.request.dpi = 300;
  gs1.composition.module = 2;
  EXPECT_EQ(gs1.Codes(), "");
}

TEST(LabelWarnings, SingleDots) {
  Sample code(Type::kCode39);
  code.composition.module = 1;
  code.request.dpi = 100;
  EXPECT_EQ(code.Message(), "A module of one dot does not print well at 100 dpi; ask for two dots at least.");
  code.composition.module = 2;
  EXPECT_EQ(code.Codes(), "");
  code.composition.module = 1;
  code.request.dpi = 600;
  EXPECT_EQ(code.Message(),
            "A module of 0.0423 mm is smaller than the 0.191 mm that code39 needs; ask for a larger one.");
}

std::string CodesOfColours(Type type, const Colour& foreground, const Colour& background) {
  Sample sample(type);
  sample.composition.drawing.foreground = foreground;
  sample.composition.drawing.background = background;
  return sample.Codes();
}

TEST(LabelWarnings, Contrast) {
  constexpr Colour kGrey = {128, 128, 128, 255};
  constexpr Colour kLightGrey = {208, 208, 208, 255};
  EXPECT_EQ(CodesOfColours(Type::kCode39, kGrey, kWhite), "");
  EXPECT_EQ(CodesOfColours(Type::kCode39, kLightGrey, kWhite), "low_contrast");
  EXPECT_EQ(CodesOfColours(Type::kCode39, kBlack, kGrey), "low_contrast");  // 22% of the light
  EXPECT_EQ(CodesOfColours(Type::kQr, kBlack, kGrey), "low_contrast");
  EXPECT_EQ(CodesOfColours(Type::kQr, kWhite, kWhite), "low_contrast");
}

// The bound is 40% of the light, which is 169.6 of 255 in linear red.
TEST(LabelWarnings, ContrastIsThatOfTheLight) {
  EXPECT_EQ(CodesOfColours(Type::kCode39, kBlack, {170, 170, 170, 255}), "");
  EXPECT_EQ(CodesOfColours(Type::kCode39, kBlack, {169, 169, 169, 255}), "low_contrast");
}

TEST(LabelWarnings, LinearSymbolsAreReadInRedLight) {
  constexpr Colour kRed = {255, 0, 0, 255};
  constexpr Colour kBlue = {0, 0, 255, 255};
  EXPECT_EQ(CodesOfColours(Type::kCode39, kRed, kWhite), "low_contrast");
  EXPECT_EQ(CodesOfColours(Type::kPdf417, kRed, kWhite), "low_contrast");
  EXPECT_EQ(CodesOfColours(Type::kQr, kRed, kWhite), "");
  EXPECT_EQ(CodesOfColours(Type::kCode39, kBlue, kWhite), "");
  EXPECT_EQ(CodesOfColours(Type::kCode39, kBlack, kRed), "");
  EXPECT_EQ(CodesOfColours(Type::kDataMatrix, kBlack, kRed), "low_contrast");
}

TEST(LabelWarnings, ColoursAreLaidOverWhite) {
  constexpr Colour kFaint = {0, 0, 0, 40};
  constexpr Colour kNone = {0, 0, 0, 0};
  EXPECT_EQ(CodesOfColours(Type::kQr, kBlack, kNone), "");
  EXPECT_EQ(CodesOfColours(Type::kQr, kFaint, kWhite), "low_contrast");
  EXPECT_EQ(CodesOfColours(Type::kQr, kNone, kWhite), "low_contrast");
}

TEST(LabelWarnings, LightOnDark) {
  EXPECT_EQ(CodesOfColours(Type::kQr, kWhite, kBlack), "light_on_dark");
  EXPECT_EQ(CodesOfColours(Type::kQr, {60, 60, 60, 255}, kBlack), "low_contrast light_on_dark");
  EXPECT_EQ(CodesOfColours(Type::kQr, kBlack, kBlack), "low_contrast");
}

TEST(LabelWarnings, TheirOrder) {
  Sample sample(Type::kNec2of5);
  sample.composition.quietZone = {};
  sample.composition.module = 1;
  sample.request.dpi = 300;
  sample.composition.drawing.foreground = {60, 60, 60, 255};
  sample.composition.drawing.background = kBlack;
  EXPECT_EQ(sample.Codes(), "no_reader quiet_zone small_module low_contrast light_on_dark");
}

}  // namespace
}  // namespace barcode::label
