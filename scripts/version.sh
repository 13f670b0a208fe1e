#!/bin/sh
# Prints the version, whose one home is include/barcode.h.
set -eu
sed -n 's/^#define BARCODE_VERSION_STRING "\([0-9.]*\)"$/\1/p' "$(dirname "$0")/../include/barcode.h" | grep .
