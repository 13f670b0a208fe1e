#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "label/error.h"
#include "label/report.h"

namespace barcode::label {

// What a call was refused for: "bad_value of module: The field ...".
template <class Call>
std::string RefusalOf(Call call) {
  try {
    call();
    return "not refused";
  } catch (const LabelError& error) {
    return std::string(WordOf(error.Code())) + " of " + error.Field() + ": " + error.what();
  }
}

// The same without the message.
template <class Call>
std::string CodeAndFieldOf(Call call) {
  const std::string refusal = RefusalOf(call);
  return refusal.substr(0, refusal.find(':'));
}

}  // namespace barcode::label
