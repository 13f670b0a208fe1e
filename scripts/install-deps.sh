#!/bin/sh
# Installs what the project builds, tests and runs with: Debian packages, only those that are absent.
#   scripts/install-deps.sh          build, demo and tests
#   scripts/install-deps.sh --lint   the same and the linters
set -eu

packages="
  make g++ cmake ninja-build pkg-config
  libsdl2-dev libsdl2-image-dev libsdl2-ttf-dev fonts-roboto-unhinted
  libcli11-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libpng-dev libzxing-dev libzbar-dev locales python3
"
if [ "${1:-}" = "--lint" ]; then
  packages="$packages clang-format clang-tidy"
fi

missing=""
for package in $packages; do
  state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=""
if [ "$(id -u)" -ne 0 ]; then
  as_root=sudo
fi
echo "Installing:$missing"
$as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q
# shellcheck disable=SC2086  # a list of words
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing
