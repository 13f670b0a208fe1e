#include "mkbarcode/gallery/label_gallery.h"

#include <filesystem>
#include <memory>
#include <set>

#include "barcode_label.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/gallery/label_page.h"
#include "mkbarcode/io.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDirectory = "labels";

struct FreeLabel {
  void operator()(BarcodeLabel* label) const { barcode_label_free(label); }
};

// The sample in one format, written into the directory.
LabelImage MakeInto(const fs::path& directory, const LabelSample& sample, const std::string& name,
                    const std::string& format) {
  const std::string request = RequestText(sample, format);
  const MadeLabel label = MakeLabel(request);
  LabelImage image{.file = Concat({kDirectory, "/", name, ".", format}),
                   .request = request,
                   .report = label.report,
                   .isMade = label.ok};
  if (label.ok) {
    WriteAll((directory / image.file).string(), label.data);
  }
  return image;
}

}  // namespace

std::string RequestText(const LabelSample& sample, std::string_view format) {
  return Concat(
      {R"({"type": ")", sample.type->name, R"(", )", sample.members, R"(, "format": ")", format, R"("})"});
}

MadeLabel MakeLabel(std::string_view request) {
  const std::unique_ptr<BarcodeLabel, FreeLabel> label(barcode_label_make(request.data(), request.size()));
  if (label == nullptr) {
    throw RunError("memory is exhausted");
  }
  MadeLabel made{
      .ok = barcode_label_ok(label.get()) == 1, .data = {}, .report = barcode_label_report(label.get())};
  std::size_t length = 0;
  if (const unsigned char* const data = barcode_label_data(label.get(), &length); data != nullptr) {
    made.data.assign(data, data + length);
  }
  return made;
}

LabelGalleryResult WriteLabelGallery(std::span<const LabelSample> samples, const std::string& directory) {
  MakeDirectory((fs::path(directory) / kDirectory).string());
  LabelGalleryResult result;
  std::vector<LabelExhibit> exhibits;
  std::set<const TypeInfo*> types;
  std::size_t numberInType = 0;
  for (const LabelSample& sample : samples) {
    if (types.insert(sample.type).second) {
      numberInType = 0;
    }
    const std::string name = Concat({sample.type->name, "-", std::to_string(++numberInType)});
    LabelExhibit exhibit{.caption = sample.caption, .type = sample.type};
    bool isAsExpected = true;
    for (const char* const format : {"png", "svg", "pdf"}) {
      exhibit.images.push_back(MakeInto(directory, sample, name, format));
      const LabelImage& image = exhibit.images.back();
      if (image.isMade == sample.isRefused) {
        isAsExpected = false;
        result.failures.push_back(Concat({image.file, " (", sample.caption, "): ", image.report}));
      }
    }
    result.made += isAsExpected ? 1 : 0;
    exhibits.push_back(std::move(exhibit));
  }
  result.types = types.size();
  result.pageFile = (fs::path(directory) / "labels.html").string();
  WriteAll(result.pageFile, LabelPage(exhibits));
  return result;
}

}  // namespace barcode::tool
