#!/bin/sh
# Packs the package for Node, with the label library inside.
#   node/build-tarball.sh DIR     DIR/libbarcode-VERSION.tgz; needs build/portable (make portable)
set -eu
cd "$(dirname "$0")/.."
mkdir -p "$1"
target=$(cd "$1" && pwd)
if ! [ -d node/node_modules/node-api-headers ]; then
  echo "missing: node/node_modules/; run make deps-packages" >&2
  exit 1
fi
SOURCE_DATE_EPOCH=$(scripts/source-date.sh)
export SOURCE_DATE_EPOCH

cmake --preset portable -DBARCODE_BUILD_NODE=ON
cmake --build --preset portable --target barcode_node_package

# In the build tree the library is a link, and npm packs no links.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -rL build/portable/node/node_modules/libbarcode "$work/package"
strip --strip-unneeded "$work"/package/native/*
scripts/static-notice.sh >"$work/package/NOTICE"
find "$work/package" -type d -exec chmod 755 {} +
find "$work/package" -type f -exec chmod 644 {} +
# npm takes the newest format of tar archives and sets all times to one date; nothing of this machine is left.
(cd "$work/package" && npm pack --silent --ignore-scripts --pack-destination "$target")
