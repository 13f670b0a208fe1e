#!/bin/sh
# Installs what the project builds, tests and runs with: Debian packages and, for the tests, one barcode reader from
# npm, each only if it is absent.
#   scripts/install-deps.sh          library, tool and demo
#   scripts/install-deps.sh --test   the same, tests and benchmarks
#   scripts/install-deps.sh --lint   all of these and the linters
set -eu
cd "$(dirname "$0")/.."

packages="
  make g++ cmake ninja-build pkg-config
  libsdl2-dev libsdl2-image-dev libsdl2-ttf-dev fonts-roboto-unhinted
  libcli11-dev
"
purpose=${1:-}
if [ -n "$purpose" ]; then
  packages="$packages
    libgtest-dev libgmock-dev libbenchmark-dev
    libpng-dev libzxing-dev libzbar-dev locales python3"
  # Node.js may also have come from elsewhere.
  if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
    packages="$packages nodejs npm ca-certificates"
  fi
fi
if [ "$purpose" = "--lint" ]; then
  packages="$packages clang-format clang-tidy"
fi

missing=""
for package in $packages; do
  state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing="$missing $package"
done
if [ -n "$missing" ]; then
  as_root=""
  if [ "$(id -u)" -ne 0 ]; then
    as_root=sudo
  fi
  echo "Installing:$missing"
  $as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q
  # shellcheck disable=SC2086  # a list of words
  $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing
fi

[ -n "$purpose" ] || exit 0

# The reader that package-lock.json names, byte for byte.
installed=node_modules/.installed-lock.json
if ! cmp -s package-lock.json "$installed"; then
  echo "Installing the reader for the round-trip tests into node_modules/"
  npm ci --ignore-scripts --no-audit --no-fund
  cp package-lock.json "$installed"
fi
