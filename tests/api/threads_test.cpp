// Handles on different threads do not disturb each other.
#include "support/threads.h"

#include <gtest/gtest.h>

#include <string>

#include "support/barcode_object.h"
#include "support/capture.h"

namespace barcode::test {
namespace {

// A picture and a document of a text, drawn by an object of its own.
std::string DrawBoth(const std::string& text, int height) {
  const BarcodeObject code(BARCODE_CODE39);
  barcode_draw_1d(code, text.c_str(), 300, height);
  const auto png = code.Png();
  return std::string(png.begin(), png.end()) + code.SvgOf(text, 300, height);
}

TEST(Threads, HandlesOnDifferentThreadsDrawWhatTheyDrawAlone) {
  (void)Capture([] {
    ExpectThreadsDrawWhatTheyDrawAlone(
        30, [](int thread) { return DrawBoth("T" + std::to_string(thread), 60 + 20 * thread); });
  });
}

}  // namespace
}  // namespace barcode::test
