#include "mkbarcode/gallery/page.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "barcode.h"
#include "mkbarcode/gallery/json_text.h"
#include "mkbarcode/gallery/page_assets.h"
#include "mkbarcode/gallery/snippets.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using nlohmann::json;

constexpr std::string_view kPackagesNote =
    "The tabs of Python and Node show the packages <code>libbarcode</code> of pip and npm, which make "
    "packages builds.";

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<link rel="icon" href="data:,">
<title>libbarcode gallery</title>
<style>)";

constexpr std::string_view kIntroduction =
    R"(<header>
<h1>libbarcode gallery</h1>
<p>Version )" BARCODE_VERSION_STRING
    R"(. Labels of every symbology, made by the label library: the standard’s symbol with
its quiet zone and its text. Beside each, where it differs, the picture that the functions of <code>barcode.h</code> draw
of the same. Each comes with the code that writes it.</p>
<p>)";

constexpr std::string_view kFooter = R"(<footer>
<p>A label ends where the grey begins: its quiet zone is part of it. The other pictures have none; the white around them
is this page’s. Pictures wider than the window are shown smaller; each leads to the picture as it is. Labels with a
physical size have it in SVG and PDF, and are shown here by their dots.</p>
</footer>
)";

constexpr std::string_view kLiterally =
    "<h3 class=\"literally\">The library, literally</h3>\n<p class=\"about\">More of what the functions of "
    "<code>barcode.h</code> draw: exactly what they are told, into the box that they are given.</p>\n";

constexpr std::string_view kLibrarySide = "The library, literally";

std::string Remark(const json& remark) {
  return Concat({"<code>", HtmlEscaped(remark.value("code", "")), "</code> ",
                 HtmlEscaped(remark.value("message", ""))});
}

std::string Remarks(const json& report) {
  std::string html;
  for (const json& warning : report.value("warnings", json::array())) {
    html += Concat({"<li>", Remark(warning), "</li>\n"});
  }
  return html.empty() ? html : Concat({"<ul class=\"remarks\">\n", html, "</ul>\n"});
}

// The words of a command each in an element, so that lines break between them only.
std::string CommandHtml(std::string_view command) {
  std::string html = "<span>";
  bool isQuoted = false;
  for (const char c : command) {
    isQuoted = isQuoted != (c == '\'');
    const std::string text = HtmlEscaped(std::string_view(&c, 1));
    if (c == '\n') {
      return Concat({html, "</span>\n"});
    }
    html += c == ' ' && !isQuoted ? "</span> <span>" : text;
  }
  return html;
}

std::string CodeHtml(const Snippet& snippet) {
  return snippet.language == Language::kShell ? CommandHtml(snippet.code) : HtmlEscaped(snippet.code);
}

// Numbers the groups of tabs, which browsers tell apart by their names.
class PageWriter {
 public:
  std::string Section(const TypeExhibits& exhibits);

 private:
  std::string Tabs(std::span<const Snippet> snippets, std::string_view file);
  std::string Article(const LabelExhibit& exhibit);
  std::string Article(const LibraryExhibit& exhibit);
  std::string LabelSide(const LabelExhibit& exhibit);
  std::string BesideLabel(const LabelExhibit& exhibit);
  std::string RefusedSides(const LabelExhibit& exhibit);
  std::string LibraryTabs(const LibraryPicture& picture);
  std::string LabelTabs(const LabelExhibit& exhibit);

  std::size_t m_groups = 0;
};

// `file` is the one that the code writes, as the page finds it.
std::string PageWriter::Tabs(std::span<const Snippet> snippets, std::string_view file) {
  const std::string group = Concat({"code-", std::to_string(++m_groups)});
  std::string choices;
  std::string blocks;
  for (const Snippet& snippet : snippets) {
    const std::string_view word = WordOf(snippet.language);
    const std::string id = Concat({group, "-", word});
    choices += Concat({"<input type=\"radio\" class=\"", word, "\" name=\"", group, "\" id=\"", id,
                       "\" value=\"", word, "\"", snippet.language == Language::kShell ? " checked" : "",
                       "><label for=\"", id, "\">", TitleOf(snippet.language), "</label>\n"});
    blocks += Concat({"<pre class=\"", word, "\"><code>", CodeHtml(snippet), "</code></pre>\n"});
  }
  return Concat({"<div class=\"code\" role=\"group\" aria-label=\"Code\" data-file=\"", HtmlEscaped(file),
                 "\">\n", choices, "<button type=\"button\" class=\"copy\" hidden>Copy</button>\n", blocks,
                 "</div>\n"});
}

std::string FileOf(std::string_view directory, std::string_view name, std::string_view suffix) {
  return Concat({directory, "/", name, ".", suffix});
}

struct Shown {
  std::string_view directory;
  std::string_view name;
  std::string_view suffix;  // of the picture that is shown
  std::size_t width;
  std::size_t height;
};

std::string Figure(const Shown& shown, std::string_view caption, std::string_view size,
                   std::span<const std::string_view> formats) {
  const std::string file = HtmlEscaped(FileOf(shown.directory, shown.name, shown.suffix));
  std::string links;
  for (const std::string_view format : formats) {
    const std::string_view title = format == "png" ? "PNG" : format == "svg" ? "SVG" : "PDF";
    links += Concat(
        {"<a href=\"", HtmlEscaped(FileOf(shown.directory, shown.name, format)), "\">", title, "</a>"});
  }
  return Concat({"<figure>\n<div class=\"stage\"><a href=\"", file, "\"><img src=\"", file, "\" alt=\"",
                 HtmlEscaped(caption), "\" width=\"", std::to_string(shown.width), "\" height=\"",
                 std::to_string(shown.height),
                 "\" loading=\"lazy\" decoding=\"async\"></a></div>\n<figcaption><span>", size,
                 "</span><span>", links, "</span></figcaption>\n</figure>\n"});
}

std::string PixelSize(std::size_t width, std::size_t height) {
  return Concat({std::to_string(width), " × ", std::to_string(height), " pixels"});
}

std::string LabelSize(const json& report) {
  std::string size = PixelSize(report["width"], report["height"]);
  if (report.contains("width_mm")) {
    size += Concat({", ", report["width_mm"].dump(), " × ", report["height_mm"].dump(), " mm"});
  }
  return size;
}

std::string SideStart(std::string_view kind, std::string_view extraClass = "") {
  return Concat({"<div class=\"side", extraClass, "\">\n<p class=\"kind\">", kind, "</p>\n"});
}

// `width`: of the widest picture, in pixels; with less room for each the sides stand one below the other.
std::string ArticleOf(std::string_view heading, std::string_view caption, std::size_t width,
                      std::string_view sides) {
  return Concat({"<article class=\"sample\">\n<", heading, ">", HtmlEscaped(caption), "</", heading,
                 ">\n<div class=\"sides\" style=\"--w: ", std::to_string(width), "\">\n", sides,
                 "</div>\n</article>\n"});
}

std::string PageWriter::LabelTabs(const LabelExhibit& exhibit) {
  const std::string file = Concat({exhibit.name, ".svg"});
  return Tabs(LabelSnippets(exhibit.request, file), FileOf(kLabelDirectory, exhibit.name, "svg"));
}

std::string PageWriter::LibraryTabs(const LibraryPicture& picture) {
  const std::string file = Concat({picture.name, ".png"});
  return Tabs(LibrarySnippets(picture.request, file), FileOf(kLibraryDirectory, picture.name, "png"));
}

std::string Report(const LabelExhibit& exhibit) {
  return Concat({"<details><summary>Request and report</summary>\n<pre><code>",
                 HtmlEscaped(SpacedJson(exhibit.request)), "</code></pre>\n<pre><code>",
                 HtmlEscaped(exhibit.report.dump(2)), "</code></pre></details>\n"});
}

std::string PageWriter::LabelSide(const LabelExhibit& exhibit) {
  constexpr std::array<std::string_view, 3> kFormats = {"png", "svg", "pdf"};
  const Shown shown = {kLabelDirectory, exhibit.name, "svg", exhibit.report["width"],
                       exhibit.report["height"]};
  return Concat({SideStart("Label"), Figure(shown, exhibit.caption, LabelSize(exhibit.report), kFormats),
                 Remarks(exhibit.report), LabelTabs(exhibit), Report(exhibit), "</div>\n"});
}

// What the page puts around a picture without quiet zone takes room, too.
std::size_t WidthOf(const LibraryPicture& picture) {
  constexpr std::size_t kMargins = 40;
  return picture.width + kMargins;
}

// Without its end, so that more can follow.
std::string LibrarySideStart(const LibraryPicture& picture, std::string_view caption) {
  constexpr std::array<std::string_view, 2> kFormats = {"png", "svg"};
  if (!picture.failure.empty()) {
    return Concat({SideStart(kLibrarySide), "<p class=\"refusal\">", HtmlEscaped(picture.failure), "</p>\n"});
  }
  const Shown shown = {kLibraryDirectory, picture.name, "png", picture.width, picture.height};
  return Concat({SideStart(kLibrarySide, " bare"),
                 Figure(shown, caption, PixelSize(shown.width, shown.height), kFormats)});
}

std::string PageWriter::BesideLabel(const LabelExhibit& exhibit) {
  if (!exhibit.library) {
    return Concat({SideStart(kLibrarySide),
                   "<p class=\"said\">The functions of <code>barcode.h</code> take texts that "
                   "end at a zero byte: they cannot draw this one.</p>\n</div>\n"});
  }
  if (exhibit.isSamePicture) {
    return Concat({SideStart(kLibrarySide),
                   "<p class=\"said\">The same picture, pixel for pixel, without the quiet "
                   "zone.</p>\n",
                   LibraryTabs(*exhibit.library), "</div>\n"});
  }
  return Concat(
      {LibrarySideStart(*exhibit.library, exhibit.caption), LibraryTabs(*exhibit.library), "</div>\n"});
}

std::string PageWriter::RefusedSides(const LabelExhibit& exhibit) {
  return Concat({SideStart("Refused"), "<p class=\"refusal\">", Remark(exhibit.report["error"]),
                 "</p>\n</div>\n", SideStart("How it was asked for", " asked"), LabelTabs(exhibit),
                 Report(exhibit), "</div>\n"});
}

std::string PageWriter::Article(const LabelExhibit& exhibit) {
  if (!exhibit.report.value("ok", false)) {
    return ArticleOf("h3", exhibit.caption, 0, RefusedSides(exhibit));
  }
  const std::size_t libraryWidth = exhibit.library && !exhibit.isSamePicture ? WidthOf(*exhibit.library) : 0;
  return ArticleOf("h3", exhibit.caption, std::max(exhibit.report["width"].get<std::size_t>(), libraryWidth),
                   Concat({LabelSide(exhibit), BesideLabel(exhibit)}));
}

// Picture and code beside each other.
std::string PageWriter::Article(const LibraryExhibit& exhibit) {
  return ArticleOf(
      "h4", exhibit.caption, WidthOf(exhibit.picture),
      Concat({LibrarySideStart(exhibit.picture, exhibit.caption), "</div>\n",
              SideStart("How it is drawn", " asked"), LibraryTabs(exhibit.picture), "</div>\n"}));
}

std::string PageWriter::Section(const TypeExhibits& exhibits) {
  const std::string name = HtmlEscaped(exhibits.type->name);
  std::string html = Concat({"<section id=\"", name, "\">\n<h2><a href=\"#", name, "\">",
                             HtmlEscaped(exhibits.type->title), "</a></h2>\n<p class=\"names\"><code>", name,
                             "</code> · <code>", HtmlEscaped(exhibits.type->constant), "</code></p>\n"});
  for (const LabelExhibit& exhibit : exhibits.labels) {
    html += Article(exhibit);
  }
  if (!exhibits.library.empty()) {
    html += kLiterally;
  }
  for (const LibraryExhibit& exhibit : exhibits.library) {
    html += Article(exhibit);
  }
  return html + "</section>\n";
}

std::string Index(std::span<const TypeExhibits> types) {
  std::string items;
  for (const TypeExhibits& exhibits : types) {
    items += Concat({"<li><a href=\"#", HtmlEscaped(exhibits.type->name), "\">",
                     HtmlEscaped(exhibits.type->title), "</a></li>\n"});
  }
  return Concat({"<nav class=\"index\" aria-label=\"Symbologies\">\n<ul>\n", items, "</ul>\n</nav>\n"});
}

}  // namespace

std::string GalleryPage(std::span<const TypeExhibits> types) {
  PageWriter writer;
  std::string sections;
  for (const TypeExhibits& exhibits : types) {
    sections += writer.Section(exhibits);
  }
  return Concat({kHead, kPageStyle, "</style>\n</head>\n<body>\n<div class=\"page\">\n", Index(types),
                 "<div class=\"content\">\n", kIntroduction, kPackagesNote, "</p>\n</header>\n<main>\n",
                 sections, "</main>\n", kFooter, "</div>\n</div>\n<script>", kPageScript,
                 "</script>\n</body>\n</html>\n"});
}

}  // namespace barcode::tool
