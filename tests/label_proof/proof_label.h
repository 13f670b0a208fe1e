#pragma once

#include <cstdint>
#include <string>

#include "label_proof/content.h"
#include "label_proof/look.h"
#include "label_proof/picture.h"

namespace barcode::test {

enum class PictureFormat : std::uint8_t { kPng, kSvg, kPdf };

// A random label, from the request to the picture that readers get.
struct ProofLabel {
  Symbology symbology = Symbology::kCode39;
  int number = 0;  // of its type; with the seed it says all
  Content content;
  Json request;
  MadeLabel made;
  PictureFormat format = PictureFormat::kPng;
  GreyImage picture{0, 0, {}};  // a PDF's comes later
  std::string fault;            // why there is none, "" when there is
};

// The label of a type and a number. A pure function of its arguments and the library.
ProofLabel MakeProofLabel(const SymbologyInfo& info, std::uint64_t seed, int number);

// The same request in another format, or with other fields.
ProofLabel WithFormat(const ProofLabel& label, PictureFormat format);
ProofLabel WithRequest(const ProofLabel& label, const Json& request);

// The number of a field of the report; 0 when it has none.
int NumberIn(const Json& object, const char* field);

// Of the report.
int ModuleOf(const ProofLabel& label);
// Quarter turns clockwise that the request asks for.
int QuartersOf(const ProofLabel& label);

}  // namespace barcode::test
