#include "mkbarcode/sheet/paper.h"

#include <gtest/gtest.h>

#include <string>

#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

template <class Call>
std::string MessageOf(Call call) {
  try {
    call();
    return "no error";
  } catch (const UsageError& error) {
    return error.what();
  }
}

label::SheetGrid Page(const std::string& page) {
  label::SheetGrid grid;
  SetPage(grid, page);
  return grid;
}

void ExpectPage(const std::string& page, double width, double height) {
  const label::SheetGrid grid = Page(page);
  EXPECT_DOUBLE_EQ(grid.pageWidth, width) << page;
  EXPECT_DOUBLE_EQ(grid.pageHeight, height) << page;
}

TEST(SheetPaper, Pages) {
  ExpectPage("A4", 210, 297);
  ExpectPage("a4", 210, 297);
  ExpectPage("letter", 215.9, 279.4);
  ExpectPage("Letter", 215.9, 279.4);
  ExpectPage("100x150mm", 100, 150);
  ExpectPage("101.6X152.4MM", 101.6, 152.4);
  ExpectPage("5x5080mm", 5, 5080);
}

TEST(SheetPaper, WhatIsNoPage) {
  for (const char* const page : {"", "A5", "100x150", "100x150in", "100mm", "x100mm", "100xmm", "-100x150mm",
                                 "4.9x100mm", "100x5080.1mm", "1e2x100mm", "nanxnanmm", "infx100mm",
                                 "0x10x10mm", "100 x150mm", "100x150mm ", "100mmx150mm", "100,5x150mm"}) {
    EXPECT_EQ(
        MessageOf([&] { Page(page); }),
        std::string("The option \"--page\" must be A4, letter or a size such as 100x150mm, with sides from 5 "
                    "to 5080 mm, not \"") +
            page + "\".");
  }
}

TEST(SheetPaper, Grids) {
  label::SheetGrid grid;
  SetCells(grid, "3x8");
  EXPECT_EQ(grid.columns, 3);
  EXPECT_EQ(grid.rows, 8);
  SetCells(grid, "100X1");
  EXPECT_EQ(grid.columns, 100);
  EXPECT_EQ(grid.rows, 1);
  for (const char* const cells :
       {"", "3", "x", "3x", "x8", "0x8", "3x0", "101x1", "1x101", "-1x3", "3x8x2", "3.0x8", " 3x8"}) {
    EXPECT_EQ(MessageOf([&] { SetCells(grid, cells); }),
              std::string(
                  "The option \"--grid\" must be COLUMNSxROWS, such as 3x8, with 1 to 100 of each, not \"") +
                  cells + "\".");
  }
}

void ExpectSpacing(const std::string& text, double across, double down) {
  const label::Spacing spacing = SpacingOf("--gap", text);
  EXPECT_EQ(spacing.across, across) << text;
  EXPECT_EQ(spacing.down, down) << text;
}

TEST(SheetPaper, MarginsAndGaps) {
  ExpectSpacing("0", 0, 0);
  ExpectSpacing("2.54", 2.54, 2.54);
  ExpectSpacing("1000", 1000, 1000);
  ExpectSpacing("7.25x15.1", 7.25, 15.1);
  ExpectSpacing("2.5X0", 2.5, 0);
  for (const char* const text :
       {"", "-0", "-1", "1000.1", "2mm", "1e1", "two", "2,5", "nan", "x", "1x", "x1", "1x1x1", "1x1001"}) {
    EXPECT_EQ(
        MessageOf([&] { (void)SpacingOf("--gap", text); }),
        std::string("The option \"--gap\" must be millimetres from 0 to 1000, such as 2.5, or ACROSSxDOWN, "
                    "such as 2.5x0, not \"") +
            text + "\".");
  }
}

TEST(SheetPaper, CellNumbers) {
  EXPECT_EQ(CellNumber("1"), 1);
  EXPECT_EQ(CellNumber("24"), 24);
  for (const char* const number : {"", "0", "-1", "1.5", "99999999999", "a"}) {
    EXPECT_EQ(MessageOf([&] { (void)CellNumber(number); }),
              std::string("The option \"--start-at\" must be the number of a cell, from 1, not \"") + number +
                  "\".");
  }
}

TEST(SheetPaper, CellsNeedRoom) {
  EXPECT_EQ(MessageOf([] { CheckPaper({.columns = 3, .rows = 8}, 24); }), "no error");
  EXPECT_EQ(MessageOf([] { CheckPaper({.columns = 3, .rows = 8}, 25); }),
            "The option \"--start-at\" must be a cell of the page, from 1 to 24, not 25.");
  EXPECT_EQ(
      MessageOf([] { CheckPaper({.columns = 3, .rows = 8, .margin = 105}, 1); }),
      "A margin of 105 mm and gaps of 2 mm leave no room for 3 x 8 cells on a page of 210 x 297 mm; choose "
      "a smaller margin, smaller gaps or fewer cells.");
  EXPECT_NE(MessageOf([] { CheckPaper({.columns = 1, .rows = 100, .gap = 3}, 1); }), "no error");
  EXPECT_EQ(MessageOf([] { CheckPaper({.columns = 1, .rows = 1, .margin = 104.9}, 1); }), "no error");
  EXPECT_EQ(
      MessageOf([] {
        CheckPaper({.columns = 3, .rows = 1, .margin = {10, 148.5}}, 1);
      }),
      "A margin of 10 x 148.5 mm and gaps of 2 mm leave no room for 3 x 1 cells on a page of 210 x 297 mm; "
      "choose a smaller margin, smaller gaps or fewer cells.");
}

}  // namespace
}  // namespace barcode::tool
