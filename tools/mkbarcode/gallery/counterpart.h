#pragma once

#include <nlohmann/json.hpp>
#include <optional>

#include "mkbarcode/library/draw.h"

namespace barcode::tool {

// What a host asks of the functions of barcode.h that wants what a delivered label shows: the same text and
// options, as far as they have such, in the box of the symbol and its text without quiet zone. Nothing for
// bytes that no text of barcode.h can hold.
std::optional<DrawRequest> LibraryCounterpart(const TypeInfo& type, const nlohmann::ordered_json& request,
                                              const nlohmann::json& report);

// An element string as people write it, "(01)04912345678904(10)LOT42", in the library's notation: FNC1 at the
// beginning where the symbology asks for it and behind each field of variable length that another one
// follows.
std::string WithMarkers(std::string_view elements, bool startsWithFnc1);

}  // namespace barcode::tool
