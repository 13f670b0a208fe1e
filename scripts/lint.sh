#!/bin/sh
# Checks formatting and runs clang-tidy, over all of the project's sources or over the files given.
#   scripts/lint.sh [FILE...]     (needs a configured build/release: its compile_commands.json)
set -eu
cd "$(dirname "$0")/.."

all=$(git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' ':!include/barcode.h')
files=${*:-$all}
# The public header is laid out by hand; everything else is formatted by the tool.
# shellcheck disable=SC2086  # a list of words
clang-format --dry-run -Werror $(printf '%s\n' $files | grep -v '^include/' || true)

sources=$(printf '%s\n' $files | grep '\.cpp$' || true)
[ -n "$sources" ] || exit 0
printf '%s\n' $sources | xargs -P "$(nproc)" -n 4 \
  clang-tidy --quiet -p build/release --warnings-as-errors='*' --extra-arg=-Wno-unknown-warning-option
