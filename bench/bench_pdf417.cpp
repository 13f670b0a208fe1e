#include "bench/draws.h"
#include "pdf417/encoder.h"

namespace barcode::bench {
namespace {

const std::string kMixed = "PDF417 holds text, 0123456789012345 and \xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E";

void Encode(benchmark::State& state, const std::string& text) {
  for ([[maybe_unused]] const auto _ : state) {
    EncoderLines lines;
    benchmark::DoNotOptimize(pdf417::Encode(text, {}, lines).modules.Columns());
  }
}
BENCHMARK_CAPTURE(Encode, mixed, kMixed)->Name("PDF417/encode 49 bytes of text, digits and UTF-8");
BENCHMARK_CAPTURE(Encode, full, std::string(1850, 'A'))->Name("PDF417/encode 1850 characters, a full symbol");

const bool kRegistered = [] {
  const Drawing drawing{.type = BARCODE_PDF417, .text = kMixed, .width = 420, .height = 150, .setUp = {}};
  RegisterBarePng("PDF417 420x150", drawing);
  RegisterDraws("PDF417 420x150", drawing);
  return true;
}();

}  // namespace
}  // namespace barcode::bench
