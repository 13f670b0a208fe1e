#pragma once

#include <span>
#include <string>

#include "mkbarcode/gallery/exhibit.h"

namespace barcode::tool {

// The HTML page, complete in itself but for the pictures and documents: a section for each symbology, and an
// index of them.
std::string GalleryPage(std::span<const TypeExhibits> types);

}  // namespace barcode::tool
