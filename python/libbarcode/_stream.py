"""Many labels, in order, on several threads."""

import os
import threading
from collections import deque
from time import monotonic
from typing import Deque, Generator, Iterable, Iterator, List, Literal, Mapping, Optional, overload

from ._drawing import Encoded, Library, Made, functions
from ._errors import LabelError
from ._label import Label

# A thread gets this many requests at once, or fewer where they are long or come slowly: handing over costs as much as
# a few dozen quick labels, and asking for the interpreter's lock as well.
_MOST_IN_CHUNK = 256
_MOST_BYTES = 256 * 1024
_MOST_SECONDS = 0.002
# Nor more than are drawn in this time: at the end, threads wait for the last chunk.
_CHUNK_SECONDS = 0.004
_CHUNKS_PER_WORKER = 2
# After this time what is drawn of a chunk is handed over, and the rest becomes chunks of their own.
_DRAWING_SECONDS = 0.01

# Another object in each child process.
_process = object()


def _in_child() -> None:
    global _process
    _process = object()


os.register_at_fork(after_in_child=_in_child)


@overload
def labels(requests: Iterable[Mapping[str, object]], *, workers: Optional[int] = None,
           errors: Literal["raise"] = "raise") -> Generator[Label, None, None]: ...


@overload
def labels(requests: Iterable[Mapping[str, object]], *, workers: Optional[int] = None,
           errors: Literal["yield"]) -> Generator[Made, None, None]: ...


def labels(requests: Iterable[Mapping[str, object]], *, workers: Optional[int] = None,
           errors: str = "raise") -> Generator[Made, None, None]:
    """The labels of many requests, in their order, drawn on `workers` threads: one for each processor unless told. The
    thread that asks for labels is one of them.

    A request is a mapping of the fields that label() takes: {"type": "qr", "text": "hello"}. They are read a little
    ahead, 512 for each worker at most, and labels wait for their turn, so that memory does not grow with their number;
    the iterable may be without end. It is read on the thread that asks for labels; where a request takes longer to come
    than a label to draw, the labels of those before are given first.

    errors="raise" raises the LabelError of a request that is refused, in its turn, and ends; errors="yield" gives it
    in the label's place and goes on. A TypeError, or whatever the iterable raises, ends the labels after those of the
    requests before. A generator that is no longer wanted may be closed or dropped at any time.
    """
    if errors not in ("raise", "yield"):
        raise ValueError(f'errors must be "raise" or "yield", not {errors!r}')
    if workers is None:
        workers = os.cpu_count() or 1
    if isinstance(workers, bool) or not isinstance(workers, int):
        raise TypeError(f"workers must be an int, not {type(workers).__name__}")
    if workers < 1:
        raise ValueError(f"workers must be 1 or more, not {workers}")
    library = functions()  # a missing one is told here
    return _stream(_Reader(library, iter(requests)), workers, errors == "raise")


class _Chunk:
    """Some requests, and what became of them."""

    def __init__(self, requests: List[Encoded]) -> None:
        self.requests = requests
        self.done = threading.Event()
        self.made: List[Made] = []
        self.refused = False  # whether an error is among them
        self.rest: List["_Chunk"] = []  # of the requests that it did not come to
        self.failure: Optional[BaseException] = None
        self.seconds_each = 0.0

    def draw(self) -> None:
        begin = monotonic()
        self.made = functions().draw_some(self.requests, _DRAWING_SECONDS)
        self.refused = LabelError in map(type, self.made)
        rest = self.requests[len(self.made):]
        middle = (len(rest) + 1) // 2  # for two threads
        self.rest = [_Chunk(part) for part in (rest[:middle], rest[middle:]) if part]
        self.seconds_each = (monotonic() - begin) / (len(self.made) or 1)
        self.requests = []


class _Team:
    """The thread that asks for labels, and its helpers: as long as there is work, none is idle, so that none has to be
    woken when the interpreter ends."""

    def __init__(self, helpers: int) -> None:
        self._most = helpers
        self._lock = threading.Lock()
        self._waiting: Deque[_Chunk] = deque()
        self._active = 0
        self._stop = False
        self.asks = True
        self._asking = threading.current_thread()
        self._asking_ident = threading.get_ident()

    def asked(self) -> None:
        self.asks = True
        if self._asking_ident != threading.get_ident():
            self._asking = threading.current_thread()
            self._asking_ident = threading.get_ident()

    def over(self) -> bool:
        """Nobody can want more labels: the thread that asks for them has ended, or the interpreter is ending."""
        if self._stop:
            return True
        if self._asking.daemon:
            return not threading.main_thread().is_alive()
        return not (self.asks or self._asking.is_alive())

    def has_enough(self) -> bool:
        """Whether a chunk waits for each helper."""
        return len(self._waiting) >= self._most

    def add(self, chunk: _Chunk) -> None:
        with self._lock:
            self._waiting.append(chunk)
        self._start()

    def finish(self, chunk: _Chunk) -> None:
        """Draws, too, until the chunk is done."""
        self._start()  # where one came apart there is work for more
        while not chunk.done.is_set():
            if not self._draw_next():
                chunk.done.wait()
        if chunk.failure is not None:
            raise chunk.failure

    def close(self) -> None:
        """The helpers end with the label that each has in hand. It does not wait for them: the garbage collector may come
        here at any moment, also within what waiting needs."""
        self._stop = True

    def _start(self) -> None:
        with self._lock:
            if not self._waiting or self._active >= self._most:
                return
            self._active += 1
        try:
            threading.Thread(target=self._help, name="libbarcode").start()
        except RuntimeError:  # the system has no more threads: those that there are do it
            with self._lock:
                self._active -= 1

    def _help(self) -> None:
        while self._draw_next(helping=True):
            pass

    def _draw_next(self, helping: bool = False) -> bool:
        with self._lock:
            if not self._waiting or (helping and self.over()):
                self._active -= helping
                return False
            chunk = self._waiting.popleft()
        try:
            chunk.draw()
            with self._lock:
                self._waiting.extendleft(reversed(chunk.rest))
        except BaseException as error:
            chunk.failure = error
            if not helping and not isinstance(error, Exception):
                raise  # the user's interrupt is not for this chunk alone
        finally:
            chunk.done.set()
        return True


class _Reader:
    """Requests in chunks, as JSON: what a mapping becomes afterwards does not matter any more."""

    def __init__(self, library: Library, requests: Iterator[Mapping[str, object]]) -> None:
        self._read_some = library.read_some
        self._requests = requests
        self._next_size = 1  # the first labels come soon
        self._seconds = 0.0
        self.ended = False
        self.failure: Optional[Exception] = None

    def slower_than(self, seconds: float) -> bool:
        """Whether the last request took that long to come."""
        return self._seconds > max(seconds, _MOST_SECONDS)

    def read(self, drawing_seconds: float) -> List[Encoded]:
        """The next chunk, of labels that take so long each; shorter ones before the end or the failure."""
        chunk: List[Encoded] = []
        most = min(self._next_size, max(1, int(_CHUNK_SECONDS / max(drawing_seconds, 1e-6))))
        try:
            self.ended, self._seconds = self._read_some(self._requests, chunk, most, _MOST_BYTES, _MOST_SECONDS)
        except Exception as error:
            self.ended = True
            self.failure = error
        self._next_size = min(2 * self._next_size, _MOST_IN_CHUNK)
        return chunk


def _stream(reader: _Reader, workers: int, raises: bool) -> Generator[Made, None, None]:
    process = _process
    team = _Team(workers - 1)
    pending: Deque[_Chunk] = deque()
    drawing_seconds = 0.0
    first = True
    try:
        while True:
            while not reader.ended and len(pending) < _CHUNKS_PER_WORKER * workers:
                if pending and (first or reader.slower_than(drawing_seconds) or
                                (pending[0].done.is_set() and team.has_enough())):
                    break
                requests = reader.read(drawing_seconds)
                if requests:
                    pending.append(_Chunk(requests))
                    team.add(pending[-1])
            if not pending:
                break
            chunk = pending.popleft()
            team.finish(chunk)
            pending.extendleft(reversed(chunk.rest))
            drawing_seconds = chunk.seconds_each
            first = False
            may_raise = raises and chunk.refused
            team.asks = False
            for made in chunk.made:
                if may_raise and isinstance(made, LabelError):
                    raise made
                yield made
                if process is not _process:
                    raise RuntimeError("labels() does not go on in a child process: its threads are the parent's")
            team.asked()
        if reader.failure is not None:
            raise reader.failure
    finally:
        if process is _process:
            team.close()
