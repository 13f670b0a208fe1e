#pragma once

#include <string_view>

#include "label/request.h"

namespace barcode::label {

// The request that a JSON object states: its fields, each of its kind and in its range. What they mean
// together is for ValidateRequest. A UTF-8 byte order mark in front is skipped.
// Throws LabelError for the first thing that is wrong, from front to back: kBadRequest where the text is no
// JSON object in UTF-8, kUnknownField for a name that no field has, kBadValue for a value that the field does
// not take and for a field that stands twice, even if it is null.
// defaults: what fields have that the object does not state, or states as null.
Request ParseRequest(std::string_view json, const Request& defaults = {});

}  // namespace barcode::label
