"""Writes the wheel: a zip file of the package with its libraries, and what they say of themselves.

    build_wheel.py VERSION WORK DIR     called by build-wheel.sh

A build backend would name itself and its version in the wheel and decide about times, modes and order of files; here
the same sources make the same bytes. The names of the files in it follow the binary distribution format of PyPA.
"""

import base64
import hashlib
import os
import pathlib
import re
import sys
import time
import zipfile

HERE = pathlib.Path(__file__).resolve().parent
# All of them are of the C library.
ALLOWED_LIBRARIES = re.compile(r"(libc|libm|libdl|libpthread|librt)\.so\.\d+|ld-linux[\w-]*\.so\.\d+")

METADATA = """\
Metadata-Version: 2.1
Name: libbarcode
Version: {version}
Summary: Barcode labels that scan, as PNG, SVG or PDF
Author: The libbarcode authors
License: MIT
Keywords: barcode,label,qr,datamatrix,pdf417,gs1,ean,jan,code128,svg
Classifier: Intended Audience :: Developers
Classifier: License :: OSI Approved :: MIT License
Classifier: Operating System :: POSIX :: Linux
Classifier: Programming Language :: Python :: 3
Classifier: Programming Language :: Python :: 3 :: Only
Classifier: Topic :: Multimedia :: Graphics
Classifier: Topic :: Printing
Classifier: Typing :: Typed
Requires-Python: >=3.9
Description-Content-Type: text/markdown

{description}"""

WHEEL = """\
Wheel-Version: 1.0
Generator: libbarcode
Root-Is-Purelib: false
Tag: {tag}
"""


def needed_glibc(symbols):
    """The newest version of the C library that the libraries' symbols ask for; exits where one needs anything else."""
    foreign = [name for name in re.findall(r"^ *NEEDED +(\S+)$", symbols, re.MULTILINE)
               if not ALLOWED_LIBRARIES.fullmatch(name)]
    foreign += re.findall(r"\((?:GLIBCXX|CXXABI|GCC)_[\d.]+\)", symbols)
    if foreign:
        sys.exit(f"build_wheel: the libraries need {', '.join(sorted(set(foreign)))}")
    versions = re.findall(r"GLIBC_(\d+)\.(\d+)", symbols)
    if not versions:
        sys.exit("build_wheel: no versions of the C library among the symbols")
    return max((int(major), int(minor)) for major, minor in versions)


def record_line(name, content):
    digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
    return f"{name},sha256={digest},{len(content)}\n"


def write_zip(path, files):
    when = time.gmtime(max(int(os.environ["SOURCE_DATE_EPOCH"]), 315532800))  # zip files begin in 1980
    with zipfile.ZipFile(path, "w") as archive:
        for name, content in files.items():
            entry = zipfile.ZipInfo(name, when[:6])
            entry.create_system = 3  # the modes are Unix's
            entry.external_attr = (0o100755 if name.endswith(".so") else 0o100644) << 16
            archive.writestr(entry, content, zipfile.ZIP_DEFLATED, 9)


def main():
    version, work, target = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    symbols = (work / "symbols").read_text(encoding="utf-8", errors="replace")
    major, minor = needed_glibc(symbols)
    # Interpreters that cannot load the compiled module do without it: the wheel is for all of them.
    tag = f"py3-none-manylinux_{major}_{minor}_{os.uname().machine}"

    files = {f"libbarcode/{file.name}": file.read_bytes() for file in sorted((work / "libbarcode").iterdir())}
    about = f"libbarcode-{version}.dist-info"
    description = (HERE / "README.md").read_text(encoding="utf-8")
    files[f"{about}/licenses/LICENSE"] = (HERE.parent / "LICENSE").read_bytes()
    files[f"{about}/licenses/NOTICE"] = (work / "NOTICE").read_bytes()
    files[f"{about}/METADATA"] = METADATA.format(version=version, description=description).encode()
    files[f"{about}/WHEEL"] = WHEEL.format(tag=tag).encode()
    files[f"{about}/top_level.txt"] = b"libbarcode\n"
    record = "".join(record_line(name, content) for name, content in files.items())
    files[f"{about}/RECORD"] = f"{record}{about}/RECORD,,\n".encode()

    wheel = target / f"libbarcode-{version}-{tag}.whl"
    write_zip(wheel, files)
    print(wheel)


if __name__ == "__main__":
    main()
