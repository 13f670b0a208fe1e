#include "mkbarcode/library/drawn_width.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace barcode::tool {
namespace {

constexpr std::string_view kPrinted = "実際の描画サイズ: width=";
constexpr std::string_view kRectangle = "<rect x=\"";
constexpr std::string_view kWidth = " width=\"";

// The number at the beginning of a text.
std::optional<double> LeadingNumber(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<double> PrintedWidth(std::string_view diagnostics) {
  const std::size_t place = diagnostics.rfind(kPrinted);
  return place == std::string_view::npos ? std::nullopt
                                         : LeadingNumber(diagnostics.substr(place + kPrinted.size()));
}

double WidthOfDocument(std::string_view svg) {
  double width = 0;
  // The first rectangle is the background.
  std::size_t place = svg.find(kRectangle);
  while (place != std::string_view::npos) {
    place = svg.find(kRectangle, place + kRectangle.size());
    const std::size_t widthPlace = svg.find(kWidth, place);
    if (widthPlace == std::string_view::npos) {
      break;
    }
    const double x = LeadingNumber(svg.substr(place + kRectangle.size())).value_or(0);
    width = std::max(width, x + LeadingNumber(svg.substr(widthPlace + kWidth.size())).value_or(0));
  }
  return width;
}

}  // namespace barcode::tool
