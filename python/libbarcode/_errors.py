"""What is raised for a label that the library refuses."""

from typing import Optional, Tuple

from ._reports import Report


class LabelError(ValueError):
    """A label that was refused; `str()` of it is one English sentence that says what to do.

    code    what kind of error: "bad_text", "too_small" and so on; docs/labels.md lists them
    field   the field of the request that is to blame, "" where none is
    report  the whole report, a dict
    needed  (width, height) of a picture that would do, where another size would; else None
    """

    def __init__(self, report: Report) -> None:
        error = report["error"]
        super().__init__(error["message"])
        self.report = report
        self.code: str = error["code"]
        self.field: str = error["field"]
        size = error.get("needed")
        self.needed: Optional[Tuple[int, int]] = (size["width"], size["height"]) if size else None

    def __reduce__(self) -> Tuple[type, Tuple[Report]]:
        return type(self), (self.report,)


def refusal(code: str, field: str, message: str) -> LabelError:
    """For what cannot even be told to the library."""
    return LabelError({"ok": False, "error": {"code": code, "field": field, "message": message}, "warnings": []})
