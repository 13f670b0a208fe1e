"""What the documents show is run, block after block, and prints what stands below it."""

import io
import os
import pathlib
import re
from contextlib import redirect_stdout
from typing import Any, Dict

import pytest
from conftest import SOURCE

DOCUMENTS = {"docs/python.md": 8, "python/README.md": 1}


@pytest.mark.parametrize("name", DOCUMENTS)
def test_document(name: str, tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> None:
    text = (SOURCE / name).read_text(encoding="utf-8")
    blocks = re.findall(r"^```(\w*)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    assert {kind for kind, _ in blocks} <= {"python", "text"}
    monkeypatch.chdir(tmp_path)
    names: Dict[str, Any] = {"__name__": "__main__"}
    printed, run = "", 0
    for kind, block in blocks:
        if kind == "text":
            assert printed == block
            printed = ""
            continue
        assert printed == "", "what a block prints stands below it"
        # quiet() is about descriptors; what Python prints meanwhile is caught before it gets there.
        with redirect_stdout(io.StringIO()) as out:
            exec(compile(block, name, "exec"), names)
        printed, run = out.getvalue(), run + 1
    assert printed == "" and run == DOCUMENTS[name]
    assert os.path.exists("hello.svg")
