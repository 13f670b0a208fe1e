#!/usr/bin/env python3
"""How the cost of `mkbarcode batch` grows with the number of rows: CPU time and time of whole processes.

    batch_growth.py MKBARCODE [--most ROWS] [--jobs N]

Prints a table in Markdown: 10^3 rows to --most (default 10^6), for SVG, PNG and PNG without text to lines of
JSON, and PNG to a tar file.
"""

import argparse
import json
import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import time


def write_rows(path, count):
    with path.open("w", encoding="ascii") as file:
        for number in range(count):
            file.write(json.dumps({"type": "code128", "text": f"PARCEL-{number:09}"}) + "\n")


def run(mkbarcode, rows, arguments, output):
    """CPU seconds and seconds."""
    began = time.monotonic()
    with open(os.devnull, "wb") as nothing:
        process = subprocess.Popen([mkbarcode, "batch", rows, "-o", output, "--quiet", *arguments], stdout=nothing)
        _, status, usage = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit("batch_growth: mkbarcode failed")
    return usage.ru_utime + usage.ru_stime, time.monotonic() - began


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("mkbarcode", type=pathlib.Path)
    parser.add_argument("--most", type=int, default=1_000_000)
    parser.add_argument("--jobs", default="1")
    options = parser.parse_args()
    print("| Rows | Output | CPU s | CPU us a row | s |")
    print("|---|---|---|---|---|")
    with tempfile.TemporaryDirectory() as folder:
        rows = pathlib.Path(folder, "rows.jsonl")
        tar = str(pathlib.Path(folder, "labels.tar"))
        count = 1000
        while count <= options.most:
            write_rows(rows, count)
            for name, arguments, output in (("SVG, lines of JSON", ["--format", "svg"], "-"),
                                            ("PNG, lines of JSON", [], "-"),
                                            ("PNG without text, lines of JSON", ["--no-show-text"], "-"),
                                            ("PNG, tar", [], tar)):
                cpu, seconds = run(options.mkbarcode, rows, [*arguments, "-j", options.jobs], output)
                print(f"| {count} | {name} | {cpu:.2f} | {cpu / count * 1e6:.1f} | {seconds:.2f} |",
                      flush=True)
            count *= 10


if __name__ == "__main__":
    main()
