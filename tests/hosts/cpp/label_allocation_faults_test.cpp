// The n-th allocation fails while a label is made, written down and thrown about, for n = 1, 2, ... until
// none is asked for any more: std::bad_alloc comes out, or what usually comes; nothing ends the program and
// nothing leaks.
#include <gtest/gtest.h>

#include <new>
#include <string>
#include <string_view>

#include "barcode_label.hpp"
#include "faults/allocations.h"
#include "faults/isolated.h"

namespace barcode::test {
namespace {

using libbarcode::Label;
using libbarcode::LabelError;
using libbarcode::LabelRequest;

constexpr std::string_view kLongCaption =
    "A caption that takes memory, longer than what a string holds by itself";

// What a job came to, without any memory: a number for each way.
enum class Outcome { kDelivered, kRefused, kBadAlloc, kOther };

Outcome Deliver() {
  LabelRequest request("qr", "hello");
  request.set("caption", kLongCaption).set("quiet_zone", 0).set("module", 3);
  const Label label(request);
  return !label.warnings().empty() && !label.data().empty() ? Outcome::kDelivered : Outcome::kOther;
}

Outcome Refuse() {
  LabelRequest request("jan13", "49012345678x");
  request.set("caption", kLongCaption);
  try {
    const Label label(request);
    return Outcome::kOther;
  } catch (const LabelError& error) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a copy takes no memory.
    const LabelError copy = error;
    return copy.code() == "bad_text" && copy.field() == "text" ? Outcome::kRefused : Outcome::kOther;
  }
}

Outcome RefuseWithoutExceptions() {
  const Label label = Label::try_make(R"({"type":"jan13","text":"49012345678x"})");
  if (label.ok()) {
    return Outcome::kOther;
  }
  // Nothing, not even a report, where there was no memory for the label itself.
  if (label.get() == nullptr) {
    return Outcome::kBadAlloc;
  }
  const LabelError error = label.error();
  if (error.code() == "out_of_memory") {
    return Outcome::kBadAlloc;
  }
  return error.code() == "bad_text" ? Outcome::kRefused : Outcome::kOther;
}

Outcome Run(Outcome (*job)()) {
  try {
    return job();
  } catch (const std::bad_alloc&) {
    return Outcome::kBadAlloc;
  } catch (...) {
    return Outcome::kOther;
  }
}

void TryAll(Outcome (*job)(), Outcome usual) {
  for (const long count : {1L, 2L, kForGood}) {
    SharedLegacy() = Legacy();
    const std::string end = RunInChild([&] {
      (void)Run(job);
      bool fired = true;
      for (long point = 1; fired; ++point) {
        StillAlive();
        SharedLegacy().point = point;
        Outcome outcome = Outcome::kOther;
        {
          const FailingAllocations failing({.first = point, .count = count});
          outcome = Run(job);
        }
        fired = FailingAllocations::Fired();
        const bool isRight = outcome == usual || (fired && outcome == Outcome::kBadAlloc);
        if (!isRight || SurvivingBlocks() != 0 || Run(job) != usual) {
          ++SharedLegacy().findings;
          Bequeath("n = " + std::to_string(point) + ": outcome " + std::to_string(static_cast<int>(outcome)) +
                   '\n' + DescribeSurvivingBlocks() + DescribeFault());
        }
      }
    });
    const Legacy& legacy = SharedLegacy();
    EXPECT_EQ(end, "") << "at " << legacy.point;
    EXPECT_EQ(legacy.findings, 0) << std::string_view(legacy.text.data(), legacy.used);
    EXPECT_GT(legacy.point, 10);
  }
}

TEST(CppLabelAllocationFaults, Delivered) {
  TryAll(Deliver, Outcome::kDelivered);
}

TEST(CppLabelAllocationFaults, Refused) {
  TryAll(Refuse, Outcome::kRefused);
}

TEST(CppLabelAllocationFaults, RefusedWithoutExceptions) {
  TryAll(RefuseWithoutExceptions, Outcome::kRefused);
}

}  // namespace
}  // namespace barcode::test
