#pragma once

#include <string>
#include <string_view>

#include "label/field_table.h"

// The words of the command line for what the label library calls by the names of fields.
namespace barcode::tool {

inline constexpr label::TypeSet kEveryType = (label::TypeSet{1} << label::kTypeCount) - 1;

// "qr-version", without the leading dashes.
std::string OptionName(const label::FieldInfo& field);

// What a user of the command line calls the field: "--qr-version", TYPE, TEXT.
std::string NameForUsers(const label::FieldInfo& field);

// A sentence of the label library with its fields as options: 'The option "--module" must be ...'.
std::string InWordsOfOptions(std::string_view sentence);

// What values an option takes, in words for the help: "L, M, Q or H", "1 to 100". Empty where any text will
// do, and for what is switched on and off.
std::string AcceptedValues(const label::FieldInfo& field);

// What holds without the option, in words for the help: "2; qr, datamatrix: 4". Empty where nothing does.
std::string DefaultValue(const label::FieldInfo& field);

// The heading of the options in the help among which it stands, by the types that take it.
std::string GroupOf(const label::FieldInfo& field);

}  // namespace barcode::tool
