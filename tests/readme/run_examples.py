"""Runs the examples of README.md and docs/labels.md as a reader would: shell, Python, Node and C.

Usage: run_examples.py SOURCE_DIR LIBRARY_DIR[:LIBRARY_DIR...] PROGRAM_DIR NODE_PACKAGE WORK_DIR NODE C_COMPILER [C_FLAG...]
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys


def example(document, name):
    match = re.search(rf"<!-- example: {name} -->\n```\w+\n(.*?)```", document.read_text(encoding="utf-8"), re.DOTALL)
    assert match, f"{document} has no example {name}"
    return match.group(1)


def main():
    source_dir, library_dirs, program_dir, node_package, work_dir, node, compiler, *flags = sys.argv[1:]
    source = pathlib.Path(source_dir)
    readme = source / "README.md"
    work = pathlib.Path(work_dir)
    shutil.rmtree(work, ignore_errors=True)
    (work / "node_modules").mkdir(parents=True)
    (work / "node_modules" / "libbarcode").symlink_to(node_package, target_is_directory=True)
    environment = dict(os.environ, LD_LIBRARY_PATH=library_dirs, PYTHONPATH=str(source / "python"),
                       PATH=f"{program_dir}:{os.environ['PATH']}")

    def run(*command):
        return subprocess.run(command, cwd=work, env=environment, check=True, stdout=subprocess.PIPE).stdout

    def write(name, code):
        (work / name).write_text(code, encoding="utf-8")
        return name

    def run_c(code, library):
        run(compiler, *flags, "-Wall", "-Wextra", "-Werror", "-o", "example", write("example.c", code),
            f"-I{source / 'include'}", *(f"-L{directory}" for directory in library_dirs.split(":")), f"-l{library}")
        return run("./example")

    def run_script(interpreter, file, document, name):
        return run(*interpreter, write(file, example(document, name)))

    labels = {}
    for language, write_label in {
        "shell": lambda: run_script(["sh", "-e"], "example.sh", readme, "shell"),
        "Python": lambda: run_script([sys.executable], "example.py", readme, "python"),
        "Node": lambda: run_script([node], "example.mjs", readme, "node"),
        "C": lambda: run_c(example(readme, "c-label"), "barcode_label"),
    }.items():
        write_label()
        labels[language] = (work / "label.png").read_bytes()
        (work / "label.png").unlink()
        assert labels[language].startswith(b"\x89PNG"), language
        assert labels[language] == labels["shell"], f"{language} writes other bytes than the shell"

    run_c(example(readme, "c"), "barcode")
    assert (work / "code39.png").read_bytes().startswith(b"\x89PNG")

    report = run_c(example(source / "docs" / "labels.md", "label-c"), "barcode_label")
    assert b'"text":"4901234567894"' in report.replace(b" ", b""), report
    assert (work / "label.png").read_bytes() == labels["shell"]


main()
