#pragma once

#include <string>
#include <vector>

#include "label_proof/proof_label.h"

namespace barcode::test {

// What is wrong with a label apart from what readers see in it: the report against the request and against
// the picture, and the picture's quiet zones. One sentence each.
std::vector<std::string> FaultsOf(const ProofLabel& label);

// Where two pictures of one request, in different formats, show different symbols or different text.
std::vector<std::string> DifferencesOf(const ProofLabel& label, const ProofLabel& other);

}  // namespace barcode::test
