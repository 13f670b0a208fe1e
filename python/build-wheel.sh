#!/bin/sh
# Builds the wheel, with the label library inside.
#   python/build-wheel.sh DIR     DIR/libbarcode-VERSION-py3-none-manylinux_..._....whl; needs build/portable (make portable)
set -eu
if [ $# -ne 1 ]; then
  echo "Usage: python/build-wheel.sh DIR" >&2
  exit 2
fi
mkdir -p "$1"
target=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
SOURCE_DATE_EPOCH=$(scripts/source-date.sh)
export SOURCE_DATE_EPOCH

cmake --preset portable -DBARCODE_BUILD_PYTHON=ON
cmake --build --preset portable --target barcode_label barcode_python_package

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -R build/portable/python/libbarcode "$work/libbarcode"
cp -L build/portable/lib/libbarcode_label.so "$work/libbarcode/"
strip --strip-unneeded "$work"/libbarcode/*.so
scripts/static-notice.sh >"$work/NOTICE"
# The tools' words are read, not their translations.
LC_ALL=C objdump -p -T "$work"/libbarcode/*.so >"$work/symbols"
python3 python/build_wheel.py "$(scripts/version.sh)" "$work" "$target"
