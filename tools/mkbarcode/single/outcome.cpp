#include "mkbarcode/single/outcome.h"

#include <nlohmann/json.hpp>

#include "label/error.h"
#include "label/field_table.h"
#include "label/report.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/label_words.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using nlohmann::json;

// The size that would do, as the end of a message. A box that was asked for has it in the message already.
std::string ThatWouldDo(const json& needed, const std::string& field) {
  const std::string width = std::to_string(needed.at("width").get<int>());
  const std::string height = std::to_string(needed.at("height").get<int>());
  if (field == "width" || field == "height") {
    return Concat({" That is --width ", width, " --height ", height, "."});
  }
  return Concat({" A picture of ", width, " x ", height, " pixels would do."});
}

Refusal ReadRefusal(const json& error) {
  Refusal refusal{error.at("code"), error.at("field"),
                  InWordsOfOptions(error.at("message").get<std::string>())};
  if (const auto needed = error.find("needed"); needed != error.end()) {
    refusal.message += ThatWouldDo(*needed, refusal.field);
  }
  return refusal;
}

bool IsText(std::string_view field) {
  return field == label::InfoOf(label::FieldId::kText).name ||
         field == label::InfoOf(label::FieldId::kTextBase64).name;
}

}  // namespace

LabelOutcome ReadReport(std::string_view report) {
  const json read = json::parse(report);
  LabelOutcome outcome;
  for (const json& warning : read.at("warnings")) {
    outcome.warnings.push_back(InWordsOfOptions(warning.at("message").get<std::string>()));
  }
  if (const auto error = read.find("error"); error != read.end()) {
    outcome.refusal = ReadRefusal(*error);
  }
  return outcome;
}

int StatusOf(const Refusal& refusal) {
  const auto is = [&refusal](label::ErrorCode code) { return refusal.code == label::WordOf(code); };
  const bool isUsage = is(label::ErrorCode::kUnknownField) || is(label::ErrorCode::kUnknownType) ||
                       (is(label::ErrorCode::kBadValue) && !IsText(refusal.field));
  return isUsage ? kExitUsage : kExitFailed;
}

void Throw(const Refusal& refusal) {
  if (StatusOf(refusal) == kExitUsage) {
    throw UsageError(refusal.message);
  }
  throw RunError(refusal.message);
}

}  // namespace barcode::tool
