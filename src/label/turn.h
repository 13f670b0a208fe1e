#pragma once

#include "label/drawing.h"

namespace barcode::label {

// Whether a turn exchanges width and height.
constexpr bool TurnsAcross(Rotation rotation) {
  return rotation == Rotation::kQuarter || rotation == Rotation::kThreeQuarters;
}

// Turns an upright drawing, the picture and all in it.
void Turn(Drawing& drawing, Rotation rotation);

}  // namespace barcode::label
