"""Barcode labels that scan.

    import libbarcode

    label = libbarcode.label("qr", "hello", format="svg", module=4)
    label.save("hello.svg")

label() draws one, labels() many, types() lists the symbologies with their options. libbarcode.library is the plain
library, which draws what it is told into a box of pixels. docs/python.md describes all of it.
"""

import functools
import importlib
import json
from typing import TYPE_CHECKING, Any, Callable, List, Optional, TypeVar, cast

from . import _drawing
from ._drawing import functions
from ._errors import LabelError
from ._fields import (KINDS, CodeMode, EncodeMode, EncodeScheme, ErrorCorrectionLevel, Form, Format, QuietZoneWidth,
                      Request, Rotation, StringEncoding, Text)
from ._label import Label
from ._loading import LibraryNotFoundError
from ._reports import LabelType, Option, Readers, Report, ReportError, ReportWarning
from ._stream import labels

__all__ = ["Label", "LabelError", "LabelType", "LibraryNotFoundError", "Option", "Readers", "Report", "ReportError",
           "ReportWarning", "Request", "label", "labels", "types"]

if TYPE_CHECKING:
    from . import library as library
    __version__: str
    version: str

_Function = TypeVar("_Function", bound=Callable[..., Any])


def _declared_as(declaration: _Function) -> Callable[[Callable[..., Any]], _Function]:
    """Type checkers, editors and help() see the declaration; calls go to what is decorated."""
    shown = functools.wraps(declaration, assigned=("__doc__", "__annotations__"))
    return lambda function: cast(_Function, shown(function))


def _label(type: str, text: Optional[Text] = None, *, text_base64: Optional[str] = None, form: Optional[Form] = None,
           format: Optional[Format] = None, module: Optional[int] = None, height: Optional[int] = None,
           width: Optional[int] = None, dpi: Optional[int] = None, module_mm: Optional[float] = None,
           height_mm: Optional[float] = None, quiet_zone: Optional[QuietZoneWidth] = None,
           rotate: Optional[Rotation] = None, foreground: Optional[str] = None, background: Optional[str] = None,
           show_text: Optional[bool] = None, caption: Optional[str] = None, text_scale: Optional[float] = None,
           text_gap: Optional[float] = None, even_spacing: Optional[bool] = None,
           show_start_stop: Optional[bool] = None, extended_guard: Optional[bool] = None,
           bar_adjust: Optional[int] = None, code_mode: Optional[CodeMode] = None,
           string_encoding: Optional[StringEncoding] = None, qr_version: Optional[int] = None,
           error_correction_level: Optional[ErrorCorrectionLevel] = None, encode_mode: Optional[EncodeMode] = None,
           code_size: Optional[str] = None, encode_scheme: Optional[EncodeScheme] = None,
           aspect_ratio: Optional[float] = None, y_height: Optional[int] = None, pairs_per_row: Optional[int] = None,
           strict: Optional[bool] = None) -> Label:
    """Draws a label.

    type is a symbology's name or alias; text what it says, bytes for what is no text. The fields are those of
    docs/labels.md, with its defaults; None counts as absent. types() lists which type takes which.

    Raises LabelError for everything that the library refuses, with `code`, `field` and a sentence, and TypeError for
    a value of the wrong Python type and for a keyword that is no field.
    """
    raise NotImplementedError


# Thirty parameters that are looked at in every call would cost as much as a small label.
@_declared_as(_label)
def label(type: str, text: Optional[Text] = None, **fields: object) -> Label:
    made = (_drawing.library or functions()).draw(type, text, fields)
    if isinstance(made, Label):
        return made
    for name in fields:
        if name not in KINDS:
            raise TypeError(f"label() got an unexpected keyword argument '{name}'")
    raise made


def types() -> List[LabelType]:
    """The symbologies in the order of their numbers, each a dict with its names, options and readers."""
    listed: List[LabelType] = json.loads(functions().types())
    if not listed:
        raise MemoryError
    return listed


def __getattr__(name: str) -> object:
    """version and __version__: those of the label library in use; library: the module, when it is asked for."""
    if name == "library":
        return importlib.import_module(".library", __name__)
    if name == "version":
        return functions().version().decode()
    if name == "__version__":
        try:
            return functions().version().decode()
        except LibraryNotFoundError as error:  # tools look whether there is one
            raise AttributeError(f"there is no version: {error}") from error
    raise AttributeError(f"module '{__name__}' has no attribute '{name}'")
