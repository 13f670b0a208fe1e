#include "mkbarcode/gallery_page.h"

#include <string_view>

#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// The padding of .scan is the quiet zone: the library draws none, and readers need it.
constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>libbarcode gallery</title>
<style>
:root { color-scheme: light; --ink: #1c2430; --soft: #5b6675; --line: #dfe4ea; --page: #f5f6f8; --code: #f3f5f9; }
* { box-sizing: border-box; }
html { scroll-behavior: smooth; }
body { margin: 0; background: var(--page); color: var(--ink); font: 16px/1.5 system-ui, sans-serif; }
header, main, footer { max-width: 92rem; margin: 0 auto; padding: 0 1.5rem; }
header { padding-top: 2.5rem; }
h1 { margin: 0 0 .25rem; font-size: 2rem; letter-spacing: -.02em; }
header p, footer p { margin: 0; color: var(--soft); }
nav { display: flex; flex-wrap: wrap; gap: .5rem; margin: 1.5rem 0 0; }
nav a { padding: .2rem .75rem; border: 1px solid var(--line); border-radius: 1rem; background: #fff;
  color: inherit; font-size: .9rem; text-decoration: none; }
nav a:hover, nav a:focus { border-color: var(--ink); }
section { padding-top: 2.5rem; }
h2 { margin: 0; font-size: 1.4rem; }
.names { margin: 0 0 1rem; color: var(--soft); font-size: .9rem; }
.sample { margin-bottom: 1.25rem; border: 1px solid var(--line); border-radius: .6rem; background: #fff;
  overflow: hidden; }
h3 { margin: 0; padding: .7rem 1.25rem; border-bottom: 1px solid var(--line); font-size: 1rem; font-weight: 600; }
.pair { display: grid; grid-template-columns: repeat(auto-fit, minmax(min(100%, 30rem), 1fr)); }
figure { display: flex; flex-direction: column; min-width: 0; margin: 0; }
figure + figure { box-shadow: -1px -1px 0 var(--line); }
.scan { flex: 1; display: flex; align-items: center; padding: 2rem 3rem; background: #fff; overflow-x: auto; }
.scan img { display: block; margin: 0 auto; max-width: none; }
.failed { color: #b3261e; }
figcaption { padding: 0 1.25rem 1.25rem; }
.kind { color: var(--soft); font-size: .75rem; font-weight: 600; letter-spacing: .08em; }
pre { margin: .4rem 0 0; padding: .6rem .8rem; border-radius: .4rem; background: var(--code); overflow-x: auto;
  font: .8rem/1.55 ui-monospace, monospace; }
.command { white-space: pre-wrap; overflow-wrap: anywhere; }
code { font-family: ui-monospace, monospace; }
footer { padding-top: 2rem; padding-bottom: 3rem; font-size: .9rem; }
@media print { nav { display: none; } .sample { break-inside: avoid; } }
</style>
</head>
<body>
)";

constexpr std::string_view kFoot =
    "<footer>\n<p>The library draws no quiet zone: the white margin around each image is this page's, "
    "and a symbol in use needs one too.</p>\n</footer>\n</body>\n</html>\n";

std::string Code(std::string_view kind, std::string_view text) {
  return Concat({"<pre class=\"", kind, "\"><code>", HtmlEscaped(text), "</code></pre>\n"});
}

std::string Figure(const ExhibitImage& image, std::string_view caption) {
  std::string html = "<figure>\n<div class=\"scan\">";
  if (image.failure.empty()) {
    html += Concat({"<img src=\"", HtmlEscaped(image.file), "\" alt=\"", HtmlEscaped(caption), "\">"});
  } else {
    html += Concat({"<p class=\"failed\">", HtmlEscaped(image.failure), "</p>"});
  }
  html += Concat({"</div>\n<figcaption>\n<span class=\"kind\">", HtmlEscaped(image.file), "</span>\n",
                  Code("command", CommandText(image.request, image.file)),
                  Code("calls", CallsText(image.request)), "</figcaption>\n</figure>\n"});
  return html;
}

std::string Article(const Exhibit& exhibit) {
  std::string figures;
  for (const ExhibitImage& image : exhibit.images) {
    figures += Figure(image, exhibit.caption);
  }
  return Concat({"<article class=\"sample\">\n<h3>", HtmlEscaped(exhibit.caption),
                 "</h3>\n<div class=\"pair\">\n", figures, "</div>\n</article>\n"});
}

std::string SectionHead(const TypeInfo& type) {
  const std::string name = HtmlEscaped(type.name);
  return Concat({"<section id=\"", name, "\">\n<h2>", HtmlEscaped(type.title),
                 "</h2>\n<p class=\"names\"><code>", name, "</code> &middot; <code>",
                 HtmlEscaped(type.constant), "</code></p>\n"});
}

std::string Navigation(std::span<const Exhibit> exhibits) {
  std::string html = "<nav>\n";
  const TypeInfo* last = nullptr;
  for (const Exhibit& exhibit : exhibits) {
    if (exhibit.type == last) {
      continue;
    }
    last = exhibit.type;
    html += Concat({"<a href=\"#", HtmlEscaped(last->name), "\">", HtmlEscaped(last->title), "</a>\n"});
  }
  html += "</nav>\n";
  return html;
}

}  // namespace

std::string GalleryPage(std::span<const Exhibit> exhibits) {
  std::string html(kHead);
  html += "<header>\n<h1>libbarcode gallery</h1>\n<p>Version " BARCODE_VERSION_STRING
          ". Each sample as PNG and as SVG, with the command and the C calls that made it.</p>\n";
  html += Concat({Navigation(exhibits), "</header>\n<main>\n"});
  const TypeInfo* current = nullptr;
  for (const Exhibit& exhibit : exhibits) {
    if (exhibit.type != current) {
      if (current != nullptr) {
        html += "</section>\n";
      }
      current = exhibit.type;
      html += SectionHead(*current);
    }
    html += Article(exhibit);
  }
  if (current != nullptr) {
    html += "</section>\n";
  }
  html += "</main>\n";
  html += kFoot;
  return html;
}

}  // namespace barcode::tool
