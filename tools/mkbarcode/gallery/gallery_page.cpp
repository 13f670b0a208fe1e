#include "mkbarcode/gallery/gallery_page.h"

#include <string_view>

#include "mkbarcode/gallery/html_page.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

constexpr PageFrame kFrame = {
    .title = "libbarcode gallery",
    .introduction = "Version " BARCODE_VERSION_STRING
                    ". Each sample as PNG and as SVG, with the command and the C calls that made it. "
                    "<a href=\"labels.html\">Labels</a> are on a page of their own.",
    .footer =
        "The library draws no quiet zone: the white margin around each image is this page's, "
        "and a symbol in use needs one too.",
    .bodyClass = "symbols"};

std::string Figure(const ExhibitImage& image, std::string_view caption) {
  std::string html = "<figure>\n<div class=\"scan\">";
  if (image.failure.empty()) {
    html += Concat({"<img src=\"", HtmlEscaped(image.file), "\" alt=\"", HtmlEscaped(caption), "\">"});
  } else {
    html += Concat({"<p class=\"failed\">", HtmlEscaped(image.failure), "</p>"});
  }
  html += Concat({"</div>\n<figcaption>\n<span class=\"kind\">", HtmlEscaped(image.file), "</span>\n",
                  HtmlCode("command", CommandText(image.request, image.file)),
                  HtmlCode("calls", CallsText(image.request)), "</figcaption>\n</figure>\n"});
  return html;
}

std::string Article(const Exhibit& exhibit) {
  std::string figures;
  for (const ExhibitImage& image : exhibit.images) {
    figures += Figure(image, exhibit.caption);
  }
  return HtmlArticle(exhibit.caption, Concat({"<div class=\"pair\">\n", figures, "</div>\n"}));
}

}  // namespace

std::string GalleryPage(std::span<const Exhibit> exhibits) {
  std::vector<PageEntry> entries;
  entries.reserve(exhibits.size());
  for (const Exhibit& exhibit : exhibits) {
    entries.push_back({exhibit.type, Article(exhibit)});
  }
  return HtmlPage(kFrame, entries);
}

}  // namespace barcode::tool
