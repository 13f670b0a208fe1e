#include "text/text_spacing.h"

#include <algorithm>

#include "base/numeric.h"

namespace barcode {
namespace {

float MarginFactor(std::int64_t barsWidth) {
  if (barsWidth < 100) {
    return 0.03F;
  }
  return barsWidth <= 400 ? 0.05F : 0.07F;
}

}  // namespace

EvenSpacing EvenSpacing::Across(int x, std::int64_t barsWidth, std::size_t length, int fontSize,
                                float marginScale) {
  const std::int64_t margin =
      TruncToInt(static_cast<float>(barsWidth) * MarginFactor(barsWidth) * marginScale);
  const std::int64_t room = barsWidth - 2 * margin;
  const auto gaps = static_cast<std::int64_t>(length) - 1;
  const std::int64_t pitch = std::max<std::int64_t>(fontSize / 2, gaps > 0 ? room / gaps : room);
  const std::int64_t span = gaps * pitch;
  return {x + (barsWidth - span) / 2, pitch};
}

}  // namespace barcode
