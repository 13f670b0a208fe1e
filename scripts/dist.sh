#!/bin/sh
# Makes DIR/libbarcode-VERSION.tar.gz, the sources that git tracks as they lie here. MANIFEST, the list of them with their
# date, is added: from it an unpacked tarball makes the same tarball again, byte for byte, without git.
#   scripts/dist.sh DIR
set -eu
if [ $# -ne 1 ]; then
  echo "Usage: scripts/dist.sh DIR" >&2
  exit 2
fi
mkdir -p "$1"
directory=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
name=libbarcode-$(scripts/version.sh)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if [ -e .git ] && command -v git >/dev/null; then
  date=$(scripts/source-date.sh)
  git -c core.quotePath=off ls-files >"$work/tracked"
  echo "# The sources of $name, of $date seconds after 1970." >"$work/MANIFEST"
  LC_ALL=C sort "$work/tracked" >>"$work/MANIFEST"
elif [ -e MANIFEST ]; then
  date=$(sed -n '1s/^.* of \([0-9]*\) seconds after 1970\.$/\1/p' MANIFEST | grep .)
  cp MANIFEST "$work/MANIFEST"
else
  echo "scripts/dist.sh: neither git nor a MANIFEST tells which files here are the sources" >&2
  exit 1
fi

# Of a file's mode only is kept whether it may be executed.
sed 1d "$work/MANIFEST" >"$work/files"
tar -cf "$work/$name.tar" --format=ustar --mtime="@$date" --owner=0 --group=0 --numeric-owner --mode=u=rwX,go=rX \
  --transform="s,^,$name/,S" --no-recursion --verbatim-files-from -T "$work/files" -C "$work" MANIFEST
gzip -9n "$work/$name.tar"
mv "$work/$name.tar.gz" "$directory/$name.tar.gz"
echo "$directory/$name.tar.gz"
