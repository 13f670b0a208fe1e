"""The fields of requests, by the Python types of their values; and requests as JSON.

Ranges, words and what goes with what are the library's to judge. A test compares the names with the library's.
"""

import base64
import json
import math
import numbers
import operator
from typing import Callable, Dict, List, Literal, Mapping, NoReturn, Optional, TypedDict, Union

from ._errors import LabelError, refusal

Text = Union[str, bytes, bytearray, memoryview]
_BYTES = (bytes, bytearray, memoryview)

# Words may be written in upper or lower case; therefore they are strings, and editors still know the list.
Form = Union[Literal["payment", "omnidirectional", "stacked", "stacked-omnidirectional", "row"], str]
Format = Union[Literal["png", "svg", "pdf"], str]
QuietZoneWidth = Union[Literal["standard"], int, str]
Rotation = Literal[0, 90, 180, 270]
CodeMode = Union[Literal["AUTO", "A", "B", "C"], str]
StringEncoding = Union[Literal["utf-8", "shift-jis", "shift_jis"], str]
ErrorCorrectionLevel = Union[Literal["L", "M", "Q", "H"], str]
EncodeMode = Union[Literal["AUTO", "BYTE", "NUMERIC", "ALPHANUMERIC", "KANJI"], str]
EncodeScheme = Union[Literal["AUTO", "ASCII", "C40", "TEXT", "X12", "EDIFACT", "BASE256"], str]


class Request(TypedDict, total=False):
    """A request as a mapping, for labels() and for label(**request). None counts as absent."""

    type: str
    text: Optional[Text]
    text_base64: Optional[str]
    form: Optional[Form]
    format: Optional[Format]
    module: Optional[int]
    height: Optional[int]
    width: Optional[int]
    dpi: Optional[int]
    module_mm: Optional[float]
    height_mm: Optional[float]
    quiet_zone: Optional[QuietZoneWidth]
    rotate: Optional[Rotation]
    foreground: Optional[str]
    background: Optional[str]
    show_text: Optional[bool]
    caption: Optional[str]
    text_scale: Optional[float]
    text_gap: Optional[float]
    even_spacing: Optional[bool]
    show_start_stop: Optional[bool]
    extended_guard: Optional[bool]
    bar_adjust: Optional[int]
    code_mode: Optional[CodeMode]
    string_encoding: Optional[StringEncoding]
    qr_version: Optional[int]
    error_correction_level: Optional[ErrorCorrectionLevel]
    encode_mode: Optional[EncodeMode]
    code_size: Optional[str]
    encode_scheme: Optional[EncodeScheme]
    aspect_ratio: Optional[float]
    y_height: Optional[int]
    pairs_per_row: Optional[int]
    strict: Optional[bool]


_STRING = "a str"
_TEXT = "a str or bytes"
_NUMBER = "an int or a float"
_BOOLEAN = "a bool"
_STRING_OR_NUMBER = "a str or an int"

KINDS: Dict[str, str] = {
    "type": _STRING,
    "text": _TEXT,
    "quiet_zone": _STRING_OR_NUMBER,
    **dict.fromkeys(("text_base64", "form", "format", "foreground", "background", "caption", "code_mode", "code_size",
                     "string_encoding", "error_correction_level", "encode_mode", "encode_scheme"), _STRING),
    **dict.fromkeys(("module", "height", "width", "dpi", "module_mm", "height_mm", "rotate", "text_scale", "text_gap",
                     "bar_adjust", "qr_version", "aspect_ratio", "y_height", "pairs_per_row"), _NUMBER),
    **dict.fromkeys(("show_text", "even_spacing", "show_start_stop", "extended_guard", "strict"), _BOOLEAN),
}
# Of each field its name in JSON. An enum's member is found by its value, whatever it is printed as.
STRINGS = {name: f'"{name}":' for name, kind in KINDS.items() if kind in (_STRING, _TEXT, _STRING_OR_NUMBER)}
NUMBERS = {name: f'"{name}":' for name, kind in KINDS.items() if kind in (_NUMBER, _STRING_OR_NUMBER)}
BOOLEANS = {name: f'"{name}":' for name, kind in KINDS.items() if kind is _BOOLEAN}

# A JSON string; what is not ASCII stays as it is. The encoder's own function saves a call for each string.
_quote: Callable[[str], str] = getattr(json.encoder, "encode_basestring", json.JSONEncoder(ensure_ascii=False).encode)

# JSON has neither NaN nor infinities, and no field takes numbers that are larger than these: the library says so.
_NO_NUMBER = "1e999"
MOST = 2**53
# No label takes a sixth of this. What is longer is refused for its beginning, without a copy of the rest.
LONGEST = 2**16


class BytesRequest(bytes):
    """A request whose text was given as bytes; the library knows it as text_base64."""


def request_json(fields: Dict[str, object]) -> bytes:
    """The request as the library reads it. TypeError for a value of another Python type than the field's."""
    pieces: List[str] = []
    for name, value in fields.items():
        if type(value) is str and name in STRINGS and len(value) <= LONGEST:
            pieces.append(STRINGS[name] + _quote(value))
        elif type(value) is int and name in NUMBERS and -MOST < value < MOST:
            pieces.append(f"{NUMBERS[name]}{value}")
        elif value is not None or name not in KINDS:
            pieces.append(_piece(name, value, fields))
    try:
        request = ("{" + ",".join(pieces) + "}").encode()
    except UnicodeEncodeError:
        raise _no_character(pieces) from None
    return BytesRequest(request) if isinstance(fields.get("text"), _BYTES) else request


def _piece(name: object, value: object, fields: Mapping[str, object]) -> str:
    """One member of the request."""
    if not isinstance(name, str):
        raise TypeError(f"the names of fields must be str, not {type(name).__name__}")
    name = str.__str__(name)
    kind = KINDS.get(name)
    if kind is None:
        return f"{_quote(name)}:null"  # the library refuses the name
    if name in BOOLEANS and isinstance(value, bool):
        return BOOLEANS[name] + ("true" if value else "false")
    if name in STRINGS and isinstance(value, str):
        return STRINGS[name] + _quote(str.__getitem__(value, slice(LONGEST)))
    if kind is _TEXT and isinstance(value, _BYTES):
        if fields.get("text_base64") is not None:
            return '"text":""'  # there are two texts: the library says so
        return f'"text_base64":"{base64.b64encode(memoryview(value).cast("B")[:LONGEST]).decode()}"'
    if name in NUMBERS and isinstance(value, numbers.Real) and not isinstance(value, bool):
        return NUMBERS[name] + _number(value)
    _wrong_type(name, value)


def _number(value: numbers.Real) -> str:
    if isinstance(value, numbers.Integral):
        whole = operator.index(value)
        return int.__repr__(whole) if -MOST < whole < MOST else _NO_NUMBER
    try:
        real = float(value)
    except OverflowError:
        return _NO_NUMBER
    return float.__repr__(real) if math.isfinite(real) else _NO_NUMBER


def _wrong_type(name: str, value: object) -> NoReturn:
    raise TypeError(f"{name} must be {KINDS[name]}, not {type(value).__name__}")


def _no_character(pieces: List[str]) -> LabelError:
    """The error of the first member that holds half of a surrogate pair, which no encoding has."""
    piece = next(piece for piece in pieces if not _is_unicode(piece))
    (name, value), = json.loads("{" + piece + "}").items()
    shown = name.encode("ascii", "backslashreplace").decode()
    code = "bad_value"
    if not _is_unicode(name):
        code, value = "unknown_field", name
    elif name == "text":
        code = "bad_text"
    place = next(place for place, character in enumerate(value) if not _is_unicode(character))
    half = f"U+{ord(value[place]):04X}, half of a surrogate pair, at character {place + 1}"
    return refusal(code, shown, f'The field "{shown}" holds {half}; give it text in Unicode.')


def _is_unicode(text: str) -> bool:
    try:
        text.encode()
    except UnicodeEncodeError:
        return False
    return True
