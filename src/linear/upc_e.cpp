#include "linear/upc_e.h"

#include <stdexcept>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"

namespace barcode {
namespace {

constexpr std::size_t kUpcAMessageDigits = 11;

}  // namespace

std::string ExpandUpcE(std::string_view digits) {
  const char rule = digits[6];
  const std::size_t dataInFront = rule <= '2' ? 2 : rule == '3' ? 3 : rule == '4' ? 4 : 5;
  std::string message(digits.substr(0, 1 + dataInFront));
  std::string item(digits.substr(1 + dataInFront, 5 - dataInFront));
  if (rule <= '2') {
    message += rule;
  } else if (rule >= '5') {
    item += rule;
  }
  message.append(kUpcAMessageDigits - message.size() - item.size(), '0');
  return message.append(item);
}

std::string UpcE::CompleteCode(const std::string& text) const {
  if (text.size() < 6 || text.size() > 8) {
    throw std::runtime_error("Invalid length (must be 6, 7 or 8 digits).");
  }
  if (!AllDigits(text)) {
    throw std::runtime_error("Invalid character (non-digit found).");
  }
  if (text.size() == 8) {
    return text;
  }
  std::string digits(text.size() == 6 ? "0" : "");
  digits += text;
  return digits + Gs1CheckDigit(ExpandUpcE(digits));
}

RunVector UpcERuns(const ModuleSequence& modules) {
  if (modules.empty() || modules.front() == 0) {
    throw std::runtime_error("EncodeUPCE: internal module sequence error.");
  }
  return RunsOfModules(modules);
}

RunVector UpcE::Encode(const std::string& text) const {
  const std::string_view code = text;
  if (code.size() != 8) {
    throw std::runtime_error("EncodeUPCE: code must be 8 digits.");
  }
  if (!IsDigit(code[7])) {
    throw std::runtime_error("EncodeUPCE: invalid check digit.");
  }
  const std::string_view data = code.substr(1, 6);
  if (!AllDigits(data)) {
    throw std::runtime_error("EncodeUPCE: non digit in data part.");
  }
  ModuleSequence modules;
  AppendSideGuard(modules);
  for (std::size_t i = 0; i < data.size(); ++i) {
    AppendDigit(modules, ParityBit(code[7] - '0', i) ? kLeftOddPatterns : kLeftEvenPatterns, data[i]);
  }
  AppendModules(modules, 0b010101, 6);
  return UpcERuns(modules);
}

}  // namespace barcode
