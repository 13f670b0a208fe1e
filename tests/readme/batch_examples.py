"""Runs the shell examples of docs/batch.md, one behind the other in one directory, and compares what they print.

Usage: batch_examples.py PAGE PROGRAM_DIRECTORY
A block ```sh is run; a block ```text right behind it is what it prints, on both streams, an ellipsis standing for any
text of one line. A block ```csv or ```json that begins with a line "# NAME" is a file of that name, without the line.
"""
import os
import re
import subprocess
import sys
import tempfile

page, programs = sys.argv[1], os.path.abspath(sys.argv[2])
text = open(page, encoding="utf-8").read()
blocks = re.findall(r"^```(\w+)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
environment = dict(os.environ, PATH=programs + os.pathsep + os.environ["PATH"])
failures = 0
commands = 0


def pattern(expected):
    return re.compile(".*".join(re.escape(part) for part in expected.split("…")))


with tempfile.TemporaryDirectory() as directory:
    for index, (kind, block) in enumerate(blocks):
        if kind in ("csv", "json") and block.startswith("# "):
            name, content = block[2:].split("\n", 1)
            with open(os.path.join(directory, name), "w", encoding="utf-8") as file:
                file.write(content)
        if kind != "sh":
            continue
        commands += 1
        run = subprocess.run(["sh", "-c", block], cwd=directory, env=environment, stdin=subprocess.DEVNULL,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8", check=False)
        follows = blocks[index + 1] if index + 1 < len(blocks) else ("", "")
        expected = follows[1] if follows[0] == "text" else ""
        if not pattern(expected).fullmatch(run.stdout):
            print(f"{block}prints\n{run.stdout}instead of\n{expected}")
            failures += 1
print(f"{commands} examples, {failures} failed")
sys.exit(failures != 0 or commands < 5)
