"""The rooms of src/ include each other in one direction only.

    check_include_direction.py SRC    exit status 1, with a line for each include that points the wrong way
"""
import pathlib
import re
import sys

FAMILIES = {"linear", "gs1", "qr", "datamatrix", "pdf417"}
# What a room may include, beside itself.
BELOW = {
    "base": set(),
    "text": {"base"},
    "layout": {"base", "text"},
    **{family: {"base", "text", "layout", "core"} for family in FAMILIES},
    "core": {"base", "text", "layout"},
    "label": {"base", "text", "layout"} | FAMILIES,
    "api": {"base", "text", "layout", "core"} | FAMILIES,
}
# GS1-128 is built from Code 128's values.
EXCEPTIONS = {("gs1", "linear/code128_encoder.h"), ("gs1", "linear/code128_tables.h")}


def knows_sdl(path):
    """Classes do: they, and nothing else of a family, stand on core/. A class is named after its file."""
    header = path.with_suffix(".h")
    text = header.read_text(encoding="utf-8") if header.exists() else ""
    return "core/barcode_base" in text or "linear/guard_bar_symbology.h" in text


def main():
    source = pathlib.Path(sys.argv[1])
    files = sorted(path for path in source.rglob("*") if path.suffix in {".h", ".cpp"})
    wrong = []
    for path in files:
        room = path.relative_to(source).parts[0]
        for include in re.findall(r'#include "([a-z0-9_]+/[^"]+)"', path.read_text(encoding="utf-8")):
            target = include.split("/")[0]
            allowed = target == room or target in BELOW[room] or (room, include) in EXCEPTIONS
            if room in FAMILIES and target == "core" and not knows_sdl(path):
                allowed = False
            if not allowed:
                wrong.append(f"{path.relative_to(source)} includes {include}")
    print("\n".join(wrong) or f"{len(files)} files: every include points downwards")
    return 1 if wrong or not files else 0


sys.exit(main())
