"""The plain library: its 43 functions, Barcode, and quiet()."""

import concurrent.futures
import copy
import ctypes
import os
import pathlib
import pickle
import re
import shutil
import subprocess
import sys
from typing import Any, Callable, Iterator, List, Tuple

import pytest
from conftest import PACKAGES, SOURCE
from libbarcode import library
from libbarcode.library import Barcode, ClosedError, DrawError, Symbology, quiet

HEADER = (SOURCE / "include" / "barcode.h").read_text(encoding="utf-8")
TYPES = {"void": None, "int": ctypes.c_int, "double": ctypes.c_double, "const char*": ctypes.c_char_p,
         "BarcodeHandle": ctypes.c_void_p, "const unsigned char*": ctypes.c_void_p,
         "int*": ctypes.POINTER(ctypes.c_int)}


@pytest.fixture(autouse=True)
def silence() -> Iterator[None]:
    with quiet():
        yield


def run(code: str, **options: Any) -> "subprocess.CompletedProcess[bytes]":
    return subprocess.run([sys.executable, "-c", code], capture_output=True, check=False, timeout=150, **options)


def declarations() -> List[Tuple[str, str, List[str]]]:
    found = re.findall(r"^BARCODE_API ([\w ]+?\**) ?(barcode_\w+)\(([^)]*)\);", HEADER, re.MULTILINE)
    return [(name, result, [re.sub(r" ?\w+$", "", one.strip()) for one in arguments.split(",")])
            for result, name, arguments in found]


def test_prototypes_are_the_header_s() -> None:
    exported = (SOURCE / "tests" / "api" / "exported_symbols.txt").read_text().split()
    assert sorted(library.PROTOTYPES) == exported and len(exported) == 43
    expected = {name: (TYPES[result], tuple(TYPES[one] for one in arguments))
                for name, result, arguments in declarations()}
    assert library.PROTOTYPES == expected


def test_functions_take_what_they_take_in_c() -> None:
    for name, _, arguments in declarations():
        function = getattr(library, name)
        count = function.__code__.co_argcount
        assert count == len(arguments) - (name == "barcode_get_image_data"), name


def test_barcode_has_every_option() -> None:
    for name, _, arguments in declarations():
        if name.startswith("barcode_set_"):
            method = getattr(Barcode, name[len("barcode_"):])
            assert method.__code__.co_argcount == len(arguments), name


def test_numbers_are_the_header_s() -> None:
    numbers = {name: int(number) for name, number in re.findall(r"^  BARCODE_(\w+) = (\d+)", HEADER, re.MULTILINE)}
    assert {one.name: one.value for one in Symbology} == numbers


def test_png_and_data_uri() -> None:
    with Barcode(Symbology.CODE39) as barcode:
        barcode.draw("ABC-123", 300, 100)
        png = barcode.png()
        assert png[:4] == b"\x89PNG" and png[16:24] == (300).to_bytes(4, "big") + (100).to_bytes(4, "big")
        assert barcode.png() == png
        assert barcode.data_uri().startswith("data:image/png;base64,iVBOR")
    assert barcode.closed


def test_svg_and_options() -> None:
    with Barcode(Symbology.QR, format="svg") as barcode:
        barcode.set_error_correction_level("H")
        barcode.set_foreground_color(255, 0, 0)
        barcode.draw_square(b"hello", 200)
        assert barcode.svg().startswith("<svg ") or "<svg " in barcode.svg()[:200]
        high = barcode.svg()
        barcode.set_error_correction_level("L")
        barcode.draw("hello", 200, 200)
        assert barcode.svg() != high


def test_every_option_of_every_symbology() -> None:
    """Texts and numbers of any kind: options never fail."""
    for symbology in Symbology:
        with Barcode(symbology) as barcode:
            for name, _, arguments in declarations():
                if name.startswith("barcode_set_"):
                    values = {"int": 1, "double": 1.0, "const char*": "AUTO"}
                    getattr(barcode, name[len("barcode_"):])(*(values[kind] for kind in arguments[1:]))


def test_draws_of_their_own() -> None:
    with Barcode(Symbology.GS1_128) as barcode:
        barcode.draw_convenience("9191234512345678901234567890122611300012300", 600, 200)
        assert barcode.png()
    with Barcode(Symbology.GS1_DATABAR_EXPANDED) as barcode:
        barcode.draw_stacked("0190012345678908310300175015261231", 300, 200)
        assert barcode.png()
    with Barcode(Symbology.YUBIN_CUSTOMER) as barcode:
        barcode.draw_yubin("26300233-20-12", 40)
        assert barcode.png()


def test_failures() -> None:
    with Barcode(Symbology.JAN13) as barcode:
        for wrong in (barcode.png, barcode.svg):
            with pytest.raises(DrawError):
                wrong()
        draws: List[Callable[[], None]] = [
            lambda: barcode.draw("x", 100, 100), lambda: barcode.draw("490123456789", -1, 5),
            lambda: barcode.draw_square("490123456789", 100), lambda: barcode.draw_yubin("1", 10)]
        for draw in draws:
            with pytest.raises(DrawError):
                draw()
        barcode.draw("490123456789", 200, 100)
        assert barcode.png()


def test_use_after_close() -> None:
    barcode = Barcode(Symbology.QR)
    barcode.close()
    barcode.close()
    uses: List[Callable[[], object]] = [
        lambda: barcode.draw("x", 10, 10), barcode.png, barcode.svg, barcode.data_uri, lambda: barcode.set_version(3),
        lambda: barcode.__enter__(), lambda: barcode.handle]
    for use in uses:
        with pytest.raises(ClosedError, match="closed"):
            use()


def test_use_after_destroy() -> None:
    """A handle that is destroyed counts as NULL, which is harmless."""
    handle = library.barcode_create(Symbology.QR)
    assert handle is not None and library.barcode_draw_2d(handle, "x", 100) == 1
    library.barcode_destroy(handle)
    library.barcode_destroy(handle)
    assert library.barcode_draw_2d(handle, "x", 100) == 0 and library.barcode_get_image_data(handle) is None
    assert library.barcode_get_svg(handle) == b"" and library.barcode_is_svg_output(handle) == 0
    library.barcode_set_version(handle, 3)
    with Barcode(Symbology.QR) as barcode:
        library.barcode_destroy(barcode.handle)
        with pytest.raises(DrawError):
            barcode.draw("x", 10, 10)


def test_null() -> None:
    """As in C."""
    values = {"int": 1, "double": 1.0, "const char*": None, "BarcodeHandle": None}
    for name, result, arguments in declarations():
        if name == "barcode_get_image_data":
            assert library.barcode_get_image_data(None) is None
        elif name != "barcode_create":
            returned = getattr(library, name)(*(values[kind] for kind in arguments))
            assert returned == {"void": None, "int": 0, "const char*": b""}[result], name
    assert library.barcode_create(19) is library.barcode_create(-1) is None
    assert library.barcode_calculate_check_digit_14("0491234567890") == b"4"


@pytest.mark.parametrize("wrong", [5, "handle", 5.5, [], ctypes.c_void_p(8)])
def test_wrong_handles(wrong: Any) -> None:
    calls: List[Callable[[], object]] = [
        lambda: library.barcode_draw_1d(wrong, "x", 1, 1), lambda: library.barcode_destroy(wrong),
        lambda: library.barcode_get_image_data(wrong)]
    for call in calls:
        with pytest.raises(TypeError, match="a handle of barcode_create"):
            call()


def test_wrong_values() -> None:
    with pytest.raises(ValueError, match="no symbology 99"):
        Barcode(99)
    wrong: Any
    with Barcode(Symbology.CODE39) as barcode:
        for wrong in (None, 5, ["x"]):
            with pytest.raises(TypeError):
                barcode.draw(wrong, 100, 100)
            with pytest.raises(TypeError):
                barcode.set_output_format(wrong)
        for wrong in ("A\0B", b"A\0B", "\ud800"):
            with pytest.raises(ValueError):
                barcode.draw(wrong, 100, 100)
        for wrong in (None, "1", 1.5):
            with pytest.raises(TypeError):
                barcode.draw("A", wrong, 100)
        for wrong in (2**31, -2**31 - 1, 10**5000):
            with pytest.raises(OverflowError):
                barcode.draw("A", wrong, 100)
        for wrong in ("x", None, 1j):
            with pytest.raises(TypeError):
                barcode.set_text_gap(wrong)
        for scale in (float("nan"), float("inf"), -1e308):
            barcode.set_text_font_scale(scale)
            barcode.draw("A", 100, 100)
    for wrong in (None, "qr", 1.5):
        with pytest.raises(TypeError):
            Barcode(wrong)


def test_64_threads() -> None:
    """Each with a barcode of its own, and all with one."""
    def own(number: int) -> bytes:
        with Barcode(Symbology.QR) as barcode:
            barcode.draw_square(str(number % 4), 100)
            return barcode.png()

    shared = Barcode(Symbology.CODE39)

    def common(number: int) -> bytes:
        try:
            shared.draw("SAME", 200, 80)
            return shared.png()
        except (ClosedError, DrawError):
            return b""

    with concurrent.futures.ThreadPoolExecutor(64) as pool:
        assert len(set(pool.map(own, range(300)))) == 4
        pictures = [pool.submit(common, number) for number in range(300)]
        pictures[200].result()
        shared.close()
        assert len({picture.result() for picture in pictures} - {b""}) == 1


INTERRUPTED = ("import signal, sys, threading\n"
               "from libbarcode import library\n"
               "from libbarcode.library import Barcode, Symbology, quiet\n"
               "def interrupt(name, act):\n"
               "    'Has act run as a signal handler right after the function in C, before its result is looked at.'\n"
               "    function = library._function(name)\n"
               "    def then(*arguments):\n"
               "        result = function(*arguments)\n"
               "        signal.raise_signal(signal.SIGUSR1)\n"
               "        return result\n"
               "    library._functions[name] = then\n"
               "    def handler(*_):\n"
               "        library._functions[name] = function\n"
               "        act()\n"
               "    signal.signal(signal.SIGUSR1, handler)\n")


@pytest.mark.parametrize("act", ["barcode.close()", "library.barcode_destroy(handle)"])
def test_destroyed_by_a_signal_handler_in_a_call(act: str) -> None:
    """The picture is that of before, and then the barcode is gone."""
    code = (INTERRUPTED + "with quiet():\n"
            "    barcode = Barcode(Symbology.CODE128)\n"
            "    handle = barcode.handle\n"
            "    barcode.draw('hello', 3000, 3000)\n"
            "    png = barcode.png()\n"
            f"    interrupt('barcode_get_image_data', lambda: {act})\n"
            "    assert barcode.png() == png\n"
            "    assert not handle._finalizer.alive and library.barcode_get_image_data(handle) is None\n")
    result = run(code)
    assert result.returncode == 0, result.stderr.decode()


def test_used_by_a_signal_handler_in_a_call() -> None:
    code = (INTERRUPTED + "refused = []\n"
            "def use():\n"
            "    for used in (lambda: barcode.draw('x', 9, 9), barcode.png, lambda: barcode.set_show_text(False)):\n"
            "        try: used()\n"
            "        except RuntimeError as error: refused.append(str(error))\n"
            "    library.barcode_calculate_check_digit_14('0491234567890')\n"
            "with quiet(), Barcode(Symbology.CODE128) as barcode:\n"
            "    barcode.draw('hello', 300, 100)\n"
            "    png = barcode.png()\n"
            "    interrupt('barcode_get_image_data', use)\n"
            "    assert barcode.png() == png == barcode.png()\n"
            "    interrupt('barcode_calculate_check_digit_14', use)\n"
            "    assert library.barcode_calculate_check_digit_14('0491234567890') == b'4'\n"
            "assert refused == ['the handle is in use by the call that was interrupted'] * 3, refused\n")
    result = run(code)
    assert result.returncode == 0, result.stderr.decode()


def test_handles_cannot_be_made_or_copied() -> None:
    """Two of one pointer would free it twice."""
    with pytest.raises(TypeError, match="made by barcode_create"):
        library.Handle()
    with pytest.raises(TypeError):
        library.Handle(16)  # type: ignore[call-arg]
    with Barcode(Symbology.QR) as barcode:
        copies: List[Callable[[Any], object]] = [copy.copy, copy.deepcopy, pickle.dumps]
        for make in copies:
            with pytest.raises(TypeError, match="cannot be copied"):
                make(barcode.handle)


def test_fork_while_another_thread_calls() -> None:
    """The child's calls do not wait for a thread that it has not got; what that thread was drawing is lost to it."""
    code = ("import os, threading\n"
            "from libbarcode import library\n"
            "from libbarcode.library import Barcode, Symbology, quiet\n"
            "barcode, other = Barcode(Symbology.CODE128), Barcode(Symbology.QR)\n"
            "library.barcode_calculate_check_digit_14('0491234567890')\n"
            "inside, leave = threading.Event(), threading.Event()\n"
            "def hold():\n"
            "    'Is in all three locks, as a thread is in the middle of calls.'\n"
            "    with library._check_digit_lock, barcode.handle._in_use(), other.handle._lock:\n"
            "        inside.set(); leave.wait()\n"
            "thread = threading.Thread(target=hold); thread.start(); inside.wait()\n"
            "child = os.fork()\n"
            "if child == 0:\n"
            "    good = library.barcode_calculate_check_digit_14('0491234567890') == b'4'\n"
            "    with quiet(): other.draw('x', 100, 100)\n"
            "    good = good and other.png()[:4] == b'\\x89PNG' and library.barcode_get_svg(barcode.handle) == b''\n"
            "    barcode.close()\n"
            "    os._exit(7 if good else 1)\n"
            "status = os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])\n"
            "leave.set(); thread.join()\n"
            "with quiet(): barcode.draw('x', 100, 100)\n"
            "os._exit(status)\n")
    assert run(code).returncode == 7


def test_forgotten_handles_are_freed() -> None:
    code = ("import re\n"
            "from libbarcode.library import Barcode, Symbology, barcode_create, barcode_draw_1d, quiet\n"
            "def draw(count):\n"
            "    for _ in range(count):\n"
            "        Barcode(Symbology.CODE39).draw('A', 400, 400)\n"
            "        barcode_draw_1d(barcode_create(2), b'A', 400, 400)\n"
            "    return int(re.search(r'VmHWM:\\s+(\\d+)', open('/proc/self/status').read())[1])\n"
            "with quiet(): few, many = draw(30), draw(300)\n"
            "print(many - few)\n")
    assert int(run(code).stdout) < 20_000  # each has 640 kB


def test_missing_library(tmp_path: pathlib.Path) -> None:
    """The module is imported all the same; the first use says what to install."""
    code = ("import libbarcode, libbarcode.library as library\n"
            "def told(use):\n"
            "    try: use()\n"
            "    except libbarcode.LibraryNotFoundError as error:\n"
            "        assert isinstance(error, ImportError)\n"
            "        print(error)\n"
            "told(lambda: library.Barcode(0)); told(lambda: library.barcode_create(0))\n"
            "told(lambda: libbarcode.label('qr', 'x')); told(lambda: libbarcode.labels([])); told(libbarcode.types)\n"
            "told(lambda: libbarcode.version)\n"
            "with library.quiet(): pass\n"
            "exec('from libbarcode import *')\n"
            "assert not hasattr(libbarcode, '__version__') and not hasattr(libbarcode, 'nothing')\n")
    bare = {"PYTHONPATH": str(PACKAGES)}
    result = run(code, env=bare)
    lines = result.stdout.decode().splitlines()
    assert result.returncode == 0 and len(lines) == 6, result.stderr.decode()
    assert all(line.startswith("libbarcode.so is not installed; install Debian's libbarcode1") for line in lines[:2])
    assert all(line.startswith("libbarcode_label.so is not installed; install the wheel") for line in lines[2:])


def test_broken_library_beside_the_package(tmp_path: pathlib.Path) -> None:
    """It is not passed over for the system's."""
    package = tmp_path / "libbarcode"
    shutil.copytree(PACKAGES / "libbarcode", package)
    (package / "libbarcode_label.so").write_text("no library")
    result = run("import libbarcode; libbarcode.label('qr', 'x')", cwd=tmp_path,
                 env={**os.environ, "PYTHONPATH": str(tmp_path)})
    assert b"LibraryNotFoundError: libbarcode_label.so does not load;" in result.stderr


@pytest.mark.parametrize("stem, other, use", [
    ("libbarcode_label", "libbarcode", "libbarcode.label('qr', 'x')"),
    ("libbarcode", "libbarcode_label", "libbarcode.library.Barcode(0)")])
def test_another_library_under_the_name(stem: str, other: str, use: str, tmp_path: pathlib.Path) -> None:
    shutil.copytree(PACKAGES / "libbarcode", tmp_path / "libbarcode")
    folders = os.environ["LD_LIBRARY_PATH"].split(":")
    there = next(file for folder in folders for file in pathlib.Path(folder or ".").glob(f"{other}.so.1"))
    shutil.copy(there, tmp_path / "libbarcode" / f"{stem}.so")
    result = run(f"import libbarcode, libbarcode.library; {use}", cwd=tmp_path,
                 env={**os.environ, "PYTHONPATH": str(tmp_path)})
    assert f"LibraryNotFoundError: {stem}.so does not load;".encode() in result.stderr


# ---- quiet() -------------------------------------------------------------------------------------------------------

QUIET_HEAD = ("import ctypes, os, sys, threading\n"
              "from libbarcode.library import Barcode, DrawError, Symbology, quiet\n"
              "libc = ctypes.CDLL(None)\n"
              "def draw():\n"
              "    with Barcode(Symbology.CODE39) as barcode:\n"
              "        barcode.draw('A', 100, 50)\n"
              "        try: barcode.draw('', 100, 50)\n"
              "        except DrawError: pass\n")


def streams(code: str, **options: Any) -> Tuple[List[str], List[str]]:
    result = run(QUIET_HEAD + code, **options)
    assert result.returncode == 0, result.stderr.decode()
    return result.stdout.decode().splitlines(), result.stderr.decode().splitlines()


def test_library_speaks_without_quiet() -> None:
    out, err = streams("draw()")
    assert len(out) > 2 and err == ["[Code39] Empty string"]


def test_quiet() -> None:
    assert streams("with quiet(): draw()") == ([], [])


def test_quiet_keeps_what_was_printed_before_and_after() -> None:
    """By Python and by C, whose buffers are not the same."""
    code = ("print('before')\n"
            "libc.puts(b'before in C')\n"
            "with quiet():\n"
            "    libc.puts(b'lost')\n"
            "    draw()\n"
            "libc.puts(b'after in C'); libc.fflush(None)\n"
            "print('after', flush=True); print('error', file=sys.stderr)\n")
    assert streams(code) == (["before", "before in C", "after in C", "after"], ["error"])


def test_quiet_within_quiet_and_exceptions() -> None:
    code = ("try:\n"
            "    with quiet():\n"
            "        with quiet(): draw()\n"
            "        draw()\n"
            "        raise KeyError\n"
            "except KeyError: os.write(1, b'loud\\n')\n"
            "@quiet()\n"
            "def silent(): draw()\n"
            "silent(); silent(); os.write(2, b'loud\\n')\n")
    assert streams(code) == (["loud"], ["loud"])


def test_quiet_on_many_threads() -> None:
    code = ("def work():\n"
            "    for _ in range(20):\n"
            "        with quiet(): draw()\n"
            "threads = [threading.Thread(target=work) for _ in range(64)]\n"
            "before = len(os.listdir('/proc/self/fd'))\n"
            "for thread in threads: thread.start()\n"
            "for thread in threads: thread.join()\n"
            "os.write(1, b'loud\\n'); os.write(2, b'loud\\n')\n"
            "assert len(os.listdir('/proc/self/fd')) == before\n")
    assert streams(code) == (["loud"], ["loud"])


def test_quiet_with_closed_streams() -> None:
    """As a daemon has them."""
    code = ("os.close(1); os.close(2)\n"
            "with quiet(): draw()\n"
            "for closed in (1, 2):\n"
            "    try: os.fstat(closed)\n"
            "    except OSError: continue\n"
            "    os._exit(5)\n"
            "os._exit(0)\n")
    assert streams(code) == ([], [])


def test_quiet_and_fork() -> None:
    """A child is quiet where its thread was, and speaks where another's was."""
    code = ("entered, leave = threading.Event(), threading.Event()\n"
            "def other():\n"
            "    with quiet(): entered.set(); leave.wait()\n"
            "thread = threading.Thread(target=other); thread.start(); entered.wait()\n"
            "if os.fork() == 0: os.write(1, b'child\\n'); os._exit(0)\n"
            "os.wait(); leave.set(); thread.join()\n"
            "with quiet():\n"
            "    if os.fork() == 0: os.write(1, b'silent child\\n'); os._exit(0)\n"
            "    os.wait()\n"
            "os.write(1, b'parent\\n')\n")
    assert streams(code) == (["child", "parent"], [])


def test_quiet_and_what_python_prints_inside() -> None:
    """It stands in Python's buffer when the block ends."""
    code = ("print('a')\n"
            "with quiet(): print('inside'); sys.stderr.write('inside')\n"
            "print('b')\n"
            "class Broken:\n"
            "    def flush(self): raise RuntimeError\n"
            "sys.stderr = Broken()\n"
            "with quiet(): draw()\n"
            "sys.stderr = sys.__stderr__; print('c')\n")
    assert streams(code) == (["a", "b", "c"], [])


def test_quiet_block_of_a_thread_that_is_left_in_a_child() -> None:
    code = ("import contextlib\n"
            "block = contextlib.ExitStack()\n"
            "thread = threading.Thread(target=lambda: block.enter_context(quiet())); thread.start(); thread.join()\n"
            "if os.fork() == 0: block.close(); os.write(1, b'child\\n'); os._exit(0)\n"
            "os.wait(); block.close(); os.write(1, b'parent\\n')\n")
    assert streams(code) == (["child", "parent"], [])


def test_quiet_with_a_stream_closed_before_and_inside() -> None:
    code = ("os.close(2)\n"
            "with quiet(): os.close(2)\n"
            "os.write(1, b'loud\\n')\n")
    assert streams(code) == (["loud"], [])


def test_quiet_without_descriptors_to_spare() -> None:
    code = ("import resource\n"
            "resource.setrlimit(resource.RLIMIT_NOFILE, (3, 3))\n"
            "try:\n"
            "    with quiet(): os._exit(3)\n"
            "except OSError: os.write(1, b'loud\\n'); os.write(2, b'loud\\n')\n")
    assert streams(code) == (["loud"], ["loud"])
