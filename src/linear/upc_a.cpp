#include "linear/upc_a.h"

#include "linear/ean_upc.h"

namespace barcode {

std::string UpcA::CompleteCode(const std::string& text) const {
  return CompleteRetailCode(text, 12, "UPC-A");
}

RunVector UpcA::Encode(const std::string& text) const {
  const std::string code = CompleteCode(text);
  ModuleSequence modules;
  AppendSideGuard(modules);
  for (std::size_t i = 0; i < 6; ++i) {
    AppendDigit(modules, kLeftOddPatterns, code[i]);
  }
  AppendCentreGuard(modules);
  for (std::size_t i = 6; i < 12; ++i) {
    AppendDigit(modules, kRightPatterns, code[i]);
  }
  AppendSideGuard(modules);
  return RunsOfModules(modules);
}

}  // namespace barcode
