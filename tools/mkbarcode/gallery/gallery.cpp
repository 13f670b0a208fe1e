#include "mkbarcode/gallery/gallery.h"

#include <filesystem>
#include <set>

#include "mkbarcode/errors.h"
#include "mkbarcode/gallery/gallery_page.h"
#include "mkbarcode/io.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

namespace fs = std::filesystem;

// The sample in one format, drawn into the directory.
ExhibitImage DrawInto(const fs::path& directory, const Sample& sample, const std::string& name,
                      const std::string& format, bool verbose) {
  ExhibitImage image{Concat({name, ".", format}), sample.request, {}};
  image.request.format = format;
  std::string bytes;
  try {
    bytes = DrawImage(image.request, verbose);
  } catch (const std::exception& error) {
    image.failure = error.what();
    return image;
  }
  WriteAll((directory / image.file).string(), bytes);
  return image;
}

}  // namespace

GalleryResult WriteGallery(std::span<const Sample> samples, const std::string& directory, bool verbose) {
  MakeDirectory(directory);
  GalleryResult result;
  std::vector<Exhibit> exhibits;
  std::set<const TypeInfo*> types;
  std::size_t numberInType = 0;
  for (const Sample& sample : samples) {
    const TypeInfo* const type = sample.request.type;
    if (!IsOffered(*type)) {
      continue;
    }
    if (types.insert(type).second) {
      numberInType = 0;
    }
    const std::string name = Concat({type->name, "-", std::to_string(++numberInType)});
    Exhibit exhibit{sample.caption, type, {}};
    for (const char* const format : {"png", "svg"}) {
      exhibit.images.push_back(DrawInto(directory, sample, name, format, verbose));
      const ExhibitImage& image = exhibit.images.back();
      if (!image.failure.empty()) {
        result.failures.push_back(Concat({image.file, " (", sample.caption, "): ", image.failure}));
      }
    }
    if (exhibit.IsComplete()) {
      ++result.drawn;
    }
    exhibits.push_back(std::move(exhibit));
  }
  if (exhibits.empty()) {
    throw RunError("this build of the library offers no type that could be shown");
  }
  result.types = types.size();
  result.indexFile = (fs::path(directory) / "index.html").string();
  WriteAll(result.indexFile, GalleryPage(exhibits));
  return result;
}

}  // namespace barcode::tool
