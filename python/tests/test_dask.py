"""The example of a cluster: every label is there once, though a worker is killed in the middle."""

import json
import multiprocessing
import os
import pathlib
import runpy
import signal
import subprocess
import sys
import time
from typing import Any, Dict, List

import pytest
from conftest import SOURCE
from libbarcode import label

EXAMPLE = SOURCE / "python" / "examples" / "dask_labels.py"
ROWS = 1500
PARTITION = 50
SECONDS = 240  # within which nothing hangs

# In every process of the example, workers too: whoever comes to the middle of a later part of the rows tells it and waits
# until the test lets it go on.
HOLDING = f"""
import os, pathlib, time
import libbarcode
drawn, held = libbarcode.label, pathlib.Path(os.environ["TEST_HELD"])
def label(*arguments, **fields):
    number = int(fields["text"][:6]) if len(str(fields.get("text"))) == 1200 else 0
    if number > {4 * PARTITION} and number % {PARTITION} == {PARTITION // 2}:
        (held / str(os.getpid())).touch()
        while not (held / "go on").exists():
            time.sleep(0.01)
    return drawn(*arguments, **fields)
libbarcode.label = label
"""


def request(number: int) -> Dict[str, Any]:
    return {"type": "qr", "text": f"{number:06}" * 200, "format": "png" if number % 10 else "svg"}


def kill_a_worker(process: "subprocess.Popen[str]", held: pathlib.Path) -> None:
    """In the middle of its part of the rows."""
    assert process.stdout is not None
    line = process.stdout.readline()
    assert line.startswith("workers: "), line
    workers = [int(number) for number in line.split()[1:]]
    assert len(workers) == 2
    deadline = time.monotonic() + SECONDS
    while not (held / str(workers[0])).exists():
        assert time.monotonic() < deadline and process.poll() is None
        time.sleep(0.01)
    os.kill(workers[0], signal.SIGKILL)


def test_a_worker_is_killed(tmp_path: pathlib.Path) -> None:
    requests, output, held = tmp_path / "requests.jsonl", tmp_path / "labels", tmp_path / "held"
    lines = [json.dumps(request(number)) for number in range(1, ROWS + 1)]
    lines += ["nonsense", json.dumps({"type": "jan13", "text": "x"}), json.dumps({"type": "qr", "text": 5}),
              "[" * 200_000, '{"type": "qr", "type": "itf", "text": "12"}']
    requests.write_text("".join(line + "\n" for line in lines), encoding="utf-8")
    held.mkdir()
    (tmp_path / "sitecustomize.py").write_text(HOLDING, encoding="utf-8")
    environment = dict(os.environ, TEST_HELD=str(held), PYTHONPATH=f"{tmp_path}:{os.environ['PYTHONPATH']}",
                       DASK_DISTRIBUTED__COMM__TIMEOUTS__CONNECT=f"{SECONDS}s",
                       DASK_DISTRIBUTED__COMM__TIMEOUTS__TCP=f"{SECONDS}s")
    with subprocess.Popen([sys.executable, str(EXAMPLE), str(requests), str(output), "--partition", str(PARTITION)],
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=environment) as process:
        try:
            kill_a_worker(process, held)
            there = len(os.listdir(output))
            (held / "go on").touch()
            out, err = process.communicate(timeout=SECONDS)
        finally:
            process.kill()
    assert PARTITION // 2 <= there + 1 <= ROWS - PARTITION // 2
    assert process.returncode == 1, err[-3000:]
    refused = [json.loads(line) for line in out.splitlines()]
    assert [(one["n"], one["code"]) for one in refused] == [
        (ROWS + 1, "bad_request"), (ROWS + 2, "bad_text"), (ROWS + 3, "bad_request"),
        (ROWS + 4, "bad_request"), (ROWS + 5, "bad_request")]
    files = {file.name: file.stat() for file in output.iterdir()}
    assert set(files) == {f"{n:06}.{request(n)['format']}" for n in range(1, ROWS + 1)}
    assert {one.st_nlink for one in files.values()} == {1}
    for number in range(1, ROWS + 1, 7):
        wanted = request(number)
        assert (output / f"{number:06}.{wanted['format']}").read_bytes() == label(**wanted).data


def write_all(output: str, count: int) -> int:
    write_once = runpy.run_path(str(EXAMPLE))["write_once"]
    return sum(write_once(os.path.join(output, str(n)), b"%d" % n * 1000) for n in range(count))


@pytest.mark.parametrize("nameless", [True, False])
def test_written_once(nameless: bool, tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> None:
    """Four that write the same names: each name is written by one, and whole."""
    if not nameless:
        monkeypatch.setattr(os, "O_TMPFILE", os.O_DIRECTORY | os.O_CREAT)  # never to be had
    with multiprocessing.get_context("fork").Pool(4) as pool:
        won: List[int] = pool.starmap(write_all, [(str(tmp_path), 300)] * 4)
    assert sum(won) == 300
    assert {file.name: file.read_bytes() for file in tmp_path.iterdir()} == {
        str(n): b"%d" % n * 1000 for n in range(300)}
