#pragma once

#include "gs1/gs1_syntax.h"

namespace barcode {

// Refuses elements that contradict each other: the same AI with different data, and the pairs that the
// standard calls invalid. Throws Gs1SyntaxError.
void CheckGs1Pairs(const std::vector<Gs1Element>& elements);

}  // namespace barcode
