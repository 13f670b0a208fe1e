#include "mkbarcode/gallery/html_page.h"

#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

constexpr std::string_view kBeforeTitle = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>)";

// The padding of .scan is the quiet zone of the symbols that have none.
constexpr std::string_view kBehindTitle = R"(</title>
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
.labels .scan { padding: 1.5rem; }
.labels .scan img { outline: 1px dashed var(--line); }
.told { padding: 1.25rem; border-top: 1px solid var(--line); }
.told pre + .kind { display: block; margin-top: 1rem; }
.remarks { margin: 0 0 1rem; padding-left: 1.25rem; font-size: .9rem; }
footer { padding-top: 2rem; padding-bottom: 3rem; font-size: .9rem; }
@media print { nav { display: none; } .sample { break-inside: avoid; } }
</style>
</head>
<body class=")";

std::string Head(const PageFrame& frame) {
  return Concat({kBeforeTitle, HtmlEscaped(frame.title), kBehindTitle, frame.bodyClass, "\">\n"});
}

std::string SectionHead(const TypeInfo& type) {
  const std::string name = HtmlEscaped(type.name);
  return Concat({"<section id=\"", name, "\">\n<h2>", HtmlEscaped(type.title),
                 "</h2>\n<p class=\"names\"><code>", name, "</code> &middot; <code>",
                 HtmlEscaped(type.constant), "</code></p>\n"});
}

std::string Navigation(std::span<const PageEntry> entries) {
  std::string html = "<nav>\n";
  const TypeInfo* last = nullptr;
  for (const PageEntry& entry : entries) {
    if (entry.type == last) {
      continue;
    }
    last = entry.type;
    html += Concat({"<a href=\"#", HtmlEscaped(last->name), "\">", HtmlEscaped(last->title), "</a>\n"});
  }
  html += "</nav>\n";
  return html;
}

}  // namespace

std::string HtmlPage(const PageFrame& frame, std::span<const PageEntry> entries) {
  std::string html = Head(frame);
  html += Concat({"<header>\n<h1>", HtmlEscaped(frame.title), "</h1>\n<p>", frame.introduction, "</p>\n",
                  Navigation(entries), "</header>\n<main>\n"});
  const TypeInfo* current = nullptr;
  for (const PageEntry& entry : entries) {
    if (entry.type != current) {
      if (current != nullptr) {
        html += "</section>\n";
      }
      current = entry.type;
      html += SectionHead(*current);
    }
    html += entry.article;
  }
  if (current != nullptr) {
    html += "</section>\n";
  }
  html += Concat({"</main>\n<footer>\n<p>", frame.footer, "</p>\n</footer>\n</body>\n</html>\n"});
  return html;
}

std::string HtmlArticle(std::string_view caption, std::string_view content) {
  return Concat(
      {"<article class=\"sample\">\n<h3>", HtmlEscaped(caption), "</h3>\n", content, "</article>\n"});
}

std::string HtmlCode(std::string_view kind, std::string_view text) {
  return Concat({"<pre class=\"", kind, "\"><code>", HtmlEscaped(text), "</code></pre>\n"});
}

}  // namespace barcode::tool
