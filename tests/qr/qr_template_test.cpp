#include "qr/qr_template.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qr/qr_reference.h"

namespace barcode {
namespace {

TEST(QrTemplate, Version1) {
  const QrTemplate symbol(1);
  // # dark, - light, . free; format areas are reserved as light, but for the dark module.
  const std::vector<std::string> rows = {
      "#######--....-#######", "#-----#--....-#-----#", "#-###-#--....-#-###-#", "#-###-#--....-#-###-#",
      "#-###-#--....-#-###-#", "#-----#--....-#-----#", "#######-#-#-#-#######", "---------....--------",
      "------#--....--------", "......-..............", "......#..............", "......-..............",
      "......#..............", "--------#............", "#######--............", "#-----#--............",
      "#-###-#--............", "#-###-#--............", "#-###-#--............", "#-----#--............",
      "#######--............"};
  ASSERT_EQ(symbol.Size(), 21);
  for (int y = 0; y < 21; ++y) {
    std::string row;
    for (int x = 0; x < 21; ++x) {
      row += symbol.IsFree(x, y) ? '.' : symbol.At(x, y) == QrTemplate::kFunctionDark ? '#' : '-';
    }
    EXPECT_EQ(row, rows[static_cast<std::size_t>(y)]) << "row " << y;
  }
}

TEST(QrTemplate, AlignmentAndVersionAreasOfVersion7) {
  const QrTemplate symbol(7);
  const auto module = [&](int x, int y) { return symbol.At(x, y) == QrTemplate::kFunctionDark; };
  for (const auto& [cx, cy] :
       std::vector<std::pair<int, int>>{{22, 6}, {6, 22}, {22, 22}, {38, 38}, {22, 38}}) {
    for (int dx = -2; dx <= 2; ++dx) {
      for (int dy = -2; dy <= 2; ++dy) {
        const int ring = std::max(std::abs(dx), std::abs(dy));
        EXPECT_FALSE(symbol.IsFree(cx + dx, cy + dy));
        EXPECT_EQ(module(cx + dx, cy + dy), ring != 1) << cx << ' ' << cy;
      }
    }
  }
  for (int k = 0; k < 18; ++k) {
    EXPECT_EQ(symbol.At(34 + k % 3, k / 3), QrTemplate::kFunctionLight);
    EXPECT_EQ(symbol.At(k / 3, 34 + k % 3), QrTemplate::kFunctionLight);
  }
}

TEST(QrTemplate, DataOrderOfEveryVersion) {
  for (int version = 1; version <= kQrMaxVersion; ++version) {
    const QrTemplate symbol(version);
    const auto expected = qr_reference::DataOrder(version);
    const auto positions = symbol.DataPositions();
    ASSERT_EQ(positions.size(), expected.size()) << "version " << version;
    ASSERT_EQ(positions.size(), static_cast<std::size_t>(QrDataModules(version)));
    for (std::size_t i = 0; i < positions.size(); ++i) {
      ASSERT_EQ(positions[i], expected[i].first * symbol.Size() + expected[i].second)
          << "version " << version << " bit " << i;
    }
  }
}

}  // namespace
}  // namespace barcode
