#pragma once

#include <exception>
#include <optional>

#include "fuzz/byte_reader.h"

// What fuzz_encoders chooses from: each takes a case from the bytes and requires what the code promises for
// it.
namespace barcode::fuzz {

// The result of an action; nothing when it refuses its input with an exception of the standard library.
template <class Action>
auto Accepted(Action action) -> std::optional<decltype(action())> {
  try {
    return action();
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

inline bool IsMadeOf(std::string_view text, std::string_view characters) {
  return text.find_first_not_of(characters) == std::string_view::npos;
}

inline constexpr std::string_view kDigits = "0123456789";

void CheckCode39(ByteReader& reader);
void CheckCode93(ByteReader& reader);
void CheckCode128(ByteReader& reader);
void CheckNw7(ByteReader& reader);
void CheckTwoOfFive(ByteReader& reader);
void CheckRetail(ByteReader& reader);
void CheckYubin(ByteReader& reader);

void CheckGs1_128(ByteReader& reader);
void CheckDataBar14(ByteReader& reader);
void CheckDataBarLimited(ByteReader& reader);
void CheckDataBarExpanded(ByteReader& reader);
void CheckElementString(ByteReader& reader);
void CheckPaymentForm(ByteReader& reader);

void CheckQr(ByteReader& reader);
void CheckDataMatrix(ByteReader& reader);
void CheckPdf417(ByteReader& reader);

void CheckInputEncoding(ByteReader& reader);
void CheckNumbers(ByteReader& reader);
void CheckBase64(ByteReader& reader);

void CheckLinearLayout(ByteReader& reader);
void CheckGuardBarLayout(ByteReader& reader);
void CheckStackedLayout(ByteReader& reader);
void CheckFourStateLayout(ByteReader& reader);
void CheckPaymentFormLayout(ByteReader& reader);
void CheckMatrixLayout(ByteReader& reader);

}  // namespace barcode::fuzz
