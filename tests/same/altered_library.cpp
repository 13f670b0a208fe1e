// A library that differs from the real one in a trifle: the recorder is to find it. Whoever loads it gets the
// other 42 functions from the library it is linked with.
#include <dlfcn.h>

#include "barcode.h"

void barcode_set_text_gap(BarcodeHandle handle, double scale) {
  using Function = decltype(&barcode_set_text_gap);
  static const auto kSetTextGap = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "barcode_set_text_gap"));
  kSetTextGap(handle, scale == 1.25 ? 1.5 : scale);
}
