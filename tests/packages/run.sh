#!/bin/sh
# Tests the built packages: what lintian says of them, installed in bare systems, and built once more from the same
# commit elsewhere.
#   tests/packages/run.sh DIR     as root; DIR holds the packages, what is kept for the next time lies beside it
set -eu
if [ $# -ne 1 ] || ! [ -d "$1" ]; then
  echo "Usage: tests/packages/run.sh DIR, with the packages in it: make packages" >&2
  exit 2
fi
if [ "$(id -u)" -ne 0 ]; then
  echo "tests/packages/run.sh makes systems of its own and changes into them: it has to be run by root" >&2
  exit 1
fi
packages=$(cd "$1" && pwd)
cd "$(dirname "$0")"
kept=$packages-test
mkdir -p "$kept"

# step SCRIPT ARGUMENT...: runs it, and says how long it took.
step() {
  began=$(date +%s)
  "$@"
  echo "tests/packages: $1 took $(($(date +%s) - began)) s"
}

# lintian wants no root, but finds the same.
step lintian --allow-root --fail-on error,warning --info "$packages"/*.changes
step ./bare_system.sh "$kept/debian12.tar"
step ./debian.sh "$packages" "$kept/debian12.tar" "$kept/archives"
step ./wheel.sh "$packages" "$kept/debian12.tar"
step ./npm.sh "$packages"
step ./built_twice.sh "$packages" "$kept/another-place/elsewhere"
# The second build serves as one without packages.
unpacked=build/deb/libbarcode-$(../../scripts/version.sh)
for sources in "$kept"/another-place/elsewhere/*/"$unpacked"; do
  step ./install.sh "$sources" "$sources"/obj-* "$kept/debian12.tar" "$kept/archives"
done
