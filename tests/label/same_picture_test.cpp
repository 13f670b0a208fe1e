// The three formats show the same geometry: each is rendered by somebody else's program and compared, dot by
// dot.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "label/drawings.h"
#include "label/writers.h"
#include "label_proof/picture.h"
#include "linear/code128_encoder.h"
#include "linear/code39_encoder.h"
#include "qr/qr_encoder.h"

namespace barcode::label {
namespace {

using barcode::test::GreyImage;
using barcode::test::GreyOfPdfs;
using barcode::test::GreyOfPng;
using barcode::test::GreyOfSvg;
using barcode::test::PdfPage;

constexpr Rotation kRotations[] = {Rotation::kNone, Rotation::kQuarter, Rotation::kHalf,
                                   Rotation::kThreeQuarters};

struct Difference {
  int most = 0;
  double mean = 0;
};

// Of two pictures of one size; as far as can be where they are not.
Difference DifferenceOf(const GreyImage& a, const GreyImage& b) {
  if (a.width != b.width || a.height != b.height || a.pixels.empty()) {
    return {.most = 255, .mean = 255};
  }
  Difference difference;
  for (std::size_t i = 0; i < a.pixels.size(); ++i) {
    const int one = std::abs(int{a.pixels[i]} - int{b.pixels[i]});
    difference.most = std::max(difference.most, one);
    difference.mean += one;
  }
  difference.mean /= static_cast<double>(a.pixels.size());
  return difference;
}

// svg, pdf: what they may differ from the PNG.
void ExpectTheSame(const std::vector<Drawing>& drawings, const Difference& svg, const Difference& pdf) {
  std::vector<PdfPage> pages;
  pages.reserve(drawings.size());
  for (const Drawing& drawing : drawings) {
    pages.push_back({WritePdf(drawing), drawing.width, drawing.height});
  }
  const std::vector<GreyImage> pdfs = GreyOfPdfs(pages);
  ASSERT_EQ(pdfs.size(), drawings.size());
  for (std::size_t i = 0; i < drawings.size(); ++i) {
    const GreyImage png = GreyOfPng(WritePng(drawings[i]));
    const Difference ofSvg =
        DifferenceOf(png, GreyOfSvg(WriteSvg(drawings[i]), drawings[i].width, drawings[i].height));
    const Difference ofPdf = DifferenceOf(png, pdfs[i]);
    EXPECT_LE(ofSvg.most, svg.most) << "svg of drawing " << i;
    EXPECT_LE(ofSvg.mean, svg.mean) << "svg of drawing " << i;
    EXPECT_LE(ofPdf.most, pdf.most) << "pdf of drawing " << i;
    EXPECT_LE(ofPdf.mean, pdf.mean) << "pdf of drawing " << i;
  }
}

// Every dot of what is whole dots.
void ExpectEqual(const std::vector<Drawing>& drawings) {
  ExpectTheSame(drawings, {}, {});
}

// A page of a PDF has at least four dots a side.
Drawing RandomPage(std::mt19937& random) {
  Drawing drawing = test::RandomDrawing(random);
  drawing.width = std::max(drawing.width, 4);
  drawing.height = std::max(drawing.height, 4);
  return drawing;
}

TEST(LabelSamePicture, RandomBars) {
  std::mt19937 random(5);
  constexpr int kDrawings = 150;
  std::vector<Drawing> drawings;
  drawings.reserve(kDrawings);
  for (int i = 0; i < kDrawings; ++i) {
    drawings.push_back(RandomPage(random));
  }
  ExpectEqual(drawings);
}

TEST(LabelSamePicture, BarsThatStandOnOneLine) {
  std::mt19937 random(6);
  std::vector<Drawing> drawings;
  for (int i = 0; i < 10; ++i) {
    Drawing drawing = test::LinearDrawing(EncodeCode39("A" + std::to_string(i)), 1 + i % 3, 30);
    for (DotRect& rect : drawing.dark) {
      rect.height -= static_cast<int>(random() % 5);
    }
    for (const Rotation rotation : kRotations) {
      drawings.push_back(test::Turned(drawing, rotation));
    }
  }
  ExpectEqual(drawings);
}

TEST(LabelSamePicture, SymbolsAtEveryTurnAndModule) {
  const QrSymbol qr = EncodeQr("https://example.com/labels", {});
  std::vector<Drawing> drawings;
  for (const Rotation rotation : kRotations) {
    for (const int module : {1, 2, 3, 7}) {
      drawings.push_back(
          test::Turned(test::LinearDrawing(EncodeCode128("AB12", Code128Mode{}), module, 25), rotation));
      drawings.push_back(test::Turned(test::MatrixDrawing(qr.matrix, module), rotation));
    }
  }
  ExpectEqual(drawings);
}

TEST(LabelSamePicture, AdjustedBars) {
  const QrSymbol qr = EncodeQr("adjusted", {});
  std::vector<Drawing> drawings;
  for (const int adjust : {-2, -1, 1}) {
    Drawing linear = test::LinearDrawing(EncodeCode39("ADJUST"), 4, 25);
    Drawing matrix = test::MatrixDrawing(qr.matrix, 5);
    for (DotRect& rect : linear.dark) {
      rect.width += adjust;
    }
    for (DotRect& rect : matrix.dark) {
      rect.width += adjust;
      rect.height += adjust;
    }
    drawings.push_back(linear);
    drawings.push_back(matrix);
  }
  ExpectEqual(drawings);
}

TEST(LabelSamePicture, PhysicalSizes) {
  std::vector<Drawing> drawings;
  for (const int dpi : {50, 96, 203, 300, 333, 600, 4'799, 4'800}) {
    Drawing drawing = test::LinearDrawing(EncodeCode39("DPI"), 3, 220);
    drawing.dpi = dpi;
    drawings.push_back(drawing);
  }
  // Poppler draws pages of another resolution in its own time: the same dots all the same.
  ExpectEqual(drawings);
}

TEST(LabelSamePicture, ColoursAndTransparency) {
  std::vector<Drawing> drawings;
  for (const Colour& foreground : {Colour{200, 0, 60, 255}, Colour{0, 0, 0, 128}, Colour{30, 90, 30, 40}}) {
    for (const Colour& background :
         {Colour{250, 240, 200, 255}, Colour{0, 0, 0, 0}, Colour{99, 200, 99, 77}}) {
      Drawing drawing = test::LinearDrawing(EncodeCode39("RGBA"), 2, 20);
      drawing.dark.push_back({0, 5, 60, 3});  // over others
      drawing.foreground = foreground;
      drawing.background = background;
      drawings.push_back(drawing);
    }
  }
  // Each rounds in its own way.
  constexpr Difference kRounding{.most = 3, .mean = 3};
  ExpectTheSame(drawings, kRounding, kRounding);
}

// Edges of curves are weighed in ways of their own: poppler's are darker.
TEST(LabelSamePicture, Text) {
  constexpr Difference kSvg{.most = 60, .mean = 0.7};
  constexpr Difference kPdf{.most = 160, .mean = 1.5};
  std::vector<Drawing> drawings;
  for (const Rotation rotation : kRotations) {
    for (const double size : {8.0, 15.0, 40.0, 90.0}) {
      Drawing drawing = test::LinearDrawing(EncodeCode39("TEXT"), 2, 20);
      test::AddLine(drawing, "8gjA@\u00E9\u3042", size);
      drawings.push_back(test::Turned(drawing, rotation));
    }
  }
  ExpectTheSame(drawings, kSvg, kPdf);
  // The bounds tell: the same text half a dot aside is beyond them.
  for (Drawing drawing : {drawings[1], drawings[6]}) {
    const GreyImage png = GreyOfPng(WritePng(drawing));
    for (PlacedGlyph& glyph : drawing.texts.front().glyphs) {
      glyph.x += 0.5;
      glyph.y += 0.5;
    }
    const GreyImage svg = GreyOfSvg(WriteSvg(drawing), drawing.width, drawing.height);
    EXPECT_GT(DifferenceOf(png, svg).mean, kSvg.mean);
    const GreyImage pdf = GreyOfPdfs({{WritePdf(drawing), drawing.width, drawing.height}}).front();
    EXPECT_GT(DifferenceOf(png, pdf).mean, kPdf.mean);
  }
}

}  // namespace
}  // namespace barcode::label
