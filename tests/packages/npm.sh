#!/bin/sh
# The package for Node as users have it: installed into an empty project, without network, and run there.
#   tests/packages/npm.sh DIR     DIR has libbarcode-VERSION.tgz
set -eu
here=$(cd "$(dirname "$0")" && pwd)
packages=$(cd "$1" && pwd)
version=$("$here/../../scripts/version.sh")
tarball=$packages/libbarcode-$version.tgz
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "npm.sh: $*" >&2
  exit 1
}

cd "$work"
echo '{"name": "empty", "private": true}' >package.json
npm install --silent --offline --no-audit --no-fund "$tarball"
[ "$(ls node_modules)" = libbarcode ] || fail "more was installed than the package: $(ls node_modules)"

native=node_modules/libbarcode/native
# Beside the C library, nothing is wanted of the system; the label library is the one beside the module.
for file in "$native"/*; do
  needed=$(ldd "$file" | awk '{print $1}' | grep -Ev '^(linux-vdso|libc|libm|libbarcode_label)\.so|/ld-linux' || true)
  [ -z "$needed" ] || fail "$file needs $needed"
done
ldd "$native/barcode_label.node" | grep -q "libbarcode_label.so.1 => $work/$native/libbarcode_label.so.1 " ||
  fail "the module does not take the library beside it"
newest=$(objdump -T "$native"/* | grep -o 'GLIBC_[0-9.]*' | sort -uV | tail -n 1)
printf 'GLIBC_2.36\n%s\n' "$newest" | sort -CVr || fail "$newest is newer than Debian 12's"
for name in LICENSE NOTICE README.md index.d.ts examples/server.mjs; do
  [ -s "node_modules/libbarcode/$name" ] || fail "there is no $name"
done
for name in libpng zlib GCC; do
  grep -q "$name" node_modules/libbarcode/NOTICE || fail "NOTICE is silent about $name"
done
grep -q "\"version\": \"$version\"" node_modules/libbarcode/package.json || fail "package.json is of another version"

cp "$here/npm_check.mjs" check.mjs
env -u LD_LIBRARY_PATH node check.mjs "$version"
cp node_modules/libbarcode/examples/server.mjs .
env -u LD_LIBRARY_PATH node check.mjs "$version" ./server.mjs
echo "npm.sh: $tarball is installed and makes labels with node $(node --version)"
