#include "mkbarcode/gallery/library_samples.h"

#include <string_view>
#include <utility>

namespace barcode::tool {
namespace {

// One sample as it is written down here.
struct Row {
  BarcodeSymbology type;
  std::string_view caption;
  std::string_view text;
  std::string_view size;
  std::vector<std::pair<OptionId, std::string_view>> settings = {};
  Form form = Form::kPlain;
};

using enum OptionId;

std::vector<Row> LinearRows() {
  return {
      {BARCODE_CODE39, "Plain", "ABC-123", "300x100"},
      {BARCODE_CODE39,
       "Fitted to the box, no start and stop characters in the text",
       "LOT 42/7",
       "400x100",
       {{kFitWidth, "on"}, {kShowStartStop, "off"}}},
      {BARCODE_CODE39,
       "One centred line of smaller text, wider gap",
       "SHELF+12",
       "360x120",
       {{kTextEvenSpacing, "off"}, {kTextFontScale, "0.7"}, {kTextGap, "2"}}},
      {BARCODE_CODE39,
       "No text, colours, bars one pixel thinner and spaces one pixel wider",
       "NO TEXT",
       "460x80",
       {{kForegroundColor, "#12305c"},
        {kBackgroundColor, "#fdf6e3"},
        {kPxAdjustBlack, "-1"},
        {kPxAdjustWhite, "1"},
        {kShowText, "off"}}},

      {BARCODE_CODE93, "Plain", "CODE-93", "300x100"},
      {BARCODE_CODE93,
       "Fitted to the box, centred text",
       "$12.50 / KG",
       "400x120",
       {{kFitWidth, "on"}, {kTextEvenSpacing, "off"}}},
      {BARCODE_CODE93, "Bars only", "BARS ONLY", "360x60", {{kShowText, "off"}}},

      {BARCODE_CODE128, "Code sets chosen for the fewest symbol characters", "Pallet 771204", "420x100"},
      {BARCODE_CODE128, "Code set B", "libbarcode 1.0", "440x100", {{kCodeMode, "B"}}},
      {BARCODE_CODE128, "Code set C, pairs of digits", "20261231004711", "300x100", {{kCodeMode, "C"}}},
      {BARCODE_CODE128,
       "Transparent background, centred text",
       "clear 2026",
       "360x110",
       {{kForegroundColor, "#14532d"}, {kBackgroundColor, "#ffffff00"}, {kTextEvenSpacing, "off"}}},

      {BARCODE_GS1_128, "GTIN and batch", "{FNC1}0104912345678904{FNC1}10ABC", "500x100"},
      {BARCODE_GS1_128,
       "Expiry date of fixed length: {AI} marks the next identifier, no separator",
       "{FNC1}0104912345678904{AI}17261231{AI}10LOT42",
       "620x110",
       {{kTextEvenSpacing, "off"}}},
      {BARCODE_GS1_128,
       "Payment form, 43 digits completed with their check digit",
       "9191234512345678901234567890122611300012300",
       "600x160",
       {{kTextEvenSpacing, "off"}},
       Form::kConvenience},
      {BARCODE_GS1_128,
       "Payment form, 44 digits, evenly spaced text",
       "{FNC1}91912345123456789012345678901226113000123004",
       "600x160",
       {},
       Form::kConvenience},

      {BARCODE_NW7, "Start and stop characters given", "A123456B", "320x100"},
      {BARCODE_NW7, "Start and stop characters added by the library", "123-456", "300x100"},
      {BARCODE_NW7,
       "Start and stop characters kept out of the text",
       "A40156B",
       "300x100",
       {{kShowStartStop, "off"}}},

      {BARCODE_MATRIX_2OF5, "Plain", "0124789", "300x100"},
      {BARCODE_MATRIX_2OF5,
       "Fitted to the box, centred text",
       "8710029",
       "400x90",
       {{kFitWidth, "on"}, {kTextEvenSpacing, "off"}}},

      {BARCODE_NEC_2OF5, "Plain", "1204978", "300x100"},
      {BARCODE_NEC_2OF5, "Bars only", "42", "200x60", {{kShowText, "off"}}},

      {BARCODE_JAN8, "Guard bars, check digit computed", "4901234", "220x110"},
      {BARCODE_JAN8, "Equal bars, the text in one line", "4901234", "220x110", {{kExtendedGuard, "off"}}},
      {BARCODE_JAN8, "Digit groups centred", "9638507", "290x130", {{kTextEvenSpacing, "off"}}},

      {BARCODE_JAN13, "Guard bars, check digit computed", "490123456789", "320x120"},
      {BARCODE_JAN13, "All thirteen digits given", "4901234567894", "420x160"},
      {BARCODE_JAN13,
       "Equal bars, the text in one line",
       "490123456789",
       "300x110",
       {{kExtendedGuard, "off"}}},
      {BARCODE_JAN13,
       "Fitted to the box, digit groups centred",
       "978020137962",
       "400x120",
       {{kFitWidth, "on"}, {kTextEvenSpacing, "off"}}},
      {BARCODE_JAN13, "No text", "490123456789", "290x80", {{kShowText, "off"}}},

      {BARCODE_UPC_A, "Guard bars, check digit computed", "01234567890", "340x120"},
      {BARCODE_UPC_A,
       "Equal bars, the text in one line",
       "03600029145",
       "300x110",
       {{kExtendedGuard, "off"}}},
      {BARCODE_UPC_A, "Digit groups centred", "614141000036", "440x150", {{kTextEvenSpacing, "off"}}},

      {BARCODE_UPC_E, "Six digits, number system 0", "123456", "210x110"},
      {BARCODE_UPC_E,
       "Seven digits, check digit computed",
       "0425261",
       "280x130",
       {{kTextEvenSpacing, "off"}}},
      {BARCODE_UPC_E, "Equal bars, the text in one line", "01234565", "210x110", {{kExtendedGuard, "off"}}},

      {BARCODE_ITF, "Fourteen digits", "15412345678908", "300x100"},
      {BARCODE_ITF, "An odd number of digits gets a zero in front", "12345", "300x100"},
      {BARCODE_ITF,
       "Fitted to the box, larger text",
       "00123456",
       "400x140",
       {{kFitWidth, "on"}, {kTextFontScale, "1.3"}}},
  };
}

std::vector<Row> Gs1AndPostalRows() {
  return {
      {BARCODE_GS1_DATABAR_14, "One row", "0491234567890", "300x100"},
      {BARCODE_GS1_DATABAR_14,
       "Stacked",
       "0491234567890",
       "200x130",
       {{kTextFontScale, "0.6"}, {kSymbolType14, "STACKED"}}},
      {BARCODE_GS1_DATABAR_14,
       "Stacked omnidirectional",
       "0491234567890",
       "200x170",
       {{kTextFontScale, "0.45"}, {kSymbolType14, "STACKED_OMNIDIRECTIONAL"}}},
      {BARCODE_GS1_DATABAR_14, "One row, no text", "2001234567890", "200x60", {{kShowText, "off"}}},
      {BARCODE_GS1_DATABAR_14,
       "One row in white on black: the colours that scanners expect",
       "2001234567890",
       "288x100",
       {{kForegroundColor, "#ffffff"}, {kBackgroundColor, "#000000"}}},

      {BARCODE_GS1_DATABAR_LIMITED, "Thirteen digits", "1501234567890", "300x100"},
      {BARCODE_GS1_DATABAR_LIMITED,
       "Shorter input is padded with zeros",
       "12345678",
       "300x100",
       {{kTextEvenSpacing, "off"}}},

      {BARCODE_GS1_DATABAR_EXPANDED, "GTIN and weight", "01900123456789083103001750", "460x100"},
      {BARCODE_GS1_DATABAR_EXPANDED,
       "Stacked, two segment pairs per row",
       "01049123456789041726123110LOT42",
       "320x200",
       {{kTextEvenSpacing, "off"}, {kTextFontScale, "0.45"}},
       Form::kStacked},
      {BARCODE_GS1_DATABAR_EXPANDED,
       "Stacked, three segment pairs per row",
       "01049123456789041726123110LOT42",
       "460x160",
       {{kTextEvenSpacing, "off"},
        {kTextFontScale, "0.6"},
        {kSymbolTypeExp, "STACKED"},
        {kNoOfColumns, "3"}}},

      {BARCODE_YUBIN_CUSTOMER, "By the height of its long bars", "26300233-20-12", "24"},
      {BARCODE_YUBIN_CUSTOMER, "Letters in the address", "15400233-16-4-A205", "18"},
      {BARCODE_YUBIN_CUSTOMER,
       "With a width, which is ignored",
       "10000131-3-2-503",
       "400x30",
       {{kForegroundColor, "32,32,96"}}},
  };
}

std::vector<Row> TwoDimensionalRows() {
  return {
      {BARCODE_QR, "Plain, error correction M", "https://example.com/", "200"},
      {BARCODE_QR, "Error correction L", "https://example.com/", "200", {{kErrorCorrectionLevel, "L"}}},
      {BARCODE_QR, "Error correction Q", "https://example.com/", "203", {{kErrorCorrectionLevel, "Q"}}},
      {BARCODE_QR, "Error correction H", "https://example.com/", "203", {{kErrorCorrectionLevel, "H"}}},
      {BARCODE_QR, "Digits in numeric mode", "0123456789012345", "189", {{kEncodeMode, "NUMERIC"}}},
      {BARCODE_QR, "Version 7 at least", "Version 7", "225", {{kVersion, "7"}}},
      {BARCODE_QR,
       "Shift-JIS bytes",
       "\u3053\u3093\u306B\u3061\u306F\u4E16\u754C",
       "189",
       {{kStringEncoding, "shift-jis"}}},
      {BARCODE_QR,
       "Colours, modules one pixel smaller",
       "Colour & style",
       "210",
       {{kForegroundColor, "#7a1f3d"}, {kBackgroundColor, "#fff7ed"}, {kPxAdjustBlack, "-1"}}},

      {BARCODE_DATAMATRIX, "Smallest square", "123456", "160"},
      {BARCODE_DATAMATRIX, "Rectangle 8 x 18", "123456", "234x104", {{kCodeSize, "8x18"}}},
      {BARCODE_DATAMATRIX, "Rectangle 16 x 48", "Item 0042, batch A-7", "384x128", {{kCodeSize, "16x48"}}},
      {BARCODE_DATAMATRIX,
       "Scheme chosen for the fewest codewords",
       "ABCDEFGHIJ0123456789klmnop",
       "220",
       {{kEncodeScheme, "AUTO"}}},
      {BARCODE_DATAMATRIX, "C40", "ABCDEF123456", "180", {{kEncodeScheme, "C40"}}},
      {BARCODE_DATAMATRIX, "Text", "lower case text", "180", {{kEncodeScheme, "TEXT"}}},
      {BARCODE_DATAMATRIX, "X12", "ABC>123*XYZ9", "180", {{kEncodeScheme, "X12"}}},
      {BARCODE_DATAMATRIX, "EDIFACT", "EDIFACT 2026", "180", {{kEncodeScheme, "EDIFACT"}}},
      {BARCODE_DATAMATRIX,
       "Base 256 over Shift-JIS bytes",
       "\u6771\u4EAC\u90FD",
       "180",
       {{kStringEncoding, "shift-jis"}, {kEncodeScheme, "BASE256"}}},
      {BARCODE_DATAMATRIX,
       "Two by two regions, 36 x 36",
       "A symbol larger than its text needs",
       "216",
       {{kCodeSize, "36x36"}}},

      {BARCODE_PDF417, "Rectangle", "PDF417 holds text, numbers and bytes", "420x140"},
      {BARCODE_PDF417, "One size given twice: the width follows the symbol",
       "PDF417 holds text, numbers and bytes", "150"},
      {BARCODE_PDF417,
       "Tall: aspect ratio 2",
       "PDF417 holds text, numbers and bytes",
       "320x240",
       {{kAspectRatio, "2"}}},
      {BARCODE_PDF417,
       "A long number, fitted to the box",
       "31415926535897932384626433832795",
       "420x120",
       {{kFitWidth, "on"}}},
      {BARCODE_PDF417,
       "Row height 5, Shift-JIS bytes",
       "\u90F5\u4FBF\u756A\u53F7 100-0001",
       "150",
       {{kStringEncoding, "shift-jis"}, {kYHeight, "5"}}},
  };
}

LibrarySample SampleOf(const Row& row) {
  LibrarySample sample;
  sample.caption = row.caption;
  sample.request.type = &TypeOf(row.type);
  sample.request.text = row.text;
  sample.request.size = ParseSize(row.size).value();
  sample.request.form = row.form;
  for (const auto& [option, value] : row.settings) {
    sample.request.settings.push_back(MakeSetting(option, value));
  }
  return sample;
}

}  // namespace

std::vector<LibrarySample> LibrarySamples() {
  std::vector<LibrarySample> samples;
  for (const std::vector<Row>& rows : {LinearRows(), Gs1AndPostalRows(), TwoDimensionalRows()}) {
    for (const Row& row : rows) {
      samples.push_back(SampleOf(row));
    }
  }
  return samples;
}

}  // namespace barcode::tool
