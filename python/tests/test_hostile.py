"""Whatever is passed in, Python's own errors come out."""

import concurrent.futures
import gc
import math
import operator
import random
import resource
import threading
import time
import weakref
from typing import Any, Dict, List

import libbarcode
import pytest
from libbarcode import LabelError, label

HUGE = 100_000_000
WRONG_TYPES: List[Any] = [5, 5.5, True, ["x"], ("x",), {"x": 1}, {1}, object(), int, len, iter("x"), 1j]


@pytest.mark.parametrize("wrong", [b"qr", bytearray(b"qr"), *WRONG_TYPES])
def test_type_of_a_wrong_type(wrong: Any) -> None:
    with pytest.raises(TypeError, match="^type must be a str, not "):
        label(wrong, "x")


@pytest.mark.parametrize("wrong", WRONG_TYPES)
def test_text_of_a_wrong_type(wrong: Any) -> None:
    with pytest.raises(TypeError, match="^text must be a str or bytes, not "):
        label("qr", wrong)


@pytest.mark.parametrize("option", [option for kind in libbarcode.types() if kind["name"] == "qr"
                                    for option in kind["options"]], ids=operator.itemgetter("name"))
def test_options_of_a_wrong_type(option: libbarcode.Option) -> None:
    right = {"boolean": (bool,), "integer": (int, float), "number": (int, float), "quiet_zone": (int, float, str)}
    kinds = right.get(option["kind"], (str,))
    for wrong in [b"x", "x", *WRONG_TYPES]:
        fits = isinstance(wrong, kinds) and (not isinstance(wrong, bool) or bool in kinds)
        fields: Dict[str, Any] = {option["name"]: wrong}
        if fits:
            try:
                label("qr", "x", **fields)
            except LabelError as error:
                assert error.field in (option["name"], "dpi", "width", "height") and error.code != "out_of_memory"
        else:
            with pytest.raises(TypeError, match=f"^{option['name']} must be a"):
                label("qr", "x", **fields)


def test_no_text() -> None:
    nothing: List[Dict[str, Any]] = [{}, {"text": None}, {"text_base64": None}]
    for fields in nothing:
        with pytest.raises(LabelError) as refused:
            label("qr", **fields)
        assert (refused.value.code, refused.value.field) == ("bad_value", "text")
        assert str(refused.value).endswith(".")
    with pytest.raises(TypeError):
        label()  # type: ignore[call-arg]


def test_no_type() -> None:
    nothing: Any = None
    with pytest.raises(LabelError) as refused:
        label(nothing, "x")
    assert (refused.value.code, refused.value.field) == ("bad_value", "type")


@pytest.mark.parametrize("text, code", [(b"12x", "bad_text"), (b"", "bad_text"), (bytearray(20000), "too_long")])
def test_bytes_are_blamed_by_the_name_they_were_given(text: Any, code: str) -> None:
    with pytest.raises(LabelError) as refused:
        label("jan13", text)
    assert (refused.value.code, refused.value.field) == (code, "text")
    assert refused.value.report["error"]["field"] == "text" and "base64" not in str(refused.value)
    made = next(libbarcode.labels([{"type": "jan13", "text": text}], errors="yield"))
    assert isinstance(made, LabelError) and made.field == "text"
    with pytest.raises(LabelError) as refused:
        label("jan13", text_base64="eA==")
    assert refused.value.field == "text_base64"


def test_two_texts() -> None:
    texts: List[Any] = ["x", b"x"]
    for text in texts:
        with pytest.raises(LabelError) as refused:
            label("qr", text, text_base64="eA==")
        assert refused.value.code == "bad_value"


@pytest.mark.parametrize("field, code", [("text", "bad_text"), ("type", "bad_value"), ("caption", "bad_value"),
                                         ("foreground", "bad_value"), ("text_base64", "bad_value")])
@pytest.mark.parametrize("wrong", ["\ud800", "ok \udfff", "\udc80" * 3])
def test_lone_surrogates(field: str, code: str, wrong: str) -> None:
    request: Dict[str, Any] = {"type": "qr", "text": "x", field: wrong}
    with pytest.raises(LabelError) as refused:
        label(**request)
    assert (refused.value.code, refused.value.field) == (code, field)
    assert "surrogate" in str(refused.value) and str(refused.value).isascii()
    with pytest.raises(LabelError) as refused:
        next(libbarcode.labels([{"type": "qr", wrong: "x"}]))
    assert refused.value.code == "unknown_field" and refused.value.field.isascii()


def test_nul() -> None:
    """It is data where the symbology has it, and never an end."""
    assert label("qr", "a\0b").data != label("qr", "a").data
    assert label("datamatrix", "\0").report["text"] == "\0"
    for kind in ("code39", "jan13", "itf", "yubin"):
        with pytest.raises(LabelError) as refused:
            label(kind, "1\0")
        assert refused.value.code == "bad_text"
    for field in ("type", "format", "foreground"):
        request: Dict[str, Any] = {"type": "qr", "text": "x", "format": "png", field: "qr\0"}
        with pytest.raises(LabelError) as refused:
            label(**request)
        assert refused.value.field == field
    assert label("qr", "x", caption="a\0b").size


@pytest.mark.parametrize("number", [math.nan, math.inf, -math.inf, 2**63, 1e300, -0.5, 10**15, -2**80,
                                    pytest.param(10**5000, id="huge"), pytest.param(-10**5000, id="-huge")])
@pytest.mark.parametrize("field", ["module", "width", "quiet_zone", "dpi", "rotate", "text_scale", "aspect_ratio"])
def test_numbers_that_no_field_takes(field: str, number: Any) -> None:
    kind = "pdf417" if field == "aspect_ratio" else "qr"
    request: Dict[str, Any] = {"type": kind, "text": "x", field: number}
    with pytest.raises(LabelError) as refused:
        label(**request)
    assert (refused.value.code, refused.value.field) == ("bad_value", field)


class TestHugeTexts:
    """100 MB are refused at once, and never copied whole."""

    @pytest.fixture(autouse=True)
    def quickly_and_in_little_memory(self) -> Any:
        gc.collect()
        before, begin = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss, time.process_time()
        yield
        assert time.process_time() - begin < 3
        assert resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before < 2.2 * HUGE / 1024

    @pytest.mark.parametrize("kind", ["qr", "code128", "gs1-128", "pdf417", "datamatrix", "yubin"])
    def test_str(self, kind: str) -> None:
        with pytest.raises(LabelError) as refused:
            label(kind, "1" * HUGE)
        assert (refused.value.code, refused.value.field) == ("too_long", "text")

    def test_bytes(self) -> None:
        with pytest.raises(LabelError) as refused:
            label("qr", bytes(HUGE))
        assert refused.value.code == "too_long"

    def test_other_fields(self) -> None:
        long = "A" * HUGE
        for name, code in (("type", "unknown_type"), ("text_base64", "bad_value"), ("format", "bad_value"),
                           ("foreground", "bad_value"), ("code_size", "bad_value")):
            request: Dict[str, Any] = {"type": "datamatrix", "text": "x", name: long}
            with pytest.raises(LabelError) as refused:
                label(**request)
            assert (refused.value.code, refused.value.field) == (code, name)
            assert len(str(refused.value)) < 500
        assert [warning["code"] for warning in label("qr", "x", caption=long).warnings] == ["text_left_out"]


def test_data_outlives_everything() -> None:
    """The bytes are Python's: nothing of the library's can be freed under them."""
    data, reports = [], []
    for number in range(300):
        made = label("qr", f"{number}", format="svg")
        data.append(made.data)
        reports.append(made.report)
        del made
    gc.collect()
    for number, (picture, report) in enumerate(zip(data, reports)):
        assert report["text"] == str(number) and label("qr", f"{number}", format="svg").data == picture


def test_label_cannot_be_changed() -> None:
    made = label("qr", "x")
    for name in ("data", "media_type", "report", "size", "other"):
        with pytest.raises(AttributeError):
            setattr(made, name, b"")


def test_64_threads() -> None:
    expected = {n: label("qr", f"{n}", format="svg").data for n in range(50)}
    barrier = threading.Barrier(64)

    def draw(seed: int) -> int:
        barrier.wait()
        order = random.Random(seed)
        for _ in range(40):
            n = order.randrange(50)
            assert label("qr", f"{n}", format="svg").data == expected[n]
            with pytest.raises(LabelError):
                label("qr", "x", width=order.randrange(20), height=5)
        return 1

    with concurrent.futures.ThreadPoolExecutor(64) as pool:
        assert sum(pool.map(draw, range(64))) == 64


def test_one_label_on_64_threads() -> None:
    made = label("qr", "shared")
    with concurrent.futures.ThreadPoolExecutor(64) as pool:
        reports = list(pool.map(lambda _: (made.report["text"], made.size, made.data), range(2000)))
    assert set(reports) == {("shared", (116, 116), made.data)}


def test_errors_are_not_kept() -> None:
    try:
        label("qr", "")
    except LabelError as error:
        gone = weakref.ref(error)
    gc.collect()
    assert gone() is None


def test_random_requests() -> None:
    """Any values of any fields: a label, a LabelError or a TypeError."""
    order = random.Random(20261122)
    names = sorted({"type", "text", *(option["name"] for kind in libbarcode.types() for option in kind["options"])})
    kinds = [name for kind in libbarcode.types() for name in (kind["name"], *kind["aliases"])]
    values: List[Any] = ["", "12345678", "svg", "png", "A\u5e79\U0001f600", "\0", "\ud800", b"\xff", None, True,
                         -1, 0, 1, 4, 200, 10**30, 0.5, math.nan, math.inf, "#123", "standard", "L", [], {}]
    seen = set()
    for _ in range(4000):
        request: Dict[str, Any] = {"type": order.choice(kinds), "text": order.choice(["1234567", "(01)04912345678904"])}
        for _ in range(order.randrange(4)):
            request[order.choice(names)] = order.choice(values)
        try:
            seen.add(label(**request).media_type)
        except LabelError as error:
            assert error.code and str(error) and error.report["error"]["code"] == error.code
            seen.add(error.code)
        except TypeError as error:
            assert " must be " in str(error)
            seen.add("TypeError")
    assert {"image/png", "bad_value", "bad_text", "unknown_field", "TypeError"} <= seen
    assert "bad_request" not in seen
