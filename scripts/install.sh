#!/bin/sh
# Installs what is built, makes the linker find the libraries or says the line that does, and removes it all again.
#   scripts/install.sh BUILD PREFIX               DESTDIR stages it in another folder, for who makes packages
#   scripts/install.sh --uninstall BUILD PREFIX   what the first has installed there, no more and no less
# BUILD/installed/ keeps what was installed where: the files, and the folders that were not there before.
set -eu
uninstall=no
if [ "${1-}" = --uninstall ]; then
  uninstall=yes
  shift
fi
if [ $# -ne 2 ]; then
  sed -n '3,4s/^# *//p' "$0" >&2
  exit 2
fi
build=$1
case $2 in
  /*) prefix=${2%/} ;;
  *) prefix=$PWD/${2%/} ;;
esac
stage=${DESTDIR:-}
record=$build/installed/$(printf %s "$stage$prefix" | sed -e 's/_/__/g' -e 's,/,_,g')
PATH=$PATH:/usr/sbin:/sbin

# Whether the linker searches the folder of the libraries by itself. It knows no folder that is not there.
is_searched() {
  for known in $(ldconfig -v -N -X 2>/dev/null | sed -n 's,^\(/[^:]*\):.*,\1,p'); do
    if [ "$(readlink -f "$known")" = "$(readlink -f "$folder")" ]; then
      echo yes
      return
    fi
  done
  echo no
}

if [ $uninstall = yes ]; then
  if ! [ -e "$record.files" ]; then
    echo "make install has installed nothing in $stage$prefix from this build" >&2
    exit 1
  fi
  folder=$(sed -n 's,/libbarcode\.so$,,p' "$record.files")
  [ -n "$stage" ] || searched=$(is_searched)
  while read -r file; do
    rm -f "$stage$file"
  done <"$record.files"
  # The innermost first. What others have put there since stays.
  sort -r "$record.folders" | while read -r created; do
    rmdir "$stage$created" 2>/dev/null || true
  done
  rm "$record.files" "$record.folders"
else
  # A rehearsal tells which folders there will be.
  mkdir -p "$build/installed"
  rm -rf "$build/installed/rehearsal"
  DESTDIR=$(cd "$build" && pwd)/installed/rehearsal
  export DESTDIR
  cmake --install "$build" --prefix "$prefix" >/dev/null
  (cd "$DESTDIR" && find . -mindepth 1 -type d) | sed 's/^\.//' | while read -r created; do
    [ -d "$stage$created" ] || echo "$created"
  done >"$record.new"
  rm -rf "$DESTDIR"
  DESTDIR=$stage
  cmake --install "$build" --prefix "$prefix"
  # Installed once more, it is the first installation that made the folders, and may have had other files.
  touch "$record.folders" "$record.files"
  sort -u -o "$record.folders" "$record.folders" "$record.new"
  rm "$record.new"
  echo >>"$build/install_manifest.txt"
  grep . "$build/install_manifest.txt" | sort -u -o "$record.files" - "$record.files"
  folder=$(sed -n 's,/libbarcode\.so$,,p' "$record.files")
  [ -n "$stage" ] || searched=$(is_searched)
fi

# Staged files are nobody's yet: it is the package that has to tell the linker.
[ -z "$stage" ] || exit 0
if [ $searched = yes ] && [ "$(id -u)" -eq 0 ]; then
  ldconfig
elif [ $uninstall = yes ]; then
  [ $searched = no ] || echo "The linker still has the libraries in its cache until this is run: sudo ldconfig"
elif [ $searched = yes ]; then
  echo "Programs find the libraries once this is run: sudo ldconfig"
elif [ "$(id -u)" -eq 0 ]; then
  echo "Programs find the libraries once this is run: echo $folder > /etc/ld.so.conf.d/libbarcode.conf && ldconfig"
else
  echo "Programs find the libraries once this is run: export LD_LIBRARY_PATH=$folder\${LD_LIBRARY_PATH:+:\$LD_LIBRARY_PATH}"
fi
