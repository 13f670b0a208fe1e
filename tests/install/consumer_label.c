/* A host as a stranger writes it: asks for labels and looks at what it gets. */
#include <barcode_label.h>
#include <stdio.h>
#include <string.h>

static int Fail(const char* what) {
  fprintf(stderr, "%s\n", what);
  return 1;
}

static BarcodeLabel* Make(const char* request) {
  return barcode_label_make(request, strlen(request));
}

/* Whether the picture begins so. */
static int Begins(const char* request, const char* mediaType, const char* beginning) {
  BarcodeLabel* label = Make(request);
  size_t length = 0;
  const unsigned char* data = barcode_label_data(label, &length);
  const int begins = barcode_label_ok(label) && length > strlen(beginning) &&
                     memcmp(data, beginning, strlen(beginning)) == 0 &&
                     strcmp(barcode_label_media_type(label), mediaType) == 0;
  barcode_label_free(label);
  return begins;
}

int main(void) {
  if (!Begins("{\"type\": \"qr\", \"text\": \"ABC\"}", "image/png", "\x89PNG\r\n\x1a\n")) {
    return Fail("No PNG file");
  }
  if (!Begins("{\"type\": \"jan13\", \"text\": \"490123456789\", \"format\": \"svg\"}", "image/svg+xml",
              "<")) {
    return Fail("No SVG document");
  }
  if (!Begins("{\"type\": \"code39\", \"text\": \"ABC\", \"format\": \"pdf\"}", "application/pdf", "%PDF-")) {
    return Fail("No PDF document");
  }
  BarcodeLabel* refused = Make("{\"type\": \"code39\", \"text\": \"\"}");
  if (barcode_label_ok(refused) || strstr(barcode_label_report(refused), "\"bad_text\"") == NULL) {
    return Fail("An empty text was not refused");
  }
  barcode_label_free(refused);
  if (strstr(barcode_label_types(), "\"databar-expanded\"") == NULL) {
    return Fail("The types are not listed");
  }
  if (strcmp(barcode_label_version(), BARCODE_LABEL_VERSION_STRING) != 0 ||
      strcmp(barcode_label_version(), EXPECTED_VERSION) != 0) {
    return Fail("The version is another");
  }
  return 0;
}
