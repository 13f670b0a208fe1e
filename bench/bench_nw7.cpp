#include "bench/draws.h"
#include "linear/nw7_encoder.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const std::string text = "A1234567890B";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeNw7(text));
  }
}
BENCHMARK(Encode)->Name("NW7/encode 12 characters");

const bool kRegistered = [] {
  RegisterDraws("NW7 300x100", {.type = BARCODE_NW7, .text = "A1234567890B", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
