"""The label library's functions, and a label of a request in JSON."""

import ctypes
import functools
import json
from ctypes import c_size_t
from time import monotonic
from typing import Any, Callable, List, Optional, Union

from ._errors import LabelError, refusal
from ._fields import BytesRequest
from ._label import Label
from ._loading import open_library


class _Library:
    """The functions. Drawing releases the interpreter's lock; the others return at once and keep it."""

    __slots__ = ("make", "data", "media_type", "report", "free", "types", "version", "bytes_at")

    def __init__(self) -> None:
        names = ("barcode_label_" + name for name in self.__slots__ if name != "bytes_at")
        library = open_library("libbarcode_label", names,
                               "install the wheel of libbarcode, or Debian's libbarcode-label1")
        at_once = ctypes.PyDLL(library._name, handle=library._handle)
        pointer, string, size = ctypes.c_void_p, ctypes.c_char_p, ctypes.c_size_t
        self.make = _prototype(library.barcode_label_make, pointer, string, size)
        self.data = _prototype(at_once.barcode_label_data, pointer, pointer, ctypes.POINTER(size))
        self.media_type = _prototype(at_once.barcode_label_media_type, string, pointer)
        self.report = _prototype(at_once.barcode_label_report, string, pointer)
        self.free = _prototype(at_once.barcode_label_free, None, pointer)
        self.types = _prototype(at_once.barcode_label_types, string)
        self.version = _prototype(at_once.barcode_label_version, string)
        # ctypes.string_at() is this with a call in Python around it.
        self.bytes_at = _prototype(ctypes.PyDLL(None).PyBytes_FromStringAndSize, ctypes.py_object, pointer,
                                   ctypes.c_ssize_t)


def _prototype(function: Any, result: Any, *arguments: Any) -> Any:
    function.restype = result
    function.argtypes = arguments
    return function


_library: Optional[_Library] = None
# There are few media types.
_text_of: Callable[[bytes], str] = functools.lru_cache(maxsize=16)(bytes.decode)


def functions() -> _Library:
    """The library, opened at its first use."""
    global _library
    if _library is None:
        _library = _Library()
    return _library


def draw(request: bytes) -> Union[Label, LabelError]:
    """The label of a request, or the error that refuses it."""
    library = _library or functions()
    return _take(library, library.make(request, len(request)), request)


def draw_some(requests: List[Union[bytes, LabelError]], deadline: float) -> List[Union[Label, LabelError]]:
    """Those of many, from the first until it is time to end; an error stands for itself. All are drawn before the first
    is taken: a thread that wants the interpreter's lock after each of them waits for the others' most of the time."""
    library = _library or functions()
    make = library.make
    drawn: List[Any] = []
    taken: List[Union[Label, LabelError]] = []
    try:
        for request in requests:
            drawn.append(make(request, len(request)) if isinstance(request, bytes) else request)
            if monotonic() > deadline:
                break
        drawn.reverse()
        while drawn:
            made, request = drawn.pop(), requests[len(taken)]
            taken.append(_take(library, made, request) if isinstance(request, bytes) else request)
        return taken
    finally:
        for made in drawn:
            if not isinstance(made, LabelError):
                library.free(made)


def _take(library: _Library, made: Any, request: bytes) -> Union[Label, LabelError]:
    """What the library made, as Python's own; the library's is freed."""
    try:
        length = c_size_t()
        data = library.data(made, length)  # by reference: the prototype says so
        if not data:
            return _error(library.report(made), request)
        return Label(library.bytes_at(data, length.value), _text_of(library.media_type(made)), library.report(made))
    finally:
        library.free(made)


def _error(text: bytes, request: bytes) -> LabelError:
    """An empty report is that of no label at all."""
    if not text:
        return refusal("out_of_memory", "", "There is not enough memory for the label; ask for a smaller one.")
    report = json.loads(text)
    if report["error"]["field"] == "text_base64" and isinstance(request, BytesRequest):
        report["error"]["field"] = "text"
    return LabelError(report)
