"""The package and the library agree, and the types are right."""

import inspect
import pathlib
import subprocess
import sys
import typing
from typing import Any, Dict

import libbarcode
import pytest
from conftest import SOURCE
from libbarcode import _fields

PACKAGE = SOURCE / "python" / "libbarcode"


def options() -> Dict[str, libbarcode.Option]:
    return {option["name"]: option for kind in libbarcode.types() for option in kind["options"]}


def test_fields_are_the_library_s() -> None:
    names = {"type", "text", "text_base64", *options()}
    assert set(_fields.KINDS) == names
    assert set(typing.get_type_hints(libbarcode.Request)) == names
    assert set(inspect.signature(libbarcode.label).parameters) == names
    assert set(typing.get_type_hints(libbarcode.label)) == names | {"return"}


def python_kind(option: libbarcode.Option) -> str:
    kinds = {"boolean": "a bool", "integer": "an int or a float", "number": "an int or a float",
             "quiet_zone": "a str or an int"}
    return kinds.get(option["kind"], "a str")


def python_type(option: libbarcode.Option) -> object:
    return {"boolean": bool, "integer": int, "number": float}.get(option["kind"], str)


@pytest.mark.parametrize("name", sorted(options()))
def test_kinds_are_the_library_s(name: str) -> None:
    option = options()[name]
    assert _fields.KINDS[name] == python_kind(option)
    hints = (typing.get_type_hints(libbarcode.label), typing.get_type_hints(libbarcode.Request))
    assert hints[0][name] == hints[1][name]
    members = typing.get_args(hints[0][name])
    literals = [word for member in members for word in typing.get_args(member)]
    if name == "rotate":
        assert literals == option["values"]
    else:
        assert python_type(option) in members


@pytest.mark.parametrize("name", ["form", "format", "code_mode", "string_encoding", "error_correction_level",
                                  "encode_mode", "encode_scheme", "quiet_zone"])
def test_words_are_the_library_s(name: str) -> None:
    known: "set[Any]" = set()
    for kind in libbarcode.types():
        for option in kind["options"]:
            if option["name"] == name:
                known.update(option["values"])
    hint = typing.get_type_hints(libbarcode.label)[name]
    assert {word for member in typing.get_args(hint) for word in typing.get_args(member)} == known


def test_types_hold_what_their_types_say() -> None:
    """The library's members are those of the TypedDicts."""
    for kind in libbarcode.types():
        assert set(kind) == set(typing.get_type_hints(libbarcode.LabelType))
        assert set(kind["readers"]) == set(typing.get_type_hints(libbarcode.Readers))
        for option in kind["options"]:
            assert set(option) <= set(typing.get_type_hints(libbarcode.Option))
    report = libbarcode.label("qr", "x", dpi=300).report
    assert set(report) == set(typing.get_type_hints(libbarcode.Report)) - {"error"}


def test_help_shows_every_field() -> None:
    assert "error_correction_level" in str(inspect.signature(libbarcode.label))
    assert libbarcode.label.__name__ == "label" and "LabelError" in (libbarcode.label.__doc__ or "")


def test_mypy_strict(tmp_path: pathlib.Path) -> None:
    result = subprocess.run([sys.executable, "-m", "mypy", "--strict", "--python-version", "3.9", "--cache-dir",
                             str(tmp_path), "libbarcode", "tests"], cwd=PACKAGE.parent, capture_output=True,
                            check=False)
    assert result.returncode == 0, result.stdout.decode()


def test_mypy_knows_the_package(tmp_path: pathlib.Path) -> None:
    """What a user's checker says: the package is typed, and wrong arguments are found."""
    (tmp_path / "user.py").write_text(
        "import libbarcode\n"
        "from libbarcode.library import Barcode, Symbology, quiet\n"
        'label = libbarcode.label("qr", "hello", format="svg", module=4)\n'
        "size: int = label.size[0]\n"
        'for made in libbarcode.labels([{"type": "qr", "text": "x"}], errors="yield"):\n'
        "    reveal_type(made)\n"
        'libbarcode.label("qr", "hello", module="4")\n'
        'libbarcode.label("qr", "hello", modul=4)\n'
        "with quiet(), Barcode(Symbology.QR) as barcode:\n"
        "    reveal_type(barcode.png())\n"
        'print(libbarcode.__version__ + 1, label.report["width"], libbarcode.types()[0]["options"][0]["kind"])\n')
    result = subprocess.run([sys.executable, "-m", "mypy", "--strict", "--python-version", "3.9", "--cache-dir",
                             str(tmp_path / "cache"), "user.py"], cwd=tmp_path, capture_output=True, check=False,
                            env={"MYPYPATH": str(PACKAGE.parent), "PATH": "/usr/bin:/bin"})
    told = result.stdout.decode()
    assert [line.split(":")[1] for line in told.splitlines() if ": error:" in line] == ["7", "8", "11"], told
    assert "Union[libbarcode._label.Label, libbarcode._errors.LabelError]" in told and '"builtins.bytes"' in told


def test_syntax_is_that_of_the_oldest_python() -> None:
    import ast

    for file in PACKAGE.glob("*.py"):
        ast.parse(file.read_text(encoding="utf-8"), feature_version=(3, 9))


def test_nothing_beyond_the_standard_library_is_imported() -> None:
    code = ("import sys; before = set(sys.modules)\n"
            "import libbarcode, libbarcode.library\n"
            "libbarcode.label('qr', 'x'); list(libbarcode.labels([{'type': 'qr', 'text': 'x'}]))\n"
            "new = {name.split('.')[0] for name in set(sys.modules) - before} - {'libbarcode'}\n"
            "print(*sorted(new - sys.stdlib_module_names))\n")
    output = subprocess.run([sys.executable, "-c", code], capture_output=True, check=True).stdout
    assert output.split() == []
