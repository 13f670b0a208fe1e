"""Finds the shared libraries: a file beside the package, as in the wheel, or else the system's."""

import ctypes
import os
from typing import Iterable


class LibraryNotFoundError(ImportError):
    """A shared library that the package needs is not there, or does not load. Raised at its first use."""


def open_library(stem: str, names: Iterable[str], advice: str) -> ctypes.CDLL:
    """The library `stem`.so beside this file, or else the system's `stem`.so.1. It has the functions `names`."""
    beside = os.path.join(os.path.dirname(os.path.abspath(__file__)), f"{stem}.so")
    name = beside if os.path.exists(beside) else f"{stem}.so.1"
    try:
        library = ctypes.CDLL(name)
        for function in names:
            getattr(library, function)
        return library
    except (OSError, AttributeError) as error:
        absent = str(error).startswith(f"{name}: cannot open shared object file: No such file")
        state = "is not installed" if absent else "does not load"
        raise LibraryNotFoundError(f"{stem}.so {state}; {advice} ({error})") from error
