"""Writes the marked examples of a page as files, each named as it is marked, with the suffix of its language.

    examples.py PAGE.md DIR
"""

import pathlib
import re
import sys

page, target = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
examples = re.findall(r"<!-- example: ([\w-]+) -->\n```(\w+)\n(.*?)```", page.read_text(encoding="utf-8"), re.DOTALL)
if not examples:
    sys.exit(f"{page} has no examples")
target.mkdir(parents=True, exist_ok=True)
for name, language, text in examples:
    suffix = {"python": "py"}.get(language, language)
    (target / f"{name}.{suffix}").write_text(text, encoding="utf-8")
