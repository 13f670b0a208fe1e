// Handles on different threads do not disturb each other. The thread sanitizer runs these tests, too.
#include "support/threads.h"

#include <gtest/gtest.h>

#include <string>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "threads/every_function.h"

namespace barcode::test {
namespace {

constexpr int kThreads = 8;

TEST(Threads, DrawEverySymbologyAsTheyDoAlone) {
  ExpectThreadsDrawWhatTheyDrawAlone(kThreads, 2, UseEveryFunction);
}

// More sizes of text than fonts are kept open, so that each thread closes fonts of the others.
TEST(Threads, DrawTextsOfManySizesAsTheyDoAlone) {
  ExpectThreadsDrawWhatTheyDrawAlone(kThreads, 10, [](int thread) {
    std::string drawn;
    const BarcodeObject code(BARCODE_CODE39);
    for (const int height : {40, 60 + 10 * thread, 90 + 10 * thread}) {
      barcode_set_output_format(code, "png");
      barcode_draw_1d(code, "TEXT", 300, height);
      const auto png = code.Png();
      drawn.append(png.begin(), png.end());
      drawn += code.SvgOf("TEXT", 300, height);
    }
    return drawn;
  });
}

// Threads come and go while others draw, and leave nothing behind that these need.
TEST(Threads, EndWhileOthersDraw) {
  ExpectThreadsDrawWhatTheyDrawAlone(kThreads, 4, [](int thread) {
    std::string drawn;
    std::thread([&drawn, thread] {
      const BarcodeObject code(BARCODE_JAN13);
      barcode_draw_1d(code, "490123456789", 300, 80 + thread);
      drawn = barcode_get_base64(code);
    }).join();
    return drawn;
  });
}

// The error text of one thread does not show up on another: each refused draw prints its own line, whole.
TEST(Threads, ReportTheirFailuresInWholeLines) {
  constexpr int kRounds = 50;
  const Captured captured = Capture([] {
    ExpectThreadsDrawWhatTheyDrawAlone(kThreads, kRounds, [](int /*thread*/) {
      const BarcodeObject code(BARCODE_CODE39);
      return std::to_string(barcode_draw_1d(code, "_", 100, 100));
    });
  });
  std::string expected;
  for (int line = 0; line < kThreads * (kRounds + 1); ++line) {
    expected += "[Code39] Invalid character in CODE39: _\n";
  }
  EXPECT_EQ(captured.err, expected);
}

}  // namespace
}  // namespace barcode::test
