/* A host as a stranger writes it: draws a symbol in both formats and looks at the result. */
#include <barcode.h>
#include <stdio.h>
#include <string.h>

static int Fail(const char* what) {
  fprintf(stderr, "%s\n", what);
  return 1;
}

/* The width or height in a PNG file's header: four bytes, the highest first. */
static int HeaderNumber(const unsigned char* bytes) {
  return bytes[0] << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

int main(void) {
  BarcodeHandle code = barcode_create(BARCODE_CODE39);
  if (code == NULL) {
    return Fail("No object");
  }
  if (!barcode_draw_1d(code, "ABC-123", 300, 100)) {
    return Fail("The draw failed");
  }
  int length = 0;
  const unsigned char* png = barcode_get_image_data(code, &length);
  if (length < 33 || memcmp(png, "\x89PNG\r\n\x1a\n", 8) != 0) {
    return Fail("No PNG file");
  }
  if (HeaderNumber(png + 16) != 300 || HeaderNumber(png + 20) != 100) {
    return Fail("The picture has another size");
  }

  barcode_set_output_format(code, "svg");
  if (!barcode_draw_1d(code, "ABC-123", 300, 100)) {
    return Fail("The draw of a document failed");
  }
  const char* svg = barcode_get_svg(code);
  if (strncmp(svg, "<?xml", 5) != 0 || strstr(svg, "<rect") == NULL || strstr(svg, "</svg>") == NULL) {
    return Fail("No document");
  }

  if (barcode_draw_1d(code, "", 300, 100)) {
    return Fail("An empty text was drawn");
  }
  barcode_destroy(code);
  if (strcmp(BARCODE_VERSION_STRING, EXPECTED_VERSION) != 0) {
    return Fail("The header is of version " BARCODE_VERSION_STRING);
  }
  return 0;
}
