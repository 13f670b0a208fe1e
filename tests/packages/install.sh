#!/bin/sh
# Installs a build tree into /usr/local of a bare system without a package, as make install does: the linker finds the
# libraries at once, and after the removal nothing is left.
#   tests/packages/install.sh SOURCES BUILD BASE_TARBALL ARCHIVES     as root; BUILD is the build tree of SOURCES
set -eu
if [ $# -ne 4 ]; then
  echo "Usage: tests/packages/install.sh SOURCES BUILD BASE_TARBALL ARCHIVES" >&2
  exit 2
fi
mkdir -p "$4"
sources=$(realpath "$1") build=$(realpath "$2") base=$(realpath "$3") archives=$(realpath "$4")
cd "$(dirname "$0")"
. ./system.sh

install_packages cmake gcc pkg-config libpng16-16
# A build tree knows its place.
mkdir -p "$root$sources"
cp -R "$sources/." "$root$sources/"
all_files | grep -v "^\.$sources/" >"$root/tmp/before"
quietly "$sources/scripts/install.sh $build /usr/local"
! grep "Programs find" "$root/tmp/log" || fail "asks for what it has done"
in_root ldconfig -p >"$root/tmp/cache"
grep -q "libbarcode_label\.so\.1 .*/usr/local/lib" "$root/tmp/cache" || fail "the linker was not told"
python3 ./examples.py "$sources/docs/labels.md" "$root/root/labels"
quietly "cc labels/label-c.c \$(pkg-config --cflags --libs barcode-label) -o example; ./example"
quietly "mkbarcode code39 ABC-123 -o label.png"
quietly "$sources/scripts/install.sh --uninstall $build /usr/local"
in_root ldconfig -p >"$root/tmp/cache"
! grep libbarcode "$root/tmp/cache" || fail "the linker still knows the libraries"
all_files | grep -v "^\.$sources/" >"$root/tmp/after"
diff "$root/tmp/before" "$root/tmp/after" || fail "other files than before the installation"
echo "install: installed, used and removed"
