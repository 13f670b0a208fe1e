"""Makes what docs/labels.md shows: its pictures and its reports are those of the library.

Usage: label_examples.py docs/labels.md LIBRARY          compares
       label_examples.py docs/labels.md LIBRARY --write  writes the pictures
"""

import ctypes
import json
import pathlib
import re
import struct
import sys
import zlib

# The requests of the pictures that stand in the document without theirs.
REQUESTS = {
    "label_code39.png": {"type": "code39", "text": "ABC-123"},
    "label_code93.png": {"type": "code93", "text": "CODE-93"},
    "label_code128.png": {"type": "code128", "text": "Pallet 771204"},
    "label_payment.png": {"type": "gs1-128", "form": "payment", "module": 1,
                          "text": "9191234512345678901234567890122611300012300"},
    "label_nw7.png": {"type": "nw7", "text": "A123456B"},
    "label_matrix2of5.png": {"type": "matrix2of5", "text": "0124789"},
    "label_nec2of5.png": {"type": "nec2of5", "text": "1204978"},
    "label_jan8.png": {"type": "jan8", "text": "4901234"},
    "label_upca.png": {"type": "upca", "text": "01234567890"},
    "label_upce.png": {"type": "upce", "text": "123456"},
    "label_itf.png": {"type": "itf", "text": "15412345678908"},
    "label_databar.png": {"type": "databar", "text": "0491234567890"},
    "label_databar_stacked.png": {"type": "databar", "text": "0491234567890", "form": "stacked"},
    "label_databar_stacked_omnidirectional.png":
        {"type": "databar", "text": "0491234567890", "form": "stacked-omnidirectional"},
    "label_databar-limited.png": {"type": "databar-limited", "text": "1501234567890"},
    "label_databar-expanded.png": {"type": "databar-expanded", "text": "(01)90012345678908(3103)001750"},
    "label_databar-expanded_stacked.png":
        {"type": "databar-expanded", "form": "stacked", "text": "(01)04912345678904(17)261231(10)LOT42"},
    "label_yubin.png": {"type": "yubin", "text": "26300233-20-12"},
    "label_qr.png": {"type": "qr", "text": "https://example.com/"},
    "label_datamatrix.png": {"type": "datamatrix", "text": "123456"},
    "label_pdf417.png": {"type": "pdf417", "text": "PDF417 holds text, numbers and bytes"},
}

READERS = ("zxing", "zbar", "zxing_wasm")


class Library:
    """The functions of barcode_label.h that are needed here."""

    def __init__(self, path):
        self._library = ctypes.CDLL(path)
        for name, result, arguments in (
                ("make", ctypes.c_void_p, [ctypes.c_char_p, ctypes.c_size_t]),
                ("data", ctypes.c_void_p, [ctypes.c_void_p, ctypes.POINTER(ctypes.c_size_t)]),
                ("report", ctypes.c_char_p, [ctypes.c_void_p]),
                ("free", None, [ctypes.c_void_p]),
                ("types", ctypes.c_char_p, [])):
            function = getattr(self._library, f"barcode_label_{name}")
            function.restype, function.argtypes = result, arguments
            setattr(self, f"_{name}", function)

    def make(self, request):
        """The picture, b"" when it was refused, and the report."""
        text = json.dumps(request).encode()
        label = self._make(text, len(text))
        length = ctypes.c_size_t()
        data = self._data(label, ctypes.byref(length))
        made = ctypes.string_at(data, length.value), json.loads(self._report(label))
        self._free(label)
        return made

    def types(self):
        return json.loads(self._types())


def png_content(data):
    """The chunks of a PNG file, the rows of the picture uncompressed: zlib's versions compress differently."""
    assert data.startswith(b"\x89PNG\r\n\x1a\n"), "no PNG file"
    chunks, rows, at = [], b"", 8
    while at < len(data):
        length, = struct.unpack_from(">I", data, at)
        kind, body = data[at + 4:at + 8], data[at + 8:at + 8 + length]
        if kind == b"IDAT":
            rows += body
        else:
            chunks.append((kind, body))
        at += length + 12
    return chunks, zlib.decompress(rows)


def shown_pictures(document):
    """Name and request of each picture in the document."""
    names = re.findall(r"\(images/(label_[^)]*\.png)\)", document)
    beside = {name: json.loads(request) for request, name in re.findall(
        r"^\| `(\{.*\})` \| !\[[^]]*\]\(images/(label_[^)]*\.png)\) \|$", document, re.MULTILINE)}
    for name in names:
        assert (name in beside) != (name in REQUESTS), f"{name}: no request, or two"
    unused = set(REQUESTS) - set(names)
    assert not unused, f"requests without a picture in the document: {unused}"
    return {name: beside.get(name) or REQUESTS[name] for name in names}


def check_reports(document, library):
    reports = re.findall(r"<!-- report: ([^\n]*) -->\n```json\n(.*?)```", document, re.DOTALL)
    assert len(reports) == document.count("```json\n") > 0, "a report has lost its mark"
    for request, text in reports:
        made, report = library.make(json.loads(request))[1], json.loads(text)
        if made["ok"]:
            made["bytes"] = report["bytes"] = None  # depends on zlib's version
        assert report == made, f"{request} gives {json.dumps(made)}"


def check_types(document, library):
    """Names, aliases and readers in the tables are the library's."""
    for kind in library.types():
        names = "".join(f"`{name}`, " for name in kind["aliases"]).removesuffix(", ")
        cell = f"| `{kind['name']}` | {names} |" if names else f"| `{kind['name']}` | |"
        assert cell in document, f"not in the document: {cell}"
        row = f"| `{kind['name']}` | " + " | ".join(kind["readers"][reader] for reader in READERS) + " |"
        assert row in document, f"not in the document: {row}"


def main():
    path, library_path, *mode = sys.argv[1:]
    document = pathlib.Path(path).read_text(encoding="utf-8")
    images = pathlib.Path(path).parent / "images"
    library = Library(library_path)
    pictures = shown_pictures(document)
    for name, request in pictures.items():
        data, report = library.make(request)
        assert data, f"{name}: {report}"
        if mode == ["--write"]:
            (images / name).write_bytes(data)
        assert png_content((images / name).read_bytes()) == png_content(data), f"{name} shows something else"
    there = {file.name for file in images.glob("label_*")}
    assert there == set(pictures), f"shown nowhere, or missing: {there ^ set(pictures)}"
    check_reports(document, library)
    check_types(document, library)


main()
