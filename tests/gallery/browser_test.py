#!/usr/bin/env python3
"""Looks at the gallery with a headless Chromium: every width, both schemes of colours, every picture and button.

    browser_test.py MKBARCODE [CHROMIUM]

Each SVG is drawn beside its PNG, one unit a pixel, and both are compared:
- Labels are equal to the pixel, but for the edges of glyphs, which the browser smooths in its own way: pixels that the
  glyphs touch may differ by up to GLYPH_TOLERANCE of 255.
- What the functions of barcode.h draw is equal to the pixel outside the rows of the text, which is a <text> element and
  set in the viewer's own font. Where the document has modules of a fraction of a pixel, each row has the same bars, and
  their edges are at most two pixels apart; rows of pixels in which bars end are mixtures there and not compared.
"""

import base64
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import urllib.parse

from chromium import Chromium

WIDTHS = (320, 768, 1280, 1920)
SCHEMES = ("light", "dark")
HEIGHT = 800
GLYPH_TOLERANCE = 96
HERE = pathlib.Path(__file__).parent


class Faults:
    """What is wrong, each told once."""

    def __init__(self):
        self._told = []

    def add(self, where, what):
        line = f"{where}: {what}"
        if line not in self._told:
            self._told.append(line)

    def check(self, holds, where, what):
        if not holds:
            self.add(where, what)

    def finish(self):
        if self._told:
            sys.exit(f"{len(self._told)} faults\n" + "\n".join(self._told[:40]))


def check_view(browser, page, width, scheme, faults):
    """The page in one window: returns what it measured of the colours."""
    where = f"{width} pixels, {scheme}"
    browser.look_at(width, HEIGHT, scheme)
    browser.open(page)
    browser.run(CHECKS)
    browser.run("gallery.showAll()")
    for fault in browser.run("gallery.layout()"):
        faults.add(where, fault)
    for fault in browser.run("gallery.colours()"):
        faults.add(where, fault)
    if scheme == "light":  # colours move nothing
        for fault in browser.run("gallery.index()"):
            faults.add(where, fault)
    return browser.run("gallery.background()")


def check_clicks(browser, page, width, faults):
    """What a mouse does, at one width: tabs and a copy button of the first visible card, an entry of the index."""
    where = f"mouse at {width} pixels"

    def click(selector):
        box = browser.run(f"gallery.place({selector!r})")
        for kind in ("mousePressed", "mouseReleased"):
            browser.send("Input.dispatchMouseEvent", type=kind, x=box[0], y=box[1], button="left", clickCount=1)

    browser.look_at(width, HEIGHT, "light")
    browser.open(page)
    browser.run(CHECKS)
    click("article .code label:nth-of-type(4)")
    faults.check(browser.run("getComputedStyle(document.querySelector('article pre.c')).display") == "block", where,
                 "the tab of C shows no code")
    faults.check(browser.run("[...document.querySelectorAll('.code')].every(code => code.querySelector('.c').checked)"),
                 where, "the choice of a language is not that of all")
    browser.run("(gallery.said = gallery.answer(document.querySelector('article .copy')), null)")
    click("article .copy")
    said = browser.run("gallery.said")
    copied = browser.run("navigator.clipboard.readText()")
    faults.check(copied == browser.run("document.querySelector('article pre.c').textContent"), where,
                 f"the button copies {copied!r}")
    faults.check(said == "Copied", where, f"the button says {said!r} and not that it copied")
    browser.run("document.querySelector('.index a[href=\"#code128\"]').scrollIntoView({block: 'nearest', inline: 'center'})")
    click('.index a[href="#code128"]')
    browser.run("gallery.settled()")
    faults.check(browser.run("location.hash") == "#code128", where, "the index leads nowhere")
    faults.check(browser.run("Math.abs(document.querySelector('#code128').getBoundingClientRect().top) < 120"), where,
                 "the index leads elsewhere")


def check_without_script(browser, page, faults):
    browser.send("Emulation.setScriptExecutionDisabled", value=True)
    browser.look_at(768, HEIGHT, "light")
    browser.open(page)
    shown = browser.run("[...document.querySelectorAll('article .copy')].filter(button => button.offsetWidth > 0).length")
    faults.check(shown == 0, "without scripts", f"{shown} buttons that do nothing")
    browser.run("document.querySelector('article .code .python').checked = true")
    faults.check(browser.run("document.querySelector('article pre.python').offsetHeight") > 0, "without scripts",
                 "the tabs do not work")
    browser.send("Emulation.setScriptExecutionDisabled", value=False)


def check_links(browser, directory, faults):
    """Every file that the page leads to is there."""
    targets = browser.run("gallery.links()")
    for target in targets:
        file = directory / urllib.parse.unquote(target)
        faults.check(file.is_file() and file.stat().st_size > 0, "links", f"{target} leads nowhere")
    # And the page leads to every file that was made.
    made = {str(file.relative_to(directory)) for folder in ("labels", "library") for file in (directory / folder).iterdir()}
    return len(targets), made - set(targets)


def check_events(browser, faults):
    """Nothing complained, and nothing was fetched from elsewhere."""
    for event in browser.events:
        parameters = event["params"]
        if event["method"] == "Runtime.exceptionThrown":
            faults.add("console", parameters["exceptionDetails"].get("text", ""))
        if event["method"] == "Runtime.consoleAPICalled" and parameters["type"] in ("error", "warning", "assert"):
            faults.add("console", str(parameters["args"]))
        if event["method"] == "Log.entryAdded" and parameters["entry"]["level"] in ("error", "warning"):
            faults.add("console", parameters["entry"]["text"])
        if event["method"] == "Network.requestWillBeSent":
            url = parameters["request"]["url"]
            faults.check(url.startswith(("file:", "data:", "about:")), "network", url)
        if event["method"] == "Network.loadingFailed":
            faults.check(parameters.get("canceled", False), "network", parameters["errorText"])


# The size in millimetres is for printers: the picture is compared by its dots.
def with_size_in_dots(svg):
    box = re.search(rb'viewBox="0 0 ([0-9]+) ([0-9]+)"', svg)
    size = rb'width="' + box[1] + rb'" height="' + box[2] + rb'"' if box else rb""
    return re.sub(rb'width="[0-9.]+mm" height="[0-9.]+mm"', size, svg, count=1)


RECTANGLE = re.compile(rb'<rect x="([-0-9.]+)" y="([-0-9.]+)" width="([-0-9.]+)" height="([-0-9.]+)"')


def fractions(svg):
    """Whether bars of the document begin or end within pixels, and the rows of pixels in which they do."""
    rectangles = [[float(number) for number in rectangle] for rectangle in RECTANGLE.findall(svg)]
    ends = [end for _, y, _, height in rectangles for end in (y, y + height)]
    rows = sorted({int(end) for end in ends if end != int(end)})
    return bool(rows) or any(number != int(number) for rectangle in rectangles for number in rectangle), rows


def compare_pictures(browser, directory, faults):
    """Returns how many SVG files were compared, and the largest difference of a glyph's edge."""
    browser.open("about:blank")
    browser.run(COMPARISON)
    largest = 0
    files = sorted(directory.glob("*/*.svg"))
    for file in files:
        svg = with_size_in_dots(file.read_bytes())
        is_label = file.parent.name == "labels"
        arguments = [base64.b64encode(data).decode() for data in (svg, without_text(svg, is_label),
                                                                 file.with_suffix(".png").read_bytes())]
        name = str(file.relative_to(directory))
        call = ", ".join(json.dumps(argument) for argument in (arguments, is_label, *fractions(svg)))
        result = browser.run(f"comparePictures({call})")
        for fault in result["faults"]:
            faults.add(name, fault)
        faults.check(result["glyphs"] <= GLYPH_TOLERANCE, name, f"glyphs differ by {result['glyphs']}")
        largest = max(largest, result["glyphs"])
    return len(files), largest


def without_text(svg, is_label):
    """Labels have their glyphs in the path that is not drawn crisply; it comes behind that of the bars."""
    if is_label:
        return re.sub(rb'<path (?![^>]*crispEdges)(?![^>]*d="M0 0h)[^>]*/>', b"", svg)
    return re.sub(rb"<text.*?</text>", b"", svg, flags=re.DOTALL)


CHECKS = (HERE / "page_checks.js").read_text(encoding="utf-8")
COMPARISON = (HERE / "compare_pictures.js").read_text(encoding="utf-8")


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    faults = Faults()
    with tempfile.TemporaryDirectory(prefix="gallery_page_") as scratch, Chromium(*sys.argv[2:]) as browser:
        directory = pathlib.Path(scratch)
        subprocess.run([sys.argv[1], "gallery", str(directory)], check=True, stdout=subprocess.DEVNULL)
        page = (directory / "index.html").as_uri()
        browser.call("Browser.grantPermissions",
                     permissions=["clipboardReadWrite", "clipboardSanitizedWrite"])
        backgrounds = {scheme: {check_view(browser, page, width, scheme, faults) for width in WIDTHS} for scheme in SCHEMES}
        faults.check(not backgrounds["light"] & backgrounds["dark"], "colours", f"one for both schemes: {backgrounds}")
        copies = browser.run("gallery.copies()")
        for fault in copies["faults"]:
            faults.add("copying", fault)
        links, unseen = check_links(browser, directory, faults)
        for file in sorted(unseen):
            faults.check("/" in file and file.startswith("library/"), "links", f"nothing leads to {file}")
        for width in (WIDTHS[0], WIDTHS[2]):
            check_clicks(browser, page, width, faults)
        check_without_script(browser, page, faults)
        check_events(browser, faults)
        compared, largest = compare_pictures(browser, directory, faults)
        faults.check(copies["count"] >= 150 and links >= 300 and compared >= 150, "page",
                     f"{copies['count']} copies, {links} links and {compared} pictures are too few")
    faults.finish()
    print(f"{len(WIDTHS) * len(SCHEMES)} views, {links} files, {copies['count']} copies; {compared} SVG files like their "
          f"PNG, glyphs' edges within {largest} of 255")


if __name__ == "__main__":
    main()
