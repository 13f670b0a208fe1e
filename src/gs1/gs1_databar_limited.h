#pragma once

#include <string>
#include <string_view>

#include "gs1/databar_base.h"

namespace barcode {

// GS1 DataBar Limited (ISO/IEC 24724): a GTIN that begins with 0 or 1, given without its check digit.
class GS1DataBarLimited : public DataBarBase {
 public:
  static constexpr std::string_view kTag = "[GS1 DataBar Limited] ";

  using DataBarBase::DataBarBase;

  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;
  bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

 private:
  DataBarDrawing Drawing(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
};

}  // namespace barcode
