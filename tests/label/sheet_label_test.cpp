#include "label/sheet_label.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "label/json_request.h"
#include "label/label.h"
#include "label/refusal.h"
#include "label/report.h"

namespace barcode::label {
namespace {

using nlohmann::json;

constexpr double kNothing = 1e-9;

SheetLabel Placed(const json& request, const Cell& cell) {
  return LabelInCell(ParseRequest(request.dump()), cell);
}

// The report of the same label by itself.
json ReportOf(const json& request) {
  const Label label = MakeFromJson(request.dump());
  EXPECT_TRUE(label.ok) << label.report;
  return json::parse(label.report);
}

// At 600 dpi, with that module.
json At600(json request, int module) {
  request["dpi"] = 600;
  request["module"] = module;
  return request;
}

std::string RefusalIn(const Cell& cell, const json& request) {
  return RefusalOf([&] { Placed(request, cell); });
}

SizeMm NeededFor(const json& request, const Cell& cell) {
  try {
    Placed(request, cell);
  } catch (const LabelError& error) {
    EXPECT_EQ(error.Code(), ErrorCode::kTooSmall) << error.what();
    return error.NeededMm().value_or(SizeMm{});
  }
  ADD_FAILURE() << request << " was not refused";
  return {};
}

std::vector<std::string> WarningsIn(const SheetLabel& label) {
  std::vector<std::string> words;
  for (const Warning& warning : label.warnings) {
    words.emplace_back(WordOf(warning.code));
  }
  return words;
}

const json kCode128 = {{"type", "code128"}, {"text", "SHEET-1"}};
const json kQr = {{"type", "qr"}, {"text", "https://example.com/sheet"}};

TEST(SheetLabel, APhysicalSizeIsKept) {
  for (const json& size : {json{{"dpi", 300}, {"module_mm", 0.33}, {"height_mm", 12}},
                           json{{"dpi", 203}, {"module", 3}, {"height", 80}}, json{{"dpi", 300}},
                           json{{"dpi", 300}, {"width", 500}, {"height", 200}}}) {
    json request = kCode128;
    request.update(size);
    const json report = ReportOf(request);
    const Cell cell{.x = 12.5, .y = 30.25, .width = 90, .height = 40};
    const SheetLabel label = Placed(request, cell);
    const int dpi = request["dpi"];
    EXPECT_EQ(label.drawing.dpi, dpi);
    EXPECT_EQ(label.drawing.width, report["width"]);
    EXPECT_EQ(label.drawing.height, report["height"]);
    // In the middle, but for half a dot.
    const double halfDot = 12.7 / dpi;
    EXPECT_NEAR(label.x * 25.4 / dpi, cell.x + (cell.width - report["width_mm"].get<double>()) / 2,
                halfDot + kNothing);
    EXPECT_NEAR(label.y * 25.4 / dpi, cell.y + (cell.height - report["height_mm"].get<double>()) / 2,
                halfDot + kNothing);
    EXPECT_EQ(label.x, std::round(label.x));
    EXPECT_EQ(label.y, std::round(label.y));
  }
}

TEST(SheetLabel, APhysicalSizeMayFillItsCell) {
  // 600 x 240 dots at 300 dpi.
  json request = kCode128;
  request.update({{"dpi", 300}, {"width", 600}, {"height", 240}});
  const Cell cell{.x = 50.8, .y = 25.4, .width = 50.8, .height = 20.32};
  const SheetLabel label = Placed(request, cell);
  EXPECT_EQ(label.x, 600);
  EXPECT_EQ(label.y, 300);
  EXPECT_EQ(RefusalIn({.width = 50.79, .height = 20.32}, request),
            "too_small of : The label is 50.8 x 20.32 mm and its cell 50.79 x 20.32 mm; choose a page, grid, "
            "margin "
            "and gap that leave cells of at least 50.8 x 20.32 mm, or ask for a smaller label.");
  EXPECT_EQ(NeededFor(request, {.width = 50.8, .height = 20.31}), (SizeMm{50.8, 20.32}));
}

TEST(SheetLabel, WithoutOneItIsAsAt600Dpi) {
  // 132 modules across: 4 dots each in 530.
  const Cell cell{.width = 530 * 25.4 / 600, .height = 40};
  const json report = ReportOf(At600(kCode128, 4));
  ASSERT_EQ(report["width"], 528);
  const SheetLabel label = Placed(kCode128, cell);
  EXPECT_EQ(label.drawing.dpi, 600);
  EXPECT_EQ(label.drawing.width, report["width"]);
  EXPECT_EQ(label.drawing.height, report["height"]);
}

TEST(SheetLabel, TheModuleIsTheLargestThatFits) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> side(20, 150);
  const std::vector<json> requests = {kCode128,
                                      kQr,
                                      {{"type", "jan13"}, {"text", "490123456789"}},
                                      {{"type", "code39"}, {"text", "TURNED"}, {"rotate", 90}},
                                      {{"type", "pdf417"}, {"text", "PDF417"}, {"caption", "With a caption"}},
                                      {{"type", "yubin-customer"}, {"text", "15400233-16-4-205"}},
                                      {{"type", "databar"}, {"text", "0491234567890"}, {"form", "stacked"}},
                                      {{"type", "datamatrix"},
                                       {"text", "turned on its side, with many more modules"},
                                       {"rotate", 270},
                                       {"quiet_zone", 0}}};
  for (const json& request : requests) {
    for (int i = 0; i < 5; ++i) {
      const Cell cell{.x = 1.7, .y = 3.1, .width = side(random), .height = side(random)};
      const SheetLabel label = Placed(request, cell);
      int module = 1;
      bool isThere = false;
      for (; module <= 100; ++module) {
        const json report = ReportOf(At600(request, module));
        const bool fits =
            report["width"] <= cell.width * 600 / 25.4 && report["height"] <= cell.height * 600 / 25.4;
        if (report["width"] == label.drawing.width && report["height"] == label.drawing.height) {
          EXPECT_TRUE(fits) << request << module;
          isThere = true;
        } else if (isThere) {
          EXPECT_FALSE(fits) << request << module;
          break;
        }
      }
      EXPECT_TRUE(isThere) << request << " in " << cell.width << " x " << cell.height;
    }
  }
}

TEST(SheetLabel, AWholeModuleThatJustFits) {
  const json report = ReportOf(At600(kQr, 7));
  const double side = report["width_mm"];
  EXPECT_EQ(Placed(kQr, {.x = 3, .width = side, .height = 200}).drawing.width, report["width"]);
  EXPECT_EQ(Placed(kQr, {.x = 3, .width = side - 0.001, .height = 200}).drawing.width,
            ReportOf(At600(kQr, 6))["width"]);
  EXPECT_EQ(Placed(kQr, {.x = 3, .width = 200, .height = side - 0.001}).drawing.width,
            ReportOf(At600(kQr, 6))["width"]);
}

TEST(SheetLabel, TheHeightGrowsWithTheModule) {
  json request = kCode128;
  request.update({{"module", 3}, {"height", 100}});
  const Cell cell{.width = 60, .height = 100};
  const SheetLabel label = Placed(request, cell);
  const int module = label.drawing.width / (ReportOf(kCode128)["modules"]["columns"].get<int>() + 20);
  ASSERT_GT(module, 3);
  json same = At600(kCode128, module);
  same["height"] = std::lround(100.0 * module / 3);
  EXPECT_EQ(label.drawing.height, ReportOf(same)["height"]);
}

TEST(SheetLabel, APictureOfGivenSizeKeepsItsProportion) {
  json request = kCode128;
  request.update({{"width", 300}, {"height", 100}});
  const SheetLabel wide = Placed(request, {.width = 76.2, .height = 50.8});
  EXPECT_EQ(wide.drawing.width, 1800);
  EXPECT_EQ(wide.drawing.height, 600);
  const SheetLabel low = Placed(request, {.width = 76.2, .height = 12.7});
  EXPECT_EQ(low.drawing.width, 900);
  EXPECT_EQ(low.drawing.height, 300);
}

TEST(SheetLabel, DotsOfAnAdjustmentAreThoseOfTheSheet) {
  json request = kQr;
  request["bar_adjust"] = -1;
  const SheetLabel label = Placed(request, {.width = 40, .height = 40});
  const int module = label.drawing.width / (ReportOf(kQr)["modules"]["columns"].get<int>() + 8);
  ASSERT_GT(module, 4);
  EXPECT_EQ(label.drawing.dark.front().height, module - 1);
}

TEST(SheetLabel, WhatDoesNotFitWithOneDotAModule) {
  // 132 x 41 dots with the smallest module.
  EXPECT_EQ(RefusalIn({.width = 5, .height = 5}, kCode128),
            "too_small of : With modules of 1/600 inch the label is 5.59 x 1.74 mm and its cell 5 x 5 mm; "
            "choose a page, grid, margin and gap that leave cells of at least 5.59 x 1.74 mm, or ask for a "
            "smaller label.");
}

TEST(SheetLabel, TheSizeThatWouldDoDoes) {
  const std::vector<json> sizes = {json::object(),
                                   {{"dpi", 203}, {"module", 3}},
                                   {{"width", 301}, {"height", 97}},
                                   {{"width", 97}, {"height", 301}},
                                   {{"rotate", 90}},
                                   {{"height", 400}, {"module", 2}}};
  for (const json& symbol : {kCode128, json{{"type", "code39"}, {"text", "A LONGER TEXT"}}}) {
    for (const json& size : sizes) {
      json request = symbol;
      request.update(size);
      const SizeMm needed = NeededFor(request, {.width = 0.5, .height = 0.5});
      EXPECT_NO_THROW(Placed(request, {.width = needed.width, .height = needed.height})) << request;
      // Less does not.
      EXPECT_EQ(NeededFor(request, {.width = needed.width - 0.1, .height = needed.height - 0.1}), needed)
          << request;
    }
  }
}

TEST(SheetLabel, WarningsAreThoseAt600Dpi) {
  const Cell large{.width = 90, .height = 60};
  EXPECT_EQ(WarningsIn(Placed(kCode128, large)), std::vector<std::string>());
  const Cell tiny{.width = 8, .height = 8};
  EXPECT_EQ(WarningsIn(Placed(kCode128, tiny)), std::vector<std::string>{"small_module"});
  json strict = kCode128;
  strict["strict"] = true;
  EXPECT_NO_THROW(Placed(strict, large));
  EXPECT_EQ(CodeAndFieldOf([&] { Placed(strict, tiny); }), "small_module of ");
}

TEST(SheetLabel, ASheetIsAPdf) {
  json request = kQr;
  request["format"] = "pdf";
  EXPECT_NO_THROW(Placed(request, {.width = 40, .height = 40}));
  request["format"] = "png";
  EXPECT_EQ(RefusalIn({.width = 40, .height = 40}, request),
            "bad_value of format: A sheet is a PDF; leave out \"format\", or make pictures of the rows one "
            "by one.");
}

TEST(SheetLabel, WhatNoLabelCanBeIsRefusedAsEver) {
  const Cell cell{.width = 40, .height = 40};
  EXPECT_EQ(CodeAndFieldOf([&] {
              Placed({{"type", "code40"}, {"text", "A"}}, cell);
            }),
            "unknown_type of type");
  EXPECT_EQ(CodeAndFieldOf([&] { Placed({{"type", "qr"}}, cell); }), "bad_value of text");
  EXPECT_EQ(CodeAndFieldOf([&] {
              Placed({{"type", "jan13"}, {"text", "4901234567890"}}, cell);
            }),
            "bad_text of text");
}

TEST(SheetLabel, TheErrorHasTheSizeInMillimetres) {
  try {
    Placed(kCode128, {.width = 5, .height = 5});
    FAIL();
  } catch (const LabelError& error) {
    const json said = json::parse(ErrorJson(error));
    EXPECT_EQ(said["code"], "too_small");
    EXPECT_EQ(said["field"], "");
    EXPECT_EQ(said["message"], error.what());
    EXPECT_EQ(said["needed_mm"], json({{"width", 5.59}, {"height", 1.74}}));
    EXPECT_FALSE(said.contains("needed"));
  }
}

}  // namespace
}  // namespace barcode::label
