#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"
#include "gs1/gs1_128_encoder.h"

namespace barcode {

// GS1-128: Code 128 with FNC1 and application identifiers, both marked in the text; and the payment form of
// convenience stores.
class GS1_128 : public PlainLinear<GS1_128> {
 public:
  static constexpr std::string_view kTag = "[GS1-128] ";

  using PlainLinear::PlainLinear;

  // Accepts every text.
  RunVector Encode(const std::string& text) const { return ValuesToPattern(Gs1_128Values(text)); }

  std::string DisplayText(const std::string& text) const { return Gs1_128DisplayText(text); }

  // Draws the payment form: 44 digits, or 43 without their check digit, with two lines of text.
  bool DrawConvenience(const std::string& text, std::uint32_t width, std::uint32_t height);

 private:
  struct PaymentForm;

  // Validates the text, and sets m_barHeight to what the box leaves above the lines.
  PaymentForm LayoutConvenience(std::string_view text, std::uint32_t width, std::uint32_t height);
  bool DrawConvenienceRaster(std::string_view text, std::uint32_t width, std::uint32_t height);
  bool DrawConvenienceSvg(std::string_view text, std::uint32_t width, std::uint32_t height);
  void DrawConvenienceText(const PaymentForm& form, int lineWidth);
  // Pixels that the lines are set in: the bars', or, when they are not spread evenly, the box's.
  int ConvenienceLineWidth(float drawnWidth, std::uint32_t width) const;
};

}  // namespace barcode
