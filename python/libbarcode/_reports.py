"""The shapes of what the library tells: reports, and the types with their options."""

from typing import List, TypedDict, Union


class Size(TypedDict):
    width: int
    height: int


class ReportWarning(TypedDict):
    code: str
    message: str


class _ReportErrorBase(TypedDict):
    code: str
    field: str
    message: str


class ReportError(_ReportErrorBase, total=False):
    needed: Size


class Modules(TypedDict):
    columns: int
    rows: int


class QuietZone(TypedDict):
    left: float
    right: float
    top: float
    bottom: float


class _ReportBase(TypedDict):
    ok: bool
    warnings: List[ReportWarning]


class Report(_ReportBase, total=False):
    """What docs/labels.md says of reports. `error` stands in those of refused labels, the rest in the others."""

    error: ReportError
    type: str
    text: str
    display_text: str
    width: int
    height: int
    width_mm: float
    height_mm: float
    module: int
    modules: Modules
    quiet_zone: QuietZone
    format: str
    bytes: int


class _OptionBase(TypedDict):
    name: str
    kind: str


class Option(_OptionBase, total=False):
    """A field that requests of a type may have."""

    values: List[Union[str, int]]
    min: float
    max: float
    default: Union[str, int, float, bool]


class Readers(TypedDict):
    """What each reader makes of the symbols: "yes", "no" or a sentence."""

    zxing: str
    zbar: str
    zxing_wasm: str


class LabelType(TypedDict):
    """A symbology, its options and who reads it."""

    name: str
    title: str
    number: int
    aliases: List[str]
    two_dimensional: bool
    options: List[Option]
    readers: Readers
