#!/bin/sh
# Prints the date of these sources in seconds since 1970, which the files in packages bear (SOURCE_DATE_EPOCH): the
# commit's, or without git, in an unpacked tarball, that of the newest release in the changelog.
set -eu
cd "$(dirname "$0")/.."
if [ -n "${SOURCE_DATE_EPOCH:-}" ]; then
  echo "$SOURCE_DATE_EPOCH"
elif [ -e .git ] && command -v git >/dev/null; then
  git log -1 --format=%ct
else
  date -u -d "$(sed -n 's/^## [0-9.]* (\([0-9-]*\))$/\1/p' CHANGELOG.md | head -n 1 | grep .)" +%s
fi
