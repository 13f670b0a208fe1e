#include "bench/draws.h"
#include "gs1/gs1_128_encoder.h"

namespace barcode::bench {
namespace {

const std::string kElementString = "{FNC1}0104912345678904{FNC1}10ABC";
const std::string kPaymentSlip = "91912345000000000012345678901234567890123455";

void Encode(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeGs1_128(kElementString));
  }
}
BENCHMARK(Encode)->Name("GS1_128/encode 2 elements");

void EncodeLong(benchmark::State& state) {
  std::string text;
  while (text.size() < static_cast<std::size_t>(state.range(0))) {
    text += kElementString;
  }
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeGs1_128(text));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(EncodeLong)->Name("GS1_128/encode, bytes")->Arg(200)->Arg(20'000);

void DrawPayment(benchmark::State& state, const char* format) {
  BarcodeHandle const form = barcode_create(BARCODE_GS1_128);
  barcode_set_output_format(form, format);
  for ([[maybe_unused]] const auto _ : state) {
    if (barcode_draw_convenience(form, kPaymentSlip.c_str(), 600, 100) != 1) {
      state.SkipWithError("the draw failed");
    }
    int length = 0;
    benchmark::DoNotOptimize(barcode_is_svg_output(form) == 1
                                 ? static_cast<const void*>(barcode_get_svg(form))
                                 : barcode_get_image_data(form, &length));
  }
  barcode_destroy(form);
}
BENCHMARK_CAPTURE(DrawPayment, png, "png")->Name("GS1_128 payment form 600x100/draw+PNG");
BENCHMARK_CAPTURE(DrawPayment, svg, "svg")->Name("GS1_128 payment form 600x100/draw+SVG");

const bool kRegistered = [] {
  RegisterDraws("GS1_128 300x100", {.type = BARCODE_GS1_128, .text = kElementString, .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
