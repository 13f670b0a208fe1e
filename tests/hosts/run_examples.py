"""Runs the examples of one language as a reader would, those of docs/hosts.md too, and compares their files with those of
mkbarcode.

Usage: run_examples.py LANGUAGE SOURCE_DIR LIBRARY_DIR MKBARCODE WORK_DIR [LABEL_PROGRAM LIBRARY_PROGRAM [CXX_COMPILER FLAG...]]

For C and C++ the programs are built already; the compiler is for the examples of the page. The status is 77 where the language is not installed; with
BARCODE_REQUIRE_HOSTS=1 in the environment that is a failure.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

SKIPPED = 77
JNA = pathlib.Path("/usr/share/java/jna.jar")

# Type, text, suffix of the file. What arguments of a program cannot hold is tried in the languages themselves.
LABELS = (
    ("qr", "https://example.com/", "png"),
    ("jan13", "490123456789", "svg"),
    ("code39", "ABC-123", "pdf"),
    ("qr", 'Grüße "漢字" \\ <&> \t\n😀', "png"),
    ("gs1-128", "(01)04912345678904(17)261231(10)LOT42", "svg"),
)
REFUSED = (("jan13", "49012345678x", "png"), ("code39", "", "png"), ("qx", "A", "svg"), ("qr", "A", "gif"),
           ("code128", "漢", "png"))


class Examples:
    def __init__(self, language, source, library, mkbarcode, work, programs):
        self.source, self.mkbarcode, self.work, self.programs = source, mkbarcode, work, programs
        self.examples = source / "examples" / language
        self.tests = source / "tests" / "hosts" / language
        # Java takes the arguments of programs in the character set of the locale.
        self.environment = dict(os.environ, LD_LIBRARY_PATH=str(library), LC_ALL="C.UTF-8")
        # Java tells that it has found options there, and the others may warn.
        for name in ("JAVA_TOOL_OPTIONS", "JDK_JAVA_OPTIONS", "_JAVA_OPTIONS", "RUBYOPT"):
            self.environment.pop(name, None)
        self.library = library
        self.checks = 0

    def check(self, is_right, what):
        assert is_right, what
        self.checks += 1

    def run(self, command, environment=None):
        return subprocess.run([str(part) if isinstance(part, pathlib.Path) else part for part in command], cwd=self.work,
                              env=environment or self.environment, capture_output=True, check=False)

    def made(self, name):
        """The file, and it is gone."""
        path = self.work / name
        data = path.read_bytes()
        path.unlink()
        return data

    def labels(self, command, name):
        """The program that makes a label; `name` is what its messages begin with."""
        for kind, text, suffix in LABELS:
            result = self.run([*command, kind, text, f"label.{suffix}"])
            self.check(result.returncode == 0 and not result.stdout and not result.stderr, result)
            usual = self.run([self.mkbarcode, kind, text, "-o", f"usual.{suffix}"])
            self.check(usual.returncode == 0, usual)
            data = self.made(f"label.{suffix}")
            beginning = {"png": b"\x89PNG\r\n\x1a\n", "svg": b"<", "pdf": b"%PDF-"}[suffix]
            self.check(data.startswith(beginning), f"{kind}: no {suffix}")
            self.check(data == self.made(f"usual.{suffix}"), f"{kind}: not the bytes of mkbarcode")

        for kind, text, suffix in REFUSED:
            result = self.run([*command, kind, text, f"label.{suffix}"])
            request = json.dumps({"type": kind, "text": text, "format": suffix})
            error = self.error_of(request)
            wanted = f"{name}: {error['code']} {error['field']}: {error['message']}\n"
            self.check(result.returncode == 1 and result.stderr.decode() == wanted and not result.stdout,
                       f"{result} instead of {wanted}")
            self.check(not (self.work / f"label.{suffix}").exists(), "a refused label was written")

        for arguments in ([], ["qr"], ["qr", "A"]):
            result = self.run([*command, *arguments])
            self.check(result.returncode == 2 and b"Usage: " in result.stderr, result)
        result = self.run([*command, "qr", "A", "no such folder/label.png"])
        self.check(result.returncode == 1 and b"no such folder/label.png" in result.stderr, result)
        result = self.run([*command, "qr", b"A\xff", "label.png"])
        if name != "MakeLabel":  # Java has replaced what is no UTF-8 before the program sees it.
            self.check(result.returncode == 1 and b"UTF-8" in result.stderr, result)
        self.check(result.returncode in (0, 1), result)

    def error_of(self, request):
        """What the library says of a request that it refuses, in the words of mkbarcode."""
        (self.work / "requests.jsonl").write_text(request + "\n", encoding="utf-8")
        result = self.run([self.mkbarcode, "batch", "requests.jsonl", "-o", "-"])
        error = json.loads(result.stdout.decode().splitlines()[0])["report"]["error"]
        return error

    def library_draws(self, command, name):
        for suffix in ("png", "svg"):
            result = self.run([*command, "0", "ABC-123", "300", "100", f"symbol.{suffix}"])
            self.check(result.returncode == 0 and not result.stderr, result)
            usual = self.run([self.mkbarcode, "library", "code39", "ABC-123", "--size", "300x100", "-o", f"usual.{suffix}"])
            self.check(usual.returncode == 0, usual)
            self.check(self.made(f"symbol.{suffix}") == self.made(f"usual.{suffix}"), "not the bytes of mkbarcode library")
        result = self.run([*command, "0", "漢", "300", "100", "symbol.png"])
        self.check(result.returncode == 1 and result.stderr.startswith(b"[Code39] ")
                   and result.stderr.decode(errors="replace").endswith(f"\n{name}: the text was not drawn\n"), result)
        self.check(not (self.work / "symbol.png").exists(), "a refused symbol was written")
        for arguments in ([], ["x", "A", "1", "1", "x.png"], ["0", "A", "1"]):
            self.check(self.run([*command, *arguments]).returncode == 2, arguments)
        result = self.run([*command, "0", "A", "300", "100", "no such folder/symbol.png"])
        self.check(result.returncode == 1 and b"no such folder/symbol.png" in result.stderr, result)

    def hostile(self, command):
        result = self.run(command)
        self.check(result.returncode == 0 and b" 0 failed" in result.stdout, result)
        print(result.stdout.decode(), end="")

    def without_library(self, command):
        """An error of the language, too, unless the system has the library."""
        known = subprocess.run(["/sbin/ldconfig", "-p"], capture_output=True, check=False).stdout
        if b"libbarcode_label.so.1" in known:
            return
        environment = {key: value for key, value in self.environment.items() if key != "LD_LIBRARY_PATH"}
        result = self.run([*command, "qr", "A", "label.png"], environment)
        self.check(result.returncode > 0 and b"libbarcode_label.so.1" in result.stderr + result.stdout, result)

    def page(self, language, command):
        """The examples of docs/hosts.md: command(file) runs one, and a block ```text behind it is what it prints."""
        page = (self.source / "docs" / "hosts.md").read_text(encoding="utf-8")
        blocks = re.findall(r"^```(\w+)\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)
        unknown = {kind for kind, _ in blocks} - {"cpp", "java", "php", "ruby", "text"}
        self.check(not unknown, f"docs/hosts.md has blocks that nobody runs: {unknown}")
        count = 0
        for index, (kind, block) in enumerate(blocks):
            if kind != language:
                continue
            count += 1
            suffix = {"ruby": "rb"}.get(language, language)
            file = self.work / f"Example.{suffix}"
            file.write_text(block, encoding="utf-8")
            result = self.run(command(file))
            follows = blocks[index + 1] if index + 1 < len(blocks) else ("", "")
            expected = follows[1] if follows[0] == "text" else ""
            self.check(result.returncode == 0 and result.stdout.decode() == expected and not result.stderr, result)
            for made in re.findall(r"""["']((?:label|code39)\.svg)["']""", block):
                self.check(self.made(made).startswith(b"<"), f"no {made}")
        self.check(count > 0, f"docs/hosts.md has no example in {language}")

    # ---- The languages ----

    def c(self):
        label, library, *_ = self.programs
        self.labels([label], "label")
        self.library_draws([library], "library")

    def cpp(self):
        self.c()
        label, _, *compiler = self.programs
        result = self.run([label, "qr", "A", "label.png", "module=7", "caption=5 pieces", "show_text=true"])
        self.check(result.returncode == 1 and b"unknown_field show_text: " in result.stderr, result)
        result = self.run([label, "code39", "A", "label.png", "module=7", 'caption="5"', "show_text=true", "text_scale=1.5"])
        self.check(result.returncode == 0 and not result.stderr, result)
        usual = self.run([self.mkbarcode, "code39", "A", "-o", "usual.png", "--module", "7", "--caption", "5",
                          "--show-text", "--text-scale", "1.5"])
        self.check(usual.returncode == 0 and self.made("label.png") == self.made("usual.png"), usual)
        result = self.run([label, "qr", "A", "label.png", "quiet_zone=0"])
        self.check(result.returncode == 0 and b"label: warning quiet_zone: " in result.stderr, result)
        self.check(self.run([label, "qr", "A", "label.png", "module"]).returncode == 2, "no FIELD=VALUE")

        libraries = [f"-L{self.library}", "-lbarcode_label", "-lbarcode"]

        def compile_and_run(file):
            result = self.run([*compiler, "-std=c++17", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Werror",
                               f"-I{self.source / 'include'}", file, "-o", "example", *libraries])
            self.check(result.returncode == 0, result)
            return ["./example"]

        self.page("cpp", compile_and_run)

    def java(self):
        classes = self.work / "classes"
        sources = [*self.examples.glob("*.java"), *self.tests.glob("*.java")]
        result = self.run(["javac", "-Xlint:all", "-Werror", "-cp", JNA, "-d", classes, *sources])
        self.check(result.returncode == 0 and not result.stderr, result)
        java = ["java", "-Xmx2g", "-cp", f"{classes}:{JNA}"]
        self.labels([*java, "MakeLabel"], "MakeLabel")
        self.hostile([*java, "HostileTest"])

        def compile_and_run(file):
            result = self.run(["javac", "-Xlint:all", "-Werror", "-cp", f"{classes}:{JNA}", "-d", classes, file])
            self.check(result.returncode == 0, result)
            return [*java, "Example"]

        self.page("java", compile_and_run)
        self.without_library([*java, "MakeLabel"])

    def php(self):
        php = ["php", "-d", "ffi.enable=1", "-d", "memory_limit=1G", "-d", "error_reporting=-1", "-d", "display_errors=1"]
        command = [*php, self.examples / "make_label.php"]
        self.labels(command, "make_label.php")
        self.hostile([*php, self.tests / "hostile_test.php", self.examples])
        shutil.copy(self.examples / "Label.php", self.work)
        self.page("php", lambda file: [*php, file])
        self.without_library(command)

    def ruby(self):
        ruby = ["ruby", "-w"]
        command = [*ruby, self.examples / "make_label.rb"]
        self.labels(command, "make_label.rb")
        self.hostile([*ruby, self.tests / "hostile_test.rb", self.examples])
        shutil.copy(self.examples / "label.rb", self.work)
        self.page("ruby", lambda file: [*ruby, file])
        self.without_library(command)


def missing(language):
    """What the language lacks here, with the package that has it."""
    needed = {"java": {"javac": "default-jdk-headless", "java": "default-jdk-headless"}, "php": {"php": "php-cli"},
              "ruby": {"ruby": "ruby"}}.get(language, {})
    packages = {package for program, package in needed.items() if not shutil.which(program)}
    if language == "java" and not JNA.exists():
        packages.add("libjna-java")
    return sorted(packages)


def main():
    language, source, library, mkbarcode, work, *programs = sys.argv[1:]
    absent = missing(language)
    if absent:
        print(f"Skipped: the examples in {language} need {', '.join(absent)} (scripts/install-deps.sh --hosts)")
        return 1 if os.environ.get("BARCODE_REQUIRE_HOSTS") == "1" else SKIPPED
    shutil.rmtree(work, ignore_errors=True)
    pathlib.Path(work).mkdir(parents=True)
    examples = Examples(language, pathlib.Path(source), pathlib.Path(library), mkbarcode, pathlib.Path(work), programs)
    getattr(examples, language)()
    print(f"{examples.checks} checks")
    return 0 if examples.checks >= 30 else 1


sys.exit(main())
