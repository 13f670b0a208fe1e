#!/bin/sh
# Builds the wheel, with the label library inside, from build/portable.
#   python/build-wheel.sh DIR     DIR/libbarcode-VERSION-py3-none-manylinux_..._....whl
set -eu
if [ $# -ne 1 ]; then
  echo "Usage: python/build-wheel.sh DIR" >&2
  exit 2
fi
mkdir -p "$1"
target=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
library=build/portable/lib/libbarcode_label.so
if ! [ -f "$library" ]; then
  echo "missing: $library; run make portable" >&2
  exit 1
fi
SOURCE_DATE_EPOCH=$(scripts/source-date.sh)
export SOURCE_DATE_EPOCH

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
strip --strip-unneeded -o "$work/libbarcode_label.so" "$library"
scripts/static-notice.sh >"$work/NOTICE"
# The tools' words are read, not their translations.
LC_ALL=C objdump -p -T "$work/libbarcode_label.so" >"$work/symbols"
python3 python/build_wheel.py "$(scripts/version.sh)" "$work" "$target"
