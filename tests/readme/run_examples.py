"""Runs the C and Python examples of README.md as a reader would.

Usage: run_examples.py README.md INCLUDE_DIR LIBRARY_DIR WORK_DIR C_COMPILER [C_FLAG...]
"""

import os
import pathlib
import re
import subprocess
import sys


def example(readme, language):
    match = re.search(rf"<!-- example: {language} -->\n```\w+\n(.*?)```", readme, re.DOTALL)
    assert match, f"README.md has no {language} example"
    return match.group(1)


def main():
    readme_path, include_dir, library_dir, work_dir, compiler, *flags = sys.argv[1:]
    readme = pathlib.Path(readme_path).read_text(encoding="utf-8")
    work = pathlib.Path(work_dir)
    work.mkdir(parents=True, exist_ok=True)
    for old in work.glob("code39.*"):
        old.unlink()
    environment = dict(os.environ, LD_LIBRARY_PATH=library_dir)

    (work / "example.c").write_text(example(readme, "c"), encoding="utf-8")
    subprocess.run(
        [compiler, *flags, "-Wall", "-Wextra", "-Werror", "-o", "example", "example.c",
         f"-I{include_dir}", f"-L{library_dir}", "-lbarcode"],
        cwd=work, check=True)
    subprocess.run(["./example"], cwd=work, env=environment, check=True)
    assert (work / "code39.png").read_bytes().startswith(b"\x89PNG")

    (work / "example.py").write_text(example(readme, "python"), encoding="utf-8")
    subprocess.run([sys.executable, "example.py"], cwd=work, env=environment, check=True)
    assert (work / "code39.svg").read_bytes().startswith(b"<?xml")


main()
