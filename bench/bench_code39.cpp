#include "bench/draws.h"
#include "linear/code39_encoder.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const std::string text = "ABC-1234567";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeCode39(text));
  }
}
BENCHMARK(Encode)->Name("Code39/encode 11 characters");

const bool kRegistered = [] {
  const Drawing drawing{.type = BARCODE_CODE39, .text = "ABC-123", .setUp = {}};
  RegisterBarePng("Code39 300x100", drawing);
  RegisterDraws("Code39 300x100", drawing);
  return true;
}();

}  // namespace
}  // namespace barcode::bench
