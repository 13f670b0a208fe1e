#include "bench/draws.h"
#include "linear/two_of_five_encoder.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const std::string text = "123456789012";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeNec2of5(text));
  }
}
BENCHMARK(Encode)->Name("NEC2of5/encode 12 digits");

const bool kRegistered = [] {
  RegisterDraws("NEC2of5 300x100", {.type = BARCODE_NEC_2OF5, .text = "123456789012", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
