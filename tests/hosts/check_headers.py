"""The headers for C++: compiled alone by every compiler that is there, as each standard, with and without exceptions; no
macro comes out of them; each exported function is used in them.

Usage: check_headers.py INCLUDE_DIR CXX_COMPILER EXPORTS HEADER [EXPORTS HEADER...]
"""
import pathlib
import re
import shutil
import subprocess
import sys

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wsign-conversion", "-Wshadow", "-Wnoexcept",
            "-Wnoexcept-type", "-Wold-style-cast", "-Wnon-virtual-dtor", "-Woverloaded-virtual", "-Werror",
            "-Wno-unknown-warning-option"]


def compile_alone(compiler, include, header, arguments):
    return subprocess.run([compiler, "-x", "c++", f"-I{include}", *arguments, "-"], input=f'#include "{header}"\n',
                          capture_output=True, text=True, check=False)


def macros(compiler, include, headers):
    text = "".join(f"#include <{header}>\n" for header in headers)
    listing = subprocess.run([compiler, "-x", "c++", "-std=c++17", f"-I{include}", "-E", "-dM", "-"], input=text,
                             capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"^#define (\w+)", listing, re.MULTILINE))


def main():
    include, compiler, *pairs = sys.argv[1:]
    include = pathlib.Path(include)
    there = filter(None, map(shutil.which, (compiler, "g++", "clang++")))
    compilers = list({pathlib.Path(path).resolve(): path for path in there}.values())
    headers = sorted(path.name for path in include.glob("*.hpp"))
    failures, compiled = [], 0
    for header in headers:
        for one in compilers:
            for standard in ("c++17", "c++20", "c++2b"):
                for exceptions in ("-fexceptions", "-fno-exceptions"):
                    arguments = [f"-std={standard}", exceptions, "-fsyntax-only", *WARNINGS]
                    result = compile_alone(one, include, header, arguments)
                    compiled += 1
                    if result.returncode != 0:
                        failures.append(f"{one} {standard} {exceptions}: {header}\n{result.stderr}")

    # What they include of the standard library brings macros of its own.
    for header in headers:
        code = (include / header).read_text(encoding="utf-8")
        below = re.findall(r'^#include [<"]([\w./]+)[>"]', code, re.MULTILINE)
        leaked = macros(compiler, include, [header]) - macros(compiler, include, below)
        if leaked:
            failures.append(f"{header} defines {leaked}")

    exported = dict(zip(pairs[::2], pairs[1::2]))
    assert exported, "no list of exported functions"
    for listing, header in exported.items():
        code = re.sub(r"//[^\n]*", "", (include / header).read_text(encoding="utf-8"))
        used = set(re.findall(r"\bbarcode_\w+", code))
        functions = pathlib.Path(listing).read_text(encoding="utf-8").split()
        assert len(functions) >= 8, listing
        failures += [f"{header} does not use {name}" for name in functions if name not in used]

    print("\n".join(failures))
    print(f"{compiled} compilations by {', '.join(compilers)}, {len(failures)} failures")
    sys.exit(1 if failures or compiled < 18 else 0)


main()
