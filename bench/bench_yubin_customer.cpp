#include "bench/draws.h"
#include "linear/yubin_customer_encoder.h"

namespace barcode::bench {
namespace {

void Encode(benchmark::State& state) {
  const std::string text = "26300233-30-8-403";
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(EncodeYubinCustomer(text));
  }
}
BENCHMARK(Encode)->Name("YubinCustomer/encode 17 characters");

const bool kRegistered = [] {
  const Drawing drawing{
      .type = BARCODE_YUBIN_CUSTOMER, .text = "26300233-30-8-403", .height = 40, .setUp = {}};
  RegisterBarePng("YubinCustomer 40", drawing);
  RegisterDraws("YubinCustomer 40", drawing);
  return true;
}();

}  // namespace
}  // namespace barcode::bench
