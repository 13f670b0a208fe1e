#include "label/field_table.h"

#include <algorithm>
#include <type_traits>
#include <vector>

#include "base/keywords.h"
#include "base/line.h"
#include "datamatrix/options.h"
#include "pdf417/limits.h"
#include "qr/qr_options.h"

namespace barcode::label {
namespace {

using Word = std::string_view;

template <class Value, std::size_t Size>
constexpr std::array<Word, Size> WordsOf(const Keywords<Value, Size>& keywords) {
  std::array<Word, Size> words{};
  for (std::size_t i = 0; i < Size; ++i) {
    words[i] = keywords[i].first;
  }
  return words;
}

template <std::size_t Size>
constexpr std::array<Word, Size + 1> AutoAnd(const std::array<Word, Size>& others) {
  std::array<Word, Size + 1> words{};
  words[0] = "AUTO";
  std::copy(others.begin(), others.end(), words.begin() + 1);
  return words;
}

// In the order of the enumerators.
constexpr std::array kFormWords = {Word("payment"), Word("omnidirectional"), Word("stacked"),
                                   Word("stacked-omnidirectional"), Word("row")};
constexpr std::array kFormatWords = {Word("png"), Word("svg"), Word("pdf")};

constexpr std::array kCodeModes = {Word("AUTO"), Word("A"), Word("B"), Word("C")};
constexpr std::array kStringEncodings = {Word("utf-8"), Word("shift-jis"), Word("shift_jis")};
constexpr std::array kCorrectionLevels = WordsOf(kQrLevelKeywords);
constexpr std::array kEncodeModes = WordsOf(kQrModeKeywords);
constexpr std::array kCodeSizes = AutoAnd(WordsOf(datamatrix::kSizeKeywords));
constexpr std::array kEncodeSchemes = AutoAnd(WordsOf(datamatrix::kSchemeKeywords));
constexpr std::array kBackgroundWords = {kTransparent};
constexpr std::array kQuietZoneWords = {kStandardQuietZone};

template <class... Types>
constexpr TypeSet Sets(Types... types) {
  return (SetOf(types) | ...);
}

constexpr TypeSet kAll = (TypeSet{1} << kTypeCount) - 1;
constexpr TypeSet kMatrix = Sets(Type::kQr, Type::kDataMatrix, Type::kPdf417);
// Without a text of their own, and without a height that can be set.
constexpr TypeSet kFixedHeight = kMatrix | SetOf(Type::kYubinCustomer);
constexpr TypeSet kBars = kAll & ~kFixedHeight;
constexpr TypeSet kRetail = Sets(Type::kJan8, Type::kJan13, Type::kUpcA, Type::kUpcE);
constexpr TypeSet kFramed = Sets(Type::kCode39, Type::kNw7);
constexpr TypeSet kInForms = Sets(Type::kGs1_128, Type::kDataBar14, Type::kDataBarExpanded);

constexpr int kMostYHeight = 1000;

constexpr std::array<FieldInfo, kFieldCount> kFields = {{
    {.id = FieldId::kType,
     .name = "type",
     .kind = FieldKind::kString,
     .member = &Request::type,
     .types = kAll,
     .meaning = "The symbology: a name or an alias of barcode_label_types()."},
    {.id = FieldId::kText,
     .name = "text",
     .kind = FieldKind::kString,
     .member = &Request::text,
     .types = kAll,
     .meaning = "What the symbol says."},
    {.id = FieldId::kTextBase64,
     .name = "text_base64",
     .kind = FieldKind::kBase64,
     .member = &Request::textBytes,
     .types = kAll,
     .meaning = "Instead of text: the bytes that the symbol says, in Base64 with padding."},
    {.id = FieldId::kForm,
     .name = "form",
     .kind = FieldKind::kKeyword,
     .member = &Request::form,
     .types = kInForms,
     .words = kFormWords,
     .meaning = "The form of the symbol, where the type has several."},
    {.id = FieldId::kFormat,
     .name = "format",
     .kind = FieldKind::kKeyword,
     .member = &Request::format,
     .types = kAll,
     .words = kFormatWords,
     .defaultJson = R"("png")",
     .meaning = "The format of the picture."},
    {.id = FieldId::kModule,
     .name = "module",
     .kind = FieldKind::kInteger,
     .member = &Request::module,
     .types = kAll,
     .minimum = 1,
     .maximum = 100,
     .meaning = "Pixels of a module."},
    {.id = FieldId::kHeight,
     .name = "height",
     .kind = FieldKind::kInteger,
     .member = &Request::height,
     .types = kAll,
     .minimum = 1,
     .maximum = 10'000,
     .meaning = "Pixels of the bars; beside width, of the picture."},
    {.id = FieldId::kWidth,
     .name = "width",
     .kind = FieldKind::kInteger,
     .member = &Request::width,
     .types = kAll,
     .minimum = 1,
     .maximum = 100'000,
     .meaning = "Pixels of the picture, which is then exactly width x height."},
    {.id = FieldId::kDpi,
     .name = "dpi",
     .kind = FieldKind::kInteger,
     .member = &Request::dpi,
     .types = kAll,
     .minimum = 50,
     .maximum = 4800,
     .meaning = "Pixels per inch."},
    {.id = FieldId::kModuleMm,
     .name = "module_mm",
     .kind = FieldKind::kNumber,
     .member = &Request::moduleMm,
     .types = kAll,
     .minimum = 0.01,
     .maximum = 10,
     .meaning = "Millimetres of a module, rounded to whole pixels."},
    {.id = FieldId::kHeightMm,
     .name = "height_mm",
     .kind = FieldKind::kNumber,
     .member = &Request::heightMm,
     .types = kBars,
     .minimum = 0.1,
     .maximum = 1000,
     .meaning = "Millimetres of the bars, rounded to whole pixels."},
    {.id = FieldId::kQuietZone,
     .name = "quiet_zone",
     .kind = FieldKind::kQuietZone,
     .member = &Request::quietZone,
     .types = kAll,
     .minimum = 0,
     .maximum = 100,
     .words = kQuietZoneWords,
     .defaultJson = R"("standard")",
     .meaning = "The light margin: what the standard asks for, or modules on every side."},
    {.id = FieldId::kRotate,
     .name = "rotate",
     .kind = FieldKind::kAngle,
     .member = &Request::rotate,
     .types = kAll,
     .minimum = kAngles.front(),
     .maximum = kAngles.back(),
     .defaultJson = "0",
     .meaning = "Degrees clockwise."},
    {.id = FieldId::kForeground,
     .name = "foreground",
     .kind = FieldKind::kColour,
     .member = &Request::foreground,
     .types = kAll,
     .defaultJson = R"("#000000")",
     .meaning = "The colour of bars, modules and text."},
    {.id = FieldId::kBackground,
     .name = "background",
     .kind = FieldKind::kColour,
     .member = &Request::background,
     .types = kAll,
     .words = kBackgroundWords,
     .defaultJson = R"("#ffffff")",
     .meaning = "The colour of the ground, quiet zone included."},
    {.id = FieldId::kShowText,
     .name = "show_text",
     .kind = FieldKind::kBoolean,
     .member = &Request::showText,
     .types = kBars,
     .defaultJson = "true",
     .meaning = "The human-readable text under the bars."},
    {.id = FieldId::kCaption,
     .name = "caption",
     .kind = FieldKind::kString,
     .member = &Request::caption,
     .types = kAll,
     .meaning = "A text of the caller's under the symbol, instead of the human-readable one."},
    {.id = FieldId::kTextScale,
     .name = "text_scale",
     .kind = FieldKind::kNumber,
     .member = &Request::textScale,
     .types = kAll,
     .minimum = 0.25,
     .maximum = 8,
     .defaultJson = "1",
     .meaning = "Multiplies the height of the text."},
    {.id = FieldId::kTextGap,
     .name = "text_gap",
     .kind = FieldKind::kNumber,
     .member = &Request::textGap,
     .types = kAll,
     .minimum = 0.25,
     .maximum = 8,
     .defaultJson = "1",
     .meaning = "Multiplies the gap between symbol and text."},
    {.id = FieldId::kEvenSpacing,
     .name = "even_spacing",
     .kind = FieldKind::kBoolean,
     .member = &Request::evenSpacing,
     .types = kBars,
     .defaultJson = "true",
     .meaning =
         "The characters of the text are spread across the bars; otherwise they are one centred line."},
    {.id = FieldId::kShowStartStop,
     .name = "show_start_stop",
     .kind = FieldKind::kBoolean,
     .member = &Request::showStartStop,
     .types = kFramed,
     .defaultJson = "true",
     .meaning = "Start and stop characters in the text."},
    {.id = FieldId::kExtendedGuard,
     .name = "extended_guard",
     .kind = FieldKind::kBoolean,
     .member = &Request::extendedGuard,
     .types = kRetail,
     .defaultJson = "true",
     .meaning = "Long guard bars with the digits grouped between them."},
    {.id = FieldId::kBarAdjust,
     .name = "bar_adjust",
     .kind = FieldKind::kInteger,
     .member = &Request::barAdjust,
     .types = kAll,
     .minimum = -20,
     .maximum = 20,
     .defaultJson = "0",
     .meaning = "Pixels added to every bar and taken from the space behind it."},
    {.id = FieldId::kCodeMode,
     .name = "code_mode",
     .kind = FieldKind::kKeyword,
     .member = &Request::codeMode,
     .types = SetOf(Type::kCode128),
     .words = kCodeModes,
     .defaultJson = R"("AUTO")",
     .meaning = "The code set."},
    {.id = FieldId::kStringEncoding,
     .name = "string_encoding",
     .kind = FieldKind::kKeyword,
     .member = &Request::stringEncoding,
     .types = kMatrix,
     .words = kStringEncodings,
     .defaultJson = R"("utf-8")",
     .meaning = "The character set in which the text is encoded."},
    {.id = FieldId::kQrVersion,
     .name = "qr_version",
     .kind = FieldKind::kInteger,
     .member = &Request::qrVersion,
     .types = SetOf(Type::kQr),
     .minimum = 1,
     .maximum = 40,
     .meaning = "The smallest version to use; without it, the smallest that holds the text."},
    {.id = FieldId::kErrorCorrectionLevel,
     .name = "error_correction_level",
     .kind = FieldKind::kKeyword,
     .member = &Request::errorCorrectionLevel,
     .types = SetOf(Type::kQr),
     .words = kCorrectionLevels,
     .defaultJson = R"("M")",
     .meaning = "How much damage the symbol bears."},
    {.id = FieldId::kEncodeMode,
     .name = "encode_mode",
     .kind = FieldKind::kKeyword,
     .member = &Request::encodeMode,
     .types = SetOf(Type::kQr),
     .words = kEncodeModes,
     .defaultJson = R"("BYTE")",
     .meaning = "NUMERIC encodes digits, every other word bytes."},
    {.id = FieldId::kCodeSize,
     .name = "code_size",
     .kind = FieldKind::kKeyword,
     .member = &Request::codeSize,
     .types = SetOf(Type::kDataMatrix),
     .words = kCodeSizes,
     .defaultJson = R"("AUTO")",
     .meaning = "Rows x columns; AUTO: the smallest square."},
    {.id = FieldId::kEncodeScheme,
     .name = "encode_scheme",
     .kind = FieldKind::kKeyword,
     .member = &Request::encodeScheme,
     .types = SetOf(Type::kDataMatrix),
     .words = kEncodeSchemes,
     .defaultJson = R"("ASCII")",
     .meaning = "The encodation scheme; AUTO: those that take the fewest codewords."},
    {.id = FieldId::kAspectRatio,
     .name = "aspect_ratio",
     .kind = FieldKind::kNumber,
     .member = &Request::aspectRatio,
     .types = SetOf(Type::kPdf417),
     .minimum = pdf417::kMinAspectRatio,
     .maximum = pdf417::kMaxAspectRatio,
     .defaultJson = "0.5",
     .meaning = "Height to width of the symbol, as nearly as rows and columns allow."},
    {.id = FieldId::kYHeight,
     .name = "y_height",
     .kind = FieldKind::kInteger,
     .member = &Request::yHeight,
     .types = SetOf(Type::kPdf417),
     .minimum = 1,
     .maximum = kMostYHeight,
     .defaultJson = "3",
     .meaning = "Height of a row in modules."},
    {.id = FieldId::kPairsPerRow,
     .name = "pairs_per_row",
     .kind = FieldKind::kInteger,
     .member = &Request::pairsPerRow,
     .types = SetOf(Type::kDataBarExpanded),
     .minimum = 1,
     .maximum = 10,
     .defaultJson = "2",
     .meaning = "Segment pairs in a row of the stacked form."},
    {.id = FieldId::kStrict,
     .name = "strict",
     .kind = FieldKind::kBoolean,
     .member = &Request::strict,
     .types = kAll,
     .defaultJson = "false",
     .meaning = "Warnings become errors."},
}};

constexpr std::array kPaymentForms = {Form::kPayment};
constexpr std::array kDataBar14Forms = {Form::kOmnidirectional, Form::kStacked,
                                        Form::kStackedOmnidirectional};
constexpr std::array kExpandedForms = {Form::kRow, Form::kStacked};

constexpr auto kExclusions = std::to_array<FieldPair>({{FieldId::kTextBase64, FieldId::kText},
                                                       {FieldId::kModule, FieldId::kWidth},
                                                       {FieldId::kModuleMm, FieldId::kWidth},
                                                       {FieldId::kHeightMm, FieldId::kWidth},
                                                       {FieldId::kModuleMm, FieldId::kModule},
                                                       {FieldId::kHeightMm, FieldId::kHeight}});
constexpr auto kNeeds = std::to_array<FieldPair>({{FieldId::kWidth, FieldId::kHeight},
                                                  {FieldId::kModuleMm, FieldId::kDpi},
                                                  {FieldId::kHeightMm, FieldId::kDpi}});

std::string Range(const FieldInfo& field) {
  return Line(" from ", field.minimum, " to ", field.maximum);
}

// What a field may hold, as the end of "must be ...".
std::string Allowed(const FieldInfo& field) {
  switch (field.kind) {
    case FieldKind::kString:
      return "a string in UTF-8";
    case FieldKind::kBase64:
      return "a string in Base64 (RFC 4648, with padding)";
    case FieldKind::kInteger:
      return "a whole number" + Range(field);
    case FieldKind::kNumber:
      return "a number" + Range(field);
    case FieldKind::kBoolean:
      return "true or false";
    case FieldKind::kKeyword:
      return QuotedList(field.words);
    case FieldKind::kColour: {
      std::vector<Word> words = {"#rgb", "#rrggbb", "#rrggbbaa"};
      words.insert(words.end(), field.words.begin(), field.words.end());
      return "a colour: " + QuotedList(words);
    }
    case FieldKind::kQuietZone:
      return QuotedList(field.words) + " or a whole number" + Range(field);
    case FieldKind::kAngle:
      break;
  }
  return Line(kAngles[0], ", ", kAngles[1], ", ", kAngles[2], " or ", kAngles[3]);
}

LabelError MustBe(const FieldInfo& field, std::string_view allowed) {
  return {ErrorCode::kBadValue, field.name, Line("The field \"", field.name, "\" must be ", allowed, ".")};
}

}  // namespace

std::span<const FieldInfo> AllFields() {
  return kFields;
}

const FieldInfo& InfoOf(FieldId id) {
  return kFields.at(static_cast<std::size_t>(id));
}

const FieldInfo* FindField(std::string_view name) {
  const auto* const found = std::find_if(kFields.begin(), kFields.end(),
                                         [name](const FieldInfo& field) { return field.name == name; });
  return found == kFields.end() ? nullptr : found;
}

bool IsGiven(const Request& request, const FieldInfo& field) {
  return std::visit([&request](auto member) { return (request.*member).has_value(); }, field.member);
}

std::span<const Form> FormsOf(Type type) {
  switch (type) {
    case Type::kGs1_128:
      return kPaymentForms;
    case Type::kDataBar14:
      return kDataBar14Forms;
    case Type::kDataBarExpanded:
      return kExpandedForms;
    default:
      return {};
  }
}

std::string_view WordOf(Form form) {
  return kFormWords.at(static_cast<std::size_t>(form));
}

std::string_view WordOf(Format format) {
  return kFormatWords.at(static_cast<std::size_t>(format));
}

std::optional<Form> DefaultForm(Type type) {
  // GS1-128 is a payment slip only when it is asked for.
  const std::span<const Form> forms = FormsOf(type);
  return forms.empty() || type == Type::kGs1_128 ? std::nullopt : std::optional(forms.front());
}

std::string DefaultJson(const FieldInfo& field, const TypeInfo& type) {
  if (field.id == FieldId::kModule) {
    return Line(type.defaultModule);
  }
  if (field.id == FieldId::kForm) {
    const std::optional<Form> form = DefaultForm(type.type);
    return form ? Line('"', WordOf(*form), '"') : "";
  }
  return std::string(field.defaultJson);
}

bool HasBarHeight(Type type) {
  return (kBars & SetOf(type)) != 0;
}

std::span<const FieldPair> Exclusions() {
  return kExclusions;
}

std::span<const FieldPair> Needs() {
  return kNeeds;
}

LabelError BadValue(const FieldInfo& field) {
  return MustBe(field, Allowed(field));
}

LabelError BadForm(const TypeInfo& type) {
  std::vector<Word> words;
  for (const Form form : FormsOf(type.type)) {
    words.push_back(WordOf(form));
  }
  return MustBe(InfoOf(FieldId::kForm), Line(QuotedList(words), " for ", type.name));
}

std::string QuotedList(std::span<const std::string_view> words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) {
      list += i + 1 == words.size() ? " or " : ", ";
    }
    AppendPieces(list, '"', words[i], '"');
  }
  return list;
}

}  // namespace barcode::label
