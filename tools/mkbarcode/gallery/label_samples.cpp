#include "mkbarcode/gallery/label_samples.h"

#include <string_view>

#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// One sample as it is written down here.
struct Row {
  BarcodeSymbology type;
  std::string_view caption;
  std::string_view members;
  bool isRefused = false;
};

constexpr bool kRefused = true;

std::vector<Row> LinearRows() {
  return {
      {BARCODE_CODE39, "Plain", R"("text": "ABC-123")"},
      {BARCODE_CODE39, "A caption instead of the text",
       R"("text": "LOT-42", "caption": "Shelf 3, on the left")"},
      {BARCODE_CODE39, "One centred line without the start and stop characters",
       R"("text": "LOT 42/7", "even_spacing": false, "show_start_stop": false)"},
      {BARCODE_CODE39, "Turned by 90 degrees", R"("text": "TURNED", "rotate": 90)"},
      {BARCODE_CODE39, "A box: the largest whole module that fits",
       R"("text": "BOX 42", "width": 480, "height": 160)"},
      {BARCODE_CODE39, "Refused: a character that Code 39 lacks", R"("text": "A_B")", kRefused},
      {BARCODE_CODE39, "Refused: a box that is too small, and the size that would do",
       R"("text": "ABC-123", "width": 120, "height": 60)", kRefused},

      {BARCODE_CODE93, "Plain", R"("text": "CODE-93")"},
      {BARCODE_CODE93, "A shift character and its letter, which readers take for a small letter",
       R"("text": "10 M!L", "caption": "10 Ml")"},
      {BARCODE_CODE93, "A physical size: module and height in millimetres at 300 dpi",
       R"("text": "$12.50 / KG", "dpi": 300, "module_mm": 0.25, "height_mm": 12)"},

      {BARCODE_CODE128, "Plain", R"("text": "Pallet 771204")"},
      {BARCODE_CODE128, "Code set C, larger modules",
       R"("text": "20261231004711", "code_mode": "C", "module": 3)"},
      {BARCODE_CODE128, "Colours",
       R"("text": "Colour 42", "foreground": "#12305c", "background": "#fdf6e3")"},
      {BARCODE_CODE128, "Transparent background, twice the text and its gap",
       R"("text": "clear", "background": "transparent", "text_scale": 2, "text_gap": 2)"},
      {BARCODE_CODE128, "A text that does not fit is set smaller",
       R"("text": "A123456789B123456789C123456789", "text_scale": 3)"},
      {BARCODE_CODE128, "A caption that does not fit is left out",
       R"("text": "1", "caption": "A caption far longer than the symbol over it, which leaves it no room")"},
      {BARCODE_CODE128, "Refused: the same when warnings are errors",
       R"("text": "1", "caption": "A caption far longer than the symbol over it, which leaves it no room", "strict": true)",
       kRefused},
      {BARCODE_CODE128, "Refused: code set C and an odd number of digits",
       R"("text": "123", "code_mode": "C")", kRefused},

      {BARCODE_GS1_128, "An element string as people write it",
       R"("text": "(01)04912345678904(17)261231(10)LOT42")"},
      {BARCODE_GS1_128, "A missing partner is a warning", R"("text": "(02)04912345678904")"},
      {BARCODE_GS1_128, "The payment form, completed with its check digit",
       R"("form": "payment", "text": "9191234512345678901234567890122611300012300")"},
      {BARCODE_GS1_128, "Refused: a month that does not exist", R"("text": "(01)04912345678904(17)261331")",
       kRefused},
      {BARCODE_GS1_128, "Refused: a field of the wrong length", R"("text": "(01)0491234567890")", kRefused},

      {BARCODE_NW7, "Start and stop characters given", R"("text": "A123456B")"},
      {BARCODE_NW7, "Start and stop characters added, and kept out of the text",
       R"("text": "123-456", "show_start_stop": false)"},

      {BARCODE_MATRIX_2OF5, "Plain", R"("text": "0124789")"},
      {BARCODE_MATRIX_2OF5, "Bars only", R"("text": "8710029", "show_text": false, "height": 40)"},

      {BARCODE_NEC_2OF5, "Plain", R"("text": "1204978")"},
      {BARCODE_NEC_2OF5, "A caption", R"("text": "1204978", "caption": "Delivery 1204978")"},

      {BARCODE_JAN8, "Plain", R"("text": "4901234")"},
      {BARCODE_JAN8, "Equal bars, the text in one line", R"("text": "4901234", "extended_guard": false)"},

      {BARCODE_JAN13, "Plain, the check digit is completed", R"("text": "490123456789")"},
      {BARCODE_JAN13, "The standard's size on a printer of 300 dpi",
       R"("text": "4901234567894", "dpi": 300, "module_mm": 0.33)"},
      {BARCODE_JAN13, "Bars one dot thinner, for paper that soaks up ink",
       R"("text": "490123456789", "module": 4, "bar_adjust": -1)"},
      {BARCODE_JAN13, "Turned by 270 degrees, digit groups centred",
       R"("text": "978020137962", "rotate": 270, "even_spacing": false)"},
      {BARCODE_JAN13, "A quiet zone smaller than the standard's",
       R"("text": "490123456789", "quiet_zone": 5)"},
      {BARCODE_JAN13, "Refused: a wrong check digit", R"("text": "4901234567895")", kRefused},
      {BARCODE_JAN13, "Refused: colours that scanners cannot tell apart, when warnings are errors",
       R"("text": "490123456789", "foreground": "#d02020", "strict": true)", kRefused},
      {BARCODE_JAN13, "Refused: an option of another symbology", R"("text": "490123456789", "qr_version": 7)",
       kRefused},

      {BARCODE_UPC_A, "Plain", R"("text": "01234567890")"},
      {BARCODE_UPC_A, "A box, turned by 90 degrees",
       R"("text": "614141000036", "width": 180, "height": 320, "rotate": 90)"},

      {BARCODE_UPC_E, "Six digits, number system 0", R"("text": "123456")"},
      {BARCODE_UPC_E, "Number system 1", R"("text": "1234567")"},
      {BARCODE_UPC_E, "Check digit 0", R"("text": "000020")"},

      {BARCODE_ITF, "Fourteen digits", R"("text": "15412345678908")"},
      {BARCODE_ITF, "An odd number of digits gets a zero in front", R"("text": "12345", "module": 3)"},
  };
}

std::vector<Row> Gs1AndPostalRows() {
  return {
      {BARCODE_GS1_DATABAR_14, "Omnidirectional", R"("text": "0491234567890")"},
      {BARCODE_GS1_DATABAR_14, "Stacked", R"("text": "0491234567890", "form": "stacked")"},
      {BARCODE_GS1_DATABAR_14, "Stacked omnidirectional",
       R"("text": "0491234567890", "form": "stacked-omnidirectional")"},
      {BARCODE_GS1_DATABAR_14, "Refused: bars too low to be read", R"("text": "0491234567890", "height": 8)",
       kRefused},

      {BARCODE_GS1_DATABAR_LIMITED, "Thirteen digits", R"("text": "1501234567890")"},
      {BARCODE_GS1_DATABAR_LIMITED, "Fourteen digits behind their identifier",
       R"("text": "(01)15012345678907")"},

      {BARCODE_GS1_DATABAR_EXPANDED, "One row: GTIN and weight",
       R"("text": "(01)90012345678908(3103)001750")"},
      {BARCODE_GS1_DATABAR_EXPANDED, "Stacked, two segment pairs in a row",
       R"("form": "stacked", "text": "(01)04912345678904(17)261231(10)LOT42")"},
      {BARCODE_GS1_DATABAR_EXPANDED, "Stacked, three segment pairs in a row",
       R"("form": "stacked", "pairs_per_row": 3, "text": "(01)04912345678904(17)261231(10)LOT42")"},

      {BARCODE_YUBIN_CUSTOMER, "Plain", R"("text": "26300233-20-12")"},
      {BARCODE_YUBIN_CUSTOMER, "A caption",
       R"("text": "15400233-16-4-A205", "caption": "154-0023 3-16-4-A205")"},
  };
}

std::vector<Row> TwoDimensionalRows() {
  return {
      {BARCODE_QR, "Plain, error correction M", R"("text": "https://example.com/")"},
      {BARCODE_QR, "Error correction H, a caption",
       R"("text": "https://example.com/", "error_correction_level": "H", "caption": "example.com")"},
      {BARCODE_QR, "Version 7, module and quiet zone chosen",
       R"("text": "Version 7", "qr_version": 7, "module": 3, "quiet_zone": 6)"},
      {BARCODE_QR, "Digits in numeric mode", R"("text": "0123456789012345", "encode_mode": "NUMERIC")"},
      {BARCODE_QR, "Shift-JIS bytes; the font has no Japanese characters for the caption",
       "\"text\": \"\u3053\u3093\u306B\u3061\u306F\", \"string_encoding\": \"shift-jis\", "
       "\"caption\": \"konnichiwa: \u3053\u3093\u306B\u3061\u306F\""},
      {BARCODE_QR, "Bytes that are no text", R"("text_base64": "AAECA//+/fw=")"},
      {BARCODE_QR, "Light on dark is a warning",
       R"("text": "light on dark", "foreground": "#fff", "background": "#1c2430")"},
      {BARCODE_QR, "A module of one dot does not print well at 203 dpi",
       R"("text": "small", "dpi": 203, "module": 1)"},
      {BARCODE_QR, "Refused: a box that is too small",
       R"("text": "0123456789", "error_correction_level": "H", "width": 20, "height": 20)", kRefused},

      {BARCODE_DATAMATRIX, "Smallest square", R"("text": "123456")"},
      {BARCODE_DATAMATRIX, "Rectangle 16 x 48", R"("text": "Item 0042, batch A-7", "code_size": "16x48")"},
      {BARCODE_DATAMATRIX, "Scheme chosen for the fewest codewords, dark modules one dot smaller",
       R"("text": "ABCDEFGHIJ0123456789klmnop", "encode_scheme": "AUTO", "bar_adjust": -1)"},
      {BARCODE_DATAMATRIX, "A physical size: 0.5 mm at 203 dpi",
       R"("text": "SN 4711", "dpi": 203, "module_mm": 0.5)"},
      {BARCODE_DATAMATRIX, "Refused: more than 10 x 10 modules hold",
       R"("text": "Item 0042", "code_size": "10x10")", kRefused},

      {BARCODE_PDF417, "Plain", R"("text": "PDF417 holds text, numbers and bytes")"},
      {BARCODE_PDF417, "Tall, with a caption",
       R"("text": "PDF417 holds text, numbers and bytes", "aspect_ratio": 2, "caption": "Tall")"},
      {BARCODE_PDF417, "Rows of five modules, turned by 180 degrees",
       R"("text": "31415926535897932384626433832795", "y_height": 5, "rotate": 180)"},
  };
}

LabelSample SampleOf(const Row& row) {
  return {.type = &TypeOf(row.type),
          .caption = std::string(row.caption),
          .members = std::string(row.members),
          .isRefused = row.isRefused};
}

}  // namespace

std::vector<LabelSample> LabelSamples() {
  std::vector<LabelSample> samples;
  for (const std::vector<Row>& rows : {LinearRows(), Gs1AndPostalRows(), TwoDimensionalRows()}) {
    for (const Row& row : rows) {
      samples.push_back(SampleOf(row));
    }
  }
  return samples;
}

std::string RequestText(const LabelSample& sample, std::string_view format) {
  return Concat(
      {R"({"type": ")", sample.type->name, R"(", )", sample.members, R"(, "format": ")", format, R"("})"});
}

}  // namespace barcode::tool
