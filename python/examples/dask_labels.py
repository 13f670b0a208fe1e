#!/usr/bin/env python3
"""Labels on many machines: a bag of requests across the workers of a Dask cluster.

    dask_labels.py REQUESTS OUTPUT [--scheduler ADDRESS] [--partition ROWS]

REQUESTS is a file with a request in JSON on each line. Label n becomes OUTPUT/n.png (000001.png), in a folder that all
workers see. A file gets its name when it is whole, and once: what a worker leaves behind that dies in the middle is
done again by another, and what it had finished stays as it is. Lines that are refused are printed as JSON, with their
numbers; the exit status is then 1. Without --scheduler two processes of this machine are the cluster.

Needs dask and distributed (Debian: python3-distributed) here, and libbarcode here and on the workers.
"""

import argparse
import contextlib
import json
import os
import pathlib
import secrets
import sys
import tempfile
from typing import Any, Dict, Iterable, List, Optional, Tuple

import dask.bag
import libbarcode
from dask.distributed import Client, LocalCluster


def write_once(path: str, data: bytes) -> bool:
    """Writes a file that is not there yet. False where it is: whoever was first has written it whole."""
    folder = os.open(os.path.dirname(path), os.O_RDONLY | os.O_DIRECTORY)
    temporary = ""
    try:
        try:
            descriptor = os.open(".", os.O_TMPFILE | os.O_WRONLY, 0o666, dir_fd=folder)
            content = f"/proc/self/fd/{descriptor}"
        except OSError:  # a file system without nameless files: a worker that is killed may leave one behind
            content = temporary = f".{secrets.token_hex(8)}.tmp"
            descriptor = os.open(temporary, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o666, dir_fd=folder)
        with open(descriptor, "wb") as file:
            file.write(data)
            file.flush()
            # With a folder's descriptor the link in /proc is followed.
            os.link(content, os.path.basename(path), src_dir_fd=folder, dst_dir_fd=folder)
        return True
    except FileExistsError:
        return False
    finally:
        if temporary:
            os.unlink(temporary, dir_fd=folder)
        os.close(folder)


def without_doubles(members: List[Tuple[str, Any]]) -> Dict[str, Any]:
    """An object of JSON, where json.loads() would forget what stands twice."""
    request = dict(members)
    if len(request) != len(members):
        raise ValueError("a field stands twice in the line")
    return request


def draw(number: int, line: str, output: str) -> Optional[Dict[str, Any]]:
    """Writes the label of a line, unless it is there; returns what refuses it."""
    try:
        request = json.loads(line, object_pairs_hook=without_doubles)
        if not isinstance(request, dict):
            raise TypeError("the line is no JSON object")
        suffix = str(request.get("format") or "png").lower()
        path = os.path.join(output, f"{number:06}.{suffix}")
        if not os.path.exists(path):
            write_once(path, libbarcode.label(**request).data)
        return None
    except (TypeError, ValueError, RecursionError) as error:  # also the library's LabelError
        return {"n": number, "code": getattr(error, "code", "bad_request"), "field": getattr(error, "field", ""),
                "message": str(error)}


def draw_partition(rows: Iterable[Tuple[int, str]], output: str) -> List[Dict[str, Any]]:
    """What a worker does at a time: writes the labels of some rows; returns what was refused."""
    drawn = (draw(number, line, output) for number, line in rows)
    return [refused for refused in drawn if refused is not None]


def run(client: Client, requests: pathlib.Path, output: pathlib.Path, partition: int) -> List[Dict[str, Any]]:
    with requests.open(encoding="utf-8") as lines:
        rows = dask.bag.from_sequence(enumerate(lines, 1), partition_size=partition)
    refused: List[Dict[str, Any]] = rows.map_partitions(draw_partition, str(output.resolve())).compute(scheduler=client)
    return refused


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("requests", type=pathlib.Path)
    parser.add_argument("output", type=pathlib.Path)
    parser.add_argument("--scheduler", help="tcp://HOST:PORT of a cluster that is running")
    parser.add_argument("--partition", type=int, default=1000, help="rows that a worker takes at a time")
    options = parser.parse_args()
    options.output.mkdir(parents=True, exist_ok=True)
    with contextlib.ExitStack() as ends:
        scratch = ends.enter_context(tempfile.TemporaryDirectory())
        cluster = options.scheduler or ends.enter_context(LocalCluster(
            n_workers=2, threads_per_worker=1, dashboard_address=None, local_directory=scratch))
        client = ends.enter_context(Client(cluster))
        print("workers:", *client.run(os.getpid).values(), flush=True)
        refused = run(client, options.requests, options.output, options.partition)
    for error in refused:
        print(json.dumps(error), flush=True)
    return 1 if refused else 0


if __name__ == "__main__":
    sys.exit(main())
