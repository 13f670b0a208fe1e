"""Many labels, in order, on several threads."""

import os
import threading
import time
from collections import deque
from typing import Deque, Generator, Iterable, Iterator, List, Literal, Mapping, Optional, Union, overload

from ._drawing import draw_some, functions
from ._errors import LabelError
from ._fields import request_json
from ._label import Label

Made = Union[Label, LabelError]

# A thread gets this many requests at once, or fewer where they are long or come slowly: handing over costs as much as
# a few labels.
_MOST_IN_CHUNK = 64
_MOST_BYTES = 256 * 1024
_MOST_SECONDS = 0.002
_CHUNKS_PER_WORKER = 2
# After this time what is drawn of a chunk is handed over, and the rest becomes chunks of their own.
_DRAWING_SECONDS = 0.01


@overload
def labels(requests: Iterable[Mapping[str, object]], *, workers: Optional[int] = None,
           errors: Literal["raise"] = "raise") -> Generator[Label, None, None]: ...


@overload
def labels(requests: Iterable[Mapping[str, object]], *, workers: Optional[int] = None,
           errors: Literal["yield"]) -> Generator[Made, None, None]: ...


def labels(requests: Iterable[Mapping[str, object]], *, workers: Optional[int] = None,
           errors: str = "raise") -> Generator[Made, None, None]:
    """The labels of many requests, in their order, drawn on `workers` threads: one for each processor unless told.

    A request is a mapping of the fields that label() takes: {"type": "qr", "text": "hello"}. They are read a little
    ahead, 128 for each worker at most, and labels wait for their turn, so that memory does not grow with their number;
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
    functions()  # a missing library is told here
    return _stream(_Reader(iter(requests)), workers, errors == "raise")


class _Chunk:
    """Some requests, and what became of them."""

    def __init__(self, requests: List[Union[bytes, LabelError]]) -> None:
        self.requests = requests
        self.done = threading.Event()
        self.made: List[Made] = []
        self.rest: List["_Chunk"] = []  # of the requests that it did not come to
        self.failure: Optional[BaseException] = None
        self.seconds_each = 0.0

    def draw(self) -> None:
        begin = time.monotonic()
        try:
            self.made = draw_some(self.requests, begin + _DRAWING_SECONDS)
        except BaseException as error:
            self.failure = error
        else:
            rest = self.requests[len(self.made):]
            middle = (len(rest) + 1) // 2  # for two threads
            self.rest = [_Chunk(part) for part in (rest[:middle], rest[middle:]) if part]
        self.seconds_each = (time.monotonic() - begin) / (len(self.made) or 1)
        self.requests = []


class _Worker(threading.Thread):
    """A thread that draws what waits, and ends."""


class _Workers:
    """Threads as long as there is work: none is idle, so that none has to be woken when the interpreter ends."""

    def __init__(self, most: int) -> None:
        self._most = most
        self._lock = threading.Lock()
        self._waiting: Deque[_Chunk] = deque()
        self._active = 0
        self._threads: List[_Worker] = []
        self._stop = False
        self._asks = True
        self._asking = threading.current_thread()

    def over(self) -> bool:
        """Nobody can want more labels: the thread that asks for them has ended, or the interpreter is ending."""
        if self._stop:
            return True
        if self._asking.daemon:
            return not threading.main_thread().is_alive()
        return not (self._asks or self._asking.is_alive())

    def asked(self) -> None:
        self._asking = threading.current_thread()
        self._asks = True

    def answered(self) -> None:
        self._asks = False

    def add(self, chunk: _Chunk) -> None:
        with self._lock:
            self._waiting.append(chunk)
        self._start()

    def finish(self, chunk: _Chunk) -> None:
        self._start()  # where a chunk came apart there is work for one more
        chunk.done.wait()
        if chunk.failure is not None:
            raise chunk.failure

    def close(self) -> None:
        """Ends the threads. None of them waits for others: the garbage collector may come here on any thread."""
        self._stop = True
        if not isinstance(threading.current_thread(), _Worker):
            for thread in self._threads:
                if thread.ident is not None:  # it has started
                    thread.join()

    def _start(self) -> None:
        with self._lock:
            if not self._waiting or self._active >= self._most:
                return
            self._active += 1
        thread = _Worker(target=self._work, name="libbarcode")
        # Before it starts: an interrupted start has started it too.
        self._threads = [one for one in self._threads if one.is_alive()] + [thread]
        try:
            thread.start()
        except RuntimeError:  # the system has no more threads: those that there are do it, or else this one
            with self._lock:
                alone = self._active == 1
                self._active -= 0 if alone else 1
            if alone:
                self._work()

    def _work(self) -> None:
        while True:
            with self._lock:
                if not self._waiting or self.over():
                    self._active -= 1
                    return
                chunk = self._waiting.popleft()
            chunk.draw()
            with self._lock:
                self._waiting.extendleft(reversed(chunk.rest))
            chunk.done.set()


class _Reader:
    """Requests in chunks, as JSON: what a mapping becomes afterwards does not matter any more."""

    def __init__(self, requests: Iterator[Mapping[str, object]]) -> None:
        self._requests = requests
        self._next_size = 1  # the first labels come soon
        self._seconds = 0.0
        self.ended = False
        self.failure: Optional[Exception] = None

    def slower_than(self, seconds: float) -> bool:
        """Whether the last request took that long to come."""
        return self._seconds > max(seconds, _MOST_SECONDS)

    def read(self) -> List[Union[bytes, LabelError]]:
        """The next chunk; shorter ones before the end or the failure."""
        chunk: List[Union[bytes, LabelError]] = []
        size = 0
        begin = before = time.monotonic()
        try:
            while len(chunk) < self._next_size and size < _MOST_BYTES:
                try:
                    request = next(self._requests)
                except StopIteration:
                    self.ended = True
                    break
                chunk.append(_encoded(request))
                size += len(chunk[-1]) if isinstance(chunk[-1], bytes) else 0
                now = time.monotonic()
                self._seconds = now - before
                before = now
                if now - begin > _MOST_SECONDS:
                    break
        except Exception as error:
            self.ended = True
            self.failure = error
        self._next_size = min(2 * self._next_size, _MOST_IN_CHUNK)
        return chunk


def _encoded(request: Mapping[str, object]) -> Union[bytes, LabelError]:
    if not isinstance(request, Mapping):
        raise TypeError(f"a request must be a mapping of fields, not {type(request).__name__}")
    try:
        return request_json(dict(request))  # what it is at this moment
    except LabelError as error:
        return error


def _stream(reader: _Reader, most: int, raises: bool) -> Generator[Made, None, None]:
    process = os.getpid()
    workers = _Workers(most)
    pending: Deque[_Chunk] = deque()
    drawing_seconds = 0.0
    first = True
    try:
        while True:
            while not reader.ended and len(pending) < _CHUNKS_PER_WORKER * most:
                if pending and (first or pending[0].done.is_set() or reader.slower_than(drawing_seconds)):
                    break
                requests = reader.read()
                if requests:
                    pending.append(_Chunk(requests))
                    workers.add(pending[-1])
            if not pending:
                break
            chunk = pending.popleft()
            workers.finish(chunk)
            pending.extendleft(reversed(chunk.rest))
            drawing_seconds = chunk.seconds_each
            first = False
            for made in chunk.made:
                if raises and isinstance(made, LabelError):
                    raise made
                workers.answered()
                yield made
                if os.getpid() != process:
                    raise RuntimeError("labels() does not go on in a child process: its threads are the parent's")
                workers.asked()
        if reader.failure is not None:
            raise reader.failure
    finally:
        if os.getpid() == process:
            workers.close()
