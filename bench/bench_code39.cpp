#include "bench/draws.h"
#include "linear/code39.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const Code39 code("png");
  const std::string text = "ABC-1234567";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(code.Encode(text));
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
