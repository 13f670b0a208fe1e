#!/bin/sh
# Does the working tree's library do, byte for byte, what that of a base commit does?
#   scripts/same.sh BASE [--sessions N] [--seed S] [--type T]   record some thousands of random draws and compare
#   scripts/same.sh BASE --show TYPE SESSION [--seed S]         both in full for one session of the record
# Exit status 0: identical, 1: differences. Everything lies in build/same/; the base is built and recorded only once.
set -eu
cd "$(dirname "$0")/.."

if ! [ -e .git ]; then
  echo "make same compares with a commit: it needs the git repository, these are unpacked sources" >&2
  exit 2
fi
if [ $# -lt 1 ] || ! commit=$(git rev-parse --verify --quiet "$1^{commit}"); then
  sed -n '2,5s/^# \{0,1\}//p' "$0" >&2
  echo "BASE is to be a commit: ${1-none given}" >&2
  exit 2
fi
given=$1
shift
base=build/same/$commit
new=build/same/new
mkdir -p "$base" "$new"

# run LOG COMMAND...: quiet unless it fails.
run() {
  log=$1
  shift
  if ! "$@" >"$log" 2>&1; then
    tail -n 40 "$log" >&2
    echo "Failed, see $log: $*" >&2
    exit 2
  fi
}

run "$new/configure.log" cmake --preset release -DBARCODE_BUILD_TESTS=ON
run "$new/build.log" cmake --build --preset release --target barcode barcode_record
recorder=build/release/tests/same/barcode_record
cp "$(cat build/release/tests/same/library_path.txt)" "$new/libbarcode.so"

if [ ! -f "$base/libbarcode.so" ]; then
  echo "Building the library of $given"
  rm -rf "$base/src" "$base/build"
  mkdir "$base/src"
  git archive "$commit" | tar -x -C "$base/src"
  run "$base/configure.log" cmake -G Ninja -S "$base/src" -B "$base/build" -DCMAKE_BUILD_TYPE=Release \
    -DBARCODE_BUILD_TESTS=OFF -DBARCODE_BUILD_BENCH=OFF
  run "$base/build.log" cmake --build "$base/build" --target barcode
  cp "$(find "$base/build" -name libbarcode.so)" "$base/libbarcode.so.part"
  mv "$base/libbarcode.so.part" "$base/libbarcode.so"
  rm -rf "$base/src" "$base/build"
fi

if [ "${1-}" = --show ]; then
  shift
  for side in base new; do
    library=$new/libbarcode.so
    [ $side = new ] || library=$base/libbarcode.so
    "$recorder" show "$library" "$@" --into "build/same/show/$side" ||
      echo "The recorder ended with status $? in the $side library" >&2
  done
  echo "Calls, documents and pictures: build/same/show/base/ and build/same/show/new/. The calls that differ:"
  diff -U 3 build/same/show/base/calls.txt build/same/show/new/calls.txt
  exit
fi

# A record depends on the library, the recorder and the arguments.
key=$({ cat "$recorder" && printf '%s\n' "$@"; } | sha256sum | cut -c 1-16)
baseRecord=$base/$key.txt
newRecord=$new/record.txt

# record SIDE LIBRARY FILE [ARGUMENT...]: on two processors. What is recorded up to a crash is kept and compared.
record() {
  side=$1 library=$2 file=$3
  shift 3
  rm -f "$file"
  "$recorder" record "$library" "$file.1" --shards 2 --shard 0 "$@" &
  failed=0
  "$recorder" record "$library" "$file.2" --shards 2 --shard 1 "$@" || failed=$?
  wait $! || failed=$?
  cat "$file.1" "$file.2" >"$file.part"
  rm "$file.1" "$file.2"
  if [ $failed -eq 0 ]; then
    mv "$file.part" "$file"
  else
    echo "The recorder ended with status $failed in the $side library: its record is cut short" >&2
  fi
}
recorded() { if [ -f "$1" ]; then echo "$1"; else echo "$1.part"; fi; }

[ -f "$baseRecord" ] || record base "$base/libbarcode.so" "$baseRecord" "$@"
record new "$new/libbarcode.so" "$newRecord" "$@"

status=0
"$recorder" compare "$(recorded "$baseRecord")" "$(recorded "$newRecord")" || status=$?
if [ $status -eq 1 ]; then
  seed=$(printf '%s\n' "$@" | sed -n '/^--seed$/{n;s/^/ --seed /p;}')
  echo "One session in full: scripts/same.sh $given --show TYPE SESSION$seed"
fi
exit $status
