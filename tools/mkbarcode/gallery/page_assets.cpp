#include "mkbarcode/gallery/page_assets.h"

namespace barcode::tool {

const std::string_view kPageStyle = R"css(
:root {
  color-scheme: light dark;
  --page: #f5f6f8; --card: #fff; --ink: #1a212c; --soft: #596373; --line: #e0e4ea; --code: #f5f6f9;
  --accent: #1d56b8; --alarm: #b3261e; --alarm-card: #fdf3f2; --stage: #e9ecf0; --index: 14.5rem; --top: 1.5rem;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #12151a; --card: #1b2028; --ink: #e7eaf0; --soft: #9ea9b8; --line: #2d343f; --code: #14181e;
    --accent: #8ab4f8; --alarm: #f2a7a0; --alarm-card: #2b1d1f; --stage: #cfd4db;
  }
}
* { box-sizing: border-box; }
html { scroll-padding-top: var(--top); -webkit-text-size-adjust: 100%; text-size-adjust: 100%; }
@media (prefers-reduced-motion: no-preference) { html { scroll-behavior: smooth; } }
body { margin: 0; background: var(--page); color: var(--ink);
  font: 1rem/1.55 system-ui, -apple-system, "Segoe UI", Roboto, "Helvetica Neue", Arial, sans-serif; }
a { color: var(--accent); text-underline-offset: .2em; text-decoration-thickness: 1px; }
:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }
code, pre { font-family: ui-monospace, SFMono-Regular, Menlo, Consolas, "Liberation Mono", "DejaVu Sans Mono", monospace; }
h1, h2, h3, h4, p { margin: 0; }

.page { display: grid; grid-template-columns: var(--index) minmax(0, 1fr); max-width: 104rem; margin: 0 auto; }
.content { min-width: 0; padding: 0 2.5rem 4rem; }

.index { position: sticky; top: 0; align-self: start; max-height: 100vh; overflow-y: auto; padding: 3.4rem 0 2rem 2.5rem;
  font-size: .875rem; scrollbar-width: thin; }
.index ul { margin: 0; padding: 0; list-style: none; }
.index a { display: block; padding: .2rem .75rem; border-left: 2px solid var(--line); color: var(--soft);
  text-decoration: none; line-height: 1.4; }
.index a:hover { color: var(--ink); }
.index a[aria-current] { border-left-color: var(--accent); color: var(--accent); font-weight: 600; }

header { padding: 3rem 0 0; max-width: 46rem; }
h1 { font-size: clamp(1.7rem, 1.3rem + 1.6vw, 2.4rem); line-height: 1.15; letter-spacing: -.022em; font-weight: 700; }
header p { margin-top: .75rem; color: var(--soft); text-wrap: pretty; }

section { padding-top: 3.5rem; scroll-margin-top: -1rem; }
h2 { font-size: 1.5rem; line-height: 1.25; letter-spacing: -.015em; }
h2 a { color: inherit; text-decoration: none; }
h2 a:hover { text-decoration: underline; }
.names { margin: .15rem 0 1.25rem; color: var(--soft); font-size: .875rem; }
.literally { margin: 2.25rem 0 .25rem; font-size: 1.125rem; letter-spacing: -.01em; }
.about { margin-bottom: 1.25rem; color: var(--soft); font-size: .875rem; max-width: 46rem; }

.sample { margin-bottom: 1.5rem; border: 1px solid var(--line); border-radius: .75rem; background: var(--card);
  overflow: hidden; }
.sample > h3, .sample > h4 { padding: .8rem 1.25rem; font-size: 1rem; font-weight: 600; line-height: 1.4;
  border-bottom: 1px solid var(--line); }
.sides { display: grid; margin: 0 0 -1px -1px;
  grid-template-columns: repeat(auto-fit, minmax(min(100%, max(21rem, var(--w) * 1px + 5rem)), 1fr)); }
.side { display: grid; grid-row: span 6; grid-template: subgrid / minmax(0, 1fr); padding: 1rem 1.25rem 1.25rem;
  border: solid var(--line); border-width: 0 0 1px 1px; }
.side > .code { grid-row: 5; }
.side > details { grid-row: 6; }
.asked > .code { grid-row: 2; margin-top: .6rem; }
.asked > details { grid-row: 3 / span 4; }
.kind { color: var(--soft); font-size: .8125rem; font-weight: 600; }

figure { display: contents; }
.stage { grid-row: 2; display: grid; place-items: center; min-width: 0; margin-top: .6rem; padding: 1.25rem; border-radius: .5rem;
  background: var(--stage); color-scheme: light; }
.stage a { display: block; max-width: 100%; }
.stage img { display: block; max-width: 100%; height: auto; }
.bare .stage a { padding: 1.25rem; background: #fff; }
@media (min-resolution: 2dppx) { .bare .stage img { image-rendering: pixelated; } }
figcaption { grid-row: 3; display: flex; align-self: start; flex-wrap: wrap; justify-content: space-between; gap: .1rem 1rem; padding: .5rem 0 .9rem;
  color: var(--soft); font-size: .8125rem; font-variant-numeric: tabular-nums; }
figcaption a + a { margin-left: .75rem; }
.said { grid-row: 2; margin: .6rem 0 .9rem; max-width: 40rem; font-size: .9375rem; color: var(--soft); }
.remarks { grid-row: 4; margin: 0 0 .9rem; padding: 0; list-style: none; font-size: .875rem; line-height: 1.45; }
.remarks li { padding: .1rem 0 .1rem .75rem; border-left: 2px solid var(--line); }
.remarks li + li { margin-top: .4rem; }
.refusal { grid-row: 2 / span 5; align-self: start; margin-top: .6rem; padding: 1rem 1.25rem; border-radius: .5rem; background: var(--alarm-card);
  overflow-wrap: anywhere; }
.refusal code { display: block; color: var(--alarm); font-weight: 600; font-size: .875rem; }
.remarks code { color: var(--soft); font-size: .8125rem; }

.code { position: relative; min-width: 0; }
.tabs { display: flex; gap: .15rem; }
.code input { position: absolute; opacity: 0; pointer-events: none; }
.code label { display: inline-block; padding: .3rem .65rem; border-radius: .4rem .4rem 0 0; color: var(--soft);
  font-size: .8125rem; line-height: 1.4; cursor: pointer; }
.code label:hover { color: var(--ink); }
.code input:checked + label { background: var(--code); color: var(--ink); font-weight: 600; }
.code input:focus-visible + label { outline: 2px solid var(--accent); outline-offset: -2px; }
.code pre { display: none; width: 100%; margin: 0; padding: .75rem .9rem; border-radius: 0 .4rem .4rem .4rem;
  background: var(--code); font-size: .78125rem; line-height: 1.6; white-space: pre-wrap; overflow-wrap: anywhere; }
.code pre.shell { border-top-left-radius: 0; }
.shell span { display: inline-block; max-width: 100%; }
.code .shell:checked ~ pre.shell, .code .python:checked ~ pre.python, .code .node:checked ~ pre.node,
.code .c:checked ~ pre.c { display: block; }
.copy { position: absolute; top: 0; right: 0; padding: .3rem .65rem; border: 0; border-radius: .4rem; background: none;
  color: var(--accent); font: inherit; font-size: .8125rem; line-height: 1.4; cursor: pointer; }
.copy:hover { text-decoration: underline; text-underline-offset: .2em; }
details { margin-top: .6rem; font-size: .8125rem; }
summary { width: fit-content; padding: .1rem 0; color: var(--soft); cursor: pointer; }
summary:hover { color: var(--ink); }
details pre { margin: .4rem 0 0; padding: .75rem .9rem; border-radius: .4rem; background: var(--code);
  font-size: .78125rem; line-height: 1.6; white-space: pre-wrap; overflow-wrap: anywhere; }

footer { margin-top: 3.5rem; padding-top: 1.25rem; border-top: 1px solid var(--line); color: var(--soft);
  font-size: .875rem; max-width: 46rem; }

@media (max-width: 64rem) {
  :root { --top: 4.25rem; }
  .page { display: block; }
  .index { z-index: 1; max-height: none; padding: 0; overflow: visible; background: var(--page);
    border-bottom: 1px solid var(--line); }
  .index ul { display: flex; gap: .25rem; padding: .5rem 1.5rem; overflow-x: auto; scrollbar-width: none;
    -webkit-mask-image: linear-gradient(to right, transparent, #000 1.5rem calc(100% - 1.5rem), transparent);
    mask-image: linear-gradient(to right, transparent, #000 1.5rem calc(100% - 1.5rem), transparent); }
  .index ul::-webkit-scrollbar { display: none; }
  .index a { padding: .4rem .75rem; border: 0; border-radius: 1rem; white-space: nowrap; }
  .index a[aria-current] { background: var(--card); box-shadow: inset 0 0 0 1px var(--line); }
  .content { padding: 0 1.5rem 3rem; }
  header { padding-top: 2rem; }
  section { padding-top: 2.75rem; scroll-margin-top: -1.5rem; }
}
@media (max-width: 34rem) {
  .content { padding: 0 .75rem 2rem; }
  header, .names, .about, h2, .literally, footer { padding-left: .25rem; padding-right: .25rem; }
  .index ul { padding: .5rem .75rem; }
  .sample > h3, .sample > h4 { padding: .7rem .9rem; }
  .side { padding: .8rem .9rem 1rem; }
  .stage { padding: .75rem; }
  .bare .stage a { padding: .75rem; }
  .code label { padding: .3rem .5rem; }
}
@media print { .index, .copy { display: none; } .page { display: block; } .sample { break-inside: avoid; } }
)css";

const std::string_view kPageScript = R"js(
'use strict';
(() => {
  const all = (selector, within = document) => [...within.querySelectorAll(selector)];

  const copied = async (text) => {
    if (navigator.clipboard) {
      try {
        await navigator.clipboard.writeText(text);
        return true;
      } catch {
        // Not allowed: the older way may be.
      }
    }
    const area = document.createElement('textarea');
    area.value = text;
    area.style.position = 'fixed';
    area.style.opacity = '0';
    document.body.append(area);
    area.select();
    const done = document.execCommand('copy');
    area.remove();
    return done;
  };
  for (const button of all('.copy')) {
    button.hidden = false;
    button.addEventListener('click', async () => {
      const language = button.parentElement.querySelector('input:checked').value;
      const done = await copied(button.parentElement.querySelector('pre.' + language).textContent);
      button.textContent = done ? 'Copied' : 'Not copied';
      setTimeout(() => { button.textContent = 'Copy'; }, 1500);
    });
  }

  // One choice is for all, and what was clicked stays where it is.
  for (const input of all('.code input')) {
    input.addEventListener('change', () => {
      const before = input.getBoundingClientRect().top;
      for (const other of all('.code input.' + input.value)) {
        other.checked = true;
      }
      window.scrollBy({ top: input.getBoundingClientRect().top - before, behavior: 'instant' });
    });
  }

  const strip = document.querySelector('.index ul');
  const links = new Map(all('.index a').map((link) => [link.hash.slice(1), link]));
  const sections = all('section');
  let current = null;
  const mark = () => {
    const line = window.innerHeight / 3;
    const seen = sections.filter((section) => section.getBoundingClientRect().top <= line).pop() ?? sections[0];
    const link = links.get(seen.id);
    if (link === current) {
      return;
    }
    current?.removeAttribute('aria-current');
    link.setAttribute('aria-current', 'true');
    current = link;
    strip.scrollTo({ left: link.offsetLeft - (strip.clientWidth - link.offsetWidth) / 2 });
  };
  let waiting = false;
  addEventListener('scroll', () => {
    if (!waiting) {
      waiting = true;
      requestAnimationFrame(() => { waiting = false; mark(); });
    }
  }, { passive: true });
  addEventListener('resize', mark);
  mark();
})();
)js";

}  // namespace barcode::tool
