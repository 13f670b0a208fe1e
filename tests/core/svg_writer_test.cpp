#include "core/svg_writer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace barcode {
namespace {

TEST(SvgWriter, DocumentFrame) {
  SvgWriter svg;
  svg.BeginSvg(300, 100);
  svg.EndSvg();
  EXPECT_EQ(svg.Document(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"300\" height=\"100\" "
            "viewBox=\"0 0 300 100\">\n"
            "</svg>\n");
}

TEST(SvgWriter, BeginStartsAnew) {
  SvgWriter svg;
  svg.BeginSvg(1, 2);
  svg.EndSvg();
  const std::string first = svg.Document();
  svg.BeginSvg(1, 2);
  svg.EndSvg();
  EXPECT_EQ(svg.Document(), first);
}

TEST(SvgWriter, RectWithOpaqueColourHasNoOpacity) {
  SvgWriter svg;
  svg.SvgRect(0, 10, 2.5, 100.0 / 3, {1, 20, 255, 255});
  EXPECT_EQ(svg.Document(),
            "  <rect x=\"0.00\" y=\"10.00\" width=\"2.50\" height=\"33.33\" fill=\"rgb(1,20,255)\"/>\n");
}

TEST(SvgWriter, AlphaBecomesFillOpacity) {
  SvgWriter svg;
  svg.SvgRect(0, 0, 1, 1, {0, 0, 0, 128});
  svg.SvgRect(0, 0, 1, 1, {0, 0, 0, 254});
  svg.SvgRect(0, 0, 1, 1, {0, 0, 0, 0});
  EXPECT_EQ(svg.Document(),
            "  <rect x=\"0.00\" y=\"0.00\" width=\"1.00\" height=\"1.00\" fill=\"rgb(0,0,0)\" "
            "fill-opacity=\"0.50\"/>\n"
            "  <rect x=\"0.00\" y=\"0.00\" width=\"1.00\" height=\"1.00\" fill=\"rgb(0,0,0)\" "
            "fill-opacity=\"1.00\"/>\n"
            "  <rect x=\"0.00\" y=\"0.00\" width=\"1.00\" height=\"1.00\" fill=\"rgb(0,0,0)\" "
            "fill-opacity=\"0.00\"/>\n");
}

TEST(SvgWriter, TextIsWrittenAsItIsWithoutAlpha) {
  SvgWriter svg;
  svg.SvgText(15, 80.5, "a&<b>\xE3\x81", 20, {0, 0, 0, 128}, "middle");
  EXPECT_EQ(svg.Document(),
            "  <text x=\"15.00\" y=\"80.50\" font-family=\"Arial, sans-serif\" font-size=\"20\" "
            "fill=\"rgb(0,0,0)\" "
            "text-anchor=\"middle\" dominant-baseline=\"hanging\">a&<b>\xE3\x81</text>\n");
}

// The writer keeps what ends a rectangle of the last colour.
TEST(SvgWriter, EveryRectHasItsOwnColour) {
  const auto rect = [](std::string_view end) {
    return "  <rect x=\"0.00\" y=\"0.00\" width=\"1.00\" height=\"1.00\" fill=\"" + std::string(end) +
           "\"/>\n";
  };
  SvgWriter svg;
  svg.SvgRect(0, 0, 1, 1, kBlack);
  svg.SvgRect(0, 0, 1, 1, kBlack);
  svg.SvgRect(0, 0, 1, 1, kWhite);
  svg.SvgRect(0, 0, 1, 1, {255, 255, 255, 51});
  svg.SvgRect(0, 0, 1, 1, kBlack);
  EXPECT_EQ(svg.Document(), rect("rgb(0,0,0)") + rect("rgb(0,0,0)") + rect("rgb(255,255,255)") +
                                rect("rgb(255,255,255)\" fill-opacity=\"0.20") + rect("rgb(0,0,0)"));
}

TEST(SvgWriter, ReserveMakesRoomAndChangesNothing) {
  SvgWriter svg;
  svg.BeginSvg(1, 2);
  const std::string before = svg.Document();
  svg.Reserve(1000);
  EXPECT_EQ(svg.Document(), before);
  const std::size_t room = svg.Document().capacity();
  for (int i = 0; i < 1000; ++i) {
    svg.SvgRect(i, 0, 1, 100, kBlack);
  }
  EXPECT_EQ(svg.Document().capacity(), room);
}

TEST(SvgWriter, ColorToRgb) {
  EXPECT_EQ(ColorToRgb({0, 127, 255, 3}), "rgb(0,127,255)");
}

}  // namespace
}  // namespace barcode
