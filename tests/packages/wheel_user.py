"""What a user of the installed wheel does first; run in the bare system."""

import importlib.metadata
import importlib.util
import pathlib
import subprocess
import sys
import tempfile

import libbarcode
import libbarcode.library


def refused(code, field, *arguments, **fields):
    try:
        libbarcode.label(*arguments, **fields)
    except libbarcode.LabelError as error:
        assert (error.code, error.field) == (code, field) and str(error), (error.code, error.field, error)
    else:
        raise AssertionError(f"delivered: {arguments} {fields}")


label = libbarcode.label("qr", "hello", format="svg", module=4)
assert label.media_type == "image/svg+xml" and label.size == (116, 116) and label.data.startswith(b"<svg ")
assert label.report["text"] == "hello" and label.warnings == []
beginnings = {"png": b"\x89PNG", "svg": b"<svg ", "pdf": b"%PDF"}
with tempfile.TemporaryDirectory() as folder:
    for format, beginning in beginnings.items():
        file = pathlib.Path(folder, f"label.{format}")
        libbarcode.label("jan13", "490123456789", format=format).save(file)
        assert file.read_bytes().startswith(beginning)
# This system's C library has the tables of Shift-JIS, or the error says that they are missing.
try:
    libbarcode.label("qr", "\u5e79", string_encoding="shift-jis")
except libbarcode.LabelError as error:
    print(f"Shift-JIS: {error}")

assert len(libbarcode.types()) == 19
numbers = [made.report["text"] for made in libbarcode.labels({"type": "itf", "text": f"{n:04}"} for n in range(500))]
assert numbers == [f"{n:04}" for n in range(500)]
refused("bad_text", "text", "jan13", "4901234567895")
refused("unknown_type", "type", "nothing", "x")
refused("bad_value", "text", "qr", None)
try:
    libbarcode.label(1, "x")
except TypeError:
    pass
else:
    raise AssertionError("a number is a type")

try:
    libbarcode.library.Barcode(libbarcode.library.Symbology.QR)
except libbarcode.LibraryNotFoundError as error:
    assert "libbarcode.so is not installed" in str(error) and "libbarcode1" in str(error), error
    print(error)
else:
    raise AssertionError("libbarcode.so is installed")

assert importlib.util.find_spec("libbarcode._speedups"), "the wheel has no compiled module"
import libbarcode._speedups  # noqa: E402  # it loads

# An interpreter that ends takes threads away in the middle of a label.
ending = ("import itertools, libbarcode, threading, time\n"
          "def one():\n"
          "    while True: libbarcode.label('qr', 'x' * 200, module=20)\n"
          "def many():\n"
          "    for _ in libbarcode.labels(({'type': 'qr', 'text': str(n)} for n in itertools.count()), workers=2): pass\n"
          "def reading():\n"
          "    def slow():\n"
          "        for n in itertools.count():\n"
          "            for _ in range(n % 1000): pass\n"
          "            yield {'type': 'qr', 'text': b'x', 'format': 'svg'}\n"
          "    for _ in libbarcode.labels(slow(), workers=2): pass\n"
          "for work in (one, one, many, reading, reading): threading.Thread(target=work, daemon=True).start()\n"
          "time.sleep(0.1)\n")
for _ in range(5):
    subprocess.run([sys.executable, "-c", ending], check=True, timeout=150)

installed = importlib.metadata.metadata("libbarcode")
assert installed["Version"] == libbarcode.__version__ == libbarcode.version
assert installed["Requires-Python"] == ">=3.9" and "libbarcode.label(" in installed.get_payload()
assert not importlib.metadata.requires("libbarcode")
print(f"libbarcode {libbarcode.version}: labels drawn")
