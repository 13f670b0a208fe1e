#pragma once

namespace barcode::label {

inline constexpr double kMillimetresPerInch = 25.4;

}  // namespace barcode::label
