#include <random>
#include <string>

#include "bench/draws.h"
#include "qr/qr_encoder.h"
#include "qr/qr_tables.h"

namespace barcode::bench {
namespace {

// Printable characters without a pattern: no mask and no PNG filter has it easy.
std::string Text(std::size_t length) {
  std::mt19937 random(18004);
  std::string text(length, ' ');
  for (char& character : text) {
    character = static_cast<char>(' ' + random() % 95);
  }
  return text;
}

void Encode(benchmark::State& state, const std::string& text, QrLevel level) {
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeQr(text, {.level = level}));
  }
}

void Thousand(benchmark::State& state) {
  Encode(state, Text(1000), QrLevel::kL);
}
BENCHMARK(Thousand)->Name("QR/encode 1000 bytes at level L");

template <class Run>
void Register(const std::string& name, Run run) {
  constexpr double kSeconds = 0.1;  // of each, there are many
  benchmark::RegisterBenchmark(name.c_str(), run)->MinTime(kSeconds);
}

// Every version at level M, filled with bytes.
const bool kRegistered = [] {
  for (int version = 1; version <= kQrMaxVersion; ++version) {
    const int textBits =
        QrCapacityBits(QrLevel::kM, version) - kQrModeBits - QrCountBits(QrMode::kByte, version);
    const std::string text = Text(static_cast<std::size_t>(textBits / 8));
    const Drawing drawing{.type = BARCODE_QR, .text = text, .width = 300, .height = 300, .setUp = {}};
    const std::string name = "QR version " + std::to_string(version) + " 300x300";
    Register(name + "/encode", [text](benchmark::State& state) { Encode(state, text, QrLevel::kM); });
    Register(name + "/bare IMG_SavePNG_RW", [drawing](benchmark::State& state) { BarePng(state, drawing); });
    Register(name + "/draw+PNG", [drawing](benchmark::State& state) { DrawAndPng(state, drawing); });
    Register(name + "/draw+SVG", [drawing](benchmark::State& state) { DrawAndSvg(state, drawing); });
  }
  return true;
}();

}  // namespace
}  // namespace barcode::bench
