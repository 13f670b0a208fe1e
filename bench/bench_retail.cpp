#include "bench/draws.h"
#include "linear/ean_upc_encoder.h"

namespace barcode::bench {
namespace {

// Completing a code and encoding it, as a draw does.
struct Encoder {
  std::string (*complete)(std::string_view text);
  RunVector (*encode)(std::string_view code);
};

void Encode(benchmark::State& state, const Encoder& encoder, const std::string& text) {
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(encoder.encode(encoder.complete(text)));
  }
}

void Register(const std::string& name, const Encoder& encoder, int type, const std::string& text) {
  benchmark::RegisterBenchmark((name + "/encode").c_str(),
                               [encoder, text](benchmark::State& state) { Encode(state, encoder, text); });
  RegisterDraws(name + " 300x100", {.type = type, .text = text, .setUp = {}});
}

const bool kRegistered = [] {
  Register("Jan13", {CompleteJan13, EncodeJan13}, BARCODE_JAN13, "490123456789");
  Register("Jan8", {CompleteJan8, EncodeJan8}, BARCODE_JAN8, "4901234");
  Register("UpcA", {CompleteUpcA, EncodeUpcA}, BARCODE_UPC_A, "03600029145");
  Register("UpcE", {CompleteUpcE, [](std::string_view code) { return EncodeUpcE(code); }}, BARCODE_UPC_E,
           "654321");
  RegisterBarePng("Jan13 300x100", {.type = BARCODE_JAN13, .text = "490123456789", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
