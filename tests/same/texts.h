#pragma once

#include <string>
#include <vector>

#include "support/random_text.h"

namespace barcode::same {

// One of the values.
template <class T, std::size_t kCount>
const T& OneOf(test::RandomText& random, const T (&values)[kCount]) {
  return values[random.Number(0, static_cast<int>(kCount) - 1)];
}

// Once in so many times.
inline bool OnceIn(test::RandomText& random, int times) {
  return random.Number(1, times) == 1;
}

// A text for a symbology: mostly valid, otherwise nearly so, of a length at a limit, or anything. Never with
// a zero byte.
std::string TextFor(test::RandomText& random, int type);

// A text that a symbology accepts, by and large.
std::string ValidText(test::RandomText& random, int type);

// A text for barcode_draw_convenience.
std::string PaymentText(test::RandomText& random);

// Ordinary texts of a symbology, always the same.
std::vector<std::string> OrdinaryTexts(int type);

}  // namespace barcode::same
