#!/bin/sh
# Installs the Debian packages in a bare system, each with no more than it needs, then over older ones; runs there what
# the manuals show; and purges them, after which nothing of theirs is left.
#   tests/packages/debian.sh DIR BASE_TARBALL ARCHIVES     as root; ARCHIVES keeps what apt has fetched
set -eu
if [ $# -ne 3 ]; then
  echo "Usage: tests/packages/debian.sh DIR BASE_TARBALL ARCHIVES" >&2
  exit 2
fi
mkdir -p "$3"
packages=$(realpath "$1") base=$(realpath "$2") archives=$(realpath "$3")
cd "$(dirname "$0")"
source=$(realpath ../..)
version=$("$source/scripts/version.sh")
names="libbarcode1 libbarcode-label1 libbarcode-dev mkbarcode python3-libbarcode"

. ./system.sh

# example NAME COMMAND [FILES]: in a folder of its own, so that what is there afterwards is what it has written. Times of
# files are too coarse to tell it: a label is drawn within one tick of their clock.
example() {
  mkdir "$root/root/example"
  shell "cd example; $2"
  [ -n "$(find "$root/root/example" -type f -size +0 -name "${3:-*}")" ] || fail "$1 has written nothing"
  rm -r "$root/root/example"
}

picture() {
  head -c 4 "$root/root/$1" | grep -qa "$2" || fail "$1 is no picture"
  rm "$root/root/$1"
}

mkdir -p "$root/root/build/packages" "$root/tmp/older"
cp "$packages"/*.deb "$root/root/build/packages/"

# The same packages with a lower version and a file that the new ones do not have.
for name in $names; do
  work=$root/tmp/work
  set -- "$packages/${name}"_*.deb
  [ $# -eq 1 ] && [ -e "$1" ] || fail "there is not one package $name, but: $*"
  dpkg-deb -R "$1" "$work"
  sed -i -E -e "s/^Version: .*/Version: 0~$version/" -e '/^(Depends|Recommends|Suggests):/s/(barcode[a-z0-9-]* \(>?= )/\10~/g' \
    "$work/DEBIAN/control"
  mkdir -p "$work/usr/share/doc/$name/older"
  touch "$work/usr/share/doc/$name/older/file"
  dpkg-deb --root-owner-group -b "$work" "$root/tmp/older/" >/dev/null
  rm -rf "$work"
done

echo "== mkbarcode alone"
install_packages --no-install-recommends './build/packages/mkbarcode_*.deb'
shell "mkbarcode code39 ABC-123 -o label.png"
picture label.png PNG
! shell "mkbarcode library code39 ABC-123 -o symbol.png" 2>"$root/tmp/errors" ||
  fail "mkbarcode library draws without the library"
grep -q "^mkbarcode: cannot load the library.*libbarcode.so.1" "$root/tmp/errors" || fail "$(cat "$root/tmp/errors")"

echo "== Python with the label library alone"
install_packages --no-install-recommends './build/packages/libbarcode-label1_*.deb' \
  './build/packages/python3-libbarcode_*.deb'
shell "python3 -W error -c 'import libbarcode, libbarcode._speedups
libbarcode.label(\"qr\", \"hello\").save(\"label.png\")'"
picture label.png PNG
! shell "python3 -c 'import libbarcode.library
libbarcode.library.Barcode(0)'" 2>"$root/tmp/errors" || fail "libbarcode.library works without the library"
tail -n 1 "$root/tmp/errors" | grep "libbarcode\.so" || fail "$(cat "$root/tmp/errors")"
quietly "apt-get purge -q mkbarcode libbarcode-label1 python3-libbarcode"

echo "== What the packages need, before they come"
# shellcheck disable=SC2046  # a list of words
install_packages $(shell "apt-get install -s -q ./build/packages/*.deb" | sed -n 's/^Inst \([^ ]*\) .*/\1/p' |
  grep -vxF "$(printf '%s\n' $names)")
all_files >"$root/tmp/before"

echo "== Older packages, upgraded by these"
install_packages '/tmp/older/*.deb'
python3 ./examples.py "$source/docs/packages.md" "$root/root/manual"
quietly ". ./manual/debian.sh"
for name in $names; do
  state=$(in_root dpkg-query -W -f '${db:Status-Abbrev} ${Version}' "$name")
  [ "$state" = "ii  $version" ] || fail "$name is in state $state"
  [ ! -e "$root/usr/share/doc/$name/older" ] || fail "the older $name has left its file"
done
in_root ldconfig -p >"$root/tmp/cache"
grep -q "libbarcode\.so\.1 " "$root/tmp/cache" || fail "the linker does not know libbarcode.so.1"
grep -q "libbarcode_label\.so\.1 " "$root/tmp/cache" || fail "the linker does not know libbarcode_label.so.1"

echo "== The examples, with nothing else"
python3 ./examples.py "$source/README.md" "$root/root/readme"
python3 ./examples.py "$source/docs/labels.md" "$root/root/labels"
run=0
for example in "$root"/root/readme/*.sh "$root"/root/readme/*.py; do
  [ -e "$example" ] || continue
  run=$((run + 1))
  example=${example#"$root"}
  case $example in
    *.sh) example "$example" ". $example" ;;
    *.py) example "$example" "python3 -W error $example" >/dev/null ;;
  esac
done
[ $run -gt 0 ] || fail "README.md has no examples in sh or Python"
shell "mkbarcode library code39 ABC-123 --size 300x100 -o symbol.png"
picture symbol.png PNG
shell "printf 'type,text\ncode39,ABC-123\nqr,hello\n' | mkbarcode batch - --input-format csv -o labels.tar"
[ "$(tar -tf "$root/root/labels.tar" | grep -c png)" -eq 2 ] || fail "labels.tar does not hold two labels"
shell "mkbarcode sheet - -o sheet.pdf --page A4 --grid 3x7 <<'END'
{\"type\": \"qr\", \"text\": \"hello\"}
END"
picture sheet.pdf PDF
for page in bash-completion/completions/mkbarcode zsh/vendor-completions/_mkbarcode \
  fish/vendor_completions.d/mkbarcode.fish man/man1/mkbarcode.1.gz; do
  [ -s "$root/usr/share/$page" ] || fail "$page is not installed"
done

echo "== Purged"
purge() {
  quietly "apt-get purge -q $names"
  rm -rf "$root/root/host"
  in_root dpkg -l >"$root/tmp/known"
  ! grep barcode "$root/tmp/known" || fail "dpkg still knows these packages"
  in_root ldconfig -p >"$root/tmp/cache"
  ! grep libbarcode "$root/tmp/cache" || fail "the linker still knows these libraries"
  left=$(find "$root" -xdev \( -path "$root/tmp" -o -path "$root/root" -o -path "$root/var/cache/apt" \) -prune -o \
    -name '*barcode*' -print)
  [ -z "$left" ] || fail "purged, and still there: $left"
}
purge
all_files >"$root/tmp/after"
diff "$root/tmp/before" "$root/tmp/after" || fail "other files than before the installation"

echo "== Installed again, with the compiler that the manual names"
quietly ". ./manual/debian.sh; . ./manual/debian-c.sh"
run=0
for example in "$root"/root/readme/*.c "$root"/root/labels/*.c; do
  [ -e "$example" ] || continue
  run=$((run + 1))
  module=barcode
  ! grep -q "barcode_label\.h" "$example" || module=barcode-label
  example=${example#"$root"}
  example "$example" \
    "cc -Wall -Wextra -Werror $example \$(pkg-config --cflags --libs $module) -o example; ./example" '*.png' >/dev/null
done
[ $run -gt 0 ] || fail "the manuals have no examples in C"

echo "== CMake"
cp -R "$source/tests/install" "$root/root/install"
install_packages cmake make
quietly "cmake -S install/by_package -B host -DREQUEST=$version -DVERSION=$version -DLABEL=ON -DLABEL_VERSION=$version
cmake --build host
host/consumer
host/consumer_label"

purge
echo "debian: installed, upgraded, used and purged"
