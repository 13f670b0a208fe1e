#pragma once

#include <optional>
#include <string>

#include "support/image.h"

namespace barcode::test {

// Decoders of the symbologies that no reader at hand knows, from the standards' own tables. They look for the
// symbol in a picture, in each of the four turns, and want its quiet zone; nothing when there is none, or
// more than one.

std::optional<std::string> DecodeMatrix2of5(const GreyImage& image);
std::optional<std::string> DecodeNec2of5(const GreyImage& image);

// The customer barcode of the Japanese postal service: its text, without check character and filling.
std::optional<std::string> DecodePostal(const GreyImage& image);

}  // namespace barcode::test
