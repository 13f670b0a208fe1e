#pragma once

#include <vector>

#include "label/font.h"

namespace barcode::label {

// A piece of an outline as the font has it.
struct ExactPoint {
  double x = 0;
  double y = 0;
};
struct ExactPiece {
  OutlinePiece::Kind kind = OutlinePiece::Kind::kMove;
  ExactPoint to;
  ExactPoint control;
};

// The same outline with fewer curves: those that follow one another are one wherever that is nowhere further
// off than the tolerance.
std::vector<ExactPiece> WithFewerCurves(const std::vector<ExactPiece>& pieces, double tolerance);

}  // namespace barcode::label
