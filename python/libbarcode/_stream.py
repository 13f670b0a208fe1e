"""Many labels, in order, on several threads."""

import os
import time
from collections import deque
from concurrent.futures import Future, ThreadPoolExecutor
from typing import Deque, Generator, Iterable, Iterator, List, Literal, Mapping, Optional, Union, overload

from ._drawing import draw_all, functions
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
    the iterable may be without end. It is read on the thread that asks for labels.

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


class _Reader:
    """Requests in chunks, as JSON: what a mapping becomes afterwards does not matter any more."""

    def __init__(self, requests: Iterator[Mapping[str, object]]) -> None:
        self._requests = requests
        self._next_size = 1  # the first labels come soon
        self.ended = False
        self.failure: Optional[Exception] = None

    def read(self) -> List[Union[bytes, LabelError]]:
        """The next chunk; shorter ones before the end or the failure."""
        chunk: List[Union[bytes, LabelError]] = []
        size = 0
        deadline = time.monotonic() + _MOST_SECONDS
        try:
            while len(chunk) < self._next_size and size < _MOST_BYTES:
                request = self._read_one()
                chunk.append(request)
                size += len(request) if isinstance(request, bytes) else 0
                if time.monotonic() > deadline:
                    break
        except StopIteration:
            self.ended = True
        except Exception as error:
            self.ended = True
            self.failure = error
        self._next_size = min(2 * self._next_size, _MOST_IN_CHUNK)
        return chunk

    def _read_one(self) -> Union[bytes, LabelError]:
        request = next(self._requests)
        if not isinstance(request, Mapping):
            raise TypeError(f"a request must be a mapping of fields, not {type(request).__name__}")
        try:
            return request_json(request)
        except LabelError as error:
            return error


class _Chunks:
    """What the threads do; after `stop` only the labels in hand."""

    def __init__(self) -> None:
        self.stop = False

    def draw(self, requests: List[Union[bytes, LabelError]]) -> List[Made]:
        return draw_all(requests, lambda: self.stop)


def _stream(reader: _Reader, workers: int, raises: bool) -> Generator[Made, None, None]:
    process = os.getpid()
    chunks = _Chunks()
    pool = ThreadPoolExecutor(workers, thread_name_prefix="libbarcode")
    pending: Deque["Future[List[Made]]"] = deque()
    try:
        while True:
            while not reader.ended and len(pending) < _CHUNKS_PER_WORKER * workers:
                chunk = reader.read()
                if chunk:
                    pending.append(pool.submit(chunks.draw, chunk))
                if pending and pending[0].done():
                    break
            if not pending:
                break
            for made in pending.popleft().result():
                if raises and isinstance(made, LabelError):
                    raise made
                yield made
                if os.getpid() != process:
                    raise RuntimeError("labels() does not go on in a child process: its threads are the parent's")
        if reader.failure is not None:
            raise reader.failure
    finally:
        chunks.stop = True
        for future in pending:
            future.cancel()
        pool.shutdown(wait=os.getpid() == process)
