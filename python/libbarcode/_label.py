"""A delivered label."""

import json
import os
import secrets
import stat
from typing import List, Optional, Tuple, Union, cast

from ._reports import Report, ReportWarning

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


class Label:
    """A label: its picture and what the library says of it. It has nothing of the library's any more."""

    __slots__ = ("_data", "_media_type", "_report")

    def __init__(self, data: bytes, media_type: str, report: Union[bytes, Report]) -> None:
        self._data = data
        self._media_type = media_type
        self._report = report  # JSON until it is asked for

    @property
    def data(self) -> bytes:
        """The bytes of the picture."""
        return self._data

    @property
    def media_type(self) -> str:
        """"image/png", "image/svg+xml" or "application/pdf"."""
        return self._media_type

    @property
    def report(self) -> Report:
        """What the library says of the label, a dict; docs/labels.md describes it."""
        report = self._report
        if isinstance(report, bytes):
            report = self._report = cast(Report, json.loads(report))
        return report

    @property
    def warnings(self) -> List[ReportWarning]:
        """The warnings of the report, dicts of `code` and `message`."""
        return self.report["warnings"]

    @property
    def size(self) -> Tuple[int, int]:
        """Width and height of the picture in pixels."""
        return self.report["width"], self.report["height"]

    def save(self, path: Path) -> None:
        """Writes the picture. The file is whole, or what was there before."""
        _write_whole(os.fsdecode(path), self._data)

    def _repr_svg_(self) -> Optional[str]:
        return self._data.decode() if self._media_type == "image/svg+xml" else None

    def _repr_png_(self) -> Optional[bytes]:
        return self._data if self._media_type == "image/png" else None

    def __repr__(self) -> str:
        width, height = self.size
        return f"<Label {self.report['type']}, {self._media_type}, {width} x {height}, {len(self._data)} bytes>"

    def __reduce__(self) -> Tuple[type, Tuple[bytes, str, Union[bytes, Report]]]:
        return type(self), (self._data, self._media_type, self._report)


def _write_whole(path: str, data: bytes) -> None:
    """The new content takes the file's name when all of it is written. Links are followed, as open() does."""
    try:
        mode: Optional[int] = os.stat(path).st_mode
    except FileNotFoundError:
        mode = None
    no_file = mode is None and os.path.basename(path) in ("", os.curdir, os.pardir)
    if no_file or (mode is not None and not stat.S_ISREG(mode)) or _is_open_file(path):
        with open(path, "wb") as file:  # a pipe, a device or what is open already; open() refuses a folder
            file.write(data)
        return
    try:
        _replace(os.path.realpath(path), mode, data)
    except OSError as error:
        error.filename, error.filename2 = path, None  # not the temporary file's
        raise


def _is_open_file(path: str) -> bool:
    """Whether it leads through a link as /dev/stdout does, behind which is an open file rather than a name."""
    while os.path.islink(path):
        folder = os.path.dirname(path)
        if os.path.realpath(folder).startswith("/proc/"):
            return True
        path = os.path.join(folder, os.readlink(path))
    return False


def _replace(path: str, mode: Optional[int], data: bytes) -> None:
    beside = os.path.join(os.path.dirname(path), f".{secrets.token_hex(8)}.tmp")
    descriptor = os.open(beside, os.O_WRONLY | os.O_CREAT | os.O_EXCL | os.O_CLOEXEC, 0o666)
    try:
        with open(descriptor, "wb") as file:
            file.write(data)
            if mode is not None:
                os.fchmod(descriptor, stat.S_IMODE(mode))
        os.replace(beside, path)
    except BaseException:
        os.unlink(beside)
        raise
