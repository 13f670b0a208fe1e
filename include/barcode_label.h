/* libbarcode_label: labels that scan. One request in, one picture and a report out. */
#ifndef BARCODE_LABEL_H
#define BARCODE_LABEL_H

#include <stddef.h>

#define BARCODE_LABEL_VERSION_MAJOR 1
#define BARCODE_LABEL_VERSION_MINOR 0
#define BARCODE_LABEL_VERSION_PATCH 0
#define BARCODE_LABEL_VERSION_STRING "1.0.0"

#if defined(__GNUC__)
#define BARCODE_LABEL_API __attribute__((visibility("default")))
#else
#define BARCODE_LABEL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef struct BarcodeLabel BarcodeLabel;

BARCODE_LABEL_API BarcodeLabel* barcode_label_make(const char* request, size_t length);
BARCODE_LABEL_API int barcode_label_ok(const BarcodeLabel* label);
BARCODE_LABEL_API const unsigned char* barcode_label_data(const BarcodeLabel* label, size_t* length);
BARCODE_LABEL_API const char* barcode_label_media_type(const BarcodeLabel* label);
BARCODE_LABEL_API const char* barcode_label_report(const BarcodeLabel* label);
BARCODE_LABEL_API void barcode_label_free(BarcodeLabel* label);
BARCODE_LABEL_API const char* barcode_label_types(void);
BARCODE_LABEL_API const char* barcode_label_version(void);

#ifdef __cplusplus
}
#endif

#endif
