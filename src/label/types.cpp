#include "label/types.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace barcode::label {
namespace {

constexpr QuietZone Sides(int left, int right) {
  return {.left = left, .right = right, .top = 0, .bottom = 0};
}

constexpr QuietZone AllRound(int modules) {
  return {.left = modules, .right = modules, .top = modules, .bottom = modules};
}

constexpr int kLinearModule = 2;
constexpr int kMatrixModule = 4;

// X-dimensions in millimetres. Where a symbology's own standard leaves the limit to its application, it is
// the smallest that symbols for general scanners are made with: AIM's 7.5 thousandths of an inch.
constexpr double kSmallestGeneral = 0.191;
constexpr double kSmallestRetail = 0.264;  // GS1 General Specifications: magnification 0.8
constexpr double kSmallestGs1 = 0.170;     // the same, for small items
constexpr double kSmallestMatrix = 0.254;  // the same, for GS1 two-dimensional symbols
constexpr double kSmallestPostal = 0.48;   // bars of 0.6 mm at 10 points, from 8 points on

// GS1 General Specifications: heights in millimetres at magnification 1, by its X-dimension.
constexpr double kNominalX = 0.33;
constexpr double kEanHeight = 69.24;  // 22.85 mm
constexpr double kEan8Height = 55.24;
static_assert(kEanHeight * kNominalX > 22.845 && kEanHeight * kNominalX < 22.855);
static_assert(kEan8Height * kNominalX > 18.225 && kEan8Height * kNominalX < 18.235);
constexpr double kByWidth = 0;

constexpr Readers kEveryReader = {.zxing = "yes", .zbar = "yes", .zxingWasm = "yes"};
constexpr Readers kNoReader = {.zxing = "no", .zbar = "no", .zxingWasm = "no"};

constexpr auto kTypes = std::to_array<TypeInfo>({
    {.type = Type::kCode39,
     .name = "code39",
     .title = "Code 39",
     .aliases = "c39 3of9",
     .twoDimensional = false,
     .standard = "ISO/IEC 16388",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kCode93,
     .name = "code93",
     .title = "Code 93",
     .aliases = "c93",
     .twoDimensional = false,
     .standard = "AIM BC5 (USS Code 93)",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kCode128,
     .name = "code128",
     .title = "Code 128",
     .aliases = "c128",
     .twoDimensional = false,
     .standard = "ISO/IEC 15417",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kGs1_128,
     .name = "gs1-128",
     .title = "GS1-128",
     .aliases = "ean128 ucc128",
     .twoDimensional = false,
     .standard = "ISO/IEC 15417, GS1 General Specifications",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGs1,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kNw7,
     .name = "nw7",
     .title = "NW-7 (Codabar)",
     .aliases = "codabar",
     .twoDimensional = false,
     .standard = "JIS X 0506, EN 798",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = {.zxing = "Two characters or more between start and stop.",
                 .zbar = "Two characters or more between start and stop.",
                 .zxingWasm = "Two characters or more between start and stop."}},
    {.type = Type::kMatrix2of5,
     .name = "matrix2of5",
     .title = "Matrix 2 of 5",
     .aliases = "m2of5",
     .twoDimensional = false,
     .standard = "Matrix 2 of 5, as its makers published it",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = false,
     .readers = kNoReader},
    {.type = Type::kNec2of5,
     .name = "nec2of5",
     .title = "NEC 2 of 5",
     .aliases = "nec25",
     .twoDimensional = false,
     .standard = "NEC (COOP) 2 of 5, as its makers published it",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = false,
     .readers = kNoReader},
    {.type = Type::kJan8,
     .name = "jan8",
     .title = "JAN-8 (EAN-8)",
     .aliases = "ean8 gtin8",
     .twoDimensional = false,
     .standard = "ISO/IEC 15420, GS1 General Specifications",
     .quietZone = Sides(7, 7),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestRetail,
     .standardHeight = kEan8Height,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kJan13,
     .name = "jan13",
     .title = "JAN-13 (EAN-13)",
     .aliases = "ean13 jan ean gtin13",
     .twoDimensional = false,
     .standard = "ISO/IEC 15420, GS1 General Specifications",
     .quietZone = Sides(11, 7),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestRetail,
     .standardHeight = kEanHeight,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kUpcA,
     .name = "upca",
     .title = "UPC-A",
     .aliases = "upc gtin12",
     .twoDimensional = false,
     .standard = "ISO/IEC 15420, GS1 General Specifications",
     .quietZone = Sides(9, 9),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestRetail,
     .standardHeight = kEanHeight,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kUpcE,
     .name = "upce",
     .title = "UPC-E",
     .aliases = "",
     .twoDimensional = false,
     .standard = "ISO/IEC 15420, GS1 General Specifications",
     .quietZone = Sides(9, 7),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestRetail,
     .standardHeight = kEanHeight,
     .anyReader = true,
     .readers = {.zxing = "yes", .zbar = "Number system 0 only.", .zxingWasm = "yes"}},
    {.type = Type::kItf,
     .name = "itf",
     .title = "ITF (Interleaved 2 of 5)",
     .aliases = "i2of5 interleaved2of5 itf14",
     .twoDimensional = false,
     .standard = "ISO/IEC 16390",
     .quietZone = Sides(10, 10),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = {.zxing = "Six digits or more.",
                 .zbar = "Six digits or more.",
                 .zxingWasm = "Four digits or more."}},
    {.type = Type::kDataBar14,
     .name = "databar",
     .title = "GS1 DataBar Omnidirectional",
     .aliases = "databar14 gs1databar gs1databar14 databaromnidirectional rss14",
     .twoDimensional = false,
     .standard = "ISO/IEC 24724, GS1 General Specifications",
     .quietZone = Sides(1, 1),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGs1,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = {.zxing =
                     "Of the stacked forms a single symbol in a picture; looking for several, version 1.4 "
                     "aborts on them.",
                 .zbar = "yes",
                 .zxingWasm = "yes"}},
    {.type = Type::kDataBarLimited,
     .name = "databar-limited",
     .title = "GS1 DataBar Limited",
     .aliases = "gs1databarlimited rsslimited",
     .twoDimensional = false,
     .standard = "ISO/IEC 24724, GS1 General Specifications",
     .quietZone = Sides(1, 5),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGs1,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = {.zxing = "no", .zbar = "no", .zxingWasm = "yes"}},
    {.type = Type::kDataBarExpanded,
     .name = "databar-expanded",
     .title = "GS1 DataBar Expanded",
     .aliases = "gs1databarexpanded rssexpanded",
     .twoDimensional = false,
     .standard = "ISO/IEC 24724, GS1 General Specifications",
     .quietZone = Sides(1, 1),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGs1,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers =
         {.zxing =
              "Of the stacked form a single symbol in a picture; looking for several, version 1.4 aborts on "
              "it. Not a GTIN alone, and not application identifiers that are younger than the reader.",
          .zbar = "Part of the stacked symbols only; what stands behind an FNC1 is misread.",
          .zxingWasm = "yes"}},
    {.type = Type::kYubinCustomer,
     .name = "yubin",
     .title = "Japanese postal customer barcode",
     .aliases = "yubincustomer jppost japanpost customer kasutama",
     .twoDimensional = false,
     .standard = "Japan Post, customer barcode",
     .quietZone = AllRound(4),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestPostal,
     .standardHeight = kByWidth,
     .anyReader = false,
     .readers = kNoReader},
    {.type = Type::kQr,
     .name = "qr",
     .title = "QR Code",
     .aliases = "qrcode",
     .twoDimensional = true,
     .standard = "ISO/IEC 18004, GS1 General Specifications",
     .quietZone = AllRound(4),
     .defaultModule = kMatrixModule,
     .smallestModuleMm = kSmallestMatrix,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = kEveryReader},
    {.type = Type::kDataMatrix,
     .name = "datamatrix",
     .title = "Data Matrix (ECC 200)",
     .aliases = "dm ecc200",
     .twoDimensional = true,
     .standard = "ISO/IEC 16022, GS1 General Specifications",
     .quietZone = AllRound(1),
     .defaultModule = kMatrixModule,
     .smallestModuleMm = kSmallestMatrix,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = {.zxing = "Not small symbols away from the middle of the picture.",
                 .zbar = "no",
                 .zxingWasm = "yes"}},
    {.type = Type::kPdf417,
     .name = "pdf417",
     .title = "PDF417",
     .aliases = "",
     .twoDimensional = true,
     .standard = "ISO/IEC 15438",
     .quietZone = AllRound(2),
     .defaultModule = kLinearModule,
     .smallestModuleMm = kSmallestGeneral,
     .standardHeight = kByWidth,
     .anyReader = true,
     .readers = {.zxing = "Not all symbols that are turned.", .zbar = "no", .zxingWasm = "yes"}},
});

constexpr bool TypesAreIndices() {
  for (std::size_t i = 0; i < kTypes.size(); ++i) {
    if (kTypes[i].type != static_cast<Type>(i)) {
      return false;
    }
  }
  return kTypes.size() == kTypeCount;
}
static_assert(TypesAreIndices());

constexpr bool Separates(char c) {
  return c == '-' || c == '_' || c == ' ';
}

constexpr char ToLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Whether two names are the same but for case and separators.
constexpr bool SameName(std::string_view a, std::string_view b) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (true) {
    while (i < a.size() && Separates(a[i])) {
      ++i;
    }
    while (j < b.size() && Separates(b[j])) {
      ++j;
    }
    if (i == a.size() || j == b.size()) {
      return i == a.size() && j == b.size();
    }
    if (ToLower(a[i++]) != ToLower(b[j++])) {
      return false;
    }
  }
}

bool HasName(const TypeInfo& type, std::string_view name) {
  if (SameName(type.name, name)) {
    return true;
  }
  std::string_view rest = type.aliases;
  while (!rest.empty()) {
    const std::string_view alias = rest.substr(0, rest.find(' '));
    if (SameName(alias, name)) {
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

const TypeInfo& InfoOf(Type type) {
  return kTypes.at(static_cast<std::size_t>(type));
}

const TypeInfo* FindType(std::string_view name) {
  if (std::all_of(name.begin(), name.end(), Separates)) {
    return nullptr;
  }
  const auto found = std::find_if(kTypes.begin(), kTypes.end(),
                                  [name](const TypeInfo& type) { return HasName(type, name); });
  return found == kTypes.end() ? nullptr : &*found;
}

}  // namespace barcode::label
