#pragma once

#include <span>
#include <string>
#include <string_view>

#include "label/request.h"
#include "label/types.h"

// The fields of a request: one table that validates them, tells of them (barcode_label_types) and makes the
// JSON schema.
namespace barcode::label {

// The type that the request names, after every check that needs no text: a type is named; each field that is
// given belongs to the type and to its form, and is in its range; fields that exclude or need one another.
// Throws LabelError.
const TypeInfo& ValidateRequest(const Request& request);

// The JSON of barcode_label_types().
const std::string& TypesJson();

// A JSON Schema (draft 2020-12) of a request.
std::string RequestSchema();

}  // namespace barcode::label
