#include "mkbarcode/gallery/label_page.h"

#include <nlohmann/json.hpp>
#include <string_view>

#include "barcode_label.h"
#include "mkbarcode/gallery/html_page.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using Json = nlohmann::json;

constexpr PageFrame kFrame = {
    .title = "libbarcode labels",
    .introduction = "Version " BARCODE_LABEL_VERSION_STRING
                    ". Each label as PNG, SVG and PDF, with the request and the report of the first. "
                    "<a href=\"index.html\">Symbols without margin</a> are on a page of their own.",
    .footer =
        "The dashed line is this page's and shows where a picture ends: the quiet zone is part of it. "
        "Pictures with a physical size have it in SVG and PDF; browsers show the dots of a PNG.",
    .bodyClass = "labels"};

// "code: message", as warnings and errors have them.
std::string Remark(const Json& remark) {
  return Concat({"<code>", HtmlEscaped(remark.value("code", "")), "</code> ",
                 HtmlEscaped(remark.value("message", ""))});
}

std::string Remarks(const Json& report) {
  std::string html;
  for (const Json& warning : report.value("warnings", Json::array())) {
    html += Concat({"<li>", Remark(warning), "</li>\n"});
  }
  return html.empty() ? html : Concat({"<ul class=\"remarks\">\n", html, "</ul>\n"});
}

bool IsDocument(const LabelImage& image) {
  return image.file.ends_with(".pdf");
}

std::string Figure(const LabelImage& image, std::string_view caption) {
  const std::string file = HtmlEscaped(image.file);
  const std::string shown = IsDocument(image)
                                ? Concat({"<a href=\"", file, "\">The document</a>"})
                                : Concat({"<img src=\"", file, "\" alt=\"", HtmlEscaped(caption), "\">"});
  return Concat({"<figure>\n<div class=\"scan\">", shown, "</div>\n<figcaption>\n<span class=\"kind\">", file,
                 "</span>\n</figcaption>\n</figure>\n"});
}

std::string Article(const LabelExhibit& exhibit) {
  std::string figures;
  for (const LabelImage& image : exhibit.images) {
    if (image.isMade) {
      figures += Figure(image, exhibit.caption);
    }
  }
  std::string html;
  if (!figures.empty()) {
    html += Concat({"<div class=\"pair\">\n", figures, "</div>\n"});
  }
  const LabelImage& first = exhibit.images.front();
  const Json report = Json::parse(first.report);
  html += "<div class=\"told\">\n";
  if (const auto error = report.find("error"); error != report.end()) {
    html += Concat({"<p class=\"failed\">", Remark(*error), "</p>\n"});
  }
  html +=
      Concat({Remarks(report), "<span class=\"kind\">request</span>\n", HtmlCode("command", first.request),
              "<span class=\"kind\">report</span>\n", HtmlCode("command", first.report), "</div>\n"});
  return HtmlArticle(exhibit.caption, html);
}

}  // namespace

std::string LabelPage(std::span<const LabelExhibit> exhibits) {
  std::vector<PageEntry> entries;
  entries.reserve(exhibits.size());
  for (const LabelExhibit& exhibit : exhibits) {
    entries.push_back({exhibit.type, Article(exhibit)});
  }
  return HtmlPage(kFrame, entries);
}

}  // namespace barcode::tool
