#pragma once

#include "label/field_table.h"
#include "label/request.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace barcode::tool {

// Adds one option for each field of a request but "type", "text" and "text_base64", in kebab-case: booleans
// as "--x" and "--no-x", the others with a value. Values land in the request while the parser runs; one that
// the field does not take is a UsageError that names the option and what would do. The request is to outlive
// the parser.
void AddLabelOptions(CLI::App& app, label::Request& request);

// The same of one field.
CLI::Option* AddLabelOption(CLI::App& app, label::Request& request, const label::FieldInfo& field);

}  // namespace barcode::tool
