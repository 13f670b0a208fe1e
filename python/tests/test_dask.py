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


def request(number: int) -> Dict[str, Any]:
    """About a millisecond each."""
    return {"type": "qr", "text": f"{number:06}" * 200, "format": "png" if number % 10 else "svg"}


def kill_a_worker(process: "subprocess.Popen[str]", output: pathlib.Path) -> int:
    """Kills one when some labels are there; returns how many there were."""
    assert process.stdout is not None
    line = process.stdout.readline()
    assert line.startswith("workers: "), line
    workers = [int(number) for number in line.split()[1:]]
    assert len(workers) == 2
    deadline = time.monotonic() + 60
    while len(os.listdir(output)) < ROWS // 10:
        assert time.monotonic() < deadline and process.poll() is None
        time.sleep(0.005)
    os.kill(workers[0], signal.SIGKILL)
    return len(os.listdir(output))


def test_a_worker_is_killed(tmp_path: pathlib.Path) -> None:
    requests, output = tmp_path / "requests.jsonl", tmp_path / "labels"
    lines = [json.dumps(request(number)) for number in range(1, ROWS + 1)]
    lines += ["nonsense", json.dumps({"type": "jan13", "text": "x"}), json.dumps({"type": "qr", "text": 5}),
              "[" * 200_000, '{"type": "qr", "type": "itf", "text": "12"}']
    requests.write_text("".join(line + "\n" for line in lines), encoding="utf-8")
    with subprocess.Popen([sys.executable, str(EXAMPLE), str(requests), str(output), "--partition", "50"],
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True) as process:
        try:
            there = kill_a_worker(process, output)
            out, err = process.communicate(timeout=120)
        finally:
            process.kill()
    assert there < ROWS, "the worker was killed too late to be missed"
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
