#include "same/library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace barcode::same {
namespace {

void* Load(const std::string& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    throw std::runtime_error(dlerror());
  }
  return library;
}

template <class Function>
void Resolve(void* library, const char* name, Function& function) {
  // POSIX lets a data pointer from dlsym become a function pointer.
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) {
    throw std::runtime_error(dlerror());
  }
}

}  // namespace

Library::Library(const std::string& path) {
  // A path without a slash would be searched for among the system's libraries.
  void* const library = Load(path.find('/') == std::string::npos ? "./" + path : path);
  Resolve(library, "barcode_create", create);
  Resolve(library, "barcode_destroy", destroy);
  Resolve(library, "barcode_set_output_format", setOutputFormat);
  Resolve(library, "barcode_is_svg_output", isSvgOutput);
  Resolve(library, "barcode_set_foreground_color", setForegroundColour);
  Resolve(library, "barcode_set_background_color", setBackgroundColour);
  Resolve(library, "barcode_set_fit_width", setFitWidth);
  Resolve(library, "barcode_set_px_adjust_black", setPxAdjustBlack);
  Resolve(library, "barcode_set_px_adjust_white", setPxAdjustWhite);
  Resolve(library, "barcode_set_show_text", setShowText);
  Resolve(library, "barcode_set_text_even_spacing", setTextEvenSpacing);
  Resolve(library, "barcode_set_text_font_scale", setTextFontScale);
  Resolve(library, "barcode_set_text_gap", setTextGap);
  Resolve(library, "barcode_set_show_start_stop", setShowStartStop);
  Resolve(library, "barcode_set_extended_guard", setExtendedGuard);
  Resolve(library, "barcode_set_code_mode", setCodeMode);
  Resolve(library, "barcode_set_string_encoding", setStringEncoding);
  Resolve(library, "barcode_set_version", setVersion);
  Resolve(library, "barcode_set_error_correction_level", setErrorCorrectionLevel);
  Resolve(library, "barcode_set_encode_mode", setEncodeMode);
  Resolve(library, "barcode_set_code_size", setCodeSize);
  Resolve(library, "barcode_set_encode_scheme", setEncodeScheme);
  Resolve(library, "barcode_set_columns", setColumns);
  Resolve(library, "barcode_set_rows", setRows);
  Resolve(library, "barcode_set_error_level", setErrorLevel);
  Resolve(library, "barcode_set_aspect_ratio", setAspectRatio);
  Resolve(library, "barcode_set_y_height", setYHeight);
  Resolve(library, "barcode_set_symbol_type_14", setSymbolType14);
  Resolve(library, "barcode_get_symbol_type_14", getSymbolType14);
  Resolve(library, "barcode_set_symbol_type_exp", setSymbolTypeExp);
  Resolve(library, "barcode_set_no_of_columns", setNoOfColumns);
  Resolve(library, "barcode_draw_1d", draw1D);
  Resolve(library, "barcode_draw_2d", draw2D);
  Resolve(library, "barcode_draw_2d_rect", draw2DRect);
  Resolve(library, "barcode_draw_convenience", drawConvenience);
  Resolve(library, "barcode_draw_stacked", drawStacked);
  Resolve(library, "barcode_draw_yubin", drawYubin);
  Resolve(library, "barcode_draw_yubin_with_width", drawYubinWithWidth);
  Resolve(library, "barcode_encode_14", encode14);
  Resolve(library, "barcode_get_base64", getBase64);
  Resolve(library, "barcode_get_image_data", getImageData);
  Resolve(library, "barcode_get_svg", getSvg);
  Resolve(library, "barcode_calculate_check_digit_14", calculateCheckDigit14);
}

}  // namespace barcode::same
