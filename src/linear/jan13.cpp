#include "linear/jan13.h"

#include "linear/ean_upc.h"

namespace barcode {

std::string Jan13::CompleteCode(const std::string& text) const {
  return CompleteRetailCode(text, 13, "Jan13");
}

RunVector Jan13::Encode(const std::string& text) const {
  const std::string code = CompleteCode(text);
  const int leadingDigit = code[0] - '0';
  ModuleSequence modules;
  AppendSideGuard(modules);
  for (std::size_t i = 0; i < 6; ++i) {
    AppendDigit(modules, ParityBit(leadingDigit, i) ? kLeftEvenPatterns : kLeftOddPatterns, code[1 + i]);
  }
  AppendCentreGuard(modules);
  for (std::size_t i = 7; i < 13; ++i) {
    AppendDigit(modules, kRightPatterns, code[i]);
  }
  AppendSideGuard(modules);
  return RunsOfModules(modules);
}

}  // namespace barcode
