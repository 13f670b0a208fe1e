#include "bench/draws.h"
#include "gs1/databar_14_encoder.h"
#include "gs1/databar_expanded_encoder.h"
#include "gs1/databar_limited_encoder.h"

namespace barcode::bench {
namespace {

constexpr const char* kGtin = "2001234567890";
constexpr const char* kLimitedGtin = "1501234567890";
constexpr const char* kElements = "0195011015300038171506212110A1B2C3D4";

void EncodeOneRow(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state) {
    EncoderLines lines;
    benchmark::DoNotOptimize(EncodeDataBar14(kGtin, DataBar14Type::kOmnidirectional, lines));
  }
}
BENCHMARK(EncodeOneRow)->Name("GS1DataBar14/encode");

void EncodeStackedOmnidirectional(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state) {
    EncoderLines lines;
    benchmark::DoNotOptimize(EncodeDataBar14(kGtin, DataBar14Type::kStackedOmnidirectional, lines));
  }
}
BENCHMARK(EncodeStackedOmnidirectional)->Name("GS1DataBar14/encode stacked omnidirectional");

void EncodeLimited(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeDataBarLimited(kLimitedGtin));
  }
}
BENCHMARK(EncodeLimited)->Name("GS1DataBarLimited/encode");

void EncodeExpanded(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeDataBarExpanded(kElements, kUnstacked));
  }
}
BENCHMARK(EncodeExpanded)->Name("GS1DataBarExpanded/encode 36 characters");

const bool kRegistered = [] {
  RegisterDraws("GS1DataBar14 300x100", {.type = BARCODE_GS1_DATABAR_14, .text = kGtin, .setUp = {}});
  RegisterDraws("GS1DataBar14 stacked 200x130",
                {.type = BARCODE_GS1_DATABAR_14,
                 .text = kGtin,
                 .width = 200,
                 .height = 130,
                 .setUp = [](BarcodeHandle handle) { barcode_set_symbol_type_14(handle, "STACKED"); }});
  RegisterDraws("GS1DataBarLimited 300x100",
                {.type = BARCODE_GS1_DATABAR_LIMITED, .text = kLimitedGtin, .setUp = {}});
  RegisterDraws("GS1DataBarExpanded 600x100",
                {.type = BARCODE_GS1_DATABAR_EXPANDED, .text = kElements, .width = 600, .setUp = {}});
  RegisterDraws("GS1DataBarExpanded stacked 300x300",
                {.type = BARCODE_GS1_DATABAR_EXPANDED,
                 .text = kElements,
                 .height = 300,
                 .setUp = [](BarcodeHandle handle) { barcode_set_symbol_type_exp(handle, "STACKED"); }});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
