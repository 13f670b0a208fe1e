#include "bench/draws.h"
#include "linear/jan13.h"
#include "linear/jan8.h"
#include "linear/upc_a.h"
#include "linear/upc_e.h"

namespace barcode::bench {
namespace {

// Completing a code and encoding it.
template <class Symbology>
void Encode(benchmark::State& state, const std::string& text) {
  const Symbology symbology("png");
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(symbology.Encode(symbology.CompleteCode(text)));
  }
}

template <class Symbology>
void Register(const std::string& name, int type, const std::string& text) {
  benchmark::RegisterBenchmark((name + "/encode").c_str(),
                               [text](benchmark::State& state) { Encode<Symbology>(state, text); });
  RegisterDraws(name + " 300x100", {.type = type, .text = text, .setUp = {}});
}

const bool kRegistered = [] {
  Register<Jan13>("Jan13", BARCODE_JAN13, "490123456789");
  Register<Jan8>("Jan8", BARCODE_JAN8, "4901234");
  Register<UpcA>("UpcA", BARCODE_UPC_A, "03600029145");
  Register<UpcE>("UpcE", BARCODE_UPC_E, "654321");
  RegisterBarePng("Jan13 300x100", {.type = BARCODE_JAN13, .text = "490123456789", .setUp = {}});
  return true;
}();

}  // namespace
}  // namespace barcode::bench
