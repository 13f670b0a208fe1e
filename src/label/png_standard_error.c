/*
 * The stderr of libpng's archive in the self-contained library. Debian compiles the archive for programs: of
 * a shared library nothing stands in the way of linking it but the stderr of libpng's default handlers, which
 * nobody calls, since the writer of PNG files brings its own.
 */
#include <stdio.h>

__attribute__((visibility("hidden"))) FILE* barcode_label_png_stderr;

__attribute__((constructor)) static void SetStandardError(void) {
  barcode_label_png_stderr = stderr;
}
