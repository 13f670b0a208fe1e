/* Draws one symbol with libbarcode and writes it as PNG or SVG.
 *
 *     library NUMBER TEXT WIDTH HEIGHT FILE        library 0 ABC-123 300 100 code39.png
 *
 * NUMBER is a symbology of enum BarcodeSymbology; FILE ends in .png or .svg. The library prints what it does
 * on standard output, and on standard error why it does not draw. Exit status: 0 written, 1 not drawn or not
 * written, 2 wrong usage. */
#include <barcode.h>
#include <errno.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* 1 when the text is a whole number from `least` to `most`, stored in *number. */
static int ReadNumber(const char* text, int least, int most, int* number) {
  char* end = NULL;
  errno = 0;
  const long value = strtol(text, &end, 10);
  if (end == text || *end != '\0' || errno != 0 || value < least || value > most) {
    return 0;
  }
  *number = (int)value;
  return 1;
}

/* 0 when all of it is written. */
static int Write(const void* data, size_t length, const char* path) {
  FILE* const file = fopen(path, "wb");
  int isWritten = file != NULL && fwrite(data, 1, length, file) == length;
  if (file != NULL && fclose(file) != 0) {
    isWritten = 0;
  }
  if (!isWritten) {
    fprintf(stderr, "library: cannot write %s: %s\n", path, strerror(errno));
  }
  return isWritten ? 0 : 1;
}

/* Fetches what was drawn, and writes it. */
static int WriteResult(BarcodeHandle code, const char* path) {
  if (barcode_is_svg_output(code)) {
    const char* const svg = barcode_get_svg(code);
    return Write(svg, strlen(svg), path);
  }
  int length = 0;
  const unsigned char* const png = barcode_get_image_data(code, &length);
  if (png == NULL) {
    fputs("library: there is no picture: a side is 0, or longer than PNG allows\n", stderr);
    return 1;
  }
  return Write(png, (size_t)length, path);
}

int main(int argc, char** argv) {
  int type = 0;
  int width = 0;
  int height = 0;
  if (argc != 6 || !ReadNumber(argv[1], BARCODE_CODE39, BARCODE_PDF417, &type) ||
      !ReadNumber(argv[3], 1, INT_MAX, &width) || !ReadNumber(argv[4], 1, INT_MAX, &height)) {
    fputs("Usage: library NUMBER TEXT WIDTH HEIGHT FILE\n", stderr);
    return 2;
  }
  BarcodeHandle code = barcode_create(type);
  if (code == NULL) {
    fputs("library: memory is exhausted\n", stderr);
    return 1;
  }
  const char* const suffix = strrchr(argv[5], '.');
  if (suffix != NULL && strcmp(suffix, ".svg") == 0) {
    barcode_set_output_format(code, "svg");
  }
  int status = 1;
  if (barcode_draw_1d(code, argv[2], width, height)) {
    status = WriteResult(code, argv[5]);
  } else {
    fputs("library: the text was not drawn\n", stderr);
  }
  barcode_destroy(code);
  return status;
}
