"""The compiled module: it is there, and it says what the rules for all requests say."""

import itertools
import json
import random
import subprocess
import sys
import time
import types
from typing import Any, Dict, Iterator, List, Union

import libbarcode
import pytest
from conftest import PACKAGES
from libbarcode import _drawing, _fields

_speedups: Any = getattr(_drawing, "_speedups")
libbarcode.types()  # the library is opened


def test_it_is_in_use() -> None:
    library = _drawing.functions()
    assert (library.draw, library.draw_some, library.read_some) == (
        _speedups.draw, _speedups.draw_some, _speedups.read_some)


def test_it_needs_no_interpreter_of_its_own() -> None:
    """Neither a library of Python nor a name that only one version has."""
    module = next((PACKAGES / "libbarcode").glob("_speedups*.so"))
    assert module.name == "_speedups.abi3.so"
    headers = subprocess.run(["objdump", "-p", str(module)], capture_output=True, check=True).stdout.decode()
    needed = [line for line in headers.splitlines() if "NEEDED" in line]
    assert needed and not [line for line in needed if "python" in line or "barcode" in line]
    symbols = subprocess.run(["nm", "-D", "--undefined-only", str(module)], capture_output=True, check=True).stdout
    private = {name for name in symbols.decode().split() if name.startswith("_Py")}
    assert private <= {"_Py_Dealloc", "_Py_NoneStruct", "_Py_TrueStruct", "_PyArg_ParseTuple_SizeT",
                       "_Py_BuildValue_SizeT"}  # those are for all


VALUES: List[object] = [
    None, True, False, 0, -1, 7, 2**53, -(2**53), 2**53 - 1, 1 - 2**53, 2**63, -(2**64), 10**400, 1.5, -0.0, 1e300, "",
    "x", "\u00e9\u20ac\U0001d11e", "\0\x01\x1f\x7f\x80", '"\\/\b\f\n\r\t', "\ud800", "a\udfffb", "x" * 2**16,
    "x" * (2**16 + 1), b"bytes", bytearray(b"\xff\0"), memoryview(b"view"), "standard"]


def compiled_json(fields: Dict[Any, object]) -> bytes:
    """What the compiled module makes of a request."""
    chunk: List[Any] = []
    assert _speedups.read_some(iter([fields]), chunk, 1, 1, 60.0)[0] is False
    if isinstance(chunk[0], libbarcode.LabelError):
        raise chunk[0]
    encoded: bytes = chunk[0]
    return encoded


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
        assert outcome(compiled_json, fields) == outcome(_fields.request_json, fields), (name, value)


def test_order_of_members_is_kept() -> None:
    """Of several errors the first is told."""
    generator = random.Random(5)
    for _ in range(2000):
        names = generator.sample([*_fields.KINDS, "modul"], 6)
        fields = {name: generator.choice(VALUES) for name in names}
        first, second = outcome(compiled_json, fields), outcome(_fields.request_json, fields)
        assert first == second
        if isinstance(first, tuple):
            assert list(first[0]) == list(second[0])  # type: ignore[index]


@pytest.mark.parametrize("wrong", [1, None, b"x", ("a",)])
def test_names_that_are_no_strings(wrong: Any) -> None:
    with pytest.raises(TypeError, match="names of fields must be str"):
        compiled_json({"type": "qr", wrong: "x"})


def test_values_that_change_the_fields_meanwhile() -> None:
    fields: Dict[str, object] = {"type": "qr", "text": "x"}

    class Sly(float):
        def __float__(self) -> float:
            fields.clear()
            return 2.0

    fields.update(aspect_ratio=Sly(3), module=4)
    assert json.loads(compiled_json(fields))["module"] == 4
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


READERS = [_speedups.read_some, _drawing.Library().read_some]


@pytest.mark.parametrize("read_some", READERS)
def test_reads_until_there_are_enough(read_some: Any) -> None:
    source = iter([{"type": "qr", "text": str(number)} for number in range(10)])
    one = b'{"type":"qr","text":"0"}'
    chunk: List[Any] = []
    assert read_some(source, chunk, 2, 1000, 60.0)[0] is False and len(chunk) == 2 and chunk[0] == one
    assert read_some(source, chunk, 2, 1000, 60.0)[0] is False and len(chunk) == 2  # there are as many
    assert read_some(source, chunk, 99, len(one) + 1, 60.0)[0] is False and len(chunk) == 4  # enough bytes
    assert read_some(source, chunk, 99, 1000, -1.0)[0] is False and len(chunk) == 5  # no time, but for one
    assert read_some(source, chunk, 99, 1000, 60.0)[0] is True and len(chunk) == 10
    assert read_some(source, chunk, 99, 1000, 60.0)[0] is True
    assert [json.loads(request)["text"] for request in chunk] == [str(number) for number in range(10)]


@pytest.mark.parametrize("read_some", READERS)
def test_tells_what_the_last_took_to_come(read_some: Any) -> None:
    def slow() -> Iterator[Dict[str, object]]:
        yield {}
        time.sleep(0.05)
        yield {}

    chunk: List[Any] = []
    assert read_some(slow(), chunk, 2, 1000, 60.0)[1] >= 0.05 and chunk == [b"{}", b"{}"]
    took = min(read_some(iter([{}]), [], 1, 1000, 60.0)[1] for _ in range(20))
    assert 0 < took < 0.05


@pytest.mark.parametrize("read_some", READERS)
def test_reads_what_is_no_plain_dictionary(read_some: Any) -> None:
    class Mine(Dict[str, object]):
        pass

    chunk: List[Any] = []
    requests = [Mine(type="qr", text="x"), types.MappingProxyType({"text": b"x"}), {"text": "\ud800"}, {"modul": None}]
    read_some(iter(requests), chunk, 9, 1000, 60.0)
    assert chunk[0] == b'{"type":"qr","text":"x"}' and chunk[1] == b'{"text_base64":"eA=="}'
    assert isinstance(chunk[2], libbarcode.LabelError) and chunk[2].code == "bad_text"
    assert chunk[3] == b'{"modul":null}' and len(chunk) == 4


@pytest.mark.parametrize("read_some", READERS)
def test_what_the_source_raises_is_told_after_those_before(read_some: Any) -> None:
    def ending(last: object) -> Iterator[object]:
        yield {"type": "qr"}
        if isinstance(last, BaseException):
            raise last
        yield last

    error = libbarcode.LabelError({"ok": False, "error": {"code": "x", "field": "", "message": "y"}, "warnings": []})
    for last, told in ((OSError("torn"), OSError), (KeyboardInterrupt(), KeyboardInterrupt), (error, type(error)),
                       ("qr", TypeError), ({"module": "4"}, TypeError)):
        chunk: List[Any] = []
        with pytest.raises(told):
            read_some(ending(last), chunk, 9, 1000, 60.0)
        assert chunk == [b'{"type":"qr"}']


def test_requests_are_let_go() -> None:
    plain, other, wrong = {"type": "qr", "text": "x"}, {"type": "qr", "text": b"x"}, {"type": "qr", "text": 1.5}
    chunk: List[Any] = []
    counts = [sys.getrefcount(one) for one in (plain, other, wrong, chunk)]
    for request in (plain, other, wrong):
        try:
            _speedups.read_some(iter([request] * 50), chunk, 1000, 100000, 60.0)
        except TypeError:
            assert request is wrong
    del request
    assert [sys.getrefcount(one) for one in (plain, other, wrong, chunk)] == counts
    assert {sys.getrefcount(one) for one in chunk} == {sys.getrefcount(one) for one in [object()]}


def test_wrong_calls() -> None:
    for function, arguments in ((_speedups.draw, ("qr", "x")), (_speedups.draw, ("qr", "x", None)),
                                (_speedups.read_some, ([], [], 1, 1, 1.0)),
                                (_speedups.read_some, (iter([]), (), 1, 1, 1.0)), (_speedups.draw_some, (None, 1.0)),
                                (_speedups.draw_some, ([], "x")), (_speedups.bind, ()), (_speedups.bind, ((),) * 11)):
        with pytest.raises(TypeError):
            function(*arguments)


def test_before_it_is_bound() -> None:
    code = ("from libbarcode import _speedups\n"
            "for call in (lambda: _speedups.draw(1, 2, {}), lambda: _speedups.read_some(iter([]), [], 1, 1, 1.0),\n"
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
