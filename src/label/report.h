#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "label/composition.h"
#include "label/error.h"
#include "label/request.h"
#include "label/symbol.h"
#include "label/types.h"

// The report of a label: one JSON object, UTF-8 whatever the texts in it.
namespace barcode::label {

// The word of a code: "bad_request".
std::string_view WordOf(ErrorCode code);

// What was made of a request.
struct Delivery {
  const TypeInfo& type;
  Format format;
  const Symbol& symbol;
  const Composition& composition;
  const std::vector<Warning>& warnings;
  std::size_t bytes;  // of the picture
};

std::string DeliveredReport(const Delivery& delivery);

// type: of the request, when it names one.
std::string RefusedReport(const LabelError& error, const TypeInfo* type);

// The object "error" of such a report alone.
std::string ErrorJson(const LabelError& error);

// The report when there is no memory to make one.
inline constexpr const char* kOutOfMemoryReport =
    R"({"ok":false,"error":{"code":"out_of_memory","field":"","message":"Memory is exhausted; free some, or ask )"
    R"(for a smaller picture."},"warnings":[]})";

}  // namespace barcode::label
