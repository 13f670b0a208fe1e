#!/bin/sh
# Prints NOTICE as it has to be where the label library holds what else it needs (build/portable): with the licences
# of libpng, zlib and GCC's runtime, as Debian's packages bring them.
set -eu
cd "$(dirname "$0")/.."
cat NOTICE
for package in libpng-dev zlib1g-dev gcc-12-base; do
  printf '\n\n%s\n%s\n\n' "Compiled in from Debian's package $package:" \
    "-------------------------------------------------------------------------------"
  cat "/usr/share/doc/$package/copyright"
done
