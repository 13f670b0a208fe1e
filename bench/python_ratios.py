#!/usr/bin/env python3
"""What the Python package costs beside C, and what a second worker brings, in one run.

    LD_LIBRARY_PATH=build/release/lib PYTHONPATH=build/release/python \
      bench/python_ratios.py build/release/bench/liblabel_loop.so

Each figure is the best of many short rounds that take turns, so that the ratios hold on a busy machine.
"""

import argparse
import ctypes
import json
import threading
import time

import libbarcode

REQUESTS = (
    {"type": "code128", "text": "Pallet 771204"},
    {"type": "jan13", "text": "490123456789"},
    {"type": "qr", "text": "https://example.com/"},
    {"type": "datamatrix", "text": "LOT42-20261122"},
    {"type": "pdf417", "text": "LOT42-20261122, pallet 771204"},
    {"type": "qr", "text": "hello", "format": "svg", "module": 4},
    {"type": "code128", "text": "Pallet 771204", "format": "svg"},
    {"type": "code39", "text": "ABC", "format": "svg", "show_text": False},
)
ROUND_SECONDS = 0.01


def name_of(request):
    words = [request["type"], request.get("format", "png")]
    return " ".join(words if request.get("show_text", True) else [*words, "no text"])


def call_of(request):
    """A function with the call in it, as a program has it: the fields are keywords."""
    arguments = ", ".join(f"{name}={value!r}" for name, value in request.items())
    return eval(f"lambda: libbarcode.label({arguments})", {"libbarcode": libbarcode})


def python_seconds(call, count):
    begin = time.thread_time()
    for _ in range(count):
        len(call().data)
    return time.thread_time() - begin


def cost_table(loop, rounds):
    print("| Label | C, us | Python, us | ratio |")
    print("|---|---|---|---|")
    for request in REQUESTS:
        text = json.dumps(request, separators=(",", ":")).encode()
        count = max(10, int(ROUND_SECONDS / (loop(text, 50) / 50)))
        call = call_of(request)
        in_c, in_python = [], []
        for _ in range(rounds):
            in_c.append(loop(text, count) / count)
            in_python.append(python_seconds(call, count) / count)
        assert min(in_c) > 0, f"refused: {request}"
        best_c, best_python = min(in_c), min(in_python)
        print(f"| {name_of(request)} | {best_c * 1e6:.2f} | {best_python * 1e6:.2f} | {best_python / best_c:.2f} |", flush=True)


def stream_rate(request, count, workers):
    requests = ({**request, "text": f"{number:012}"} for number in range(count))
    begin = time.monotonic()
    made = sum(1 for label in libbarcode.labels(requests, workers=workers) if label.data)
    seconds = time.monotonic() - begin
    assert made == count
    return count / seconds


def machine_ratio(loop):
    """How much more two threads in C do than one: what this machine has to give at this moment."""
    text = json.dumps(REQUESTS[0]).encode()
    begin = time.monotonic()
    loop(text, 2000)
    one = time.monotonic() - begin
    threads = [threading.Thread(target=loop, args=(text, 2000)) for _ in range(2)]
    begin = time.monotonic()
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return 2 * one / (time.monotonic() - begin)


def worker_table(loop, rounds):
    print("| labels() | 1 worker, labels/s | 2 workers, labels/s | ratio | two threads in C |")
    print("|---|---|---|---|---|")
    for request, count in (({"type": "code128"}, 8000), ({"type": "qr"}, 20000), ({"type": "datamatrix"}, 40000),
                           ({"type": "qr", "format": "svg"}, 60000), ({"type": "code128", "format": "svg"}, 100000)):
        rates = {1: [], 2: []}
        machine = []
        for _ in range(rounds):
            for workers in (1, 2):
                rates[workers].append(stream_rate(request, count, workers))
            machine.append(machine_ratio(loop))
        one, two = max(rates[1]), max(rates[2])
        print(f"| {name_of(request)} | {one:.0f} | {two:.0f} | {two / one:.2f} | {max(machine):.2f} |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("loop", help="liblabel_loop.so of the build")
    parser.add_argument("--rounds", type=int, default=40)
    options = parser.parse_args()
    loop = ctypes.CDLL(options.loop).label_loop_seconds
    loop.restype, loop.argtypes = ctypes.c_double, [ctypes.c_char_p, ctypes.c_int]
    cost_table(loop, options.rounds)
    print()
    worker_table(loop, max(3, options.rounds // 8))


if __name__ == "__main__":
    main()
