"""Runs the commands of examples/README.md in a copy of examples/, with an installed tree.

Usage: run_commands.py EXAMPLES PREFIX LIBDIR WORK_DIR

The status is 77 when all is right but the commands of some languages could not be tried, for they are not installed; with
BARCODE_REQUIRE_HOSTS=1 in the environment that is a failure.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys

SKIPPED = 77
PICTURES = {".png": b"\x89PNG\r\n\x1a\n", ".svg": b"<", ".pdf": b"%PDF-"}


def main():
    examples, prefix, libdir, work = (pathlib.Path(argument) for argument in sys.argv[1:])
    shutil.rmtree(work, ignore_errors=True)
    shutil.copytree(examples, work)
    library = prefix / libdir
    environment = dict(os.environ, LD_LIBRARY_PATH=str(library), PKG_CONFIG_PATH=str(library / "pkgconfig"),
                       CMAKE_PREFIX_PATH=str(prefix), LC_ALL="C.UTF-8")
    for name in ("JAVA_TOOL_OPTIONS", "JDK_JAVA_OPTIONS", "_JAVA_OPTIONS", "RUBYOPT"):
        environment.pop(name, None)  # they would be told of
    page = (work / "README.md").read_text(encoding="utf-8")
    blocks = re.findall(r"^```sh\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)
    assert len(blocks) >= 6 and page.count("```") == 2 * len(blocks), "a block of commands has lost its mark"
    absent = set()
    for block in blocks:
        programs = {line.split()[0] for line in block.splitlines()} & {"java", "javac", "php", "ruby"}
        missing = {program for program in programs if not shutil.which(program)}
        if programs & {"javac"} and not pathlib.Path("/usr/share/java/jna.jar").exists():
            missing.add("libjna-java")
        if missing:
            absent |= missing
            continue
        result = subprocess.run(["sh", "-ec", block], cwd=work, env=environment, stdin=subprocess.DEVNULL,
                                capture_output=True, check=False)
        assert result.returncode == 0 and not result.stderr, f"{block}{result}"
        names = set(re.findall(r"\b(?:label|symbol)\.(?:png|svg|pdf)\b", block))
        assert names, f"{block} makes no picture"
        for name in names:
            picture = work / name
            assert picture.read_bytes().startswith(PICTURES[picture.suffix]), name
            picture.unlink()
    if absent:
        print(f"Skipped: no {', '.join(sorted(absent))} (scripts/install-deps.sh --hosts)")
        return 1 if os.environ.get("BARCODE_REQUIRE_HOSTS") == "1" else SKIPPED
    print(f"{len(blocks)} blocks of commands")
    return 0


sys.exit(main())
