#include "label/label.h"

#include <stdexcept>
#include <utility>

#include "label/fields.h"
#include "label/json_request.h"
#include "label/report.h"
#include "label/warnings.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

std::string Write(const Drawing& drawing, Format format) {
  switch (format) {
    case Format::kPng:
      return WritePng(drawing);
    case Format::kSvg:
      return WriteSvg(drawing);
    case Format::kPdf:
      break;
  }
  return WritePdf(drawing);
}

std::string_view MediaType(Format format) {
  switch (format) {
    case Format::kPng:
      return "image/png";
    case Format::kSvg:
      return "image/svg+xml";
    case Format::kPdf:
      break;
  }
  return "application/pdf";
}

// The composition has those of the symbol.
std::vector<Warning> AllWarnings(const TypeInfo& type, const Request& request,
                                 const Composition& composition) {
  std::vector<Warning> warnings = PrintWarnings(type, request, composition);
  warnings.insert(warnings.end(), composition.warnings.begin(), composition.warnings.end());
  return warnings;
}

Label Deliver(const Request& request) {
  const TypeInfo& type = ValidateRequest(request);
  const Symbol symbol = EncodeSymbol(type.type, request);
  const Composition composition = Compose(type, request, symbol);
  const std::vector<Warning> warnings = AllWarnings(type, request, composition);
  if (request.strict == true && !warnings.empty()) {
    const Warning& first = warnings.front();
    throw LabelError(first.code, "", first.message, first.needed);
  }
  const Format format = request.format.value_or(Format::kPng);
  Label label;
  label.data = Write(composition.drawing, format);
  label.mediaType = MediaType(format);
  label.report = DeliveredReport({.type = type,
                                  .format = format,
                                  .symbol = symbol,
                                  .composition = composition,
                                  .warnings = warnings,
                                  .bytes = label.data.size()});
  label.ok = true;
  return label;
}

Label Refuse(const LabelError& error, const TypeInfo* type) {
  return {.data = "", .mediaType = "", .report = RefusedReport(error, type), .ok = false};
}

}  // namespace

Label Make(const Request& request) {
  try {
    return Deliver(request);
  } catch (const LabelError& error) {
    return Refuse(error, request.type ? FindType(*request.type) : nullptr);
  } catch (const std::length_error&) {
    throw std::bad_alloc();  // more than any memory holds
  }
}

Label MakeFromJson(std::string_view json) {
  try {
    return Make(ParseRequest(json));
  } catch (const LabelError& error) {
    return Refuse(error, nullptr);
  }
}

}  // namespace barcode::label
