#pragma once

#include <string>
#include <string_view>

#include "label/field_table.h"
#include "label/request.h"

// Values into a request, each checked against its row of the table of fields. All throw LabelError with
// kBadValue for a value that the field does not take; the request is then as it was.
namespace barcode::label {

void SetNumber(Request& request, const FieldInfo& field, double value);
void SetBoolean(Request& request, const FieldInfo& field, bool value);

// A string as JSON has it: a text, a keyword in any case, Base64, a colour. Of a number, and of what says
// true or false, it is none.
void SetString(Request& request, const FieldInfo& field, std::string value);

// A value of any kind as people write it: on a command line, in the cell of a table. Numbers are decimal with
// a point, whatever the locale, and nothing stands around them; booleans are "true", "false", "1" or "0", in
// any case.
void SetFromText(Request& request, const FieldInfo& field, std::string_view text);

}  // namespace barcode::label
