#include "bench/draws.h"
#include "linear/code93_encoder.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const std::string text = "CODE93-12345";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeCode93(text));
  }
}
BENCHMARK(Encode)->Name("Code93/encode 12 characters");

const bool kRegistered = [] {
  RegisterDraws("Code93 300x100", {.type = BARCODE_CODE93, .text = "CODE93-12345", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
