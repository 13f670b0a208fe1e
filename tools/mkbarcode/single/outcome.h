#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The report of a label in the words of the command line.
namespace barcode::tool {

struct Refusal {
  std::string code;
  std::string field;    // as the report names it
  std::string message;  // sentences, with options for fields and the size that would do
};

struct LabelOutcome {
  std::vector<std::string> warnings;
  std::optional<Refusal> refusal;
};

// hasBox: whether the picture was to fill a box, which the size that would do is told as then.
LabelOutcome ReadReport(std::string_view report, bool hasBox);

// kExitUsage when the command line is to blame, kExitFailed when text, symbology or size are.
int StatusOf(const Refusal& refusal);

// As UsageError or RunError, according to the status.
[[noreturn]] void Throw(const Refusal& refusal);

}  // namespace barcode::tool
