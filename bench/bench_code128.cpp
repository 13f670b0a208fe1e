#include <random>

#include "bench/draws.h"
#include "linear/code128_encoder.h"

namespace barcode::bench {
namespace {

// Bytes 0 to 126 mixed, with runs of digits among them.
std::string MixedText(std::size_t size) {
  std::mt19937 random(128);
  std::string text;
  while (text.size() < size) {
    const bool digits = random() % 4 == 0;
    for (auto length = random() % 12; length > 0; --length) {
      text += static_cast<char>(digits ? '0' + random() % 10 : random() % 127);
    }
  }
  text.resize(size);
  return text;
}

// bytes_per_second is what must not depend on the length.
void EncodeAutomatic(benchmark::State& state) {
  const std::string text = MixedText(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeCode128(text, Code128Mode::kAuto));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(EncodeAutomatic)->Name("Code128/encode automatic, bytes")->Arg(12)->Arg(200)->Arg(20'000);

const bool kRegistered = [] {
  RegisterDraws("Code128 300x100", {.type = BARCODE_CODE128, .text = "Code128-1234", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
