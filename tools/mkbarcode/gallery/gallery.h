#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "mkbarcode/gallery/label_samples.h"
#include "mkbarcode/gallery/library_samples.h"

namespace barcode::tool {

struct GalleryResult {
  std::size_t types = 0;              // symbologies shown
  std::size_t labels = 0;             // that came out as expected, in every format
  std::size_t libraryPictures = 0;    // drawn, in both formats
  std::vector<std::string> failures;  // one line for each picture that did not come out
  std::string indexFile;
};

// Makes the labels in every format and, through the functions of barcode.h, the pictures of the same texts
// and the samples of the library's own that are no such picture; writes them into the directory, which is
// made where it is missing, and index.html, which shows them. What does not come out is recorded, and the
// others go on. Throws RunError when a file cannot be written and when there is nothing that could be shown.
GalleryResult WriteGallery(std::span<const LabelSample> labels, std::span<const LibrarySample> samples,
                           const std::string& directory, bool verbose);

}  // namespace barcode::tool
