"""The plain library, libbarcode.so: it draws what it is told into a box of pixels. Its manual is barcode.h.

    from libbarcode.library import Barcode, Symbology, quiet

    with quiet(), Barcode(Symbology.CODE39) as barcode:
        barcode.draw("ABC-123", 300, 100)
        png = barcode.png()

Barcode is one object with its options; quiet() silences what the library prints. The 43 functions are here under their
names in C and take what they take in C, with these differences: a handle is a Handle, which is freed when it is
forgotten, and after barcode_destroy() counts as NULL, which is harmless; texts are str or bytes; strings that are
returned are bytes of the caller's own, and so is the picture of barcode_get_image_data(), which has no length argument.

The module can always be imported. Where libbarcode.so is missing, the first use raises LibraryNotFoundError.
"""

import contextlib
import ctypes
import enum
import errno
import fcntl
import os
import sys
import threading
import weakref
from types import TracebackType
from typing import Any, Callable, Dict, Iterator, List, NoReturn, Optional, Tuple, Type, TypeVar, Union, cast

from ._loading import open_library

Text = Union[str, bytes]
_Self = TypeVar("_Self", bound="Barcode")


class Symbology(enum.IntEnum):
    """The numbers of barcode.h."""

    CODE39 = 0
    CODE93 = 1
    CODE128 = 2
    GS1_128 = 3
    NW7 = 4
    MATRIX_2OF5 = 5
    NEC_2OF5 = 6
    JAN8 = 7
    JAN13 = 8
    UPC_A = 9
    UPC_E = 10
    ITF = 11
    GS1_DATABAR_14 = 12
    GS1_DATABAR_LIMITED = 13
    GS1_DATABAR_EXPANDED = 14
    YUBIN_CUSTOMER = 15
    QR = 16
    DATAMATRIX = 17
    PDF417 = 18


# ---- Prototypes ----------------------------------------------------------------------------------------------------

_HANDLE = ctypes.c_void_p
_STRING = ctypes.c_char_p
_INT = ctypes.c_int
_DOUBLE = ctypes.c_double
_BYTES = ctypes.c_void_p  # unsigned char*

_SET_INT = (None, (_HANDLE, _INT))
_SET_COLOR = (None, (_HANDLE, _INT, _INT, _INT, _INT))
_SET_REAL = (None, (_HANDLE, _DOUBLE))
_SET_WORD = (None, (_HANDLE, _STRING))
_DRAW_SIZE = (_INT, (_HANDLE, _STRING, _INT))
_DRAW_BOX = (_INT, (_HANDLE, _STRING, _INT, _INT))
_GET_STRING = (_STRING, (_HANDLE,))

PROTOTYPES: Dict[str, Tuple[Any, Tuple[Any, ...]]] = {
    "barcode_create": (_HANDLE, (_INT,)),
    "barcode_destroy": (None, (_HANDLE,)),
    "barcode_set_output_format": _SET_WORD,
    "barcode_is_svg_output": (_INT, (_HANDLE,)),
    "barcode_set_foreground_color": _SET_COLOR,
    "barcode_set_background_color": _SET_COLOR,
    "barcode_set_fit_width": _SET_INT,
    "barcode_set_px_adjust_black": _SET_INT,
    "barcode_set_px_adjust_white": _SET_INT,
    "barcode_set_show_text": _SET_INT,
    "barcode_set_text_even_spacing": _SET_INT,
    "barcode_set_text_font_scale": _SET_REAL,
    "barcode_set_text_gap": _SET_REAL,
    "barcode_set_show_start_stop": _SET_INT,
    "barcode_set_extended_guard": _SET_INT,
    "barcode_set_code_mode": _SET_WORD,
    "barcode_set_string_encoding": _SET_WORD,
    "barcode_set_version": _SET_INT,
    "barcode_set_error_correction_level": _SET_WORD,
    "barcode_set_encode_mode": _SET_WORD,
    "barcode_set_code_size": _SET_WORD,
    "barcode_set_encode_scheme": _SET_WORD,
    "barcode_set_columns": _SET_INT,
    "barcode_set_rows": _SET_INT,
    "barcode_set_error_level": _SET_INT,
    "barcode_set_aspect_ratio": _SET_REAL,
    "barcode_set_y_height": _SET_INT,
    "barcode_set_symbol_type_14": _SET_WORD,
    "barcode_get_symbol_type_14": _GET_STRING,
    "barcode_set_symbol_type_exp": _SET_WORD,
    "barcode_set_no_of_columns": _SET_INT,
    "barcode_draw_1d": _DRAW_BOX,
    "barcode_draw_2d": _DRAW_SIZE,
    "barcode_draw_2d_rect": _DRAW_BOX,
    "barcode_draw_convenience": _DRAW_BOX,
    "barcode_draw_stacked": _DRAW_BOX,
    "barcode_draw_yubin": _DRAW_SIZE,
    "barcode_draw_yubin_with_width": _DRAW_BOX,
    "barcode_encode_14": (_INT, (_HANDLE, _STRING)),
    "barcode_get_base64": _GET_STRING,
    "barcode_get_image_data": (_BYTES, (_HANDLE, ctypes.POINTER(_INT))),
    "barcode_get_svg": _GET_STRING,
    "barcode_calculate_check_digit_14": (_STRING, (_STRING,)),
}

_functions: Optional[Dict[str, Any]] = None
# The check digit's string is shared by all threads. A signal handler may ask for another one meanwhile.
_check_digit_lock = threading.RLock()


def _function(name: str) -> Any:
    """A function of the library, which is opened at its first use."""
    global _functions
    if _functions is None:
        library = open_library("libbarcode", PROTOTYPES,
                               "install Debian's libbarcode1, or build the library and install it")
        opened = {}
        for known, (result, arguments) in PROTOTYPES.items():
            opened[known] = getattr(library, known)
            opened[known].restype, opened[known].argtypes = result, arguments
        _functions = opened
    return _functions[name]


# ---- Arguments -----------------------------------------------------------------------------------------------------

class Handle:
    """An object of the library, of barcode_create() alone. Calls on one handle wait for each other; a forgotten one is
    destroyed.

    A signal handler may run in the middle of a call, on its thread. There the handle cannot be used, which is a
    RuntimeError; destroying it is left to the end of the call.
    """

    __slots__ = ("_pointer", "_lock", "_user", "_finalizer", "__weakref__")
    _pointer: Optional[int]
    _lock: threading.RLock
    _user: Optional[int]
    _finalizer: weakref.finalize

    def __init__(self) -> None:
        raise TypeError("handles are made by barcode_create()")

    def __reduce__(self) -> NoReturn:
        raise TypeError("a handle cannot be copied or pickled")

    @classmethod
    def _of(cls, pointer: int) -> "Handle":
        handle = cls.__new__(cls)
        handle._pointer = pointer
        handle._lock = threading.RLock()
        handle._user = None
        handle._finalizer = weakref.finalize(handle, _function("barcode_destroy"), pointer)
        handle._finalizer.atexit = False
        _handles.add(handle)
        return handle

    @contextlib.contextmanager
    def _in_use(self) -> Iterator[Optional[int]]:
        """The pointer, which stays good, and what the library returned for it too."""
        with self._lock:
            if self._user is not None:
                raise RuntimeError("the handle is in use by the call that was interrupted")
            self._user = threading.get_ident()
            try:
                yield self._pointer
            finally:
                self._user = None
                if self._pointer is None:
                    self._finalizer()

    def _destroy(self) -> None:
        with self._lock:
            self._pointer = None
            if self._user is None:
                self._finalizer()

    def _after_fork(self) -> None:
        """Threads that had the lock are no more; what they were drawing is in pieces and counts as destroyed."""
        if self._user == threading.get_ident():
            return
        self._lock = threading.RLock()
        if self._user is not None:
            self._user = self._pointer = None
            self._finalizer.detach()


_handles: "weakref.WeakSet[Handle]" = weakref.WeakSet()


def _check(handle: Optional[Handle]) -> None:
    if handle is not None and not isinstance(handle, Handle):
        raise TypeError(f"a handle of barcode_create() is wanted, not {type(handle).__name__}")


def _text(value: object, name: str = "text") -> Optional[bytes]:
    """A C string; what it cannot hold is refused rather than cut."""
    if isinstance(value, str):
        try:
            value = value.encode()
        except UnicodeEncodeError as error:
            raise ValueError(f"{name} holds half of a surrogate pair at character {error.start + 1}") from None
    if value is None:
        return None
    if not isinstance(value, bytes):
        raise TypeError(f"{name} must be a str or bytes, not {type(value).__name__}")
    if b"\0" in value:
        raise ValueError(f"{name} holds a NUL, at which the library's texts end")
    return value


def _int(value: object) -> int:
    if not isinstance(value, int):
        raise TypeError(f"an int is wanted, not {type(value).__name__}")
    if not -2**31 <= value < 2**31:
        raise OverflowError("the number does not fit an int of C")
    return int(value)


def _double(value: object) -> float:
    if not isinstance(value, (int, float)):
        raise TypeError(f"a float is wanted, not {type(value).__name__}")
    return float(value)


_CONVERSIONS: Dict[Any, Callable[[Any], Any]] = {_STRING: _text, _INT: _int, _DOUBLE: _double}


def _call(name: str, handle: Optional[Handle], *arguments: object) -> Any:
    """Calls a function of a handle, which nobody destroys meanwhile."""
    _check(handle)
    function = _function(name)
    kinds = PROTOTYPES[name][1][1:]
    converted = [_CONVERSIONS[kind](argument) for kind, argument in zip(kinds, arguments)]
    if handle is None:
        return function(None, *converted)
    with handle._in_use() as pointer:
        return function(pointer, *converted)


# ---- The 43 functions ----------------------------------------------------------------------------------------------


def barcode_create(type: int) -> Optional[Handle]:
    """None for a number that is no symbology."""
    pointer = _function("barcode_create")(_int(type))
    return None if pointer is None else Handle._of(pointer)


def barcode_destroy(handle: Optional[Handle]) -> None:
    """The handle counts as NULL afterwards."""
    _check(handle)
    if handle is not None:
        handle._destroy()


def barcode_set_output_format(handle: Optional[Handle], format: Optional[Text]) -> None:
    _call("barcode_set_output_format", handle, format)


def barcode_is_svg_output(handle: Optional[Handle]) -> int:
    return cast(int, _call("barcode_is_svg_output", handle))


def barcode_set_foreground_color(handle: Optional[Handle], r: int, g: int, b: int, a: int) -> None:
    _call("barcode_set_foreground_color", handle, r, g, b, a)


def barcode_set_background_color(handle: Optional[Handle], r: int, g: int, b: int, a: int) -> None:
    _call("barcode_set_background_color", handle, r, g, b, a)


def barcode_set_fit_width(handle: Optional[Handle], flag: int) -> None:
    _call("barcode_set_fit_width", handle, flag)


def barcode_set_px_adjust_black(handle: Optional[Handle], pixels: int) -> None:
    _call("barcode_set_px_adjust_black", handle, pixels)


def barcode_set_px_adjust_white(handle: Optional[Handle], pixels: int) -> None:
    _call("barcode_set_px_adjust_white", handle, pixels)


def barcode_set_show_text(handle: Optional[Handle], flag: int) -> None:
    _call("barcode_set_show_text", handle, flag)


def barcode_set_text_even_spacing(handle: Optional[Handle], flag: int) -> None:
    _call("barcode_set_text_even_spacing", handle, flag)


def barcode_set_text_font_scale(handle: Optional[Handle], scale: float) -> None:
    _call("barcode_set_text_font_scale", handle, scale)


def barcode_set_text_gap(handle: Optional[Handle], scale: float) -> None:
    _call("barcode_set_text_gap", handle, scale)


def barcode_set_show_start_stop(handle: Optional[Handle], flag: int) -> None:
    _call("barcode_set_show_start_stop", handle, flag)


def barcode_set_extended_guard(handle: Optional[Handle], flag: int) -> None:
    _call("barcode_set_extended_guard", handle, flag)


def barcode_set_code_mode(handle: Optional[Handle], mode: Optional[Text]) -> None:
    _call("barcode_set_code_mode", handle, mode)


def barcode_set_string_encoding(handle: Optional[Handle], encoding: Optional[Text]) -> None:
    _call("barcode_set_string_encoding", handle, encoding)


def barcode_set_version(handle: Optional[Handle], version: int) -> None:
    _call("barcode_set_version", handle, version)


def barcode_set_error_correction_level(handle: Optional[Handle], level: Optional[Text]) -> None:
    _call("barcode_set_error_correction_level", handle, level)


def barcode_set_encode_mode(handle: Optional[Handle], mode: Optional[Text]) -> None:
    _call("barcode_set_encode_mode", handle, mode)


def barcode_set_code_size(handle: Optional[Handle], size: Optional[Text]) -> None:
    _call("barcode_set_code_size", handle, size)


def barcode_set_encode_scheme(handle: Optional[Handle], scheme: Optional[Text]) -> None:
    _call("barcode_set_encode_scheme", handle, scheme)


def barcode_set_columns(handle: Optional[Handle], columns: int) -> None:
    _call("barcode_set_columns", handle, columns)


def barcode_set_rows(handle: Optional[Handle], rows: int) -> None:
    _call("barcode_set_rows", handle, rows)


def barcode_set_error_level(handle: Optional[Handle], level: int) -> None:
    _call("barcode_set_error_level", handle, level)


def barcode_set_aspect_ratio(handle: Optional[Handle], ratio: float) -> None:
    _call("barcode_set_aspect_ratio", handle, ratio)


def barcode_set_y_height(handle: Optional[Handle], height: int) -> None:
    _call("barcode_set_y_height", handle, height)


def barcode_set_symbol_type_14(handle: Optional[Handle], type: Optional[Text]) -> None:
    _call("barcode_set_symbol_type_14", handle, type)


def barcode_get_symbol_type_14(handle: Optional[Handle]) -> bytes:
    return cast(bytes, _call("barcode_get_symbol_type_14", handle))


def barcode_set_symbol_type_exp(handle: Optional[Handle], type: Optional[Text]) -> None:
    _call("barcode_set_symbol_type_exp", handle, type)


def barcode_set_no_of_columns(handle: Optional[Handle], columns: int) -> None:
    _call("barcode_set_no_of_columns", handle, columns)


def barcode_draw_1d(handle: Optional[Handle], text: Optional[Text], width: int, height: int) -> int:
    return cast(int, _call("barcode_draw_1d", handle, text, width, height))


def barcode_draw_2d(handle: Optional[Handle], text: Optional[Text], size: int) -> int:
    return cast(int, _call("barcode_draw_2d", handle, text, size))


def barcode_draw_2d_rect(handle: Optional[Handle], text: Optional[Text], width: int, height: int) -> int:
    return cast(int, _call("barcode_draw_2d_rect", handle, text, width, height))


def barcode_draw_convenience(handle: Optional[Handle], text: Optional[Text], width: int, height: int) -> int:
    return cast(int, _call("barcode_draw_convenience", handle, text, width, height))


def barcode_draw_stacked(handle: Optional[Handle], text: Optional[Text], width: int, height: int) -> int:
    return cast(int, _call("barcode_draw_stacked", handle, text, width, height))


def barcode_draw_yubin(handle: Optional[Handle], text: Optional[Text], height: int) -> int:
    return cast(int, _call("barcode_draw_yubin", handle, text, height))


def barcode_draw_yubin_with_width(handle: Optional[Handle], text: Optional[Text], width: int, height: int) -> int:
    return cast(int, _call("barcode_draw_yubin_with_width", handle, text, width, height))


def barcode_encode_14(handle: Optional[Handle], text: Optional[Text]) -> int:
    return cast(int, _call("barcode_encode_14", handle, text))


def barcode_get_base64(handle: Optional[Handle]) -> bytes:
    return cast(bytes, _call("barcode_get_base64", handle))


def barcode_get_image_data(handle: Optional[Handle]) -> Optional[bytes]:
    """The bytes of a PNG file; None where there are none."""
    _check(handle)
    function = _function("barcode_get_image_data")
    if handle is None:
        return None
    with handle._in_use() as pointer:
        length = _INT()
        data = function(pointer, length)
        return ctypes.string_at(data, length.value) if data else None


def barcode_get_svg(handle: Optional[Handle]) -> bytes:
    return cast(bytes, _call("barcode_get_svg", handle))


def barcode_calculate_check_digit_14(text: Optional[Text]) -> bytes:
    function = _function("barcode_calculate_check_digit_14")
    converted = _text(text)
    with _check_digit_lock:
        return cast(bytes, function(converted))


# ---- An object -----------------------------------------------------------------------------------------------------

class DrawError(ValueError):
    """The symbol was not drawn. The library tells the reason on standard error alone."""


class ClosedError(ValueError):
    """The barcode is closed."""


class Barcode:
    """One barcode object of the library, as a context manager: its options, its draws and their results.

    The options are those of barcode.h, each a method with the name of its function; an option that the symbology does
    not have does nothing. A draw that fails raises DrawError. After close(), which leaving the block calls, everything
    raises ClosedError. Threads may share one; their calls wait for each other.
    """

    def __init__(self, symbology: int, *, format: str = "png") -> None:
        handle = barcode_create(symbology)
        if handle is None:
            raise ValueError(f"the library has no symbology {symbology}, or no memory left")
        self._own: Optional[Handle] = handle
        self.set_output_format(format)

    def __enter__(self: _Self) -> _Self:
        self._handle()
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 traceback: Optional[TracebackType]) -> None:
        self.close()

    def close(self) -> None:
        """Frees the object. A second call does nothing."""
        handle, self._own = self._own, None
        barcode_destroy(handle)

    @property
    def closed(self) -> bool:
        return self._own is None

    @property
    def handle(self) -> Handle:
        """The object, for the functions in C."""
        return self._handle()

    def _handle(self) -> Handle:
        handle = self._own
        if handle is None:
            raise ClosedError("the barcode is closed")
        return handle

    # -- Options
    def set_output_format(self, format: Text) -> None:
        barcode_set_output_format(self._handle(), _given(format))

    def set_foreground_color(self, r: int, g: int, b: int, a: int = 255) -> None:
        barcode_set_foreground_color(self._handle(), r, g, b, a)

    def set_background_color(self, r: int, g: int, b: int, a: int = 255) -> None:
        barcode_set_background_color(self._handle(), r, g, b, a)

    def set_fit_width(self, flag: bool = True) -> None:
        barcode_set_fit_width(self._handle(), flag)

    def set_px_adjust_black(self, pixels: int) -> None:
        barcode_set_px_adjust_black(self._handle(), pixels)

    def set_px_adjust_white(self, pixels: int) -> None:
        barcode_set_px_adjust_white(self._handle(), pixels)

    def set_show_text(self, flag: bool = True) -> None:
        barcode_set_show_text(self._handle(), flag)

    def set_text_even_spacing(self, flag: bool = True) -> None:
        barcode_set_text_even_spacing(self._handle(), flag)

    def set_text_font_scale(self, scale: float) -> None:
        barcode_set_text_font_scale(self._handle(), scale)

    def set_text_gap(self, scale: float) -> None:
        barcode_set_text_gap(self._handle(), scale)

    def set_show_start_stop(self, flag: bool = True) -> None:
        barcode_set_show_start_stop(self._handle(), flag)

    def set_extended_guard(self, flag: bool = True) -> None:
        barcode_set_extended_guard(self._handle(), flag)

    def set_code_mode(self, mode: Text) -> None:
        barcode_set_code_mode(self._handle(), _given(mode))

    def set_string_encoding(self, encoding: Text) -> None:
        barcode_set_string_encoding(self._handle(), _given(encoding))

    def set_version(self, version: int) -> None:
        barcode_set_version(self._handle(), version)

    def set_error_correction_level(self, level: Text) -> None:
        barcode_set_error_correction_level(self._handle(), _given(level))

    def set_encode_mode(self, mode: Text) -> None:
        barcode_set_encode_mode(self._handle(), _given(mode))

    def set_code_size(self, size: Text) -> None:
        barcode_set_code_size(self._handle(), _given(size))

    def set_encode_scheme(self, scheme: Text) -> None:
        barcode_set_encode_scheme(self._handle(), _given(scheme))

    def set_columns(self, columns: int) -> None:
        barcode_set_columns(self._handle(), columns)

    def set_rows(self, rows: int) -> None:
        barcode_set_rows(self._handle(), rows)

    def set_error_level(self, level: int) -> None:
        barcode_set_error_level(self._handle(), level)

    def set_aspect_ratio(self, ratio: float) -> None:
        barcode_set_aspect_ratio(self._handle(), ratio)

    def set_y_height(self, height: int) -> None:
        barcode_set_y_height(self._handle(), height)

    def set_symbol_type_14(self, type: Text) -> None:
        barcode_set_symbol_type_14(self._handle(), _given(type))

    def set_symbol_type_exp(self, type: Text) -> None:
        barcode_set_symbol_type_exp(self._handle(), _given(type))

    def set_no_of_columns(self, columns: int) -> None:
        barcode_set_no_of_columns(self._handle(), columns)

    # -- Draws

    def draw(self, text: Text, width: int, height: int) -> None:
        """Draws any symbology into a box of pixels."""
        self._drawn(barcode_draw_1d(self._handle(), _given(text), width, height))

    def draw_square(self, text: Text, size: int) -> None:
        """QR, Data Matrix, PDF417: into a square box."""
        self._drawn(barcode_draw_2d(self._handle(), _given(text), size))

    def draw_convenience(self, text: Text, width: int, height: int) -> None:
        """GS1-128: the payment form of Japanese convenience stores."""
        self._drawn(barcode_draw_convenience(self._handle(), _given(text), width, height))

    def draw_stacked(self, text: Text, width: int, height: int) -> None:
        """GS1 DataBar Expanded: the stacked form, which stays selected."""
        self._drawn(barcode_draw_stacked(self._handle(), _given(text), width, height))

    def draw_yubin(self, text: Text, height: int) -> None:
        """The Japanese postal code, whose width follows from its height."""
        self._drawn(barcode_draw_yubin(self._handle(), _given(text), height))

    @staticmethod
    def _drawn(result: int) -> None:
        if result == 0:
            raise DrawError("the library did not draw the symbol; the reason is a line on standard error, if any")

    # -- Results

    def png(self) -> bytes:
        """The bytes of the last raster draw."""
        data = barcode_get_image_data(self._handle())
        if data is None:
            raise DrawError("there is no picture: nothing was drawn in a raster format, or PNG cannot hold it")
        return data

    def svg(self) -> str:
        """The document of the last SVG draw. Bytes that are no UTF-8 (see TEXTS in barcode.h) are escaped as Python
        escapes those of file names: encode(errors="surrogateescape") gives them back."""
        document = barcode_get_svg(self._handle())
        if not document:
            raise DrawError('there is no document: nothing was drawn in the format "svg"')
        return document.decode(errors="surrogateescape")

    def data_uri(self) -> str:
        """The last raster draw as a data URI. It releases the picture: ask for png() before."""
        uri = barcode_get_base64(self._handle()).decode()
        if uri.startswith("Error: "):
            raise DrawError(uri)
        return uri


def _given(text: Text) -> Text:
    """NULL, which the functions in C take, is no text here."""
    if text is None:
        raise TypeError("a str or bytes is wanted, not None")
    return text


# ---- What the library prints ---------------------------------------------------------------------------------------

_quiet_lock = threading.RLock()
# How many blocks each thread is in.
_quiet_threads: Dict[int, int] = {}
# Descriptors 1 and 2 as they were; None for one that was closed.
_saved: List[Tuple[int, Optional[int]]] = []


def _after_fork() -> None:
    """In a child only the thread that forked goes on: the calls and blocks of the others are over."""
    global _check_digit_lock
    _check_digit_lock = threading.RLock()
    for handle in list(_handles):
        handle._after_fork()
    if _quiet_threads:
        here = threading.get_ident()
        own = _quiet_threads.get(here)
        _quiet_threads.clear()
        if own is None:
            _restore()
        else:
            _quiet_threads[here] = own
    _quiet_lock.release()


os.register_at_fork(before=_quiet_lock.acquire, after_in_parent=_quiet_lock.release, after_in_child=_after_fork)


@contextlib.contextmanager
def quiet() -> Iterator[None]:
    """Around a block, sends what is written to the process's standard output and error to nowhere.

    These are the library's lines, and also all that others write to the descriptors 1 and 2 in the meantime: the whole
    process has them. What was printed before, by Python or by C, still appears; what Python prints inside does not.
    Blocks may stand inside each other and run on several threads: the streams speak again when the last one ends,
    however it ends.
    """
    thread = _enter_quiet()
    try:
        yield
    finally:
        _leave_quiet(thread)


def _enter_quiet() -> int:
    thread = threading.get_ident()
    with _quiet_lock:
        if not _quiet_threads:
            _flush_python()
            _flush_c()
            _silence()
        _quiet_threads[thread] = _quiet_threads.get(thread, 0) + 1
    return thread


def _leave_quiet(thread: int) -> None:
    with _quiet_lock:
        if thread not in _quiet_threads:
            return  # in a child, the block of a thread of its parent's
        _quiet_threads[thread] -= 1
        if _quiet_threads[thread] == 0:
            del _quiet_threads[thread]
        if not _quiet_threads:
            try:
                _flush_python()
                _flush_c()
            finally:
                _restore()


def _silence() -> None:
    nowhere = _above_streams(os.open(os.devnull, os.O_WRONLY | os.O_CLOEXEC))
    try:
        for descriptor in (1, 2):
            try:
                earlier: Optional[int] = fcntl.fcntl(descriptor, fcntl.F_DUPFD_CLOEXEC, 3)
            except OSError as error:
                if error.errno != errno.EBADF:
                    raise
                earlier = None
            _saved.append((descriptor, earlier))
            os.dup2(nowhere, descriptor)
    except BaseException:
        _restore()
        raise
    finally:
        os.close(nowhere)


def _restore() -> None:
    while _saved:
        descriptor, earlier = _saved.pop()
        if earlier is None:
            with contextlib.suppress(OSError):  # closed again in the meantime
                os.close(descriptor)
        else:
            os.dup2(earlier, descriptor)
            os.close(earlier)


def _above_streams(descriptor: int) -> int:
    """The same file, where its number is not that of a standard stream which was closed."""
    if descriptor > 2:
        return descriptor
    try:
        return fcntl.fcntl(descriptor, fcntl.F_DUPFD_CLOEXEC, 3)
    finally:
        os.close(descriptor)


def _flush_python() -> None:
    for stream in (sys.stdout, sys.stderr, sys.__stdout__, sys.__stderr__):
        with contextlib.suppress(Exception):
            stream.flush()  # there may be none, a closed one, or one that anybody wrote


def _flush_c() -> None:
    ctypes.CDLL(None).fflush(None)
