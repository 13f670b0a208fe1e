/* libbarcode_label: labels that scan. One request in, one picture and a report out.
 *
 *     const char* request = "{\"type\": \"jan13\", \"text\": \"490123456789\", \"format\": \"svg\"}";
 *     BarcodeLabel* label = barcode_label_make(request, strlen(request));
 *     if (barcode_label_ok(label)) {
 *       size_t length = 0;
 *       const unsigned char* picture = barcode_label_data(label, &length);
 *       fwrite(picture, 1, length, file);
 *     } else {
 *       fprintf(stderr, "%s\n", barcode_label_report(label));
 *     }
 *     barcode_label_free(label);
 *
 * A label that is delivered can be read by a scanner, or its report says what stands against it: symbols are those of
 * the standards, with their quiet zone and in whole modules, and nothing is cut. What cannot be done is refused, and
 * the report tells why. docs/labels.md describes every field of requests and reports in full; this header is the
 * manual of the functions:
 *
 *   Calls        arguments, ownership, threads, memory
 *   Requests     what they look like, and how they are checked
 *   Reports      what they say
 *   Pictures     the three formats
 *   The process  what the library does not do
 *   Versions     what stays the same
 *
 *
 * CALLS
 *
 * - Null arguments are harmless: string results are "" then, byte results NULL, numbers 0; barcode_label_make takes a
 *   null request for an empty one. No function throws or aborts, whatever a request holds.
 * - Strings and bytes that are returned belong to the label and stay as they are until barcode_label_free; those of
 *   barcode_label_types and barcode_label_version stay for as long as the library is loaded. Never free them.
 * - A label does not change once it is made: any number of threads may read it at the same time. One of them frees it,
 *   once, when the others have done. All functions may be called on any number of threads at the same time.
 * - Time and memory are limited by the request: the picture has at most 100 million pixels; more is refused
 *   ("too_large") before it is made.
 * - Memory exhausted: the label's report says "out_of_memory" and there is no picture. Only where not even the label
 *   itself can be made, barcode_label_make returns NULL. Nothing leaks, and later calls work.
 *
 *
 * REQUESTS
 *
 * A request is a JSON object (RFC 8259) in UTF-8, with or without a byte order mark. Required are "type", a name or an
 * alias of a symbology, and one of "text" and "text_base64"; every other field has a default. null counts as absent.
 *
 *   What is encoded       type, text or text_base64, form, and the options of the symbology
 *   Picture               format ("png", "svg", "pdf"), foreground, background, rotate
 *   Size                  module and height, in dots; or module_mm and height_mm, with dpi; or width and height: the
 *                         picture is exactly this box. quiet_zone
 *   Text                  show_text, caption, text_scale, text_gap, even_spacing, show_start_stop, extended_guard
 *   Print                 dpi, bar_adjust
 *   What counts           strict: a warning is an error
 *
 * barcode_label_types lists the fields that each type takes, with their ranges and defaults. Words (of "format",
 * "code_mode" and so on) may be written in upper or lower case; in the names of types "-", "_" and spaces are not
 * distinguished either. Whole numbers may be written "2.0".
 *
 * Nothing is passed over: a field that no type has, or another type, a value of another kind or out of range, a field
 * that stands twice, and fields that exclude one another are refused with the field's name and what is allowed. Of
 * several errors one is told: the first, from front to back, that concerns the JSON or one field by itself; when there
 * is none, one that concerns the fields together.
 *
 *
 * REPORTS
 *
 * A report is a JSON object in UTF-8, whatever the texts in it. Delivered:
 *
 *   {"ok":true,"warnings":[],"type":"jan13","text":"4901234567894","display_text":"4901234567894","width":226,
 *    "height":161,"module":2,"modules":{"columns":95,"rows":1},"quiet_zone":{"left":11,"right":7,"top":0,"bottom":0},
 *    "format":"svg","bytes":1935}
 *
 * "text" is what is encoded, with its check digit; "display_text" what is written under the symbol; "module" the dots
 * of one module; "modules" the size of the symbol, "quiet_zone" that of its margin, in modules. With a dpi
 * "width_mm" and "height_mm" follow "height". Refused:
 *
 *   {"ok":false,"error":{"code":"too_small","field":"width","message":"...","needed":{"width":29,"height":29}},
 *    "warnings":[],"type":"qr"}
 *
 * "field" is "" where none is to blame, "needed" is there where another size would do, "type" where the request names
 * one. A message is one English sentence.
 *
 *   Errors     bad_request (no JSON object), unknown_field, bad_value, unknown_type, bad_text (characters, empty, check
 *              digit, GS1 rules), too_long, too_small, too_large, out_of_memory; under "strict" the code of a warning
 *   Warnings   low_contrast, light_on_dark, small_module, quiet_zone, text_shrunk, text_left_out, missing_glyph,
 *              no_reader, gs1_association
 *
 *
 * PICTURES
 *
 *   png   image/png         one bit a dot for two colours, else a palette
 *   svg   image/svg+xml     UTF-8, well-formed whatever the text; text as outlines
 *   pdf   application/pdf   one page, vector
 *
 * All three show the same geometry. The same request makes the same bytes, on every machine and at any time.
 *
 *
 * THE PROCESS
 *
 * The library writes to no stream and no file, reads no file and no environment variable (except, for Shift-JIS texts,
 * the tables of the C library's iconv), keeps no state between calls, takes no lock, starts no thread and follows no
 * locale. It may be used after fork, and unloaded when no label is left. It does not need libbarcode.
 *
 *
 * VERSIONS
 *
 * All releases 1.x keep these functions and the name libbarcode_label.so.1: a program built with one runs with any
 * later one. Fields, codes, types and members of reports may be added; those that are there keep their meaning. A
 * host ignores members that it does not know. Bytes of pictures and words of messages may change between releases.
 */
#ifndef BARCODE_LABEL_H
#define BARCODE_LABEL_H

#include <stddef.h>

#define BARCODE_LABEL_VERSION_MAJOR 1
#define BARCODE_LABEL_VERSION_MINOR 0
#define BARCODE_LABEL_VERSION_PATCH 0
#define BARCODE_LABEL_VERSION_STRING "1.0.0"

/* Versions as numbers that can be compared, in #if too: the version of this header, and whether it is at least the
 * given one. */
#define BARCODE_LABEL_VERSION_PACKED(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))
#define BARCODE_LABEL_VERSION_NUMBER                                                        \
    BARCODE_LABEL_VERSION_PACKED(BARCODE_LABEL_VERSION_MAJOR, BARCODE_LABEL_VERSION_MINOR, \
                                 BARCODE_LABEL_VERSION_PATCH)
#define BARCODE_LABEL_VERSION_AT_LEAST(major, minor, patch) \
    (BARCODE_LABEL_VERSION_NUMBER >= BARCODE_LABEL_VERSION_PACKED(major, minor, patch))

#if defined(__GNUC__)
#define BARCODE_LABEL_API __attribute__((visibility("default")))
#else
#define BARCODE_LABEL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* One label, delivered or refused; opaque. */
typedef struct BarcodeLabel BarcodeLabel;

/* Makes a label.
 * request: `length` bytes of JSON, see REQUESTS; they need no zero byte at their end, and are not used after the call.
 * Returns a label, delivered or refused, to be freed with barcode_label_free; NULL only when memory is exhausted. */
BARCODE_LABEL_API BarcodeLabel* barcode_label_make(const char* request, size_t length);

/* 1 when the label was delivered: there is a picture. 0 when it was refused, and for NULL. */
BARCODE_LABEL_API int barcode_label_ok(const BarcodeLabel* label);

/* The bytes of the picture; their number is written to *length, unless length is NULL. NULL, with *length 0, when the
 * label was refused, and for NULL. */
BARCODE_LABEL_API const unsigned char* barcode_label_data(const BarcodeLabel* label, size_t* length);

/* The media type of the picture, "image/png" for example; "" when the label was refused, and for NULL. */
BARCODE_LABEL_API const char* barcode_label_media_type(const BarcodeLabel* label);

/* The report, see REPORTS: JSON without a line break, ended by a zero byte. "" for NULL. */
BARCODE_LABEL_API const char* barcode_label_report(const BarcodeLabel* label);

/* Frees the label and all that was fetched from it. NULL is ignored. */
BARCODE_LABEL_API void barcode_label_free(BarcodeLabel* label);

/* The symbologies as a JSON array in the order of their numbers, each
 *
 *   {"name", "title", "number", "aliases": [names], "two_dimensional": boolean, "options": [option...],
 *    "readers": {"zxing", "zbar", "zxing_wasm"}}
 *
 * An option is a field that requests of this type may have beside "type", "text" and "text_base64":
 *
 *   {"name", "kind", "values": [...], "min", "max", "default"}
 *
 *   kind         values             min, max
 *   string
 *   boolean
 *   integer      where they are     of all others
 *                few (rotate)
 *   number                          yes
 *   keyword      yes
 *   color        words beside       (colours are "#rgb", "#rrggbb", "#rrggbbaa")
 *                colours
 *   quiet_zone   words beside       yes
 *                whole numbers
 *
 * "default" is missing where there is none, or none that is a constant. What each of three independent readers makes of
 * the symbols is "yes", "no", or a sentence that says what it does not read. The text is the same in every call; when
 * memory is exhausted in the first one it is "[]", and the next call tries again. */
BARCODE_LABEL_API const char* barcode_label_types(void);

/* The version of the library, "1.0.0"; that of the header is BARCODE_LABEL_VERSION_STRING. */
BARCODE_LABEL_API const char* barcode_label_version(void);

#ifdef __cplusplus
}
#endif

#endif /* BARCODE_LABEL_H */
