#include "mkbarcode/types.h"

#include <algorithm>
#include <array>

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

constexpr std::array kTypes = {
    TypeInfo{BARCODE_CODE39, "BARCODE_CODE39", "code39", "Code 39", "c39 3of9", Dimension::kLinear,
             kFramedOptions},
    TypeInfo{BARCODE_CODE93, "BARCODE_CODE93", "code93", "Code 93", "c93", Dimension::kLinear,
             kLinearOptions},
    TypeInfo{BARCODE_CODE128, "BARCODE_CODE128", "code128", "Code 128", "c128", Dimension::kLinear,
             kCode128Options},
    TypeInfo{BARCODE_GS1_128, "BARCODE_GS1_128", "gs1-128", "GS1-128", "ean128 ucc128", Dimension::kLinear,
             kLinearOptions},
    TypeInfo{BARCODE_NW7, "BARCODE_NW7", "nw7", "NW-7 (Codabar)", "codabar", Dimension::kLinear,
             kFramedOptions},
    TypeInfo{BARCODE_MATRIX_2OF5, "BARCODE_MATRIX_2OF5", "matrix2of5", "Matrix 2 of 5", "m2of5",
             Dimension::kLinear, kLinearOptions},
    TypeInfo{BARCODE_NEC_2OF5, "BARCODE_NEC_2OF5", "nec2of5", "NEC 2 of 5", "nec25", Dimension::kLinear,
             kLinearOptions},
    TypeInfo{BARCODE_JAN8, "BARCODE_JAN8", "jan8", "JAN-8 (EAN-8)", "ean8 gtin8", Dimension::kLinear,
             kRetailOptions},
    TypeInfo{BARCODE_JAN13, "BARCODE_JAN13", "jan13", "JAN-13 (EAN-13)", "ean13 jan ean gtin13",
             Dimension::kLinear, kRetailOptions},
    TypeInfo{BARCODE_UPC_A, "BARCODE_UPC_A", "upca", "UPC-A", "upc gtin12", Dimension::kLinear,
             kRetailOptions},
    TypeInfo{BARCODE_UPC_E, "BARCODE_UPC_E", "upce", "UPC-E", "", Dimension::kLinear, kRetailOptions},
    TypeInfo{BARCODE_ITF, "BARCODE_ITF", "itf", "ITF (Interleaved 2 of 5)", "i2of5 interleaved2of5 itf14",
             Dimension::kLinear, kLinearOptions},
    TypeInfo{BARCODE_GS1_DATABAR_14, "BARCODE_GS1_DATABAR_14", "databar", "GS1 DataBar Omnidirectional",
             "databar14 gs1databar gs1databar14 databaromnidirectional rss14", Dimension::kLinear,
             kDataBar14Options},
    TypeInfo{BARCODE_GS1_DATABAR_LIMITED, "BARCODE_GS1_DATABAR_LIMITED", "databar-limited",
             "GS1 DataBar Limited", "gs1databarlimited rsslimited", Dimension::kLinear, kLinearOptions},
    TypeInfo{BARCODE_GS1_DATABAR_EXPANDED, "BARCODE_GS1_DATABAR_EXPANDED", "databar-expanded",
             "GS1 DataBar Expanded", "gs1databarexpanded rssexpanded", Dimension::kLinear,
             kDataBarExpandedOptions},
    TypeInfo{BARCODE_YUBIN_CUSTOMER, "BARCODE_YUBIN_CUSTOMER", "yubin", "Japanese postal customer barcode",
             "yubincustomer jppost japanpost customer kasutama", Dimension::kLinear, kLinearOptions},
    TypeInfo{BARCODE_QR, "BARCODE_QR", "qr", "QR Code", "qrcode", Dimension::kTwoDimensional, kQrOptions},
    TypeInfo{BARCODE_DATAMATRIX, "BARCODE_DATAMATRIX", "datamatrix", "Data Matrix (ECC 200)", "dm ecc200",
             Dimension::kTwoDimensional, kDataMatrixOptions},
    TypeInfo{BARCODE_PDF417, "BARCODE_PDF417", "pdf417", "PDF417", "", Dimension::kTwoDimensional,
             kPdf417Options},
};

constexpr bool NumbersAreIndices() {
  for (std::size_t i = 0; i < kTypes.size(); ++i) {
    if (kTypes[i].number != static_cast<int>(i)) {
      return false;
    }
  }
  return true;
}
static_assert(NumbersAreIndices());

// The form in which names are compared: lower case, letters and digits without what separates them.
std::string Folded(std::string_view name) {
  std::string folded;
  for (const char c : name) {
    if (c == '-' || c == '_' || c == ' ') {
      continue;
    }
    folded += (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return folded;
}

bool HasAlias(const TypeInfo& type, std::string_view folded) {
  std::string_view rest = type.aliases;
  while (!rest.empty()) {
    const std::string_view alias = rest.substr(0, rest.find(' '));
    if (alias == folded) {
      return true;
    }
    rest.remove_prefix(std::min(rest.size(), alias.size() + 1));
  }
  return false;
}

}  // namespace

std::span<const TypeInfo> AllTypes() {
  return kTypes;
}

const TypeInfo* FindType(std::string_view name) {
  const std::string folded = Folded(name);
  if (folded.empty()) {
    return nullptr;
  }
  const auto found = std::find_if(kTypes.begin(), kTypes.end(), [&](const TypeInfo& type) {
    return Folded(type.name) == folded || HasAlias(type, folded);
  });
  return found == kTypes.end() ? nullptr : &*found;
}

const TypeInfo& TypeOf(BarcodeSymbology number) {
  return kTypes.at(static_cast<std::size_t>(number));
}

bool IsOffered(const TypeInfo& type) {
  const BarcodeHandle handle = barcode_create(type.number);
  barcode_destroy(handle);
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
