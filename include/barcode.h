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
 * This header is the manual. What holds for many functions is told once, here, and not repeated at each:
 *
 *   Calls              arguments, ownership, threads
 *   Draws              what 0 means, where the reason stands, what a failed draw leaves behind
 *   Texts              bytes and encodings; which texts each symbology accepts
 *   Sizes              boxes, canvases, scales
 *   Standard streams   what is printed
 *   The process        SDL, fork, unloading, locale
 *   Versions           what stays the same
 *
 *
 * CALLS
 *
 * - Null handles, null strings and handles of a type that a function does not serve are harmless: setters do
 *   nothing, draws return 0, string results are "" and byte results NULL. No function throws or aborts on bad input.
 * - Strings are NUL-terminated bytes. Keywords are compared byte for byte, upper and lower case distinguished.
 * - Pixel coordinates start at the top-left corner of the box; a box is width x height pixels.
 * - Options may be set between draws and take effect with the next draw.
 * - Strings and buffers that are returned belong to the handle: never free them. Each stays valid until the next
 *   call that returns the same kind (text: barcode_get_base64, barcode_get_svg; bytes: barcode_get_image_data) on
 *   that handle, or until barcode_destroy.
 * - A handle is to be used by one thread at a time. Different handles may be used on different threads at the same
 *   time, the creating and destroying included.
 *
 *
 * DRAWS
 *
 * Every draw returns 1 when the symbol was drawn, and 0 otherwise. No function tells the reason of a 0: it is a line
 * on standard error, made of the symbology's tag and a message ("[Code39] Empty string"), or there is none:
 *
 *   Cause                                              Standard error
 *   text not valid for the symbology                   tag and message; docs/symbologies/ lists them
 *     postal barcode: empty text, height below 1       nothing
 *     GS1 DataBar Expanded: no data (empty, markers)   nothing
 *     QR in SVG: empty text                            nothing
 *   canvas not made (size negative or too large)       a line that begins with the words for "surface" or "renderer"
 *   unknown output format and no canvas to draw into   nothing
 *   memory exhausted                                   a line
 *   null handle or text, type not served               nothing
 *
 * The text under the bars is no cause: what cannot be set is left out with a line on standard error, and the draw
 * returns 1.
 *
 * The object stays usable after a 0. What a fetch returns then:
 *
 *   raster, text refused          a picture of the new size that holds the background alone; from PDF417 and the
 *                                 postal barcode the earlier picture
 *   raster, canvas not made       no picture
 *   output format unknown         the earlier picture, if there is one
 *   SVG                           the earlier document, if there is one
 *
 *
 * TEXTS
 *
 * Two-dimensional types: UTF-8 or Shift-JIS (code page 932). What is not well-formed UTF-8 counts as Shift-JIS. The
 * text is converted to the character set of barcode_set_string_encoding and its bytes are encoded; lengths count after
 * the conversion. Converting from or to Shift-JIS takes the C library's iconv with its table CP932; a draw
 * that needs it and does not find it fails with a line.
 *
 * Linear types: bytes, not converted. All but two refuse bytes above 0x7F. GS1-128 leaves them out of the bars but not
 * out of the text under them; the postal barcode, which shows no text, drops them. In that text:
 *
 *   PNG, evenly spaced            each byte is a character of its own: a byte above 0x7F is a replacement sign
 *   PNG, in one piece             UTF-8: characters that the font lacks are empty boxes, malformed bytes replacement
 *                                 signs
 *   SVG, evenly spaced            each byte in an element of its own: with bytes above 0x7F the document is not UTF-8
 *   SVG, in one piece             as given
 *
 * Nothing is escaped in SVG: a shown text that holds '&', '<' or a control character makes a document that XML parsers
 * refuse.
 *
 * Accepted texts (docs/symbologies/, a page for each, has every rule and message):
 *
 *   CODE39                  1 or more of 0-9 A-Z space - . $ / + %; a-z count as upper case
 *   CODE93                  the same, and < > ? ! for the four shift characters
 *   CODE128                 1 or more bytes: 1 to 126 in code mode AUTO, 1 to 95 in A, 32 to 126 in B; an even number
 *                           of digits in C
 *   GS1_128                 any bytes or none; "{FNC1}" and "{AI}" are markers
 *     payment form          43 digits, or 44 with the right check digit; "{FNC1}" may stand in front
 *   NW7                     1 or more of 0-9 - $ : / . + A-D a-d; A-D at both ends or at neither
 *   MATRIX_2OF5, NEC_2OF5   1 or more digits
 *   ITF                     1 or more digits; an odd number gets a zero in front
 *   JAN8, JAN13, UPC_A      7, 12, 11 digits, or one more: the right check digit
 *   UPC_E                   6, 7 or 8 digits; the eighth, the check digit, is not verified
 *   GS1_DATABAR_14          0 to 13 digits: the GTIN without its check digit
 *   GS1_DATABAR_LIMITED     8 to 13 digits, the first of thirteen 0 or 1: the GTIN without its check digit
 *   GS1_DATABAR_EXPANDED    a GS1 element string, see barcode_set_symbol_type_exp; at most about 70 digits or 40
 *                           letters
 *   YUBIN_CUSTOMER          1 or more bytes; 0-9 - A-Z a-z are encoded as far as there is room, others dropped
 *   QR                      up to 2,953 bytes at level L, 2,331 at M, 1,663 at Q, 1,273 at H; in mode NUMERIC 7,089,
 *                           5,596, 3,993, 3,057 digits; none draws the background in PNG and fails in SVG
 *   DATAMATRIX              1 or more bytes: up to 3,116 digits, 2,335 letters of one case, 1,556 other bytes
 *   PDF417                  1 or more bytes: up to 2,710 digits, 1,850 capital letters, 1,108 bytes outside ASCII
 *
 *
 * SIZES
 *
 * - A raster canvas holds at most 2^31 - 1 bytes, four for each pixel: 536,870,911 pixels, say 23,170 x 23,170.
 *   Larger and negative sizes fail with a line. The canvas lives until barcode_get_base64, the next raster draw or
 *   barcode_destroy.
 * - The PNG encoder takes sides of up to 1,000,000 pixels. A box with a longer side draws and returns 1, but there is
 *   nothing to fetch: the bytes are NULL, the data URI is that of the 1 x 1 image.
 * - A box without pixels (width or height 0) draws and returns 1, too, with nothing to fetch in raster.
 * - In SVG a negative size is taken as the unsigned number of the same bits (-1 as 4,294,967,295).
 * - The picture has the size of the box, with three exceptions. Postal barcode: the height h makes the width,
 *   22.5 h + 1. PDF417 in a square box: the height is kept, the width is that of the symbol. Data Matrix in SVG: the
 *   document has the size of the symbol.
 * - No symbology adds a quiet zone: leave the margin that its standard asks for around the picture.
 * - Text is at least 8 pixels high, its gap at least 2 (stacked GS1 DataBar: 1), also with scales that are 0, negative
 *   or NaN; with long guards a negative font scale moves the bars as well. With a font scale that is infinite or asks
 *   for a size that no font has, the text is left out of a PNG with a line, and the bars shrink to 1 pixel (stacked
 *   GS1 DataBar: all rows to 10); the payment form fits its text to the box instead.
 * - A text image (a line, or a character where they are evenly spaced) of more than 128 million pixels is left out,
 *   with the line "TTF_RenderUTF8_Blended error: Out of memory".
 *
 *
 * STANDARD STREAMS
 *
 * What the library prints cannot be switched off. It uses the buffered streams stdout and stderr of the C library, so
 * that its lines keep their order among those of a host that does the same. Output is flushed before the call that
 * printed it returns; a line on standard error is one write, made after the output that came before it.
 *
 *   On standard output
 *     linear types, raster draw          three lines with sizes; the postal barcode, in SVG too, one line
 *     QR and Data Matrix, raster draw    steps, and the modules as digits
 *     PDF417, every draw                 options, codewords, rows; a refused text's message, too
 *     barcode_get_base64, _image_data    the encoder's report; its errors begin "ERROR: "
 *     barcode_set_version                a warning for a number out of range
 *   On standard error
 *     any draw                           see DRAWS
 *     GS1 DataBar (type 12)              lines that begin "DEBUG ", from every draw and from barcode_encode_14
 *
 * A host that needs a stream for itself redirects its file descriptor around the call (dup2; mkbarcode does).
 *
 *
 * THE PROCESS
 *
 * - SDL: the host need not initialise it, and the library does not: SDL_Init is never called. SDL_ttf is initialised
 *   by the first linear object, and stays so. A host that uses these libraries itself may call SDL_Init and SDL_Quit
 *   as it likes, has to pair its TTF_Quit with its TTF_Init (one more, and no text is drawn any longer), and must keep
 *   out of SDL_ttf while another thread draws: the library's lock holds for its own calls only. SDL_GetError of the
 *   calling thread may change in any call.
 * - Threads: none is started. What a thread's calls left in SDL is freed when the thread ends.
 * - fork: a child may use the library, whatever other threads were doing. For that a fork waits for the calls that are
 *   running on other threads, and calls that begin meanwhile wait for the fork; after 10 seconds it waits no longer,
 *   and then the child is to call exec and nothing of this library. posix_spawn, system and popen do not wait. Handles
 *   of other threads are, in the child, as their last finished call left them. A host that calls SDL by itself keeps
 *   its own threads out of SDL while it forks.
 * - Unloading (dlclose): allowed when no call is running and the handles are destroyed, and costs nothing: the code
 *   stays mapped, with what it has set up, and serves the next dlopen. A new version of the library takes effect in a
 *   new process.
 * - Locale: numbers in documents and lines never follow it.
 * - Nothing is written but the two streams, and no file or environment variable is read, except by the libraries
 *   underneath (iconv its tables, SDL its hints).
 *
 *
 * VERSIONS
 *
 * All releases 1.x keep the functions of this header with their arguments, the bytes that ordinary draws return and
 * print, and the name libbarcode.so.1: a program built with one runs with any later one. (How a PNG is compressed and
 * how the edges of its text are smoothed is up to the libraries underneath.) New functions, keywords and symbologies
 * may come. A host that uses them tests BARCODE_VERSION_AT_LEAST when it is compiled; when it runs, barcode_create
 * returns NULL in a library that lacks a symbology.
 */
#ifndef BARCODE_H
#define BARCODE_H

#define BARCODE_VERSION_MAJOR 1
#define BARCODE_VERSION_MINOR 0
#define BARCODE_VERSION_PATCH 0
#define BARCODE_VERSION_STRING "1.0.0"

/* Versions as numbers that can be compared, in #if too: the version of this header, and whether it is at least the
 * given one. */
#define BARCODE_VERSION_PACKED(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))
#define BARCODE_VERSION_NUMBER \
    BARCODE_VERSION_PACKED(BARCODE_VERSION_MAJOR, BARCODE_VERSION_MINOR, BARCODE_VERSION_PATCH)
#define BARCODE_VERSION_AT_LEAST(major, minor, patch) \
    (BARCODE_VERSION_NUMBER >= BARCODE_VERSION_PACKED(major, minor, patch))

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
 * Any other keyword is stored too, but prepares no canvas: a draw goes into the canvas of an earlier raster draw, in
 * that one's size, or fails without one. With an empty keyword the 2D types always fail. A change of the format leaves
 * canvas and document as they are. */
BARCODE_API void barcode_set_output_format(BarcodeHandle handle, const char* format);

/* 1 when the output format is "svg" or "SVG", else 0. */
BARCODE_API int barcode_is_svg_output(BarcodeHandle handle);

/* Colour of bars, modules and text (default 0, 0, 0, 255) and of the background (default 255, 255, 255, 255):
 * red, green, blue and alpha, 0 to 255 each (the low eight bits of other values). Bars and modules store the
 * four bytes as they are, without blending; in SVG an alpha below 255 becomes a fill-opacity. */
BARCODE_API void barcode_set_foreground_color(BarcodeHandle handle, int r, int g, int b, int a);
BARCODE_API void barcode_set_background_color(BarcodeHandle handle, int r, int g, int b, int a);

/* Module width (default 0). 0: whole pixels, at least 1, so that the symbol may be narrower than the box, or be
 * clipped. Nonzero: a fraction, the width of the box divided by the modules, so that the symbol fills the box; an
 * element of a linear symbol still is at least 1 pixel wide. Particular to
 *   JAN, UPC with long guards          the box is what remains beside the digits outside the bars
 *   GS1 DataBar Expanded in one row    always a fraction
 *   postal barcode                     no effect: the height makes the module
 *   QR, PDF417                         width and height of a module follow those of the box, each on its own
 *   Data Matrix                        square modules, from the side of the box that holds fewer pixels a module;
 *                                      without fit-width they have no pixels, and nothing is drawn, in a box with
 *                                      fewer pixels than the symbol has modules */
BARCODE_API void barcode_set_fit_width(BarcodeHandle handle, int flag);

/* Pixels added to the width of every bar or dark module / of every space (default 0, may be negative). An element
 * of a linear symbol never becomes narrower than 1 pixel. QR and Data Matrix use the black adjustment alone, in both
 * directions; the postal barcode uses it alone, too, without moving the bars; PDF417 uses neither. */
BARCODE_API void barcode_set_px_adjust_black(BarcodeHandle handle, int pixels);
BARCODE_API void barcode_set_px_adjust_white(BarcodeHandle handle, int pixels);

/* ---- Options of linear symbologies (types 0 to 15) -------------------------------------------------------- */

/* Human-readable text under the bars (default 1). Without it the bars take the room of the text too, except in the
 * forms that keep it free: the payment form and the stacked GS1 DataBar forms (types 12 and 14). Long guard bars are
 * then 5% longer than the box is high, in PNG cut off at its edge. The postal barcode has no text. */
BARCODE_API void barcode_set_show_text(BarcodeHandle handle, int flag);

/* 1 (default): the characters are spread evenly across the bars, byte by byte (see TEXTS). 0: the text is set as one
 * centred line. With long guards the same goes for each group of digits. */
BARCODE_API void barcode_set_text_even_spacing(BarcodeHandle handle, int flag);

/* Multiplies the height of the text (default 1.0), which follows from the height of the box: a quarter below 50
 * pixels, a fifth up to 200, 15% above. The text is at least 8 pixels high whatever the scale; see SIZES. */
BARCODE_API void barcode_set_text_font_scale(BarcodeHandle handle, double scale);

/* Multiplies the gap between bars and text (default 1.0); see SIZES. */
BARCODE_API void barcode_set_text_gap(BarcodeHandle handle, double scale);

/* Start and stop characters in the human-readable text (default 1). Code 39, NW-7. */
BARCODE_API void barcode_set_show_start_stop(BarcodeHandle handle, int flag);

/* Guard bars longer than the data bars, with the digits grouped between them (default 1). JAN-8, JAN-13, UPC-A,
 * UPC-E. 0: all bars of equal height, the text in one line below. */
BARCODE_API void barcode_set_extended_guard(BarcodeHandle handle, int flag);

/* Code 128 code set: "AUTO" (default; changes between the sets for the fewest symbol characters, without Shift), "A",
 * "B", "C". Other words change nothing. In set A a byte is its own symbol value, which readers take for another
 * character: choose "B" or "C" for text that is to be read as it stands. */
BARCODE_API void barcode_set_code_mode(BarcodeHandle handle, const char* mode);

/* ---- Options of two-dimensional symbologies (types 16 to 18) ---------------------------------------------- */

/* Character set in which the text is encoded: "utf-8" (default) or "UTF-8"; "shift-jis", "Shift-JIS" or
 * "shift_jis". Any other word counts as UTF-8. The text handed to a draw may be UTF-8 or Shift-JIS whatever is set
 * here; it is converted where needed. Characters that Shift-JIS lacks become "?". */
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

/* Data Matrix encodation scheme: "ASCII" (default), "C40", "TEXT", "X12", "EDIFACT", "BASE256", or "AUTO", which
 * changes between them within the text and never takes more codewords than the best of them alone. Any other word
 * selects "AUTO". A scheme that lacks a character of the text (X12, EDIFACT) refuses it. */
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
 * scanner draw it in white on black, 192 pixels wide or wider, without fit-width. The stacked forms have the standard's
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

/* All return 1 when drawn and 0 otherwise; DRAWS, at the top, has the causes and the state after them. */

/* Every type: draws the text into a box of width x height pixels. For the 2D types it is the same as
 * barcode_draw_2d_rect, for the postal barcode as barcode_draw_yubin_with_width; GS1-128 is drawn as such, not as the
 * payment form, and GS1 DataBar in the form that is set. */
BARCODE_API int barcode_draw_1d(BarcodeHandle handle, const char* text, int width, int height);

/* 2D types: draws the text into a box of size x size pixels. PDF417 keeps the height and takes the width that is
 * natural for the symbol, as it does in every square box. 0 for a linear type. */
BARCODE_API int barcode_draw_2d(BarcodeHandle handle, const char* text, int size);

/* 2D types: draws the text into a box of width x height pixels. 0 for a linear type. */
BARCODE_API int barcode_draw_2d_rect(BarcodeHandle handle, const char* text, int width, int height);

/* GS1-128: the payment form of Japanese convenience stores, 44 digits (43 are completed with their check digit),
 * with its two lines of text. A leading "{FNC1}" is allowed. 0 for any other type. */
BARCODE_API int barcode_draw_convenience(BarcodeHandle handle, const char* text, int width, int height);

/* GS1 DataBar Expanded: selects the stacked form, which stays selected even if the text is refused, and draws. 0 for
 * any other type. */
BARCODE_API int barcode_draw_stacked(BarcodeHandle handle, const char* text, int width, int height);

/* Japanese postal customer barcode: draws with long bars of height pixels; the width follows from the height. The
 * second form takes a width for symmetry and ignores it. Characters that the symbology lacks are left out; returns 0,
 * without a message, for an empty text and for a height below 1, and for any other type. */
BARCODE_API int barcode_draw_yubin(BarcodeHandle handle, const char* text, int height);
BARCODE_API int barcode_draw_yubin_with_width(BarcodeHandle handle, const char* text, int width, int height);

/* GS1 DataBar (type 12): encodes without drawing; 1 when the text is valid for the form that is set, 0 when it is not
 * and for any other type. Canvas and document stay as they are. */
BARCODE_API int barcode_encode_14(BarcodeHandle handle, const char* text);

/* ---- Results ---------------------------------------------------------------------------------------------- */

/* The last raster draw as a data URI, "data:image/png;base64,...". Releases the canvas: fetch once per draw, and the
 * bytes, if they are wanted too, before. Without a drawn canvas, or with one that PNG cannot hold (see SIZES), the
 * result is a URI of a transparent image of 1 x 1 pixels. While the output format is SVG it is a text that begins
 * "Error: ", and nothing is released; so it begins when memory is exhausted. */
BARCODE_API const char* barcode_get_base64(BarcodeHandle handle);

/* The last raster draw as the bytes of a PNG file; their number is written to *length. NULL, with *length 0, when
 * there is no drawn canvas or PNG cannot hold it (see SIZES). A null length pointer gives NULL. May be called again
 * for the same draw, and finds the canvas of an earlier raster draw while the output format is SVG. */
BARCODE_API const unsigned char* barcode_get_image_data(BarcodeHandle handle, int* length);

/* The SVG document of the last SVG draw that returned 1; "" before it and while the output format is not SVG. It
 * declares UTF-8 and holds only ASCII, except where GS1-128 shows bytes above 0x7F, see TEXTS. */
BARCODE_API const char* barcode_get_svg(BarcodeHandle handle);

/* GS1 check digit of exactly 13 digits, as a string of one character; "" for NULL and for any other text. The
 * string is shared by all callers and threads and replaced by the next call that has a digit to return: read it at
 * once. */
BARCODE_API const char* barcode_calculate_check_digit_14(const char* text);

#ifdef __cplusplus
}
#endif

#endif /* BARCODE_H */
