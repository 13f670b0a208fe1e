"""One label: what it is, how it is kept, and where it is shown."""

import copy
import enum
import json
import numbers
import os
import pathlib
import pickle
import stat
import subprocess
import sys
import zlib
from fractions import Fraction
from typing import Any, Dict, List, Tuple

import libbarcode
import pytest
from libbarcode import Label, LabelError, label


def png_rows(data: bytes) -> Tuple[int, int, List[bytes]]:
    """Width, height and rows of grey bytes of a black and white PNG of one bit a dot."""
    assert data[24:26] == b"\x01\x00" or data[24:26] == b"\x01\x03", "one bit a dot"
    width, height = (int.from_bytes(data[at:at + 4], "big") for at in (16, 20))
    packed, palette, at = b"", b"\0\0\0\xff\xff\xff", 8
    while at < len(data):
        length, kind = int.from_bytes(data[at:at + 4], "big"), data[at + 4:at + 8]
        body = data[at + 8:at + 8 + length]
        packed += body if kind == b"IDAT" else b""
        palette = body if kind == b"PLTE" else palette
        at += length + 12
    raw, stride = zlib.decompress(packed), (width + 7) // 8 + 1
    rows, above = [], bytes(stride - 1)
    for y in range(height):
        how, line = raw[y * stride], bytearray(raw[y * stride + 1:(y + 1) * stride])
        assert how in (0, 2), "filters none and up"
        if how == 2:
            line = bytearray((byte + up) & 255 for byte, up in zip(line, above))
        above = bytes(line)
        rows.append(bytes(palette[3 * (above[x // 8] >> (7 - x % 8) & 1)] for x in range(width)))
    return width, height, rows


def test_label_in_svg() -> None:
    made = label("qr", "hello", format="svg", module=4)
    assert isinstance(made, Label)
    assert made.media_type == "image/svg+xml" and made.data.startswith(b"<svg ") and made.data.endswith(b"</svg>\n")
    assert made.size == (116, 116) and made.warnings == []
    assert made.report["ok"] and made.report["type"] == "qr" and made.report["bytes"] == len(made.data)
    assert made.report is made.report
    assert repr(made) == f"<Label qr, image/svg+xml, 116 x 116, {len(made.data)} bytes>"


@pytest.mark.parametrize("format, media_type, beginning", [
    ("png", "image/png", b"\x89PNG\r\n"), ("svg", "image/svg+xml", b"<svg "), ("pdf", "application/pdf", b"%PDF-"),
    ("SVG", "image/svg+xml", b"<svg ")])
def test_formats(format: str, media_type: str, beginning: bytes) -> None:
    made = label("jan13", "490123456789", format=format)
    assert (made.media_type, made.data[:len(beginning)]) == (media_type, beginning)


def test_notebook() -> None:
    png, svg, pdf = (label("qr", "hello", format=format) for format in ("png", "svg", "pdf"))
    assert png._repr_png_() == png.data and png._repr_svg_() is None
    assert svg._repr_svg_() == svg.data.decode() and svg._repr_png_() is None
    assert pdf._repr_png_() is None and pdf._repr_svg_() is None


def test_a_reader_reads_it(reader: List[str]) -> None:
    width, height, rows = png_rows(label("qr", "hello, reader", module=3).data)
    grey = width.to_bytes(4, "little") + height.to_bytes(4, "little") + b"".join(rows)
    read = subprocess.run([*reader, "QRCode"], input=grey, capture_output=True, check=True).stdout.decode()
    assert read.split() == ["QRCode", b"hello, reader".hex()]


def test_warnings() -> None:
    made = label("qr", "hello", foreground="#888", background="#999")
    assert [warning["code"] for warning in made.warnings] == ["low_contrast"]
    assert made.warnings[0]["message"].endswith(".")
    with pytest.raises(LabelError) as refused:
        label("qr", "hello", foreground="#888", background="#999", strict=True)
    assert refused.value.code == "low_contrast"


def test_bytes_are_data() -> None:
    data = bytes(range(256))
    assert label("qr", data).data == label("qr", bytearray(data)).data == label("qr", memoryview(data)).data
    assert label("qr", b"\xff\0\xfe").data == label("qr", text_base64="/wD+").data
    assert label("qr", "a\0b").data == label("qr", b"a\0b").data != label("qr", "a").data
    assert label("code128", "a\0b").report["text"] == "a\0b"


def test_values_of_related_types() -> None:
    class Word(str, enum.Enum):
        LEVEL = "H"

    class Dots(enum.IntEnum):
        FOUR = 4

    @numbers.Integral.register
    class Foreign:
        """As the numbers of NumPy are."""

        def __index__(self) -> int:
            return 4

    plain = label("qr", "x", module=4, error_correction_level="H", text_scale=1.5, caption="c").data
    related: List[Dict[str, Any]] = [
        {"module": Dots.FOUR, "error_correction_level": Word.LEVEL, "text_scale": Fraction(3, 2)},
        {"module": Foreign(), "error_correction_level": "H", "text_scale": 1.5},
        {"module": 4.0, "error_correction_level": "h", "text_scale": 1.5}]
    for fields in related:
        assert label("qr", "x", caption="c", **fields).data == plain
    assert label("qr", "x", quiet_zone=4).data == label("qr", "x", quiet_zone="standard").data


def test_none_is_absent() -> None:
    assert label("qr", "x", module=None, caption=None, strict=None).data == label("qr", "x").data
    request: libbarcode.Request = {"type": "qr", "text": "x", "module": None}
    assert label(**request).data == label("qr", "x").data
    with pytest.raises(TypeError, match="unexpected keyword argument 'modul'"):
        label("qr", "x", modul=None)  # type: ignore[call-arg]


def test_refused_label() -> None:
    with pytest.raises(LabelError) as refused:
        label("jan13", "4901234567895")
    error = refused.value
    assert isinstance(error, ValueError)
    assert (error.code, error.field) == ("bad_text", "text")
    assert str(error) == "The check digit is 5 but must be 4; correct it or leave it out."
    assert not error.report["ok"] and error.report["error"]["message"] == str(error) and error.needed is None


def test_needed_size() -> None:
    with pytest.raises(LabelError) as refused:
        label("qr", "https://example.com/", width=30, height=30)
    assert (refused.value.code, refused.value.needed) == ("too_small", (33, 33))


def test_unknown_keyword() -> None:
    with pytest.raises(TypeError, match=r"label\(\) got an unexpected keyword argument 'modul'"):
        label("qr", "x", modul=4)  # type: ignore[call-arg]


@pytest.mark.parametrize("through", [lambda thing: pickle.loads(pickle.dumps(thing)), copy.copy, copy.deepcopy])
def test_pickles(through) -> None:  # type: ignore[no-untyped-def]
    made = label("qr", "hello")
    for original in (label("qr", "hello"), made):
        other = through(original)
        assert (other.data, other.media_type, other.report) == (made.data, made.media_type, made.report)
    with pytest.raises(LabelError) as refused:
        label("qr", "x", width=3, height=3)
    error = through(refused.value)
    assert type(error) is LabelError and str(error) == str(refused.value)
    assert (error.code, error.field, error.needed, error.report) == (
        refused.value.code, refused.value.field, refused.value.needed, refused.value.report)


class TestSave:
    made = label("qr", "hello")

    def test_new_file(self, tmp_path: pathlib.Path) -> None:
        earlier = os.umask(0o027)
        try:
            self.made.save(tmp_path / "label.png")
        finally:
            os.umask(earlier)
        assert (tmp_path / "label.png").read_bytes() == self.made.data
        assert stat.S_IMODE((tmp_path / "label.png").stat().st_mode) == 0o640
        assert [file.name for file in tmp_path.iterdir()] == ["label.png"]

    def test_kinds_of_paths(self, tmp_path: pathlib.Path) -> None:
        paths: List[Any] = [str(tmp_path / "a"), os.fsencode(tmp_path / "b"), tmp_path / "\u5e79",
                            tmp_path / ("n" * 255)]
        for path in paths:
            self.made.save(path)
            assert pathlib.Path(os.fsdecode(path)).read_bytes() == self.made.data
        for wrong in (None, 1, ["x"]):
            with pytest.raises(TypeError):
                self.made.save(wrong)  # type: ignore[arg-type]

    def test_earlier_file_keeps_its_mode_and_links_lead_on(self, tmp_path: pathlib.Path) -> None:
        file, link = tmp_path / "file", tmp_path / "link"
        file.write_text("earlier")
        file.chmod(0o600)
        link.symlink_to("file")
        self.made.save(link)
        assert link.is_symlink() and file.read_bytes() == self.made.data
        assert stat.S_IMODE(file.stat().st_mode) == 0o600

    def test_failure_leaves_the_earlier_file(self, tmp_path: pathlib.Path) -> None:
        """A limit on the size of files stands for a full disk."""
        file = tmp_path / "label.png"
        file.write_text("earlier")
        code = ("import resource, signal, sys, libbarcode\n"
                "signal.signal(signal.SIGXFSZ, signal.SIG_IGN)\n"
                "made = libbarcode.label('qr', 'hello')\n"
                "resource.setrlimit(resource.RLIMIT_FSIZE, (50, 50))\n"
                "try: made.save(sys.argv[1])\n"
                "except OSError: sys.exit(7)\n")
        result = subprocess.run([sys.executable, "-c", code, str(file)], check=False)
        assert result.returncode == 7
        assert [there.name for there in tmp_path.iterdir()] == ["label.png"] and file.read_text() == "earlier"

    def test_missing_folder_and_folder(self, tmp_path: pathlib.Path) -> None:
        with pytest.raises(FileNotFoundError):
            self.made.save(tmp_path / "none" / "label.png")
        with pytest.raises(IsADirectoryError):
            self.made.save(tmp_path)

    def test_errors_name_the_path_that_was_given(self, tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> None:
        monkeypatch.chdir(tmp_path)
        for path in ("none/label.png", "none/.", "x" * 256):
            with pytest.raises(OSError) as failed:
                self.made.save(path)
            assert (failed.value.filename, failed.value.filename2) == (path, None)
        with pytest.raises(IsADirectoryError):
            self.made.save("new/")
        assert not list(tmp_path.iterdir())

    @pytest.mark.parametrize("path", ["/dev/stdout", "/dev/fd/1", "link"])
    @pytest.mark.parametrize("to_file", [False, True])
    def test_standard_output(self, path: str, to_file: bool, tmp_path: pathlib.Path) -> None:
        """A pipe has no name to be replaced, and a file stays the one that is open."""
        (tmp_path / "link").symlink_to("/dev/stdout")
        code = f"import libbarcode; libbarcode.label('qr', 'hello').save({path!r})"
        with open(tmp_path / "file", "w+b") as file:
            result = subprocess.run([sys.executable, "-c", code], cwd=tmp_path, check=True,
                                    stdout=file if to_file else subprocess.PIPE)
            assert (file.read() if to_file else result.stdout) == self.made.data

    def test_device_stays(self) -> None:
        self.made.save("/dev/null")
        assert stat.S_ISCHR(os.stat("/dev/null").st_mode)

    def test_pipe(self, tmp_path: pathlib.Path) -> None:
        os.mkfifo(tmp_path / "pipe")
        with subprocess.Popen(["cat", str(tmp_path / "pipe")], stdout=subprocess.PIPE) as cat:
            self.made.save(tmp_path / "pipe")
            assert cat.communicate()[0] == self.made.data


def test_types() -> None:
    listed = libbarcode.types()
    assert [kind["number"] for kind in listed] == list(range(19))
    assert listed[16]["name"] == "qr" and listed[16]["two_dimensional"] and "qrcode" in listed[16]["aliases"]
    module = next(option for option in listed[16]["options"] if option["name"] == "module")
    assert (module["kind"], module["min"], module["max"], module["default"]) == ("integer", 1, 100, 4)
    assert listed[16]["readers"] == {"zxing": "yes", "zbar": "yes", "zxing_wasm": "yes"}
    listed.clear()  # the caller's own
    assert json.dumps(libbarcode.types())


def test_library_without_being_imported() -> None:
    code = "import libbarcode; print(libbarcode.library.Symbology.QR.value)"
    assert subprocess.run([sys.executable, "-c", code], capture_output=True, check=True).stdout == b"16\n"


def test_version() -> None:
    assert libbarcode.version == libbarcode.__version__ and libbarcode.version.count(".") == 2
    with pytest.raises(AttributeError):
        libbarcode.nothing
