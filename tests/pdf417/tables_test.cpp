#include "pdf417/tables.h"

#include <gtest/gtest.h>

#include <set>

namespace barcode::pdf417 {
namespace {

TEST(PDF417Tables, PatternsOfAClusterAreDistinct) {
  for (const auto& cluster : kClusters) {
    EXPECT_EQ(std::set<std::uint32_t>(cluster.begin(), cluster.end()).size(), 929U);
  }
}

TEST(PDF417Tables, FirstPatternsOfTheStandard) {
  EXPECT_EQ(kClusters[0].front(), 0x1D5C0U);
  EXPECT_EQ(kClusters[1].front(), 0x1F560U);
  EXPECT_EQ(kClusters[2].front(), 0x1ABE0U);
}

// Every pattern was read back by two readers when the table was made; the sum guards it against later slips.
TEST(PDF417Tables, UnchangedSinceVerified) {
  std::uint32_t sum = 0;
  for (const auto& cluster : kClusters) {
    for (const std::uint32_t pattern : cluster) {
      sum = sum * 31 + pattern;
    }
  }
  EXPECT_EQ(sum, 0xE9173EE2U);
}

}  // namespace
}  // namespace barcode::pdf417
