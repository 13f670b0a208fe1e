// The n-th allocation of a sheet fails: one alone, two in a row, or all from there on, for n = 1, 2, ...
// until it comes to its end without asking for the n-th. Nothing may crash or leak, the sheet is whole or
// std::bad_alloc says that it is not, and the next one is as usual.
//
//   sheet_fault_tests        BARCODE_FAULT_TRACE=1 adds where allocations failed
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "faults/allocations.h"
#include "faults/isolated.h"
#include "label/json_request.h"
#include "label/sheet_writer.h"

namespace barcode::test {
namespace {

constexpr int kMaxFindings = 8;
constexpr std::array<long, 3> kCounts = {1, 2, kForGood};

constexpr std::array<std::string_view, 5> kRows = {
    R"({"type":"qr","text":"https://example.com","caption":"Longer than what a string holds by itself"})",
    R"({"type":"code128","text":"OF ITS OWN SIZE","dpi":300,"foreground":"#00000080"})",
    R"({"type":"jan13","text":"490123456789","rotate":90})",
    R"({"type":"code39","text":"IN A BOX","width":300,"height":100,"background":"#ff000010"})",
    R"({"type":"code39","text":"TOO LARGE FOR ITS CELL","dpi":300,"module":20})"};

// On two pages, with a row that is refused.
std::string MakeSheet() {
  label::SheetOptions options;
  options.grid.columns = 2;
  options.grid.rows = 2;
  options.outline = true;
  std::string pdf;
  label::SheetWriter writer(options, [&pdf](std::string_view bytes) { pdf += bytes; });
  for (const std::string_view row : kRows) {
    try {
      writer.Put(label::LabelInCell(label::ParseRequest(row), writer.NextCell()));
    } catch (const label::LabelError& error) {
      writer.LeaveEmpty();
      pdf += error.what();
    }
  }
  writer.Finish();
  return pdf;
}

void Expect(bool condition, const char* what) {
  if (condition) {
    return;
  }
  ++SharedLegacy().findings;
  if (SharedLegacy().findings <= kMaxFindings) {
    Bequeath("  n = " + std::to_string(SharedLegacy().point) + ": " + what + '\n' + DescribeFault());
  }
}

// True when the fault was reached.
bool Try(const std::string& usual, const AllocationFault& fault) {
  StillAlive();
  bool isWhole = false;
  bool isRefused = false;
  std::string sheet;
  {
    const FailingAllocations failing(fault);
    try {
      sheet = MakeSheet();
      isWhole = true;
    } catch (const std::bad_alloc&) {
      isRefused = true;
    }
  }
  const bool fired = FailingAllocations::Fired();
  Expect(isWhole || isRefused, "neither a sheet nor an error");
  Expect(!isWhole || sheet == usual, "a sheet that is not whole");
  Expect(!isRefused || fired, "memory is exhausted without a fault");
  std::string().swap(sheet);
  if (SurvivingBlocks() != 0) {
    Expect(false, ("blocks are still held:\n" + DescribeSurvivingBlocks()).c_str());
  }
  Expect(MakeSheet() == usual, "the next sheet differs");
  return fired;
}

TEST(SheetAllocationFaults, EveryAllocation) {
  for (const long count : kCounts) {
    SharedLegacy() = Legacy();
    const std::string end = RunInChild([&] {
      // What the C library sets up once is not the sheet's.
      (void)MakeSheet();
      const std::string usual = MakeSheet();
      bool fired = true;
      for (long point = 1; fired; ++point) {
        SharedLegacy().point = point;
        fired = Try(usual, {.first = point, .count = count});
      }
    });
    const Legacy& legacy = SharedLegacy();
    EXPECT_EQ(end, "") << legacy.point;
    EXPECT_EQ(legacy.findings, 0) << std::string_view(legacy.text.data(), legacy.used);
    EXPECT_GT(legacy.point, 100);
  }
}

}  // namespace
}  // namespace barcode::test
