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

// The size that would do, as the end of a message. What is said of the height of bars names it already.
std::string ThatWouldDo(const json& needed, const std::string& field, bool hasBox) {
  const std::string width = std::to_string(needed.at("width").get<int>());
  const std::string height = std::to_string(needed.at("height").get<int>());
  if (!hasBox && (field == label::InfoOf(label::FieldId::kHeight).name ||
                  field == label::InfoOf(label::FieldId::kHeightMm).name)) {
    return "";
  }
  if (hasBox) {
    return Concat({" That is --width ", width, " --height ", height, "."});
  }
  return Concat({" A picture of ", width, " x ", height, " pixels would do."});
}

Refusal ReadRefusal(const json& error, bool hasBox) {
  Refusal refusal{error.at("code"), error.at("field"),
                  InWordsOfOptions(error.at("message").get<std::string>())};
  if (const auto needed = error.find("needed"); needed != error.end()) {
    refusal.message += ThatWouldDo(*needed, refusal.field, hasBox);
  }
  return refusal;
}

bool IsText(std::string_view field) {
  return field == label::InfoOf(label::FieldId::kText).name ||
         field == label::InfoOf(label::FieldId::kTextBase64).name;
}

}  // namespace

LabelOutcome ReadReport(std::string_view report, bool hasBox) {
  const json read = json::parse(report);
  LabelOutcome outcome;
  for (const json& warning : read.at("warnings")) {
    outcome.warnings.push_back(InWordsOfOptions(warning.at("message").get<std::string>()));
  }
  if (const auto error = read.find("error"); error != read.end()) {
    outcome.refusal = ReadRefusal(*error, hasBox);
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
