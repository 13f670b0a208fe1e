"""What the tests share. The libraries are found on LD_LIBRARY_PATH, the package on PYTHONPATH, or else in this tree."""

import os
import pathlib
import sys
from typing import List

import pytest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
# As the programs have it that tests run.
PACKAGES = pathlib.Path(os.environ.setdefault("PYTHONPATH", str(SOURCE / "python")))
sys.path.insert(0, str(PACKAGES))

SUPPORT = SOURCE / "tests" / "support"


@pytest.fixture(scope="session")
def reader() -> List[str]:
    """The command of an independent reader; see read_wasm.mjs."""
    return [os.environ.get("TEST_NODE", "node"), str(SUPPORT / "read_wasm.mjs")]
