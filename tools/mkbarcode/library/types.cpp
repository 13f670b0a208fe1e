#include "mkbarcode/library/types.h"

#include <array>

#include "label/types.h"
#include "mkbarcode/library/shared_library.h"

namespace barcode::tool {
namespace {

template <class... Ids>
constexpr OptionSet Options(Ids... ids) {
  return (SetOf(ids) | ...);
}

constexpr OptionSet kEveryOptions =
    Options(OptionId::kForegroundColor, OptionId::kBackgroundColor, OptionId::kFitWidth,
            OptionId::kPxAdjustBlack, OptionId::kPxAdjustWhite);
constexpr OptionSet kLinearOptions = kEveryOptions | Options(OptionId::kShowText, OptionId::kTextEvenSpacing,
                                                             OptionId::kTextFontScale, OptionId::kTextGap);
constexpr OptionSet kFramedOptions = kLinearOptions | Options(OptionId::kShowStartStop);
constexpr OptionSet kRetailOptions = kLinearOptions | Options(OptionId::kExtendedGuard);
constexpr OptionSet kCode128Options = kLinearOptions | Options(OptionId::kCodeMode);
constexpr OptionSet kDataBar14Options = kLinearOptions | Options(OptionId::kSymbolType14);
constexpr OptionSet kDataBarExpandedOptions =
    kLinearOptions | Options(OptionId::kSymbolTypeExp, OptionId::kNoOfColumns);
constexpr OptionSet kMatrixOptions = kEveryOptions | Options(OptionId::kStringEncoding);
constexpr OptionSet kQrOptions =
    kMatrixOptions | Options(OptionId::kVersion, OptionId::kErrorCorrectionLevel, OptionId::kEncodeMode);
constexpr OptionSet kDataMatrixOptions =
    kMatrixOptions | Options(OptionId::kCodeSize, OptionId::kEncodeScheme);
constexpr OptionSet kPdf417Options =
    kMatrixOptions | Options(OptionId::kColumns, OptionId::kRows, OptionId::kErrorLevel,
                             OptionId::kAspectRatio, OptionId::kYHeight);

// Names, aliases and titles are those of labels.
TypeInfo Row(BarcodeSymbology number, std::string_view constant, OptionSet options) {
  const label::TypeInfo& known = label::InfoOf(static_cast<label::Type>(number));
  return {number,      constant,      known.name,
          known.title, known.aliases, known.twoDimensional ? Dimension::kTwoDimensional : Dimension::kLinear,
          options};
}

// In the order of their numbers.
const std::array kTypes = {
    Row(BARCODE_CODE39, "BARCODE_CODE39", kFramedOptions),
    Row(BARCODE_CODE93, "BARCODE_CODE93", kLinearOptions),
    Row(BARCODE_CODE128, "BARCODE_CODE128", kCode128Options),
    Row(BARCODE_GS1_128, "BARCODE_GS1_128", kLinearOptions),
    Row(BARCODE_NW7, "BARCODE_NW7", kFramedOptions),
    Row(BARCODE_MATRIX_2OF5, "BARCODE_MATRIX_2OF5", kLinearOptions),
    Row(BARCODE_NEC_2OF5, "BARCODE_NEC_2OF5", kLinearOptions),
    Row(BARCODE_JAN8, "BARCODE_JAN8", kRetailOptions),
    Row(BARCODE_JAN13, "BARCODE_JAN13", kRetailOptions),
    Row(BARCODE_UPC_A, "BARCODE_UPC_A", kRetailOptions),
    Row(BARCODE_UPC_E, "BARCODE_UPC_E", kRetailOptions),
    Row(BARCODE_ITF, "BARCODE_ITF", kLinearOptions),
    Row(BARCODE_GS1_DATABAR_14, "BARCODE_GS1_DATABAR_14", kDataBar14Options),
    Row(BARCODE_GS1_DATABAR_LIMITED, "BARCODE_GS1_DATABAR_LIMITED", kLinearOptions),
    Row(BARCODE_GS1_DATABAR_EXPANDED, "BARCODE_GS1_DATABAR_EXPANDED", kDataBarExpandedOptions),
    Row(BARCODE_YUBIN_CUSTOMER, "BARCODE_YUBIN_CUSTOMER", kLinearOptions),
    Row(BARCODE_QR, "BARCODE_QR", kQrOptions),
    Row(BARCODE_DATAMATRIX, "BARCODE_DATAMATRIX", kDataMatrixOptions),
    Row(BARCODE_PDF417, "BARCODE_PDF417", kPdf417Options),
};
static_assert(kTypes.size() == label::kTypeCount);

}  // namespace

std::span<const TypeInfo> AllTypes() {
  return kTypes;
}

const TypeInfo* FindType(std::string_view name) {
  const label::TypeInfo* const found = label::FindType(name);
  return found == nullptr ? nullptr : &kTypes.at(static_cast<std::size_t>(found->type));
}

const TypeInfo& TypeOf(BarcodeSymbology number) {
  return kTypes.at(static_cast<std::size_t>(number));
}

bool IsOffered(const TypeInfo& type) {
  const LibraryFunction<decltype(barcode_create)> create = {"barcode_create"};
  const LibraryFunction<decltype(barcode_destroy)> destroy = {"barcode_destroy"};
  const BarcodeHandle handle = create(type.number);
  destroy(handle);
  return handle != nullptr;
}

std::string NamesOfTypesServing(OptionId id) {
  std::string names;
  for (const TypeInfo& type : kTypes) {
    if (!type.Serves(id)) {
      continue;
    }
    if (!names.empty()) {
      names += ", ";
    }
    names += type.name;
  }
  return names;
}

}  // namespace barcode::tool
