#include "bench/draws.h"
#include "datamatrix/datamatrix_encoder.h"

namespace barcode::bench {
namespace {

// Upper case, digits and lower case by turns, so that the schemes change.
std::string MixedText(std::size_t size) {
  constexpr std::string_view kPattern = "PART NUMBER 4711 LOT 20261120 made in batches of 0042, ";
  std::string text;
  while (text.size() < size) {
    text.push_back(kPattern[text.size() % kPattern.size()]);
  }
  return text;
}

void Encode(benchmark::State& state, const std::string& text, const datamatrix::Options& options) {
  for ([[maybe_unused]] const auto _ : state) {
    EncoderLines lines;
    benchmark::DoNotOptimize(datamatrix::EncodeDataMatrix(text, options, lines));
  }
}

constexpr datamatrix::Options kAscii = {};
constexpr datamatrix::Options kAutomatic = {.scheme = {}};

BENCHMARK_CAPTURE(Encode, ascii24, MixedText(24), kAscii)->Name("DataMatrix/encode 24 bytes ASCII");
BENCHMARK_CAPTURE(Encode, auto24, MixedText(24), kAutomatic)->Name("DataMatrix/encode 24 bytes AUTO");
BENCHMARK_CAPTURE(Encode, auto1500, MixedText(1500), kAutomatic)->Name("DataMatrix/encode 1500 bytes AUTO");
BENCHMARK_CAPTURE(Encode, auto3000, std::string(3000, '7'), kAutomatic)
    ->Name("DataMatrix/encode 3000 digits AUTO");

const bool kRegistered = [] {
  const Drawing small{
      .type = BARCODE_DATAMATRIX, .text = MixedText(24), .width = 300, .height = 300, .setUp = {}};
  RegisterBarePng("DataMatrix 20x20 in 300x300", small);
  RegisterDraws("DataMatrix 20x20 in 300x300", small);
  const Drawing large{.type = BARCODE_DATAMATRIX,
                      .text = std::string(3000, '7'),
                      .width = 576,
                      .height = 576,
                      .setUp = [](BarcodeHandle handle) { barcode_set_encode_scheme(handle, "AUTO"); }};
  RegisterDraws("DataMatrix 144x144 in 576x576", large);
  return true;
}();

}  // namespace
}  // namespace barcode::bench
