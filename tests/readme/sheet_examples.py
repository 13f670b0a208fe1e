"""Runs the commands of docs/sheets.md as a reader would, and compares what they say with what the page shows.

Usage: sheet_examples.py PAGE MKBARCODE [--write]

--write renders the picture anew; then look at it.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"<!-- (file: (?P<file>\S+)|run|output) -->\n```\w*\n(?P<text>.*?)```", re.DOTALL)
PICTURE_DPI = "80"


def main():
    page, program, *options = sys.argv[1:]
    page = pathlib.Path(page)
    picture = page.parent / "images" / "sheet.png"
    said = None
    runs = 0
    with tempfile.TemporaryDirectory() as name:
        work = pathlib.Path(name)
        environment = dict(os.environ, PATH=f"{pathlib.Path(program).resolve().parent}:{os.environ['PATH']}")
        for block in BLOCK.finditer(page.read_text(encoding="utf-8")):
            if block["file"]:
                (work / block["file"]).write_text(block["text"], encoding="utf-8")
            elif block[1] == "run":
                result = subprocess.run(block["text"], shell=True, cwd=work, env=environment, capture_output=True, text=True)
                said = result.stdout + result.stderr
                assert result.returncode in (0, 1), said
                runs += 1
            else:
                assert said == block["text"], f"the page shows\n{block['text']}but it is\n{said}"
        assert runs == 2 and said, runs

        render = ["pdftoppm", "-r", PICTURE_DPI, "-gray", "-singlefile", "-png", "sheet.pdf", "sheet"]
        subprocess.run(render, cwd=work, check=True)
        if options == ["--write"]:
            picture.write_bytes((work / "sheet.png").read_bytes())
        # The header: width and height. Another poppler may draw edges in another way.
        assert picture.read_bytes()[:24] == (work / "sheet.png").read_bytes()[:24]


main()
