#include "linear/jan8.h"

#include "linear/ean_upc.h"

namespace barcode {

std::string Jan8::CompleteCode(const std::string& text) const {
  return CompleteRetailCode(text, 8, "Jan8");
}

RunVector Jan8::Encode(const std::string& text) const {
  const std::string code = CompleteCode(text);
  ModuleSequence modules;
  AppendSideGuard(modules);
  for (std::size_t i = 0; i < 4; ++i) {
    AppendDigit(modules, kLeftOddPatterns, code[i]);
  }
  AppendCentreGuard(modules);
  for (std::size_t i = 4; i < 8; ++i) {
    AppendDigit(modules, kRightPatterns, code[i]);
  }
  AppendSideGuard(modules);
  return RunsOfModules(modules);
}

}  // namespace barcode
