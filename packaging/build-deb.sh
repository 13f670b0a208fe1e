#!/bin/sh
# Builds the Debian packages from the source tarball in DIR, which scripts/dist.sh has made there, unpacked in build/deb/,
# and leaves them in DIR.
#   packaging/build-deb.sh DIR
set -eu
if [ $# -ne 1 ]; then
  echo "Usage: packaging/build-deb.sh DIR" >&2
  exit 2
fi
directory=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
version=$(scripts/version.sh)
SOURCE_DATE_EPOCH=$(scripts/source-date.sh)
export SOURCE_DATE_EPOCH

rm -rf build/deb
mkdir -p build/deb
tar -xzf "$directory/libbarcode-$version.tar.gz" -C build/deb
cd "build/deb/libbarcode-$version"
cp -R packaging/debian debian

# The changelog's newest release, as Debian writes it.
{
  echo "libbarcode ($version) bookworm; urgency=medium"
  echo
  awk '/^## / { if (++release == 2) exit; next }
       /^- / { if (item != "") print item; item = substr($0, 3); next }
       /^  / { item = item " " substr($0, 3) }
       END { print item }' CHANGELOG.md | sed 's/\[\([^]]*\)\]([^)]*)/\1/g' |
    while read -r item; do
      echo "$item" | fold -s -w 74 | sed -e '1s/^/  * /' -e '2,$s/^/    /' -e 's/ *$//'
    done
  echo
  echo " -- $(sed -n 's/^Maintainer: //p' debian/control)  $(LC_ALL=C date -u -R -d "@$SOURCE_DATE_EPOCH")"
} >debian/changelog

DEB_BUILD_OPTIONS="terse ${DEB_BUILD_OPTIONS:-}" dpkg-buildpackage --build=binary --no-sign
cd ..
mv ./*.deb ./*.buildinfo ./*.changes "$directory"
