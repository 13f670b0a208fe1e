#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"
#include "layout/guard_bar_layout.h"

namespace barcode {

// The draw of the EAN and UPC symbologies: extended layout, with long guard bars and the digits grouped
// between them, or the plain linear draw.
class GuardBarSymbology : public BarcodeBase1D {
 public:
  void SetExtendedGuard(bool extended) { m_extendedGuard = extended; }

  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;
  bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

  // The digits of the symbol, check digit included, which are also its text. Throws std::runtime_error for a
  // text that is no code.
  virtual std::string CompleteCode(const std::string& text) const = 0;

  // The pattern of the symbol; throws std::runtime_error.
  virtual RunVector Encode(const std::string& text) const = 0;

 protected:
  // tag: the prefix of error lines. style: outlives the object.
  GuardBarSymbology(std::string_view format, std::string_view tag, const GuardBarStyle& style)
      : BarcodeBase1D(format), m_tag(tag), m_style(style) {}

 private:
  LinearSymbol Symbol(const std::string& text) const;
  GuardBarBox Box(int x, int y, std::uint32_t width, std::uint32_t height) const;
  bool DrawExtended(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
  bool DrawExtendedSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
  void DrawDigits(const GuardBars& bars, std::string_view code, const GuardBarBox& box);
  void DrawSvgDigits(const GuardBars& bars, std::string_view code, const GuardBarBox& box);

  std::string_view m_tag;
  const GuardBarStyle& m_style;
  bool m_extendedGuard = true;
};

}  // namespace barcode
