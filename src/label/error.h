#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace barcode::label {

// Why a label was refused. The words of the report stand beside them in report.cpp.
enum class ErrorCode : std::uint8_t {
  kBadRequest,
  kUnknownField,
  kBadValue,
  kUnknownType,
  kBadText,
  kTooLong,
  kTooSmall,
  kTooLarge,
  kOutOfMemory,
  // A warning under `strict`.
  kLowContrast,
  kLightOnDark,
  kSmallModule,
  kQuietZone,
  kTextShrunk,
  kTextLeftOut,
  kMissingGlyph,
  kNoReader,
  kGs1Association,
};

struct Size {
  int width = 0;
  int height = 0;

  bool operator==(const Size&) const = default;
};

// A refusal: thrown by whatever finds it, a value in the result of Make (label.h).
class LabelError : public std::runtime_error {
 public:
  // field: as the request names it, "" where none is to blame. message: one English sentence that says what
  // to do, with its full stop. needed: dots of the smallest picture that would do.
  LabelError(ErrorCode code, std::string_view field, const std::string& message,
             std::optional<Size> needed = std::nullopt)
      : std::runtime_error(message), m_code(code), m_field(field), m_needed(needed) {}

  ErrorCode Code() const { return m_code; }
  const std::string& Field() const { return m_field; }
  std::optional<Size> Needed() const { return m_needed; }

 private:
  ErrorCode m_code;
  std::string m_field;
  std::optional<Size> m_needed;
};

// What a delivered label has to say beside its picture; one of the codes from kLowContrast on.
struct Warning {
  ErrorCode code = ErrorCode::kLowContrast;
  std::string message;  // one English sentence
  // Dots of a picture that would do without it: of the texts under `strict`, where there is one.
  std::optional<Size> needed = std::nullopt;

  bool operator==(const Warning&) const = default;
};

}  // namespace barcode::label
