#!/bin/sh
# Builds the packages in DIR once more, from a copy of the same sources in ELSEWHERE and in other surroundings, and
# compares byte for byte. What Debian's tools record of the build (.buildinfo, .changes, .dsc) tells of its place and time
# and is left out.
#   tests/packages/built_twice.sh DIR ELSEWHERE
set -eu
if [ $# -ne 2 ]; then
  echo "Usage: tests/packages/built_twice.sh DIR ELSEWHERE" >&2
  exit 2
fi
packages=$(realpath "$1")
elsewhere=$2
cd "$(dirname "$0")/../.."
name=libbarcode-$(scripts/version.sh)

if [ -e .git ] && ! git diff --quiet HEAD; then
  echo "tests/packages/built_twice.sh: what is compared is built from a commit, and not everything is committed" >&2
  exit 1
fi
rm -rf "$elsewhere"
mkdir -p "$elsewhere"
elsewhere=$(realpath "$elsewhere")

# An unpacked tarball makes itself again, without git.
tar -xzf "$packages/$name.tar.gz" -C "$elsewhere"
(umask 077 && "$elsewhere/$name/scripts/dist.sh" "$elsewhere/unpacked" >/dev/null)
cmp "$packages/$name.tar.gz" "$elsewhere/unpacked/$name.tar.gz"

if [ -e .git ]; then
  rm -rf "${elsewhere:?}/$name"
  git clone --quiet . "$elsewhere/$name"
fi
# What npm has brought is the same anywhere.
for folder in node_modules node/node_modules; do
  [ ! -d $folder ] || cp -R "$(realpath $folder)" "$elsewhere/$name/$folder"
done
# A compiler cache would only show what it was given the first time.
(
  umask 027
  cd "$elsewhere/$name"
  env -u SOURCE_DATE_EPOCH -u CMAKE_C_COMPILER_LAUNCHER -u CMAKE_CXX_COMPILER_LAUNCHER -u MAKEFLAGS \
    CCACHE_DISABLE=1 TZ=Pacific/Kiritimati LC_ALL=C.UTF-8 make packages
) >"$elsewhere/make.log" 2>&1 || {
  tail -n 60 "$elsewhere/make.log" | cut -c 1-300 >&2
  exit 1
}

compared() {
  (cd "$1" && find . -type f ! -name '*.buildinfo' ! -name '*.changes' ! -name '*.dsc' | LC_ALL=C sort)
}
compared "$packages" >"$elsewhere/first"
compared "$elsewhere/$name/build/packages" >"$elsewhere/second"
diff "$elsewhere/first" "$elsewhere/second"
for suffix in .tar.gz .deb .whl .tgz; do
  grep -qF -- "$suffix" "$elsewhere/first" || {
    echo "tests/packages/built_twice.sh: there is no package *$suffix" >&2
    exit 1
  }
done
different=0
while read -r file; do
  cmp "$packages/$file" "$elsewhere/$name/build/packages/$file" || different=1
done <"$elsewhere/first"
[ $different -eq 0 ]
echo "built twice: $(wc -l <"$elsewhere/first") packages, the same byte for byte"
