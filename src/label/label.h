#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "label/composition.h"
#include "label/error.h"
#include "label/request.h"

// Requests in, labels out. No global state, no stream, no lock.
namespace barcode::label {

struct Label {
  std::string data;       // the picture; empty when refused
  std::string mediaType;  // "image/png", "image/svg+xml", "application/pdf"; "" when refused
  std::string report;     // JSON
  bool ok = false;
};

// Never throws but std::bad_alloc: a refusal is in the report.
Label Make(const Request& request);

// The same from a request in JSON. What is no request is refused in the report too.
Label MakeFromJson(std::string_view json);

}  // namespace barcode::label
