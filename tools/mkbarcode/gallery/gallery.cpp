#include "mkbarcode/gallery/gallery.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string_view>
#include <utility>

#include "label/label.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/gallery/counterpart.h"
#include "mkbarcode/gallery/exhibit.h"
#include "mkbarcode/gallery/page.h"
#include "mkbarcode/gallery/picture.h"
#include "mkbarcode/io.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using nlohmann::ordered_json;

// The symbol and its text without the quiet zone around them.
PictureArea AreaWithinQuietZone(const json& report) {
  const std::size_t module = report["module"];
  const json& quietZone = report["quiet_zone"];
  const auto margin = [&](const char* side) { return quietZone[side].get<std::size_t>() * module; };
  return {.left = margin("left"),
          .top = margin("top"),
          .width = report["width"].get<std::size_t>() - margin("left") - margin("right"),
          .height = report["height"].get<std::size_t>() - margin("top") - margin("bottom")};
}

// Files go into the directory, their exhibits and what failed into lists.
class Curator {
 public:
  Curator(std::string directory, bool verbose) : m_directory(std::move(directory)), m_verbose(verbose) {}

  void Add(const LabelSample& sample);
  // Nothing is added when a label of the type has a picture of the same beside it, in whatever size.
  void Add(const LibrarySample& sample);
  GalleryResult Finish();

 private:
  std::string MakeLabel(const LabelSample& sample, LabelExhibit& exhibit, bool& asExpected);
  std::string DrawInto(LibraryPicture& picture, std::string_view caption);
  void AddLibraryPicture(LabelExhibit& exhibit, std::string_view labelPng);
  bool HasCounterpart(const LibrarySample& sample) const;
  void Write(const std::string& file, std::string_view bytes) const {
    WriteAll((fs::path(m_directory) / file).string(), bytes);
  }

  std::string m_directory;
  bool m_verbose;
  std::map<int, TypeExhibits> m_types;
  GalleryResult m_result;
};

// Every format into its file. Returns the bytes of the PNG; the report that is kept is the SVG's.
std::string Curator::MakeLabel(const LabelSample& sample, LabelExhibit& exhibit, bool& asExpected) {
  std::string png;
  for (const std::string_view format : {"png", "svg", "pdf"}) {
    const std::string request = RequestText(sample, format);
    const label::Label label = label::MakeFromJson(request);
    const std::string file = Concat({kLabelDirectory, "/", exhibit.name, ".", format});
    if (label.ok == sample.isRefused) {
      asExpected = false;
      m_result.failures.push_back(Concat({file, " (", sample.caption, "): ", label.report}));
    }
    if (label.ok) {
      Write(file, label.data);
    }
    if (format == "png") {
      png = label.data;
    }
    if (format == "svg") {
      exhibit.request = ordered_json::parse(request);
      exhibit.report = json::parse(label.report);
    }
  }
  return png;
}

// Both formats into their files. Returns the bytes of the PNG.
std::string Curator::DrawInto(LibraryPicture& picture, std::string_view caption) {
  std::string png;
  for (const std::string_view format : {"png", "svg"}) {
    DrawRequest request = picture.request;
    request.format = format;
    const std::string file = Concat({kLibraryDirectory, "/", picture.name, ".", format});
    std::string bytes;
    try {
      bytes = DrawImage(request, m_verbose);
    } catch (const std::exception& error) {
      picture.failure = error.what();
      m_result.failures.push_back(Concat({file, " (", caption, "): ", error.what()}));
      continue;
    }
    Write(file, bytes);
    if (format == "png") {
      png = std::move(bytes);
    }
  }
  if (!png.empty()) {
    const Picture decoded = DecodePng(png);
    picture.width = decoded.width;
    picture.height = decoded.height;
  }
  m_result.libraryPictures += picture.failure.empty() ? 1 : 0;
  return png;
}

void Curator::AddLibraryPicture(LabelExhibit& exhibit, std::string_view labelPng) {
  const std::optional<DrawRequest> request =
      IsOffered(*exhibit.type) ? LibraryCounterpart(*exhibit.type, exhibit.request, exhibit.report)
                               : std::nullopt;
  if (!request) {
    return;
  }
  exhibit.library = LibraryPicture{.name = exhibit.name, .request = *request};
  const std::string png = DrawInto(*exhibit.library, exhibit.caption);
  if (!png.empty() && !exhibit.request.contains("rotate")) {
    exhibit.isSamePicture =
        Cropped(DecodePng(labelPng), AreaWithinQuietZone(exhibit.report)) == DecodePng(png);
  }
}

void Curator::Add(const LabelSample& sample) {
  TypeExhibits& exhibits = m_types[sample.type->number];
  exhibits.type = sample.type;
  LabelExhibit exhibit{.caption = sample.caption,
                       .type = sample.type,
                       .name = Concat({sample.type->name, "-", std::to_string(exhibits.labels.size() + 1)}),
                       .request = {},
                       .report = {}};
  bool asExpected = true;
  const std::string png = MakeLabel(sample, exhibit, asExpected);
  m_result.labels += asExpected ? 1 : 0;
  if (exhibit.report["ok"]) {
    AddLibraryPicture(exhibit, png);
  }
  exhibits.labels.push_back(std::move(exhibit));
}

bool Curator::HasCounterpart(const LibrarySample& sample) const {
  const auto type = m_types.find(sample.request.type->number);
  if (type == m_types.end()) {
    return false;
  }
  const auto isTheSame = [&](const LabelExhibit& exhibit) {
    if (!exhibit.library) {
      return false;
    }
    DrawRequest request = exhibit.library->request;
    request.size = sample.request.size;
    return request == sample.request;
  };
  return std::ranges::any_of(type->second.labels, isTheSame);
}

void Curator::Add(const LibrarySample& sample) {
  const TypeInfo& type = *sample.request.type;
  if (!IsOffered(type) || HasCounterpart(sample)) {
    return;
  }
  TypeExhibits& exhibits = m_types[type.number];
  exhibits.type = &type;
  LibraryExhibit exhibit{
      .caption = sample.caption,
      .picture = {.name = Concat({type.name, "-own-", std::to_string(exhibits.library.size() + 1)}),
                  .request = sample.request}};
  DrawInto(exhibit.picture, exhibit.caption);
  exhibits.library.push_back(std::move(exhibit));
}

GalleryResult Curator::Finish() {
  std::vector<TypeExhibits> types;
  for (auto& [number, exhibits] : m_types) {
    types.push_back(std::move(exhibits));
  }
  if (types.empty()) {
    throw RunError("there is nothing that could be shown");
  }
  m_result.types = types.size();
  m_result.indexFile = (fs::path(m_directory) / "index.html").string();
  WriteAll(m_result.indexFile, GalleryPage(types));
  return std::move(m_result);
}

}  // namespace

GalleryResult WriteGallery(std::span<const LabelSample> labels, std::span<const LibrarySample> samples,
                           const std::string& directory, bool verbose) {
  for (const std::string_view part : {kLabelDirectory, kLibraryDirectory}) {
    MakeDirectory((fs::path(directory) / part).string());
  }
  Curator curator(directory, verbose);
  for (const LabelSample& sample : labels) {
    curator.Add(sample);
  }
  for (const LibrarySample& sample : samples) {
    curator.Add(sample);
  }
  return curator.Finish();
}

}  // namespace barcode::tool
