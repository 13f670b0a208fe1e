/* libbarcode: draw barcodes as PNG or SVG.
 *
 * A host creates one object per symbol, sets options, draws text into a box of pixels and fetches the result:
 *
 *     BarcodeHandle h = barcode_create(BARCODE_CODE39);
 *     if (barcode_draw_1d(h, "ABC-123", 300, 100)) {
 *       int length = 0;
 *       const unsigned char* png = barcode_get_image_data(h, &length);
 *       fwrite(png, 1, (size_t)length, file);
 *     }
 *     barcode_destroy(h);
 *
 * General rules, not repeated at each function:
 *
 * - Null handles, null strings and handles of a type that a function does not serve are harmless: setters do
 *   nothing, draws return 0, string results are "" and byte results NULL. No function throws or aborts on bad input.
 * - Strings are NUL-terminated bytes. Keywords are compared byte for byte, upper and lower case distinguished.
 * - Pixel coordinates start at the top-left corner of the box; a box is width x height pixels.
 * - Options may be set between draws and take effect with the next draw. A failed draw leaves the object usable.
 * - Strings and buffers that are returned belong to the handle: never free them. Each stays valid until the next
 *   call that returns the same kind (text: barcode_get_base64, barcode_get_svg; bytes: barcode_get_image_data) on
 *   that handle, or until barcode_destroy.
 * - Diagnostics go to standard output (flushed before the call returns), error messages to standard error, one
 *   write per line; a validation error reads "[Code39] Empty string", for example.
 * - A handle is to be used by one thread at a time. Different handles may be used on different threads.
 */
#ifndef BARCODE_H
#define BARCODE_H

#define BARCODE_VERSION_MAJOR 1
#define BARCODE_VERSION_MINOR 0
#define BARCODE_VERSION_PATCH 0
#define BARCODE_VERSION_STRING "1.0.0"

#if defined(__GNUC__)
#define BARCODE_API __attribute__((visibility("default")))
#else
#define BARCODE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The symbologies, as numbers for barcode_create. 0 to 15 are linear (1D), 16 to 18 two-dimensional (2D). */
enum BarcodeSymbology {
  BARCODE_CODE39 = 0,
  BARCODE_CODE93 = 1,
  BARCODE_CODE128 = 2,
  BARCODE_GS1_128 = 3,
  BARCODE_NW7 = 4,
  BARCODE_MATRIX_2OF5 = 5,
  BARCODE_NEC_2OF5 = 6,
  BARCODE_JAN8 = 7,
  BARCODE_JAN13 = 8,
  BARCODE_UPC_A = 9,
  BARCODE_UPC_E = 10,
  BARCODE_ITF = 11,
  BARCODE_GS1_DATABAR_14 = 12,
  BARCODE_GS1_DATABAR_LIMITED = 13,
  BARCODE_GS1_DATABAR_EXPANDED = 14,
  BARCODE_YUBIN_CUSTOMER = 15,
  BARCODE_QR = 16,
  BARCODE_DATAMATRIX = 17,
  BARCODE_PDF417 = 18
};

/* One barcode object; opaque. */
typedef struct BarcodeHandleRecord* BarcodeHandle;

/* ---- Creation ------------------------------------------------------------------------------------------- */

/* A new object of one symbology with the output format "png" and default options.
 * type: an enum BarcodeSymbology value.
 * Returns NULL for any other number and when memory is exhausted.
 * Free it with barcode_destroy. */
BARCODE_API BarcodeHandle barcode_create(int type);

/* Frees the object and everything fetched from it. NULL is ignored. */
BARCODE_API void barcode_destroy(BarcodeHandle handle);

/* ---- Options of every symbology --------------------------------------------------------------------------- */

/* The output format (default "png"):
 *   "png"          raster; PNG bytes, data URI of type image/png
 *   "jpg", "jpeg"  raster; the same PNG bytes, but the data URI names the type image/jpeg
 *   "svg", "SVG"   an SVG 1.1 document, fetched with barcode_get_svg
 * Any other keyword is stored too, but prepares no canvas: a first draw fails. */
BARCODE_API void barcode_set_output_format(BarcodeHandle handle, const char* format);

/* 1 when the output format is "svg" or "SVG", else 0. */
BARCODE_API int barcode_is_svg_output(BarcodeHandle handle);

/* Colour of bars, modules and text (default 0, 0, 0, 255) and of the background (default 255, 255, 255, 255):
 * red, green, blue and alpha, 0 to 255 each (the low eight bits of other values). Bars and modules store the
 * four bytes as they are, without blending; in SVG an alpha below 255 becomes a fill-opacity. */
BARCODE_API void barcode_set_foreground_color(BarcodeHandle handle, int r, int g, int b, int a);
BARCODE_API void barcode_set_background_color(BarcodeHandle handle, int r, int g, int b, int a);

/* Module width (default 0). 0: whole pixels, at least 1; the symbol may be narrower than the box, or be clipped.
 * Nonzero: box width divided by the number of modules, a fraction; the symbol fills the box. */
BARCODE_API void barcode_set_fit_width(BarcodeHandle handle, int flag);

/* Pixels added to the width of every bar or dark module / of every space (default 0, may be negative). An element
 * of a linear symbol never becomes narrower than 1 pixel. For QR and Data Matrix only the black adjustment is
 * used, in both directions; PDF417 uses neither. */
BARCODE_API void barcode_set_px_adjust_black(BarcodeHandle handle, int pixels);
BARCODE_API void barcode_set_px_adjust_white(BarcodeHandle handle, int pixels);

/* ---- Options of linear symbologies (types 0 to 15) -------------------------------------------------------- */

/* Human-readable text under the bars (default 1). Without it the bars take the full height of the box. */
BARCODE_API void barcode_set_show_text(BarcodeHandle handle, int flag);

/* 1 (default): the characters are spread evenly across the bars. 0: the text is set as one centred line. */
BARCODE_API void barcode_set_text_even_spacing(BarcodeHandle handle, int flag);

/* Multiplies the height of the text (default 1.0). The text is at least 8 pixels high whatever the scale. */
BARCODE_API void barcode_set_text_font_scale(BarcodeHandle handle, double scale);

/* Multiplies the gap between bars and text (default 1.0). */
BARCODE_API void barcode_set_text_gap(BarcodeHandle handle, double scale);

/* Start and stop characters in the human-readable text (default 1). Code 39, NW-7. */
BARCODE_API void barcode_set_show_start_stop(BarcodeHandle handle, int flag);

/* Guard bars longer than the data bars, with the digits grouped between them (default 1). JAN-8, JAN-13, UPC-A,
 * UPC-E. 0: all bars of equal height, the text in one line below. */
BARCODE_API void barcode_set_extended_guard(BarcodeHandle handle, int flag);

/* Code 128 code set: "AUTO" (default; fewest symbol characters), "A", "B", "C". Other words change nothing. In set A
 * a byte is its own symbol value, which readers take for another character: choose "B" or "C" for text that is to be
 * read as it stands. */
BARCODE_API void barcode_set_code_mode(BarcodeHandle handle, const char* mode);

/* ---- Options of two-dimensional symbologies (types 16 to 18) ---------------------------------------------- */

/* Character set in which the text is encoded: "utf-8" (default) or "UTF-8"; "shift-jis", "Shift-JIS" or
 * "shift_jis". The text handed to a draw may be UTF-8 or Shift-JIS; it is converted where needed. Any other word
 * counts as UTF-8. */
BARCODE_API void barcode_set_string_encoding(BarcodeHandle handle, const char* encoding);

/* QR version: 1 to 40, or 0 for the smallest that holds the text (default). A version too small for the text is
 * replaced by the smallest that fits; a number outside 0 to 40 sets 0 and prints a warning. */
BARCODE_API void barcode_set_version(BarcodeHandle handle, int version);

/* QR error correction: "L", "M" (default), "Q", "H". Any other word selects "M". */
BARCODE_API void barcode_set_error_correction_level(BarcodeHandle handle, const char* level);

/* QR encode mode: "AUTO" and "BYTE" (default) encode bytes, "NUMERIC" digits; "ALPHANUMERIC" and "KANJI" are
 * accepted and encode bytes. Any other word selects bytes. */
BARCODE_API void barcode_set_encode_mode(BarcodeHandle handle, const char* mode);

/* Data Matrix size: "AUTO" (default; smallest square), a square from "10x10" to "144x144" or a rectangle from
 * "8x18" to "16x48" (rows x columns). Any other word selects "AUTO". */
BARCODE_API void barcode_set_code_size(BarcodeHandle handle, const char* size);

/* Data Matrix encodation scheme: "ASCII" (default), "C40", "TEXT", "X12", "EDIFACT", "BASE256", or "AUTO" for the
 * fewest codewords. Any other word selects "AUTO". */
BARCODE_API void barcode_set_encode_scheme(BarcodeHandle handle, const char* scheme);

/* PDF417 data columns (0 to 30, default 0), rows (0 to 90, default 0) and error level (default 2): stored and
 * reported in the diagnostics; the symbol itself follows the aspect ratio, its error level is automatic. Columns
 * and rows out of range change nothing. */
BARCODE_API void barcode_set_columns(BarcodeHandle handle, int columns);
BARCODE_API void barcode_set_rows(BarcodeHandle handle, int rows);
BARCODE_API void barcode_set_error_level(BarcodeHandle handle, int level);

/* PDF417 aspect ratio, height to width, 0.001 to 1000 (default 0.5); other values change nothing. */
BARCODE_API void barcode_set_aspect_ratio(BarcodeHandle handle, double ratio);

/* PDF417 row height in modules, above 0 (default 3); other values change nothing. It shapes the number of columns
 * and, when a square box is asked for, the width of the symbol. */
BARCODE_API void barcode_set_y_height(BarcodeHandle handle, int height);

/* ---- Options of GS1 DataBar ------------------------------------------------------------------------------- */

/* Form of GS1 DataBar (type 12): "OMNIDIRECTIONAL" (default), "STACKED", "STACKED_OMNIDIRECTIONAL". Other words
 * change nothing. The one-row form is drawn with the colours of ISO/IEC 24724 exchanged, beginning with a bar: for a
 * scanner draw it in white on black, into a width that is a multiple of 96. The stacked forms have the standard's
 * colours. */
BARCODE_API void barcode_set_symbol_type_14(BarcodeHandle handle, const char* type);

/* The word for the current form; "" for a handle of another type. The string is constant. */
BARCODE_API const char* barcode_get_symbol_type_14(BarcodeHandle handle);

/* Form of GS1 DataBar Expanded (type 14): "UNSTACKED" (default) or "STACKED". Other words change nothing. Its text is
 * a GS1 element string: application identifiers and data without parentheses, "{FNC1}" or the byte 0x1D behind a
 * field of variable length when another follows, "{AI}" where the human-readable text is to show an identifier. */
BARCODE_API void barcode_set_symbol_type_exp(BarcodeHandle handle, const char* type);

/* Segment pairs per row of the stacked GS1 DataBar Expanded, 1 to 10; any other number counts as 2 (default 0). */
BARCODE_API void barcode_set_no_of_columns(BarcodeHandle handle, int columns);

/* ---- Drawing ---------------------------------------------------------------------------------------------- */

/* Draws the text into a box of width x height pixels. Serves every type; for the 2D types it is the same as
 * barcode_draw_2d_rect. Returns 1 when drawn; 0 when the text is not valid for the symbology, when the canvas could
 * not be made (negative and far too large sizes included), or when the output format is unknown and no earlier
 * raster draw left a canvas, which would be drawn into. In SVG a negative size is taken as the unsigned number of the
 * same bits. */
BARCODE_API int barcode_draw_1d(BarcodeHandle handle, const char* text, int width, int height);

/* 2D types: draws the text into a box of size x size pixels. PDF417 keeps the height and takes the width that is
 * natural for the symbol, as it does in every square box. */
BARCODE_API int barcode_draw_2d(BarcodeHandle handle, const char* text, int size);

/* 2D types: draws the text into a box of width x height pixels. */
BARCODE_API int barcode_draw_2d_rect(BarcodeHandle handle, const char* text, int width, int height);

/* GS1-128: the payment form of Japanese convenience stores, 44 digits (43 are completed with their check digit),
 * with its two lines of text. A leading "{FNC1}" is allowed. */
BARCODE_API int barcode_draw_convenience(BarcodeHandle handle, const char* text, int width, int height);

/* GS1 DataBar Expanded: selects the stacked form, which stays selected, and draws. */
BARCODE_API int barcode_draw_stacked(BarcodeHandle handle, const char* text, int width, int height);

/* Japanese postal customer barcode: draws with long bars of height pixels; the width follows from the height. The
 * second form takes a width for symmetry and ignores it. Characters that the symbology lacks are left out; returns 0,
 * without a message, for an empty text and for a height below 1. */
BARCODE_API int barcode_draw_yubin(BarcodeHandle handle, const char* text, int height);
BARCODE_API int barcode_draw_yubin_with_width(BarcodeHandle handle, const char* text, int width, int height);

/* GS1 DataBar (type 12): encodes without drawing; 1 when the text is valid. */
BARCODE_API int barcode_encode_14(BarcodeHandle handle, const char* text);

/* ---- Results ---------------------------------------------------------------------------------------------- */

/* The last raster draw as a data URI, "data:image/png;base64,...". Releases the canvas: fetch once per draw. Without
 * a drawn canvas the result is a URI of a transparent image of 1 x 1 pixels; in SVG mode it is a text that begins
 * "Error: ", as it is when memory is exhausted. */
BARCODE_API const char* barcode_get_base64(BarcodeHandle handle);

/* The last raster draw as the bytes of a PNG file; their number is written to *length. NULL, with *length 0, when
 * there is no drawn canvas. A null length pointer gives NULL. May be called again for the same draw. */
BARCODE_API const unsigned char* barcode_get_image_data(BarcodeHandle handle, int* length);

/* The SVG document of the last SVG draw, in UTF-8 where the text was; "" before the first draw and when the output
 * format is not SVG. */
BARCODE_API const char* barcode_get_svg(BarcodeHandle handle);

/* GS1 check digit of exactly 13 digits, as a string of one character; "" for NULL and for any other text. The
 * string is shared by all callers and replaced by the next call. */
BARCODE_API const char* barcode_calculate_check_digit_14(const char* text);

#ifdef __cplusplus
}
#endif

#endif /* BARCODE_H */
