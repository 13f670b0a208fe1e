#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace barcode::test {

// Keeps the order of its fields, so that a request looks as its author wrote it.
using Json = nlohmann::ordered_json;

// What the library made of a request.
// NOLINTNEXTLINE(bugprone-exception-escape): moving JSON does not throw, which its author leaves unsaid
struct MadeLabel {
  bool ok = false;
  std::string data;
  std::string mediaType;
  Json report;  // discarded when it was no JSON
};

// The label of a request, by way of the library's C functions.
MadeLabel MakeLabel(const std::string& request);

}  // namespace barcode::test
