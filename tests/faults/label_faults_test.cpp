// The n-th allocation of a label fails: one alone, two in a row, or all from there on, for n = 1, 2, ...
// until it comes to its end without asking for the n-th. Nothing may crash or leak, a label is whole or says
// that memory is exhausted, and the next one is as usual.
//
//   label_fault_tests        BARCODE_FAULT_TRACE=1 adds where allocations failed
#include <gtest/gtest.h>

#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "barcode_label.h"
#include "faults/allocations.h"
#include "faults/isolated.h"
#include "label_api/valid_requests.h"

namespace barcode::test {
namespace {

using nlohmann::json;

constexpr int kMaxFindings = 8;
constexpr std::array<long, 3> kCounts = {1, 2, kForGood};

constexpr std::string_view kOutOfMemory = R"({"ok":false,"error":{"code":"out_of_memory",)";
// The C library does not say what it lacks for a converter of character sets.
constexpr std::string_view kNoConverter = "Character set conversion is not available";

void Find(const std::string& what) {
  ++SharedLegacy().findings;
  if (SharedLegacy().findings <= kMaxFindings) {
    Bequeath("  n = " + std::to_string(SharedLegacy().point) + ": " + what + '\n' + DescribeFault());
  }
}

void Expect(bool condition, const char* what) {
  if (!condition) {
    Find(what);
  }
}

BarcodeLabel* Make(const std::string& request) {
  return barcode_label_make(request.data(), request.size());
}

// Picture and report.
std::string ResultOf(const BarcodeLabel* label) {
  std::size_t length = 0;
  const unsigned char* const data = barcode_label_data(label, &length);
  return std::string(reinterpret_cast<const char*>(data), length) + barcode_label_report(label);
}

std::string Made(const std::string& request) {
  BarcodeLabel* const label = Make(request);
  std::string result = ResultOf(label);
  barcode_label_free(label);
  return result;
}

void CheckRefused(const BarcodeLabel* label) {
  const std::string_view report = barcode_label_report(label);
  if (!report.starts_with(kOutOfMemory) && report.find(kNoConverter) == std::string_view::npos) {
    Find("the label says something else than that memory is exhausted: " + std::string(report));
  }
  std::size_t length = 1;
  Expect(barcode_label_data(label, &length) == nullptr && length == 0 && barcode_label_ok(label) == 0 &&
             std::string_view(barcode_label_media_type(label)).empty(),
         "a refused label has a picture");
}

// True when the fault was reached.
bool Try(const std::string& request, const std::string& usual, const AllocationFault& fault) {
  StillAlive();
  BarcodeLabel* label = nullptr;
  bool fired = false;
  {
    const FailingAllocations failing(fault);
    label = Make(request);
  }
  fired = FailingAllocations::Fired();
  const bool isUsual = label != nullptr && ResultOf(label) == usual;
  if (label == nullptr) {
    Expect(fault.first == 1, "there is no label though its own memory was there");
  } else if (!isUsual) {
    Expect(fired, "the label differs without a fault");
    CheckRefused(label);
  }
  barcode_label_free(label);
  if (SurvivingBlocks() != 0) {
    Find("blocks are still held:\n" + DescribeSurvivingBlocks());
  }
  Expect(Made(request) == usual, "the next label differs");
  return fired;
}

// All points of one request.
void TryAll(const std::string& request) {
  for (const long count : kCounts) {
    SharedLegacy() = Legacy();
    const std::string end = RunInChild([&] {
      static Streams streams;
      // What the C library sets up once is not the label's.
      (void)Made(request);
      const std::string usual = Made(request);
      bool fired = true;
      for (long point = 1; fired; ++point) {
        SharedLegacy().point = point;
        fired = Try(request, usual, {.first = point, .count = count});
      }
      Expect(streams.Out().empty() && streams.Err().empty(), "something was written");
    });
    const Legacy& legacy = SharedLegacy();
    EXPECT_EQ(end, "") << request << " at " << legacy.point;
    EXPECT_EQ(legacy.findings, 0) << request << '\n' << std::string_view(legacy.text.data(), legacy.used);
    EXPECT_GT(legacy.point, 5) << request;
  }
}

void TryFormat(const char* format) {
  for (json request : ValidRequests()) {
    request["format"] = format;
    TryAll(request.dump());
  }
}

// The list of types is made in the first call: where it fails, the next one makes it. Each point has a
// process that has not asked for it before: this test comes first.
TEST(LabelAllocationFaults, Types) {
  SharedLegacy() = Legacy();
  bool fired = true;
  for (long point = 1; fired; ++point) {
    SharedLegacy().point = point;
    const std::string end = RunInChild([&] {
      const char* types = nullptr;
      {
        const FailingAllocations failing({.first = point, .count = kForGood});
        types = barcode_label_types();
      }
      const bool hasFired = FailingAllocations::Fired();
      SharedLegacy().isDone = !hasFired;
      Expect(!hasFired || std::string_view(types) == "[]", "a list that is not whole");
      Expect(json::parse(barcode_label_types()).size() == 19, "the next list is not whole");
    });
    ASSERT_EQ(end, "");
    fired = !SharedLegacy().isDone;
  }
  const Legacy& legacy = SharedLegacy();
  EXPECT_EQ(legacy.findings, 0) << std::string_view(legacy.text.data(), legacy.used);
  EXPECT_GT(legacy.point, 3);
}

TEST(LabelAllocationFaults, Png) {
  TryFormat("png");
}

TEST(LabelAllocationFaults, Svg) {
  TryFormat("svg");
}

TEST(LabelAllocationFaults, Pdf) {
  TryFormat("pdf");
}

TEST(LabelAllocationFaults, ManyOptions) {
  TryAll(json({{"type", "qr"},
               {"text", "\xE6\xBC\xA2\xE5\xAD\x97"},
               {"string_encoding", "shift-jis"},
               {"caption", "Caption \xE6\xBC\xA2, longer than what a string holds by itself"},
               {"foreground", "#12345678"},
               {"rotate", 90},
               {"dpi", 300},
               {"quiet_zone", 0}})
             .dump());
  TryAll(
      R"({"type":"code128","text_base64":"QUJDREVGR0hJSktMTU5PUFFSU1RVVldYWVo=","width":700,"height":200})");
}

// Bad requests: the refusal stays what it is, or memory is exhausted.
TEST(LabelAllocationFaults, Refusals) {
  for (
      const std::string& request : std::vector<std::string>{
          R"({"type":"code40","text":"A name that takes memory, longer than what a string holds by itself"})",
          R"({"type":"jan13","text":"4901234567890"})", R"({"type":"qr","text":"A","module":1000})",
          R"({"type":"qr","text":"A","what nobody knows, longer than what a string holds by itself":1})",
          R"({"type":"gs1-128","text":"(01)123"})", R"({"type":"qr","text":"A","width":10,"height":10})",
          R"({"type":"qr","text":"A","strict":true,"quiet_zone":0})", R"({"type":)", "[]"}) {
    TryAll(request);
  }
}

}  // namespace
}  // namespace barcode::test
