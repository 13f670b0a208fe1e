#include "mkbarcode/library/draw.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

DrawRequest Request(BarcodeSymbology type, std::string_view size, Form form = Form::kPlain) {
  DrawRequest request;
  request.type = &TypeOf(type);
  request.text = "123";
  request.size = ParseSize(size).value();
  request.form = form;
  return request;
}

TEST(ChooseDrawFunction, FollowsTypeFormAndSize) {
  const std::vector<std::pair<DrawRequest, std::string_view>> cases = {
      {Request(BARCODE_CODE39, "300x100"), "barcode_draw_1d"},
      {Request(BARCODE_GS1_128, "300x100"), "barcode_draw_1d"},
      {Request(BARCODE_GS1_128, "300x100", Form::kConvenience), "barcode_draw_convenience"},
      {Request(BARCODE_GS1_DATABAR_EXPANDED, "300x100"), "barcode_draw_1d"},
      {Request(BARCODE_GS1_DATABAR_EXPANDED, "300x100", Form::kStacked), "barcode_draw_stacked"},
      {Request(BARCODE_YUBIN_CUSTOMER, "24"), "barcode_draw_yubin"},
      {Request(BARCODE_YUBIN_CUSTOMER, "300x24"), "barcode_draw_yubin_with_width"},
      {Request(BARCODE_QR, "200"), "barcode_draw_2d"},
      {Request(BARCODE_DATAMATRIX, "200x200"), "barcode_draw_2d_rect"},
      {Request(BARCODE_PDF417, "400x160"), "barcode_draw_2d_rect"},
  };
  for (const auto& [request, name] : cases) {
    const DrawFunction& draw = ChooseDrawFunction(request);
    EXPECT_EQ(NameOf(draw), name);
    EXPECT_NE(AddressInLibrary(std::string(name)), nullptr) << name;
  }
}

TEST(ChooseDrawFunction, RefusesWhatDoesNotGoTogether) {
  EXPECT_THROW(ChooseDrawFunction(Request(BARCODE_CODE39, "300")), UsageError);
  EXPECT_THROW(ChooseDrawFunction(Request(BARCODE_GS1_128, "300", Form::kConvenience)), UsageError);
  EXPECT_THROW(ChooseDrawFunction(Request(BARCODE_CODE128, "300x100", Form::kConvenience)), UsageError);
  EXPECT_THROW(ChooseDrawFunction(Request(BARCODE_GS1_DATABAR_14, "300x100", Form::kStacked)), UsageError);
  EXPECT_THROW(ChooseDrawFunction(Request(BARCODE_QR, "200", Form::kStacked)), UsageError);
}

TEST(DefaultSize, SuitsEveryType) {
  for (const TypeInfo& type : AllTypes()) {
    DrawRequest request = Request(type.number, "1x1");
    request.size = DefaultSize(type);
    EXPECT_NO_THROW(CheckRequest(request)) << type.name;
    EXPECT_EQ(request.size.isSingle, type.IsTwoDimensional() || type.number == BARCODE_YUBIN_CUSTOMER);
  }
}

TEST(CheckRequest, RefusesAnOptionThatTheTypeDoesNotServe) {
  DrawRequest request = Request(BARCODE_CODE39, "300x100");
  request.settings = {MakeSetting(OptionId::kExtendedGuard, "off")};
  try {
    CheckRequest(request);
    FAIL();
  } catch (const UsageError& error) {
    EXPECT_STREQ(error.what(),
                 "--extended-guard does not apply to code39 (it serves jan8, jan13, upca, upce)");
  }
}

TEST(CheckRequest, RefusesADataUriOfAnSvg) {
  DrawRequest request = Request(BARCODE_CODE39, "300x100");
  request.asDataUri = true;
  EXPECT_NO_THROW(CheckRequest(request));
  request.format = "svg";
  EXPECT_THROW(CheckRequest(request), UsageError);
}

TEST(CallsText, ShowsTheCallsInOrder) {
  DrawRequest request = Request(BARCODE_QR, "200");
  request.text = "say \"hi\"";
  request.format = "svg";
  request.settings = {MakeSetting(OptionId::kErrorCorrectionLevel, "H")};
  EXPECT_EQ(CallsText(request),
            "BarcodeHandle h = barcode_create(BARCODE_QR);\n"
            "barcode_set_output_format(h, \"svg\");\n"
            "barcode_set_error_correction_level(h, \"H\");\n"
            "barcode_draw_2d(h, \"say \\\"hi\\\"\", 200);\n"
            "const char* svg = barcode_get_svg(h);\n"
            "barcode_destroy(h);\n");
  EXPECT_EQ(CallsText(Request(BARCODE_CODE39, "300x100")),
            "BarcodeHandle h = barcode_create(BARCODE_CODE39);\n"
            "barcode_draw_1d(h, \"123\", 300, 100);\n"
            "int length = 0;\n"
            "const unsigned char* png = barcode_get_image_data(h, &length);\n"
            "barcode_destroy(h);\n");
}

TEST(CommandText, ShowsTheCommand) {
  DrawRequest request = Request(BARCODE_GS1_128, "600x160", Form::kConvenience);
  request.text = "{FNC1}9";
  request.settings = {MakeSetting(OptionId::kTextEvenSpacing, "off")};
  EXPECT_EQ(
      CommandText(request, "out.png"),
      "mkbarcode library gs1-128 '{FNC1}9' --size 600x160 --convenience --no-text-even-spacing -o out.png");
  request = Request(BARCODE_YUBIN_CUSTOMER, "24");
  request.text = "-1-";
  request.format = "svg";
  EXPECT_EQ(CommandText(request, "-"), "mkbarcode library yubin --size 24 --format svg -o - -- -1-");
}

TEST(DrawImage, ThrowsWhenTheLibraryRefuses) {
  DrawRequest request = Request(BARCODE_CODE39, "300x100");
  request.text = "";
  EXPECT_THROW(DrawImage(request, false), RunError);
  request.text = std::string("A\0B", 3);
  EXPECT_THROW(DrawImage(request, false), RunError);
}

TEST(DrawImage, RefusesTypesThatTheLibraryDoesNotOffer) {
  for (const TypeInfo& type : AllTypes()) {
    DrawRequest request = Request(type.number, "1x1");
    request.size = DefaultSize(type);
    request.text = "";
    if (IsOffered(type)) {
      continue;
    }
    EXPECT_THROW(DrawImage(request, false), UsageError) << type.name;
  }
}

}  // namespace
}  // namespace barcode::tool
