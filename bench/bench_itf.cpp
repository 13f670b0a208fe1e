#include "bench/draws.h"
#include "linear/itf_encoder.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const std::string text = "15412345678908";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeItf(text));
  }
}
BENCHMARK(Encode)->Name("ITF/encode 14 digits");

const bool kRegistered = [] {
  RegisterDraws("ITF 300x100", {.type = BARCODE_ITF, .text = "15412345678908", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
