"""Runs the C and Python examples of README.md and docs/labels.md as a reader would.

Usage: run_examples.py SOURCE_DIR LIBRARY_DIR[:LIBRARY_DIR...] WORK_DIR C_COMPILER [C_FLAG...]
"""

import os
import pathlib
import re
import subprocess
import sys


def example(document, name):
    match = re.search(rf"<!-- example: {name} -->\n```\w+\n(.*?)```", document.read_text(encoding="utf-8"), re.DOTALL)
    assert match, f"{document} has no example {name}"
    return match.group(1)


def main():
    source_dir, library_dirs, work_dir, compiler, *flags = sys.argv[1:]
    source = pathlib.Path(source_dir)
    readme = source / "README.md"
    work = pathlib.Path(work_dir)
    work.mkdir(parents=True, exist_ok=True)
    for old in (*work.glob("code39.*"), *work.glob("label.*")):
        old.unlink()
    environment = dict(os.environ, LD_LIBRARY_PATH=library_dirs)

    def run_c(code, library):
        (work / "example.c").write_text(code, encoding="utf-8")
        subprocess.run(
            [compiler, *flags, "-Wall", "-Wextra", "-Werror", "-o", "example", "example.c",
             f"-I{source / 'include'}", *(f"-L{directory}" for directory in library_dirs.split(":")), f"-l{library}"],
            cwd=work, check=True)
        return subprocess.run(["./example"], cwd=work, env=environment, check=True, capture_output=True).stdout

    run_c(example(readme, "c"), "barcode")
    assert (work / "code39.png").read_bytes().startswith(b"\x89PNG")

    (work / "example.py").write_text(example(readme, "python"), encoding="utf-8")
    subprocess.run([sys.executable, "example.py"], cwd=work, env=environment, check=True)
    assert (work / "code39.svg").read_bytes().startswith(b"<?xml")

    report = run_c(example(source / "docs" / "labels.md", "label-c"), "barcode_label")
    assert b'"text":"4901234567894"' in report.replace(b" ", b""), report
    assert (work / "label.png").read_bytes().startswith(b"\x89PNG")


main()
