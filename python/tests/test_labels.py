"""Many labels: order, threads, memory, errors and ends."""

import enum
import itertools
import multiprocessing
import os
import queue
import signal
import subprocess
import sys
import threading
import time
import types
from typing import Any, Callable, Dict, Iterator, List, Mapping

import libbarcode
import pytest
from libbarcode import Label, LabelError, _stream, label, labels


LONG = 150  # seconds, within which nothing hangs


def numbered(count: "int | None" = None, **fields: object) -> Iterator[Dict[str, object]]:
    numbers = itertools.count() if count is None else range(count)
    return ({"type": "code128", "text": f"{number:06}", "format": "svg", **fields} for number in numbers)


def texts(made: "Iterator[Label]") -> List[str]:
    return [one.report["text"] for one in made]


@pytest.mark.parametrize("workers", [1, 2, 7, None])
def test_in_order(workers: "int | None") -> None:
    # Slow and quick ones beside each other.
    requests: List[Dict[str, Any]] = [{"type": "qr", "text": f"{n:06}" * (300 if n % 13 == 0 else 1), "format": "svg"}
                                      for n in range(700)]
    made = list(labels(requests, workers=workers))
    assert [one.data for one in made[::13]] == [label(**request).data for request in requests[::13]]
    assert texts(iter(made)) == [request["text"] for request in requests]


def test_none() -> None:
    assert list(labels([])) == []
    assert list(labels(iter(()), workers=3, errors="yield")) == []


def test_without_end() -> None:
    assert texts(itertools.islice(labels(numbered()), 1000)) == [f"{number:06}" for number in range(1000)]


def test_requests_as_they_were() -> None:
    """An iterable may give the same mapping again and again."""
    def same() -> Iterator[Dict[str, object]]:
        request: Dict[str, object] = {"type": "itf"}
        for number in range(500):
            request["text"] = f"{number:04}"
            yield request

    assert texts(labels(same())) == [f"{number:04}" for number in range(500)]


def test_any_mapping() -> None:
    request = types.MappingProxyType({"type": "qr", "text": b"\xff\0"})
    assert next(labels([request])).data == label("qr", b"\xff\0").data


@pytest.mark.parametrize("workers", [1, 2, 5])
def test_reads_a_little_ahead(workers: int) -> None:
    taken = itertools.count()
    counted = ({"type": "qr", "text": str(next(taken))} for _ in itertools.count())
    made = labels(counted, workers=workers)
    most = 0
    for given in range(1, 6000):
        next(made)
        read = next(taken)
        taken = itertools.count(read)
        most = max(most, read - given)
    made.close()
    assert 0 < most <= 512 * workers + 256


# The most memory of a process in kilobytes. (getrusage also counts what its parent had.)
PEAK = ("import libbarcode, re\n"
        "def peak():\n"
        "    return int(re.search(r'VmHWM:\\s+(\\d+)', open('/proc/self/status').read())[1])\n")


def test_memory_does_not_grow() -> None:
    """With the number of labels; nor does it leak."""
    code = (PEAK + "def peak_of(count):\n"
            "    requests = ({'type': 'qr', 'text': str(n), 'format': 'svg'} for n in range(count))\n"
            "    refused = ({'type': 'qr', 'text': '', 'caption': 'x' * 1000} for n in range(count))\n"
            "    for _ in libbarcode.labels(requests, workers=2): pass\n"
            "    for _ in libbarcode.labels(refused, workers=2, errors='yield'): pass\n"
            "    return peak()\n"
            "peak_of(2000); print(peak_of(2000), peak_of(30000))\n")
    output = subprocess.run([sys.executable, "-c", code], capture_output=True, check=True).stdout.split()
    few, many = (int(kilobytes) for kilobytes in output)
    assert many < few + 6000


def test_long_requests_are_not_gathered() -> None:
    """500 texts of a megabyte never stand beside each other."""
    code = (PEAK + "requests = ({'type': 'qr', 'text': str(n % 10) * 1_000_000} for n in range(500))\n"
            "codes = {made.code for made in libbarcode.labels(requests, workers=2, errors='yield')}\n"
            "assert codes == {'too_long'}, codes\n"
            "print(peak())\n")
    assert int(subprocess.run([sys.executable, "-c", code], capture_output=True, check=True).stdout) < 60_000


def after_drawing(monkeypatch: pytest.MonkeyPatch, then: Callable[[Any], None]) -> None:
    """What is done with each chunk that was drawn: it counts as drawn in no time, however busy the machine is."""
    chunk = getattr(_stream, "_Chunk")
    draw = chunk.draw

    def drawing(self: Any) -> None:
        draw(self)
        self.seconds_each = 0.0
        then(self)

    monkeypatch.setattr(chunk, "draw", drawing)


def test_slow_iterable_is_not_waited_for(monkeypatch: pytest.MonkeyPatch) -> None:
    """Labels of what was read come before the next request, where that takes longer than to draw them."""
    after_drawing(monkeypatch, lambda chunk: None)
    events: List[str] = []

    def slowly() -> Iterator[Dict[str, object]]:
        for number in range(4):
            events.append(f"read {number}")
            yield {"type": "qr", "text": str(number)}
            time.sleep(0.05)

    for made in labels(slowly(), workers=2):
        events.append(f"made {made.report['text']}")
    assert events == [f"{what} {number}" for number in range(4) for what in ("read", "made")]


def test_slow_labels_come_one_by_one(monkeypatch: pytest.MonkeyPatch) -> None:
    """Also behind quick ones, of which many are drawn at once."""
    sizes: List[int] = []
    drawn = ahead = given = 0

    def count(chunk: Any) -> None:
        nonlocal drawn
        drawn += len(chunk.made)
        sizes.append(len(chunk.made) + sum(len(rest.requests) for rest in chunk.rest))

    after_drawing(monkeypatch, count)
    for _ in labels([*numbered(400), *numbered(60, format="png", width=5000, height=3000)], workers=1):
        given += 1
        if given > 400:
            ahead = max(ahead, drawn - given)
    assert given == drawn == 460
    assert max(sizes) > 16 and ahead <= 4


def test_slow_labels_are_shared_in_small_parts(monkeypatch: pytest.MonkeyPatch) -> None:
    """No thread has many of them while the others have nothing more to do."""
    sizes: List[int] = []
    chunk = getattr(_stream, "_Chunk")
    begin = chunk.__init__

    def counting(self: Any, requests: Any) -> None:
        sizes.append(len(requests))
        begin(self, requests)

    monkeypatch.setattr(chunk, "__init__", counting)
    assert len(list(labels(numbered(40, format="png", width=5000, height=3000), workers=2))) == 40
    assert sum(sizes) >= 40 and max(sizes) <= 4


def test_refused_in_its_turn() -> None:
    requests = [{"type": "itf", "text": text} for text in ["12", "34", "5x", "78"]]
    made = labels(requests)
    assert texts(itertools.islice(made, 2)) == ["12", "34"]
    with pytest.raises(LabelError) as refused:
        next(made)
    assert (refused.value.code, refused.value.field) == ("bad_text", "text")
    assert list(made) == []


def test_refused_in_its_place() -> None:
    requests: List[Dict[str, Any]] = [{"type": "itf", "text": str(n) if n % 3 else "x", "format": "svg"}
                                      for n in range(100, 1000)]
    requests[7] = {"type": "qr", "text": "\ud800"}
    requests[8] = {"type": "qr", "text": "x", "modul": 3}
    requests[9] = {"text": "x"}
    made = list(labels(requests, errors="yield"))
    assert len(made) == len(requests)
    failed = {place: (error.code, error.field) for place, error in enumerate(made) if isinstance(error, LabelError)}
    assert failed.pop(7) == ("bad_text", "text")
    assert failed.pop(8) == ("unknown_field", "modul")
    assert failed.pop(9) == ("bad_value", "type")
    assert failed == {place: ("bad_text", "text") for place in range(900) if (place + 100) % 3 == 0 and place != 8}


@pytest.mark.parametrize("errors", ["raise", "yield"])
def test_failing_iterable(errors: str) -> None:
    def failing() -> Iterator[Dict[str, object]]:
        yield from numbered(321)
        raise KeyError("the table is broken")

    made = labels(failing(), errors=errors)  # type: ignore[call-overload]
    assert len(texts(itertools.islice(made, 321))) == 321
    with pytest.raises(KeyError, match="the table is broken"):
        next(made)


@pytest.mark.parametrize("wrong, message", [
    (None, "a request must be a mapping of fields, not NoneType"), ("qr", "a request must be a mapping"),
    (libbarcode, "a request must be a mapping"), ({"type": "qr", "text": 5}, "text must be a str or bytes, not int"),
    ({1: "x"}, "names of fields must be str, not int"),
    ({"type": "qr", "text": "x", "strict": 1}, "strict must be a bool, not int")])
def test_wrong_types_in_their_turn(wrong: Any, message: str) -> None:
    made = labels([*numbered(10), wrong, *numbered(10)], errors="yield")
    assert len(list(itertools.islice(made, 10))) == 10
    with pytest.raises(TypeError, match=message):
        next(made)


def test_mapping_that_raises_the_end_of_iterations() -> None:
    """It is a failure, and not the end of the requests."""
    class Broken(Mapping[str, object]):
        def keys(self) -> Any:
            raise StopIteration

        items = keys

        def __getitem__(self, name: str) -> object:
            return "qr"

        def __iter__(self) -> Iterator[str]:
            return iter(("type", "text"))

        def __len__(self) -> int:
            return 2

    made = labels([*numbered(3), Broken(), *numbered(3)])
    assert len(list(itertools.islice(made, 3))) == 3
    with pytest.raises(RuntimeError, match="StopIteration"):
        next(made)


def test_mapping_that_is_another_each_time() -> None:
    class Shifting(Mapping[str, object]):
        def __init__(self) -> None:
            self.contents: List[Dict[str, object]] = [{"type": "qr", "text": "\ud800"}]

        def keys(self) -> Any:
            return (self.contents.pop() if self.contents else {}).keys()

        def items(self) -> Any:
            return (self.contents.pop() if self.contents else {}).items()

        def __getitem__(self, name: str) -> object:
            return {"type": "qr", "text": "\ud800"}[name]

        def __iter__(self) -> Iterator[str]:
            return iter(self.keys())

        def __len__(self) -> int:
            return 2

    error, made = labels([Shifting(), *numbered(1)], errors="yield")
    assert isinstance(error, LabelError) and (error.code, error.field) == ("bad_text", "text")
    assert isinstance(made, Label)


def test_names_and_words_of_enums() -> None:
    """They count as the strings that they are, whatever they are printed as."""
    class Field(str, enum.Enum):
        TYPE = "type"
        TEXT = "text"
        MODULE = "module"

    class Sly(str):
        __hash__ = str.__hash__

        def __str__(self) -> str:
            return 'x":1,"text":"other'

        __format__ = __repr__ = lambda self, *_: str(self)  # type: ignore[assignment]

        def __getitem__(self, place: Any) -> Any:
            return 5

    plain = label("qr", "x", module=3, strict=True).data
    fields: List[Dict[str, object]] = [
        {Field.TYPE: "qr", Field.TEXT: "x", Field.MODULE: 3, "strict": True},
        {Sly("type"): Sly("qr"), Sly("text"): Sly("x"), Sly("module"): 3, Sly("strict"): True}]
    assert [made.data for made in labels(fields)] == [plain, plain]
    error, = labels([{"type": "qr", "text": "x", Sly("name"): 5}], errors="yield")
    assert isinstance(error, LabelError) and (error.code, error.field) == ("unknown_field", "name")


def test_none_in_mappings() -> None:
    """Absent, in whatever field there is; a name that is no field is none with it either."""
    made = list(labels([{"type": None, "text": "x"}, {"type": "qr", "text": "x", "modul": None},
                        {"type": "qr", "text": "x", "module": None}], errors="yield"))
    assert [(one.code, one.field) for one in made if isinstance(one, LabelError)] == [
        ("bad_value", "type"), ("unknown_field", "modul")]
    assert isinstance(made[2], Label)


def test_wrong_arguments_at_once() -> None:
    for wrong in (0, -1):
        with pytest.raises(ValueError, match="workers must be 1 or more"):
            labels([], workers=wrong)
    for other in ("2", 2.0, True):
        with pytest.raises(TypeError, match="workers must be an int"):
            labels([], workers=other)  # type: ignore[call-overload]
    with pytest.raises(ValueError, match="errors must be"):
        labels([], errors="ignore")  # type: ignore[call-overload]
    with pytest.raises(TypeError):
        labels(None)  # type: ignore[call-overload]


def own_threads() -> List[threading.Thread]:
    return [thread for thread in threading.enumerate() if thread.name.startswith("libbarcode")]


def have_ended(seconds: float = 60.0) -> bool:
    """Whether those threads are gone, soon."""
    end = time.monotonic() + seconds
    while own_threads() and time.monotonic() < end:
        time.sleep(0.001)
    return not own_threads()


class _Held:
    """Holds the first helper in the moment in which its chunk is done: the chunk is the reader's, the helper has not gone
    on. What a test wants done on that thread is done then."""

    def __init__(self, monkeypatch: pytest.MonkeyPatch) -> None:
        self.reached, self.go_on = threading.Event(), threading.Event()
        self.then: Callable[[], object] = lambda: None
        self.told: "queue.Queue[object]" = queue.Queue()
        self.drawn_by_helpers = 0
        held = self

        class Done(threading.Event):
            """Of a chunk."""

            def set(self) -> None:
                super().set()
                if threading.current_thread() in own_threads() and not held.reached.is_set():
                    held.reached.set()
                    held.go_on.wait()
                    try:
                        held.told.put(held.then())
                    except BaseException as error:
                        held.told.put(error)

        chunk = getattr(_stream, "_Chunk")
        begin, draw = chunk.__init__, chunk.draw

        def beginning(self: Any, requests: Any) -> None:
            begin(self, requests)
            self.done = Done()

        def drawing(self: Any) -> None:
            held.drawn_by_helpers += threading.current_thread() in own_threads()
            draw(self)

        monkeypatch.setattr(chunk, "__init__", beginning)
        monkeypatch.setattr(chunk, "draw", drawing)


@pytest.fixture
def held(monkeypatch: pytest.MonkeyPatch) -> Iterator[_Held]:
    helper = _Held(monkeypatch)
    yield helper
    helper.go_on.set()  # also where the test has failed


@pytest.mark.parametrize("end", ["close", "forget", "raise"])
def test_early_end_stops_the_threads(end: str, held: _Held) -> None:
    made = labels(numbered(), workers=2)
    while not held.reached.is_set():
        next(made)
    for _ in range(2000):  # of many chunks: now others wait for the one that is held
        next(made)
    drawn = held.drawn_by_helpers
    assert drawn == 1 and own_threads()
    if end == "close":
        made.close()
    elif end == "raise":
        with pytest.raises(OSError):
            made.throw(OSError("the printer is on fire"))
    else:
        del made
    held.go_on.set()
    assert have_ended()
    assert held.drawn_by_helpers == drawn


def test_closed_on_one_of_its_threads(held: _Held) -> None:
    """The garbage collector may run there: it does not wait for that thread."""
    made = labels(numbered(), workers=2)
    held.then = made.close
    while not held.reached.is_set():
        next(made)
    held.go_on.set()
    assert held.told.get(timeout=LONG) is None and list(made) == []


@pytest.mark.parametrize("most", [0, 1, 3])
def test_threads_that_do_not_start(most: int, monkeypatch: pytest.MonkeyPatch) -> None:
    """Those that do draw all, with the thread that asks."""
    start, started = threading.Thread.start, itertools.count()

    def some(thread: threading.Thread) -> None:
        if next(started) >= most:
            raise RuntimeError("can't start new thread")
        start(thread)

    monkeypatch.setattr(threading.Thread, "start", some)
    assert texts(labels(numbered(1000), workers=8)) == [f"{number:06}" for number in range(1000)]


def test_goes_on_when_its_thread_has_ended() -> None:
    """What nobody waited for is drawn when somebody asks again."""
    made = labels(numbered(40, format="png", width=2000, height=2000), workers=2)
    first: List[Label] = []
    thread = threading.Thread(target=lambda: first.append(next(made)))
    thread.start()
    thread.join()
    assert have_ended()
    assert texts(iter(first)) + texts(made) == [f"{number:06}" for number in range(40)]


def test_threads_end_with_the_requests() -> None:
    for _ in labels(numbered(300), workers=4):
        pass
    assert have_ended()


@pytest.mark.parametrize("workers", [1, 2])
def test_interrupted_by_the_user(workers: int) -> None:
    """At once, whichever label is drawn at that moment."""
    read = 0
    read_before: List[int] = []

    def requests() -> Iterator[Dict[str, object]]:
        nonlocal read
        for request in numbered(format="png", width=2000, height=2000):
            assert not read_before, "it goes on"
            read += 1
            yield request

    def interrupt(*_: object) -> None:
        read_before.append(read)
        raise KeyboardInterrupt

    def interrupted() -> None:
        signal.setitimer(signal.ITIMER_REAL, 0.3)
        for _ in labels(requests(), workers=workers):
            pass

    before = signal.signal(signal.SIGALRM, interrupt)
    try:
        with pytest.raises(KeyboardInterrupt):
            interrupted()
    finally:
        signal.signal(signal.SIGALRM, before)
    assert read_before == [read] and have_ended()


def test_forgotten_wherever_the_garbage_collector_comes() -> None:
    """Also where a thread is just started or waited for."""
    code = ("import gc, itertools, libbarcode, threading\n"
            "gc.set_threshold(3, 2, 2)\n"
            "request = {'type': 'code128', 'text': 'x', 'format': 'svg'}\n"
            "for _ in range(300):\n"
            "    cycle = []; made = libbarcode.labels(itertools.repeat(request), workers=3); cycle += [cycle, made]\n"
            "    next(made); next(made)\n"
            "    del cycle, made\n"
            "    thread = threading.Thread(target=lambda: None); thread.start(); thread.join()\n")
    subprocess.run([sys.executable, "-c", code], check=True, timeout=LONG)


@pytest.mark.parametrize("failure", [MemoryError, KeyboardInterrupt])
def test_helper_that_fails(failure: "type[BaseException]", monkeypatch: pytest.MonkeyPatch) -> None:
    """What it was drawing fails, and nobody waits for it."""
    chunk = getattr(_stream, "_Chunk")
    draw = chunk.draw
    failed = threading.Event()

    def failing(self: Any) -> None:
        if threading.current_thread() in own_threads():
            failed.set()
            raise failure
        time.sleep(0.02)  # the helper has its turn
        draw(self)

    monkeypatch.setattr(chunk, "draw", failing)
    with pytest.raises(failure):
        for _ in labels(numbered(), workers=2):
            pass
    assert failed.is_set() and have_ended()


def test_never_begun() -> None:
    assert have_ended()  # those of other tests
    made = labels(numbered(), workers=4)
    del made
    assert not own_threads()


def test_several_at_once() -> None:
    streams = [labels(numbered(200, module=module), workers=2) for module in (1, 2, 3)]
    for beside in zip(*streams):
        assert len({made.report["text"] for made in beside}) == 1
        assert [made.report["module"] for made in beside] == [1, 2, 3]


@pytest.mark.parametrize("code", [
    "made = libbarcode.labels(requests, workers=3); next(made)",
    "made = libbarcode.labels(requests, workers=3); next(made); sys.exit(0)",
    "threading.Thread(target=lambda: list(libbarcode.labels(requests)), daemon=True).start(); time.sleep(0.2)"])
def test_interpreter_ends_while_labels_are_drawn(code: str) -> None:
    head = ("import itertools, libbarcode, sys, threading, time\n"
            "requests = ({'type': 'qr', 'text': str(n) * 100} for n in itertools.count())\n")
    for _ in range(3):
        result = subprocess.run([sys.executable, "-c", head + code], capture_output=True, check=False, timeout=LONG)
        assert result.returncode == 0, result.stderr.decode()
        assert b"Fatal" not in result.stderr and b"Segmentation" not in result.stderr


def test_interpreter_does_not_wait_for_labels_that_nobody_wants() -> None:
    """Hundreds of them, each of some hundredths of a second. An interpreter that ends waits for its threads first."""
    code = ("import atexit, itertools, libbarcode\n"
            "from libbarcode import _stream\n"
            "read = drawn = 0\n"
            "def requests():\n"
            "    global read\n"
            "    for read in itertools.count(1):\n"
            "        yield {'type': 'qr', 'text': str(read), **({'format': 'svg'} if read <= 300 else slow)}\n"
            "slow = {'width': 9000, 'height': 9000}\n"
            "draw = _stream._Chunk.draw\n"
            "def counting(self):\n"
            "    global drawn\n"
            "    draw(self)\n"
            "    drawn += len(self.made)\n"
            "    self.seconds_each = 0.0\n"
            "_stream._Chunk.draw = counting\n"
            "made = libbarcode.labels(requests(), workers=2)\n"
            "for _ in range(299): next(made)\n"
            "before = drawn\n"
            "atexit.register(lambda: print(read - before, drawn - before))\n")
    output = subprocess.run([sys.executable, "-c", code], capture_output=True, check=True, timeout=LONG)
    waiting, drawn = (int(count) for count in output.stdout.split())
    assert waiting > 50 and drawn <= 10 and output.stderr == b""


@pytest.mark.parametrize("daemon, number", [(False, "300"), (True, "")])
def test_threads_that_outlive_the_main_one(daemon: bool, number: str) -> None:
    """They have their labels, unless they end with it: then also in the middle of labels without end."""
    numbers = "itertools.count()" if daemon else "range(300)"
    code = ("import itertools, libbarcode, threading, time\n"
            "def work():\n"
            f"    requests = ({{'type': 'qr', 'text': str(n), 'width': 900, 'height': 900}} for n in {numbers})\n"
            "    made = libbarcode.labels(requests, workers=3)\n"
            "    for _ in range(10): next(made)\n"
            "    begun.set()\n"
            f"    time.sleep({0 if daemon else 0.2})\n"
            "    print(10 + sum(1 for _ in made), flush=True)\n"
            "begun = threading.Event()\n"
            f"threading.Thread(target=work, daemon={daemon}).start(); begun.wait()\n")
    output = subprocess.run([sys.executable, "-c", code], capture_output=True, check=True, timeout=LONG)
    assert (output.stdout.decode().strip(), output.stderr) == (number, b"")


def in_child(result: "multiprocessing.Queue[List[str]]") -> None:
    result.put(texts(labels(numbered(100), workers=2)))


def test_after_fork() -> None:
    """A child draws labels of its own, whatever the parent is in the middle of."""
    context = multiprocessing.get_context("fork")
    stream = labels(numbered(), workers=2)
    next(stream)
    result: "multiprocessing.Queue[List[str]]" = context.Queue()
    child = context.Process(target=in_child, args=(result,))
    child.start()
    assert result.get(timeout=LONG) == [f"{number:06}" for number in range(100)]
    child.join()
    assert child.exitcode == 0
    stream.close()


def test_not_on_in_a_child() -> None:
    """The parent's threads are not the child's: it is told so, and does not wait for them."""
    stream = labels(numbered(), workers=2)
    next(stream)
    child = os.fork()
    if child == 0:
        try:
            for _ in range(1000):
                next(stream)
        except RuntimeError:
            os._exit(7)
        os._exit(1)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 7
    stream.close()
