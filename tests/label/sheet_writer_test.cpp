#include "label/sheet_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "label/json_request.h"
#include "label/label.h"
#include "label_proof/picture.h"
#include "support/readers.h"

namespace barcode::label {
namespace {

using barcode::test::DarkPixels;
using barcode::test::GreyImage;
using barcode::test::GreyOfPages;
using barcode::test::GreyOfPng;
using barcode::test::PdfInfo;
using nlohmann::json;

constexpr double kDotsPerMm = 600 / 25.4;

// A sheet of these requests; null leaves a cell empty.
std::string SheetOf(const SheetOptions& options, const std::vector<json>& requests) {
  std::string pdf;
  SheetWriter writer(options, [&](std::string_view bytes) { pdf += bytes; });
  for (const json& request : requests) {
    if (request.is_null()) {
      writer.LeaveEmpty();
    } else {
      writer.Put(LabelInCell(ParseRequest(request.dump()), writer.NextCell()));
    }
  }
  writer.Finish();
  return pdf;
}

GreyImage CutOut(const GreyImage& page, int x, int y, int width, int height) {
  GreyImage part{width, height, {}};
  for (int row = y; row < y + height; ++row) {
    const auto begin = page.pixels.begin() + std::ptrdiff_t{row} * page.width + x;
    part.pixels.insert(part.pixels.end(), begin, begin + width);
  }
  return part;
}

bool IsWhite(const GreyImage& image) {
  return !image.pixels.empty() && std::ranges::all_of(image.pixels, [](int pixel) { return pixel == 255; });
}

// A cell of a page at 600 dpi, with the dots around it that belong to it in part.
GreyImage CellOf(const GreyImage& page, const Cell& cell) {
  const auto floor = [](double mm) { return static_cast<int>(std::floor(mm * kDotsPerMm)); };
  const int x = floor(cell.x);
  const int y = floor(cell.y);
  return CutOut(page, x, y, std::min(floor(cell.x + cell.width) + 1, page.width) - x,
                std::min(floor(cell.y + cell.height) + 1, page.height) - y);
}

const SheetGrid kA4{.columns = 3, .rows = 8};

json Request(std::string_view type, std::string_view text) {
  return {{"type", type}, {"text", text}};
}

TEST(SheetWriter, PagesHaveTheExactSize) {
  EXPECT_EQ(PdfInfo(SheetOf({.grid = kA4}, {Request("qr", "A")})),
            "Pages: 1\nPage 1 size: 595.276 x 841.89 pts (A4)\n");
  EXPECT_EQ(PdfInfo(SheetOf({.grid = {.pageWidth = 215.9, .pageHeight = 279.4}}, {Request("qr", "A")})),
            "Pages: 1\nPage 1 size: 612 x 792 pts (letter)\n");
  EXPECT_EQ(PdfInfo(SheetOf({.grid = {.pageWidth = 101.6, .pageHeight = 25.4, .margin = 0}}, {})),
            "Pages: 1\nPage 1 size: 288 x 72 pts\n");
}

TEST(SheetWriter, PagesAreMadeAsTheyAreNeeded) {
  const SheetGrid grid{.columns = 2, .rows = 2};
  const auto pages = [&](std::int64_t firstCell, std::size_t rows) {
    const std::string info =
        PdfInfo(SheetOf({.grid = grid, .firstCell = firstCell}, std::vector<json>(rows, json())));
    return info.substr(0, info.find('\n'));
  };
  EXPECT_EQ(pages(0, 0), "Pages: 1");
  EXPECT_EQ(pages(0, 1), "Pages: 1");
  EXPECT_EQ(pages(0, 4), "Pages: 1");
  EXPECT_EQ(pages(0, 5), "Pages: 2");
  EXPECT_EQ(pages(0, 9), "Pages: 3");
  EXPECT_EQ(pages(3, 0), "Pages: 1");
  EXPECT_EQ(pages(3, 1), "Pages: 1");
  EXPECT_EQ(pages(3, 2), "Pages: 2");
}

TEST(SheetWriter, ThousandsOfPagesHangOnBranches) {
  const SheetGrid grid{.pageWidth = 30, .pageHeight = 30, .margin = 1};
  for (const std::size_t pages : {999U, 1'000U, 1'001U, 2'000U, 2'500U}) {
    std::vector<json> rows(pages);
    rows.back() = Request("qr", "last");
    const std::string pdf = SheetOf({.grid = grid}, rows);
    EXPECT_TRUE(PdfInfo(pdf).starts_with("Pages: " + std::to_string(pages) + "\n"));
    if (pages == 1'001) {
      const std::vector<GreyImage> images = GreyOfPages(pdf, 100);
      ASSERT_EQ(images.size(), pages);
      EXPECT_TRUE(IsWhite(images.front()));
      EXPECT_TRUE(IsWhite(images[pages - 2]));
      const auto reading = test::ReadWithZxing(images.back());
      ASSERT_TRUE(reading);
      EXPECT_EQ(reading->data, "last");
    }
  }
}

// Bars and modules stand on whole dots of the page, dot by dot as in a PNG of the same label.
TEST(SheetWriter, LabelsAreTheirPicturesDotByDot) {
  std::vector<json> requests;
  const SheetGrid grid{.columns = 4, .rows = 5, .margin = 7.3, .gap = 1.9};
  for (const int rotate : {0, 90, 180, 270}) {
    for (json request : {Request("code128", "Dot by dot"), Request("qr", "dots"), Request("pdf417", "dots"),
                         Request("databar-expanded", "(01)90012345678908"), Request("itf", "123456")}) {
      request["rotate"] = rotate;
      request["show_text"] = false;
      if (request["type"] == "qr" || request["type"] == "pdf417") {
        request.erase("show_text");
      }
      if (requests.size() % 3 == 0) {
        request.update({{"dpi", 600}, {"module_mm", 0.13}});
      }
      requests.push_back(request);
    }
  }
  const std::vector<GreyImage> pages = GreyOfPages(SheetOf({.grid = grid}, requests), 600);
  ASSERT_EQ(pages.size(), 1);
  for (std::size_t i = 0; i < requests.size(); ++i) {
    const Cell cell = CellAt(grid, static_cast<std::int64_t>(i));
    const SheetLabel label = LabelInCell(ParseRequest(requests[i].dump()), cell);
    json request = requests[i];
    if (!request.contains("dpi")) {
      request["dpi"] = 600;
      // The module, by trying.
      for (request["module"] = 1;
           json::parse(MakeFromJson(request.dump()).report)["width"] < label.drawing.width;) {
        request["module"] = request["module"].get<int>() + 1;
      }
    }
    const GreyImage png = GreyOfPng(MakeFromJson(request.dump()).data);
    ASSERT_EQ(png.width, label.drawing.width) << request;
    ASSERT_EQ(png.height, label.drawing.height) << request;
    const GreyImage shown =
        CutOut(pages[0], static_cast<int>(label.x), static_cast<int>(label.y), png.width, png.height);
    EXPECT_TRUE(png.pixels == shown.pixels) << request;
    // And nothing else in the cell.
    const auto dark = [](const GreyImage& image) {
      return std::ranges::count_if(image.pixels, [](int pixel) { return pixel != 255; });
    };
    EXPECT_EQ(dark(CellOf(pages[0], cell)), dark(png)) << request;
  }
}

TEST(SheetWriter, ReadersReadEveryLabel) {
  const SheetGrid grid{.columns = 3, .rows = 4};
  std::vector<json> requests;
  std::vector<std::string> expected;
  for (int i = 0; i < 14; ++i) {
    const std::string text = "LABEL-" + std::to_string(1000 + i);
    requests.push_back(Request(i % 2 == 0 ? "code128" : "qr", text));
    expected.push_back(text);
    if (i % 3 == 0) {
      requests.back().update({{"dpi", 203}, {"module", 3}});
    }
  }
  requests[5] = json();
  const std::vector<GreyImage> pages = GreyOfPages(SheetOf({.grid = grid, .firstCell = 1}, requests), 600);
  ASSERT_EQ(pages.size(), 2);
  EXPECT_TRUE(IsWhite(CellOf(pages[0], CellAt(grid, 0))));
  for (std::size_t i = 0; i < requests.size(); ++i) {
    const std::size_t number = i + 1;
    const GreyImage cell = CellOf(pages[number / 12], CellAt(grid, static_cast<std::int64_t>(number % 12)));
    if (requests[i].is_null()) {
      EXPECT_TRUE(IsWhite(cell));
      continue;
    }
    const std::optional<test::Reading> zxing = test::ReadWithZxing(cell);
    const std::optional<test::Reading> zbar = test::ReadWithZbar(cell);
    ASSERT_TRUE(zxing && zbar) << i;
    EXPECT_EQ(zxing->data, expected[i]);
    EXPECT_EQ(zbar->data, expected[i]);
  }
  for (std::int64_t number = 3; number < 12; ++number) {
    EXPECT_TRUE(IsWhite(CellOf(pages[1], CellAt(grid, number))));
  }
}

TEST(SheetWriter, OutlinesOfAllCells) {
  const SheetGrid grid{.pageWidth = 60, .pageHeight = 50, .columns = 2, .rows = 2, .margin = 5, .gap = 3};
  const std::string pdf = SheetOf({.grid = grid, .outline = true, .firstCell = 2}, {json()});
  const GreyImage page = GreyOfPages(pdf, 600).at(0);
  const auto at = [&](double x, double y) {
    return page
        .pixels[static_cast<std::size_t>(std::floor(y * kDotsPerMm)) * static_cast<std::size_t>(page.width) +
                static_cast<std::size_t>(std::floor(x * kDotsPerMm))];
  };
  for (std::int64_t number = 0; number < 4; ++number) {
    const Cell cell = CellAt(grid, number);
    const double middle = cell.x + cell.width / 2;
    const double half = cell.y + cell.height / 2;
    for (const double edge : {cell.y, cell.y + cell.height}) {
      EXPECT_LT(at(middle, edge), 128);
      EXPECT_EQ(at(middle, edge - 0.15), 255);
      EXPECT_EQ(at(middle, edge + 0.15), 255);
    }
    for (const double edge : {cell.x, cell.x + cell.width}) {
      EXPECT_LT(at(edge, half), 128);
      EXPECT_EQ(at(edge - 0.15, half), 255);
      EXPECT_EQ(at(edge + 0.15, half), 255);
    }
    EXPECT_EQ(at(middle, half), 255);
  }
  EXPECT_TRUE(IsWhite(GreyOfPages(SheetOf({.grid = grid}, {}), 100).at(0)));
}

TEST(SheetWriter, ColoursAndTransparency) {
  json request = Request("qr", "colours");
  request.update({{"foreground", "#00000080"}, {"background", "#ff000040"}});
  const SheetGrid grid{.pageWidth = 30, .pageHeight = 30, .margin = 5};
  json opaque = Request("qr", "colours");
  const std::vector<GreyImage> pages = GreyOfPages(SheetOf({.grid = grid}, {request, opaque}), 600);
  ASSERT_EQ(pages.size(), 2);
  const auto darkest = [](const GreyImage& page) { return *std::ranges::min_element(page.pixels); };
  EXPECT_NEAR(darkest(pages[0]), 103, 4);
  EXPECT_EQ(darkest(pages[1]), 0);  // what one label sets does not last
}

TEST(SheetWriter, TheSameRowsMakeTheSameBytes) {
  const std::vector<json> rows = {Request("qr", "A"), json(), Request("code128", "B")};
  EXPECT_EQ(SheetOf({.grid = kA4}, rows), SheetOf({.grid = kA4}, rows));
}

TEST(SheetWriter, PagesAreWrittenAsTheyAreFull) {
  std::size_t written = 0;
  SheetWriter writer({.grid = {.columns = 1, .rows = 2}},
                     [&](std::string_view bytes) { written += bytes.size(); });
  const SheetLabel label = LabelInCell(ParseRequest(R"({"type":"qr","text":"A"})"), writer.NextCell());
  const std::size_t header = written;
  writer.Put(label);
  writer.Put(label);
  EXPECT_EQ(written, header);
  EXPECT_EQ(writer.Pages(), 1);
  writer.LeaveEmpty();
  EXPECT_GT(written, header);
  EXPECT_EQ(writer.Pages(), 2);
}

TEST(SheetWriter, WhatTheSinkThrowsComesOut) {
  int calls = 0;
  SheetWriter writer({.grid = {}}, [&](std::string_view) {
    if (++calls > 1) {
      throw std::runtime_error("the disk is full");
    }
  });
  writer.LeaveEmpty();
  EXPECT_THROW(writer.LeaveEmpty(), std::runtime_error);
}

}  // namespace
}  // namespace barcode::label
