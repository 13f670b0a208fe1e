#include "bench/draws.h"
#include "linear/nw7.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const NW7 code("png");
  const std::string text = "A1234567890B";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(code.Encode(text));
  }
}
BENCHMARK(Encode)->Name("NW7/encode 12 characters");

const bool kRegistered = [] {
  RegisterDraws("NW7 300x100", {.type = BARCODE_NW7, .text = "A1234567890B", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
