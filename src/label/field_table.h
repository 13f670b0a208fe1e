#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/colour.h"
#include "label/error.h"
#include "label/request.h"
#include "label/types.h"

// The fields of a request, one row each: how they are written, what they may hold and who takes them.
namespace barcode::label {

enum class FieldId : std::uint8_t {
  kType,
  kText,
  kTextBase64,
  kForm,
  kFormat,
  kModule,
  kHeight,
  kWidth,
  kDpi,
  kModuleMm,
  kHeightMm,
  kQuietZone,
  kRotate,
  kForeground,
  kBackground,
  kShowText,
  kCaption,
  kTextScale,
  kTextGap,
  kEvenSpacing,
  kShowStartStop,
  kExtendedGuard,
  kBarAdjust,
  kCodeMode,
  kStringEncoding,
  kQrVersion,
  kErrorCorrectionLevel,
  kEncodeMode,
  kCodeSize,
  kEncodeScheme,
  kAspectRatio,
  kYHeight,
  kPairsPerRow,
  kStrict,
};
inline constexpr std::size_t kFieldCount = static_cast<std::size_t>(FieldId::kStrict) + 1;

enum class FieldKind : std::uint8_t {
  kString,
  kBase64,
  kInteger,
  kNumber,
  kBoolean,
  kKeyword,    // one of `words`
  kColour,     // "#rgb", "#rrggbb", "#rrggbbaa"; or one of `words`
  kQuietZone,  // a whole number or one of `words`
  kAngle,      // quarter turns in degrees
};

// Where a request keeps the value. Of a keyword it is the word itself, or the enumerator of its place in
// `words`.
using FieldMember = std::variant<std::optional<std::string> Request::*, std::optional<int> Request::*,
                                 std::optional<double> Request::*, std::optional<bool> Request::*,
                                 std::optional<Form> Request::*, std::optional<Format> Request::*,
                                 std::optional<Rotation> Request::*, std::optional<Colour> Request::*>;

// A set of types, one bit each.
using TypeSet = std::uint32_t;

constexpr TypeSet SetOf(Type type) {
  return TypeSet{1} << static_cast<unsigned>(type);
}

struct FieldInfo {
  FieldId id;
  std::string_view name;
  FieldKind kind;
  FieldMember member;
  TypeSet types;
  double minimum = 0;  // of numbers
  double maximum = 0;
  std::span<const std::string_view> words = {};
  std::string_view defaultJson = {};  // "": none, or the type's own
  std::string_view meaning = {};      // one sentence
};

inline constexpr std::string_view kTransparent = "transparent";
inline constexpr std::string_view kStandardQuietZone = "standard";
inline constexpr std::array kAngles = {0, 90, 180, 270};

// All fields, in the order of FieldId.
std::span<const FieldInfo> AllFields();

const FieldInfo& InfoOf(FieldId id);

// The field of exactly this name; null for any other text.
const FieldInfo* FindField(std::string_view name);

constexpr bool Takes(Type type, const FieldInfo& field) {
  return (field.types & SetOf(type)) != 0;
}

bool IsGiven(const Request& request, const FieldInfo& field);

constexpr bool InRange(const FieldInfo& field, double value) {
  return value >= field.minimum && value <= field.maximum;
}

// The forms of a type, the default one first where there is one; none for most types.
std::span<const Form> FormsOf(Type type);
std::string_view WordOf(Form form);
std::string_view WordOf(Format format);
// The form of a type for which none is asked.
std::optional<Form> DefaultForm(Type type);

// As JSON; "" where there is none.
std::string DefaultJson(const FieldInfo& field, const TypeInfo& type);

// Bars of these types have a height of their own that "height" can set.
bool HasBarHeight(Type type);

// Fields that go together, or do not. The first one is to blame.
struct FieldPair {
  FieldId field;
  FieldId other;
};
std::span<const FieldPair> Exclusions();
std::span<const FieldPair> Needs();
// Wanted as well by types whose bars have no height of their own.
inline constexpr FieldPair kHeightNeedsWidth = {FieldId::kHeight, FieldId::kWidth};
// The form that takes "pairs_per_row".
inline constexpr Form kFormOfPairs = Form::kStacked;

// That a field's value is none of those allowed: 'The field "module" must be a whole number from 1 to 100.'
LabelError BadValue(const FieldInfo& field);
// The same with the forms of one type.
LabelError BadForm(const TypeInfo& type);

// "a", "b" or "c", each in quotes.
std::string QuotedList(std::span<const std::string_view> words);

}  // namespace barcode::label
