#include "label/report.h"

#include <array>
#include <cstddef>

#include "label/field_table.h"
#include "label/json_writer.h"
#include "label/units.h"

namespace barcode::label {
namespace {

// In the order of the enumerators.
constexpr auto kWords = std::to_array<std::string_view>({
    "bad_request",
    "unknown_field",
    "bad_value",
    "unknown_type",
    "bad_text",
    "too_long",
    "too_small",
    "too_large",
    "out_of_memory",
    "low_contrast",
    "light_on_dark",
    "small_module",
    "quiet_zone",
    "text_shrunk",
    "text_left_out",
    "missing_glyph",
    "no_reader",
    "gs1_association",
});
static_assert(kWords.size() == static_cast<std::size_t>(ErrorCode::kGs1Association) + 1);

// The members without the texts, and room for texts of ordinary length.
constexpr std::size_t kLikelySize = 400;

void WriteWarnings(JsonWriter& json, const std::vector<Warning>& warnings) {
  json.Key("warnings");
  json.BeginArray();
  for (const Warning& warning : warnings) {
    json.BeginObject();
    json.Member("code", WordOf(warning.code));
    json.Member("message", warning.message);
    json.EndObject();
  }
  json.EndArray();
}

void WriteSize(JsonWriter& json, const Drawing& drawing) {
  json.Member("width", drawing.width);
  json.Member("height", drawing.height);
  if (drawing.dpi) {
    json.Member("width_mm", drawing.width * kMillimetresPerInch / *drawing.dpi);
    json.Member("height_mm", drawing.height * kMillimetresPerInch / *drawing.dpi);
  }
}

void WriteModules(JsonWriter& json, const Composition& composition) {
  json.Member("module", composition.module);
  json.Key("modules");
  json.BeginObject();
  json.Member("columns", composition.columns);
  json.Member("rows", composition.rows);
  json.EndObject();
  json.Key("quiet_zone");
  json.BeginObject();
  json.Member("left", composition.quietZone.left);
  json.Member("right", composition.quietZone.right);
  json.Member("top", composition.quietZone.top);
  json.Member("bottom", composition.quietZone.bottom);
  json.EndObject();
}

void WriteError(JsonWriter& json, const LabelError& error) {
  json.BeginObject();
  json.Member("code", WordOf(error.Code()));
  json.Member("field", error.Field());
  json.Member("message", std::string_view(error.what()));
  if (const std::optional<Size> needed = error.Needed()) {
    json.Key("needed");
    json.BeginObject();
    json.Member("width", needed->width);
    json.Member("height", needed->height);
    json.EndObject();
  }
  if (const std::optional<SizeMm> needed = error.NeededMm()) {
    json.Key("needed_mm");
    json.BeginObject();
    json.Member("width", needed->width);
    json.Member("height", needed->height);
    json.EndObject();
  }
  json.EndObject();
}

}  // namespace

std::string_view WordOf(ErrorCode code) {
  return kWords.at(static_cast<std::size_t>(code));
}

std::string DeliveredReport(const Delivery& delivery) {
  const Composition& composition = delivery.composition;
  JsonWriter json(kLikelySize + delivery.symbol.text.size() + composition.displayText.size());
  json.BeginObject();
  json.Member("ok", true);
  WriteWarnings(json, delivery.warnings);
  json.Member("type", delivery.type.name);
  json.Member("text", delivery.symbol.text);
  json.Member("display_text", composition.displayText);
  WriteSize(json, composition.drawing);
  WriteModules(json, composition);
  json.Member("format", WordOf(delivery.format));
  json.Member("bytes", delivery.bytes);
  json.EndObject();
  return json.Take();
}

std::string RefusedReport(const LabelError& error, const TypeInfo* type) {
  JsonWriter json(kLikelySize);
  json.BeginObject();
  json.Member("ok", false);
  json.Key("error");
  WriteError(json, error);
  WriteWarnings(json, {});
  if (type != nullptr) {
    json.Member("type", type->name);
  }
  json.EndObject();
  return json.Take();
}

std::string ErrorJson(const LabelError& error) {
  JsonWriter json(kLikelySize);
  WriteError(json, error);
  return json.Take();
}

}  // namespace barcode::label
