#!/bin/sh
# Installs what the project builds, tests and runs with: Debian packages and, from npm, for the tests a barcode reader
# and TypeScript, for the package for Node the headers of its interface, each only if it is absent.
#   scripts/install-deps.sh [--check]          library, tool and demo
#   scripts/install-deps.sh --test [--check]   the same, tests and benchmarks
#   scripts/install-deps.sh --hosts [--check]  the same, and the other languages of examples/
#   scripts/install-deps.sh --packages [--check]  library, tool, and what builds and tests packages
#   scripts/install-deps.sh --lint [--check]   what --test installs, and the linters
#   scripts/install-deps.sh --fuzz [--check]   library and fuzzers
# With --check it installs nothing: it says in one line what is missing, and fails if anything is.
set -eu
cd "$(dirname "$0")/.."

purpose=library
check=no
for argument; do
  case $argument in
    --test) purpose="test" ;;
    --hosts) purpose=hosts ;;
    --packages) purpose=packages ;;
    --lint) purpose=lint ;;
    --fuzz) purpose=fuzz ;;
    --check) check=yes ;;
    *) echo "Unknown argument: $argument" >&2; exit 2 ;;
  esac
done

# Packages that are wanted for a program: the program may also have come from elsewhere.
programs="make:make g++:g++ cmake:cmake ninja:ninja-build pkg-config:pkg-config"
packages="
  libsdl2-dev libsdl2-image-dev libsdl2-ttf-dev fonts-roboto-unhinted
  libpng-dev zlib1g-dev libstb-dev nlohmann-json3-dev
  libcli11-dev libarchive-dev
"
tests=no
case $purpose in test | hosts | lint) tests=yes ;; esac
# The folders whose package-lock.json is wanted, byte for byte.
from_npm=""
case $purpose in
  test | hosts | lint) from_npm=". node" ;;
  packages) from_npm=node ;;
esac
if [ -n "$from_npm" ] && { ! command -v node >/dev/null || ! command -v npm >/dev/null; }; then
  packages="$packages nodejs npm ca-certificates"
fi
if [ "$tests" = yes ]; then
  programs="$programs python3:python3"
  packages="$packages
    libgtest-dev libgmock-dev libbenchmark-dev
    libzxing-dev libzbar-dev librsvg2-dev poppler-utils locales
    chromium parallel openssh-server openssh-client
    zsh fish man-db mandoc
    libpython3-dev python3-pytest mypy python3-distributed"
fi
if [ "$purpose" = hosts ]; then
  programs="$programs javac:default-jdk-headless php:php-cli ruby:ruby"
  packages="$packages libjna-java"
fi
if [ "$purpose" = packages ]; then
  programs="$programs python3:python3 dpkg-buildpackage:dpkg-dev"
  packages="$packages debhelper dh-python libpython3-dev lintian mmdebstrap"
fi
if [ "$purpose" = lint ]; then
  programs="$programs clang-format:clang-format clang-tidy:clang-tidy"
fi

if [ "$purpose" = fuzz ]; then
  programs="$programs clang++:clang llvm-symbolizer:llvm"
  packages="$packages libclang-rt-dev"
fi

missing=""
for program in $programs; do
  command -v "${program%%:*}" >/dev/null || missing="$missing ${program#*:}"
done
# Elsewhere than on Debian, CMake says what it does not find.
if [ "$check" = no ] || command -v dpkg-query >/dev/null; then
  for package in $packages; do
    state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing="$missing $package"
  done
fi
outdated=""
for folder in $from_npm; do
  cmp -s "$folder/package-lock.json" "$folder/node_modules/.installed-lock.json" || outdated="$outdated $folder"
done

if [ "$check" = yes ]; then
  for folder in $outdated; do
    missing="$missing $folder/node_modules/"
  done
  [ -n "$missing" ] || exit 0
  target=deps
  [ "$purpose" = library ] || target=deps-$purpose
  echo "missing:$missing; run make $target" >&2
  exit 1
fi

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
for folder in $outdated; do
  echo "Installing what $folder/package-lock.json names into $folder/node_modules/"
  npm --prefix "$folder" ci --ignore-scripts --no-audit --no-fund
  cp "$folder/package-lock.json" "$folder/node_modules/.installed-lock.json"
done
