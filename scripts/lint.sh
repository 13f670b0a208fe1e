#!/bin/sh
# Checks formatting and runs clang-tidy, over all of the project's sources or over the files given.
#   scripts/lint.sh [FILE...]     (needs a configured build/release: its compile_commands.json)
set -eu
cd "$(dirname "$0")/.."

# Where git does not know the sources, in an unpacked tarball, their list does.
if [ $# -eq 0 ] && ! [ -e .git ]; then
  # shellcheck disable=SC2046  # none has a space in its name
  set -- $(grep -E '\.(cpp|hpp|h|c)$' MANIFEST)
fi
if ! [ -f build/release/compile_commands.json ]; then
  echo "build/release is not configured: cmake --preset release" >&2
  exit 1
fi
files=$(mktemp)
trap 'rm -f "$files"' EXIT

# The public headers in C are laid out by hand; everything else is formatted by the tool.
if [ $# -eq 0 ]; then
  git ls-files --cached --others --exclude-standard -- '*.cpp' '*.hpp' '*.h' '*.c'
else
  printf '%s\n' "$@"
fi | grep -Ev '(^|/)include/[^/]*\.h$' >"$files" || true
xargs -r clang-format --dry-run -Werror <"$files"

# Headers are checked with the sources that include them. The largest sources first: no processor ends up alone with one.
grep '\.cpp$' "$files" | xargs -r wc -c | grep -v ' total$' | sort -rn | sed 's/^ *[0-9]* //' |
  xargs -r -P "$(nproc)" -n 1 \
    clang-tidy --quiet -p build/release --warnings-as-errors='*' --extra-arg=-Wno-unknown-warning-option
