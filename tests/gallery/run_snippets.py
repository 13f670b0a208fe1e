#!/usr/bin/env python3
"""Runs every piece of code that the gallery shows, and compares what it writes with the gallery's own file.

    run_snippets.py MKBARCODE LIBRARIES INCLUDES CC NODE NODE_PACKAGE

LIBRARIES, INCLUDES and NODE_PACKAGE, what `import "libbarcode"` finds, are directories. Python has the package of this
tree.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

from gallery_page import code_blocks

PYTHON_PACKAGES = str(pathlib.Path(__file__).resolve().parents[2] / "python")

# Prints its statuses, one for each snippet, in order.
PYTHON_RUNNER = """
import pathlib, sys
import libbarcode
for number in range(int(sys.argv[1])):
    try:
        exec(compile(pathlib.Path(f"snippet-{number}.py").read_text(encoding="utf-8"), f"snippet-{number}.py", "exec"),
             {"__name__": "__main__"})
        status = 0
    except libbarcode.LabelError:
        status = 1
    pathlib.Path(f"status-{number}").write_text(str(status))
"""

NODE_RUNNER = """
import { writeFileSync } from "node:fs";
for (let number = 0; number < Number(process.argv[2]); ++number) {
  let status = 0;
  try {
    await import(`./snippet-${number}.mjs`);
  } catch (error) {
    status = error.name === "LabelError" ? 1 : String(error);
  }
  writeFileSync(`status-${number}`, String(status));
}
"""


class Runner:
    """Runs snippets in a directory of its own; all report their statuses as a list."""

    def __init__(self, arguments):
        program, self.libraries, self.includes, self.compiler, self.node_program, node_package = arguments
        self.node_package = pathlib.Path(node_package).resolve()
        self.program = pathlib.Path(program).resolve()
        self.environment = dict(os.environ, LD_LIBRARY_PATH=self.libraries, PYTHONPATH=PYTHON_PACKAGES,
                                PYTHONDONTWRITEBYTECODE="1", PATH=f"{self.program.parent}:{os.environ['PATH']}")

    def _run(self, command, directory, check=True):
        result = subprocess.run(command, cwd=directory, env=self.environment, capture_output=True, check=False)
        if check and result.returncode != 0:
            sys.exit(f"{command[0]}: {result.stderr.decode(errors='replace')[-3000:]}")
        return result.returncode

    def _compile(self, source, target, directory):
        self._run([self.compiler, "-std=c99", "-Wall", "-Wextra", "-Werror", f"-I{self.includes}", "-o", target, source,
                   f"-L{self.libraries}", "-lbarcode", "-lbarcode_label"], directory)

    @staticmethod
    def _statuses(directory, count):
        return [int((directory / f"status-{number}").read_text()) for number in range(count)]

    def gallery(self, directory):
        self._run([str(self.program), "gallery", str(directory)], ".")

    def shell(self, directory, codes):
        return [self._run(["sh", "-c", code], directory, check=False) for code in codes]

    def python(self, directory, codes):
        for number, code in enumerate(codes):
            (directory / f"snippet-{number}.py").write_text(code, encoding="utf-8")
        (directory / "run.py").write_text(PYTHON_RUNNER)
        self._run([sys.executable, "run.py", str(len(codes))], directory)
        return self._statuses(directory, len(codes))

    def node(self, directory, codes):
        for number, code in enumerate(codes):
            (directory / f"snippet-{number}.mjs").write_text(code, encoding="utf-8")
        (directory / "node_modules").mkdir()
        (directory / "node_modules" / "libbarcode").symlink_to(self.node_package, target_is_directory=True)
        (directory / "run.mjs").write_text(NODE_RUNNER)
        self._run([self.node_program, "run.mjs", str(len(codes))], directory)
        return self._statuses(directory, len(codes))

    def c(self, directory, codes):
        """Every program is compiled as it stands, all into one: compiling and linking each takes much longer."""
        calls = ""
        source = ""
        for number, code in enumerate(codes):
            (directory / f"snippet-{number}.c").write_text(code, encoding="utf-8")
            source += f'#define main main_{number}\n#include "snippet-{number}.c"\n#undef main\n'
            calls += f'  report("status-{number}", main_{number}());\n'
        (directory / "all.c").write_text(
            source + "static void report(const char* name, int status) {\n  FILE* file = fopen(name, \"w\");\n"
            '  fprintf(file, "%d", status);\n  fclose(file);\n}\n\nint main(void) {\n' + calls + "  return 0;\n}\n")
        self._compile("all.c", "all", directory)
        self._run([str(directory / "all")], directory)
        return self._statuses(directory, len(codes))


def check(language, gallery, directory, snippets, statuses):
    """The number of snippets that delivered and of those that were refused; exits where one did otherwise."""
    faults = []
    delivered = 0
    for (file, code), status in zip(snippets, statuses):
        written = directory / pathlib.Path(file).name
        expected = gallery / file
        if not expected.exists():  # refused
            # An option of another symbology is wrong usage of the command.
            refusals = (1, 2) if language == "shell" else (1,)
            if status not in refusals or written.exists():
                faults.append(f"{file}: status {status}, though the label is refused\n{code}")
        elif status != 0 or not written.exists() or written.read_bytes() != expected.read_bytes():
            faults.append(f"{file}: status {status}, or another picture\n{code}")
        else:
            delivered += 1
    if faults:
        sys.exit(f"{language}: {len(faults)} of {len(snippets)} snippets\n" + "\n".join(faults[:5]))
    print(f"{language}: {delivered} pictures as in the gallery, {len(snippets) - delivered} labels refused")


def main():
    if len(sys.argv) != 7:
        sys.exit(__doc__)
    runner = Runner(sys.argv[1:])
    with tempfile.TemporaryDirectory(prefix="gallery_snippets_") as scratch:
        gallery = pathlib.Path(scratch) / "gallery"
        runner.gallery(gallery)
        languages = code_blocks(gallery)
        runners = {"shell": runner.shell, "python": runner.python, "node": runner.node, "c": runner.c}
        if languages.keys() != runners.keys():
            sys.exit(f"the page has code in {sorted(languages)}, and there are runners for {sorted(runners)}")
        for language, snippets in languages.items():
            if len(snippets) < 150:
                sys.exit(f"only {len(snippets)} snippets of {language}")
            directory = pathlib.Path(scratch) / language
            directory.mkdir()
            check(language, gallery, directory, snippets, runners[language](directory, [code for _, code in snippets]))


if __name__ == "__main__":
    main()
