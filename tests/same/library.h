#pragma once

#include <string>

#include "barcode.h"

namespace barcode::same {

// The 43 functions of a library that is loaded at run time.
struct Library {
  // Throws std::runtime_error when the file cannot be loaded or lacks a function. It stays loaded.
  explicit Library(const std::string& path);

  decltype(&barcode_create) create;
  decltype(&barcode_destroy) destroy;
  decltype(&barcode_set_output_format) setOutputFormat;
  decltype(&barcode_is_svg_output) isSvgOutput;
  decltype(&barcode_set_foreground_color) setForegroundColour;
  decltype(&barcode_set_background_color) setBackgroundColour;
  decltype(&barcode_set_fit_width) setFitWidth;
  decltype(&barcode_set_px_adjust_black) setPxAdjustBlack;
  decltype(&barcode_set_px_adjust_white) setPxAdjustWhite;
  decltype(&barcode_set_show_text) setShowText;
  decltype(&barcode_set_text_even_spacing) setTextEvenSpacing;
  decltype(&barcode_set_text_font_scale) setTextFontScale;
  decltype(&barcode_set_text_gap) setTextGap;
  decltype(&barcode_set_show_start_stop) setShowStartStop;
  decltype(&barcode_set_extended_guard) setExtendedGuard;
  decltype(&barcode_set_code_mode) setCodeMode;
  decltype(&barcode_set_string_encoding) setStringEncoding;
  decltype(&barcode_set_version) setVersion;
  decltype(&barcode_set_error_correction_level) setErrorCorrectionLevel;
  decltype(&barcode_set_encode_mode) setEncodeMode;
  decltype(&barcode_set_code_size) setCodeSize;
  decltype(&barcode_set_encode_scheme) setEncodeScheme;
  decltype(&barcode_set_columns) setColumns;
  decltype(&barcode_set_rows) setRows;
  decltype(&barcode_set_error_level) setErrorLevel;
  decltype(&barcode_set_aspect_ratio) setAspectRatio;
  decltype(&barcode_set_y_height) setYHeight;
  decltype(&barcode_set_symbol_type_14) setSymbolType14;
  decltype(&barcode_get_symbol_type_14) getSymbolType14;
  decltype(&barcode_set_symbol_type_exp) setSymbolTypeExp;
  decltype(&barcode_set_no_of_columns) setNoOfColumns;
  decltype(&barcode_draw_1d) draw1D;
  decltype(&barcode_draw_2d) draw2D;
  decltype(&barcode_draw_2d_rect) draw2DRect;
  decltype(&barcode_draw_convenience) drawConvenience;
  decltype(&barcode_draw_stacked) drawStacked;
  decltype(&barcode_draw_yubin) drawYubin;
  decltype(&barcode_draw_yubin_with_width) drawYubinWithWidth;
  decltype(&barcode_encode_14) encode14;
  decltype(&barcode_get_base64) getBase64;
  decltype(&barcode_get_image_data) getImageData;
  decltype(&barcode_get_svg) getSvg;
  decltype(&barcode_calculate_check_digit_14) calculateCheckDigit14;
};

}  // namespace barcode::same
