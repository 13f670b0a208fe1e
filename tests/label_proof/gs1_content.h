#pragma once

#include <string>

#include "support/random_text.h"

namespace barcode::test {

// A random element string by the rules of the GS1 General Specifications.
struct Gs1Content {
  std::string typed;     // in one of the ways that people write it
  std::string data;      // as readers report it: 0x1D behind fields of variable length that another follows
  std::string elements;  // "(01)04912345678904(10)A"
};

// mostCharacters: of identifiers and data together.
Gs1Content RandomGs1(RandomText& random, int mostCharacters);

}  // namespace barcode::test
