"""The compiled module: it is there, and it says what the rules for all requests say."""

import itertools
import json
import random
import subprocess
import sys
from typing import Any, Dict, List, Union

import libbarcode
import pytest
from conftest import PACKAGES
from libbarcode import _drawing, _fields

_speedups: Any = getattr(_drawing, "_speedups")
libbarcode.types()  # the library is opened


def test_it_is_in_use() -> None:
    library = _drawing.functions()
    assert (library.draw, library.draw_some, library.request_json) == (
        _speedups.draw, _speedups.draw_some, _speedups.request_json)


def test_it_needs_no_interpreter_of_its_own() -> None:
    """Neither a library of Python nor a name that only one version has."""
    module = next((PACKAGES / "libbarcode").glob("_speedups*.so"))
    assert module.name == "_speedups.abi3.so"
    headers = subprocess.run(["objdump", "-p", str(module)], capture_output=True, check=True).stdout.decode()
    needed = [line for line in headers.splitlines() if "NEEDED" in line]
    assert needed and not [line for line in needed if "python" in line or "barcode" in line]
    symbols = subprocess.run(["nm", "-D", "--undefined-only", str(module)], capture_output=True, check=True).stdout
    private = {name for name in symbols.decode().split() if name.startswith("_Py")}
    assert private <= {"_Py_Dealloc", "_Py_NoneStruct", "_Py_TrueStruct", "_PyArg_ParseTuple_SizeT"}  # those are for all


VALUES: List[object] = [
    None, True, False, 0, -1, 7, 2**53, -(2**53), 2**53 - 1, 1 - 2**53, 2**63, -(2**64), 10**400, 1.5, -0.0, 1e300, "",
    "x", "\u00e9\u20ac\U0001d11e", "\0\x01\x1f\x7f\x80", '"\\/\b\f\n\r\t', "\ud800", "a\udfffb", "x" * 2**16,
    "x" * (2**16 + 1), b"bytes", bytearray(b"\xff\0"), memoryview(b"view"), "standard"]


def outcome(encode: Any, fields: Dict[Any, object]) -> object:
    try:
        return json.loads(encode(fields)), type(encode(fields))
    except libbarcode.LabelError as error:
        return error.report
    except TypeError as error:
        return str(error)


def test_every_field_with_every_value() -> None:
    for name, value in itertools.product([*_fields.KINDS, "", "modul", "t\u00e9xt", "\ud800"], VALUES):
        fields = {"strict": False, name: value, "module": 3}
        assert outcome(_speedups.request_json, fields) == outcome(_fields.request_json, fields), (name, value)


def test_order_of_members_is_kept() -> None:
    """Of several errors the first is told."""
    generator = random.Random(5)
    for _ in range(2000):
        names = generator.sample([*_fields.KINDS, "modul"], 6)
        fields = {name: generator.choice(VALUES) for name in names}
        first, second = outcome(_speedups.request_json, fields), outcome(_fields.request_json, fields)
        assert first == second
        if isinstance(first, tuple):
            assert list(first[0]) == list(second[0])  # type: ignore[index]


@pytest.mark.parametrize("wrong", [1, None, b"x", ("a",)])
def test_names_that_are_no_strings(wrong: Any) -> None:
    with pytest.raises(TypeError, match="names of fields must be str"):
        _speedups.request_json({"type": "qr", wrong: "x"})


def test_values_that_change_the_fields_meanwhile() -> None:
    fields: Dict[str, object] = {"type": "qr", "text": "x"}

    class Sly(float):
        def __float__(self) -> float:
            fields.clear()
            return 2.0

    fields.update(aspect_ratio=Sly(3), module=4)
    assert json.loads(_speedups.request_json(fields))["module"] == 4
    assert fields in ({}, {"type": "qr", "text": "x", "aspect_ratio": 3.0, "module": 4})


def test_draws_as_the_plain_library_does() -> None:
    plain = _drawing.Library()
    requests: List[Dict[str, Any]] = [
        {"type": "qr", "text": "x"}, {"type": "code128", "text": "a\tb", "format": "svg"},
        {"type": "ean13", "text": "490123456789", "format": "pdf"}, {"type": "qr", "text": b"\xff"},
        {"type": "itf", "text": "x"}, {"type": "itf", "text": b"x"}, {"type": None, "text": None},
        {"type": "qr", "text": "x", "show_text": True, "quiet_zone": 2}]
    for request in requests:
        fields = {name: value for name, value in request.items() if name not in ("type", "text")}
        one = _speedups.draw(request["type"], request["text"], fields)
        other = plain.draw(request["type"], request["text"], fields)
        assert type(one) is type(other) and one.report == other.report
        if isinstance(one, libbarcode.Label):
            assert isinstance(other, libbarcode.Label)
            assert (one.data, one.media_type) == (other.data, other.media_type)


def test_some_as_the_plain_library_draws_them() -> None:
    error = libbarcode.LabelError({"ok": False, "error": {"code": "x", "field": "", "message": "y"}, "warnings": []})
    requests: List[Union[bytes, libbarcode.LabelError]] = [b'{"type":"qr","text":"x"}', error, b"", b"{", error]
    made: List[Any] = _speedups.draw_some(requests, 60.0)
    other: List[Any] = _drawing.Library().draw_some(requests, 60.0)
    assert [one.report for one in made] == [one.report for one in other] and len(made) == len(requests)
    assert made[1] is error and made[4] is error and made[0].data == other[0].data
    assert _speedups.draw_some([], 1.0) == []
    assert len(_speedups.draw_some(requests, -1.0)) == 1  # one at least


def test_wrong_calls() -> None:
    for function, arguments in ((_speedups.draw, ("qr", "x")), (_speedups.draw, ("qr", "x", None)),
                                (_speedups.request_json, ([],)), (_speedups.draw_some, (None, 1.0)),
                                (_speedups.draw_some, ([], "x")), (_speedups.bind, ()), (_speedups.bind, ((),) * 10)):
        with pytest.raises(TypeError):
            function(*arguments)


def test_before_it_is_bound() -> None:
    code = ("from libbarcode import _speedups\n"
            "for call in (lambda: _speedups.draw(1, 2, {}), lambda: _speedups.request_json({}),\n"
            "             lambda: _speedups.draw_some([], 1.0)):\n"
            "    try: call()\n"
            "    except RuntimeError as error: print(error)\n")
    output = subprocess.run([sys.executable, "-c", code], capture_output=True, check=True).stdout.decode()
    assert output == "bind() comes first\n" * 3


@pytest.mark.parametrize("error", [None, ValueError("mine")])
def test_names_with_a_comparison_of_their_own(error: Any) -> None:
    class Name(str):
        def __hash__(self) -> int:
            return hash("type")

        def __eq__(self, other: object) -> bool:
            if error is not None:
                raise error
            return False

    for library in (_drawing.functions(), _drawing.Library()):
        with pytest.raises((libbarcode.LabelError, ValueError)) as raised:
            library.draw("qr", "\ud800", {Name("zzz"): 1})
        assert str(raised.value) == "mine" if error else isinstance(raised.value, libbarcode.LabelError)


def test_bound_again_while_a_label_is_drawn() -> None:
    """As when the package is loaded once more."""
    class Binding(float):
        def __float__(self) -> float:
            _drawing.library = None
            _drawing.functions()
            return 3.0

    for _ in range(20):
        assert libbarcode.label("pdf417", "x", aspect_ratio=Binding(3)).data == libbarcode.label(
            "pdf417", "x", aspect_ratio=3.0).data


def test_first_labels_on_many_threads() -> None:
    """Each of them opens the library."""
    code = ("import libbarcode, sys, threading\n"
            "begin = threading.Barrier(32)\n"
            "def draw():\n"
            "    begin.wait()\n"
            "    for _ in range(5): libbarcode.label('qr', 'x' * 200, module=10)\n"
            "threads = [threading.Thread(target=draw) for _ in range(32)]\n"
            "for thread in threads: thread.start()\n"
            "for thread in threads: thread.join()\n")
    for _ in range(5):
        assert subprocess.run([sys.executable, "-c", code], check=False, timeout=150).returncode == 0


def test_nothing_leaks() -> None:
    """In two rounds of every kind of outcome the second needs no more memory."""
    code = ("import libbarcode, re\n"
            "def resident():\n"
            "    return int(re.search(r'VmRSS:\\s+(\\d+)', open('/proc/self/status').read())[1])\n"
            "def draw(count):\n"
            "    for n in range(count):\n"
            "        for text in ('x', b'x', '\\ud800', '', 'x' * 5000):\n"
            "            try: libbarcode.label('qr', text, format='svg', qr_version=40 if n % 9 else None)\n"
            "            except libbarcode.LabelError: pass\n"
            "    for _ in libbarcode.labels(({'type': 'qr', 'text': str(n) * (n % 3)} for n in range(count * 9)),\n"
            "                               errors='yield', workers=2): pass\n"
            "    return resident()\n"
            "few = draw(100); print(draw(600) - few)\n")
    output = subprocess.run([sys.executable, "-c", code], capture_output=True, check=True).stdout
    assert int(output) < 5000
