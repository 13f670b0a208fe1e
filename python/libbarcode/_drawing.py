"""The label library's functions, and labels of requests."""

import ctypes
import functools
import json
from ctypes import c_size_t
from time import monotonic
from typing import Any, Callable, Dict, Iterator, List, Mapping, Optional, Tuple, Union

from . import _fields
from ._errors import LabelError, refusal
from ._label import Label
from ._loading import open_library

try:
    from . import _speedups
except ImportError:  # it is not there, or of another kind of interpreter
    _speedups = None  # type: ignore[assignment]

Encoded = Union[bytes, LabelError]
Made = Union[Label, LabelError]


class Library:
    """The functions. Drawing releases the interpreter's lock; the others return at once and keep it."""

    __slots__ = ("make", "data", "media_type", "report", "free", "types", "version", "bytes_at")

    def __init__(self) -> None:
        names = ("barcode_label_" + name for name in Library.__slots__ if name != "bytes_at")
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

    def read_some(self, requests: Iterator[object], chunk: List[Encoded], most: int, most_bytes: int,
                  seconds: float) -> Tuple[bool, float]:
        """Adds the next requests to a chunk, as the library reads them, until it has so many or so many bytes, or the time
        is over. Returns whether there are no more, and the seconds that the last took to come."""
        size, took = 0, 0.0
        begin = before = monotonic()
        while len(chunk) < most and size < most_bytes:
            try:
                request = next(requests)
            except StopIteration:
                return True, took
            encoded = _encoded(request)
            chunk.append(encoded)
            size += len(encoded) if isinstance(encoded, bytes) else 0
            now = monotonic()
            took, before = now - before, now
            if now - begin > seconds:
                break
        return False, took

    def draw(self, type: object, text: object, fields: Dict[str, object]) -> Made:
        """The label of a request, or the error that refuses it."""
        request = _fields.request_json({"type": type, "text": text, **fields})
        return self._take(self.make(request, len(request)), request)

    def draw_some(self, requests: List[Encoded], seconds: float) -> List[Made]:
        """The labels of many, from the first until it is time to end; an error stands for itself. All are drawn before
        the first is taken: a thread that wants the interpreter's lock after each of them waits for the others' most of
        the time."""
        deadline = monotonic() + seconds
        make = self.make
        drawn: List[Any] = []
        taken: List[Made] = []
        try:
            for request in requests:
                drawn.append(make(request, len(request)) if isinstance(request, bytes) else request)
                if monotonic() > deadline:
                    break
            drawn.reverse()
            while drawn:
                made, request = drawn.pop(), requests[len(taken)]
                taken.append(self._take(made, request) if isinstance(request, bytes) else request)
            return taken
        finally:
            for made in drawn:
                if not isinstance(made, LabelError):
                    self.free(made)

    def _take(self, made: Any, request: bytes) -> Made:
        """What the library made, as Python's own; the library's is freed."""
        try:
            length = c_size_t()
            data = self.data(made, length)  # by reference: the prototype says so
            if not data:
                return _error(self.report(made), request)
            return Label(self.bytes_at(data, length.value), _text_of(self.media_type(made)), self.report(made))
        finally:
            self.free(made)


def _encoded(request: object) -> Encoded:
    """A request as the library reads it, or the error of what cannot be told it. TypeError for a value of another Python
    type than the field's."""
    if not isinstance(request, Mapping):
        raise TypeError(f"a request must be a mapping of fields, not {type(request).__name__}")
    try:
        return _fields.request_json(dict(request))  # what it is at this moment
    except LabelError as error:
        return error


def _as_bytes(beginnings: Dict[str, str]) -> Dict[str, bytes]:
    return {name: beginning.encode() for name, beginning in beginnings.items()}


if _speedups is not None:
    class CompiledLibrary(Library):
        """The same, compiled."""

        __slots__ = ()
        read_some = _speedups.read_some  # type: ignore[assignment]
        draw = _speedups.draw  # type: ignore[assignment]
        draw_some = _speedups.draw_some  # type: ignore[assignment]

        def __init__(self) -> None:
            super().__init__()
            addresses = tuple(ctypes.cast(function, ctypes.c_void_p).value
                              for function in (self.make, self.data, self.media_type, self.report, self.free))
            _speedups.bind(addresses, Label, _as_bytes(_fields.STRINGS), _as_bytes(_fields.NUMBERS),
                           _as_bytes(_fields.BOOLEANS), _fields.KINDS, _fields.LONGEST, _fields.MOST,
                           _fields.request_json, _encoded, _error)


def _prototype(function: Any, result: Any, *arguments: Any) -> Any:
    function.restype = result
    function.argtypes = arguments
    return function


library: Optional[Library] = None
# There are few media types.
_text_of: Callable[[bytes], str] = functools.lru_cache(maxsize=16)(bytes.decode)


def functions() -> Library:
    """The library, opened at its first use."""
    global library
    if library is None:
        library = Library() if _speedups is None else CompiledLibrary()
    return library


def _error(text: bytes, request: Optional[bytes]) -> LabelError:
    """An empty report is that of no label at all."""
    if not text:
        return refusal("out_of_memory", "", "There is not enough memory for the label; ask for a smaller one.")
    report = json.loads(text)
    if report["error"]["field"] == "text_base64" and isinstance(request, _fields.BytesRequest):
        report["error"]["field"] = "text"
    return LabelError(report)
