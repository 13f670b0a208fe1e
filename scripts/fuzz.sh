#!/bin/sh
# Runs the fuzz targets (tests/fuzz/fuzz_*.cpp, built by the preset fuzz) one after the other.
#   scripts/fuzz.sh SECONDS [TARGET...]   beginning with the corpus in the tree; new inputs go to build/fuzz/corpus/
#   scripts/fuzz.sh --merge [TARGET...]   few inputs that reach the same code become the corpus in the tree
# An input that fails is written to build/fuzz/found-*: give it to build/fuzz/tests/fuzz/fuzz_TARGET to see it fail with
# a full report, and add it to tests/fuzz/corpus/TARGET when it is mended.
set -eu
cd "$(dirname "$0")/.."
[ $# -ge 1 ] || { sed -n '2,4s/^# \{0,1\}//p' "$0" >&2; exit 2; }

seconds=$1
shift
[ $# -gt 0 ] || set -- calls encoders label

for target; do
  program=build/fuzz/tests/fuzz/fuzz_$target
  kept=tests/fuzz/corpus/$target
  found=build/fuzz/corpus/$target
  mkdir -p "$kept" "$found"
  # Stacks of allocations are cut short: recording them whole takes most of the time.
  if [ "$seconds" = --merge ]; then
    smallest=$(mktemp -d)
    ASAN_OPTIONS=malloc_context_size=2 "$program" -merge=1 -use_counters=0 -max_len=300 "$smallest" "$kept" "$found"
    rm -rf "$kept"
    mv "$smallest" "$kept"
    chmod 755 "$kept"
    chmod 644 "$kept"/*
  else
    ASAN_OPTIONS=malloc_context_size=2:quarantine_size_mb=32 "$program" -max_total_time="$seconds" -max_len=300 \
      -entropic=0 -print_final_stats=1 -artifact_prefix="build/fuzz/found-$target-" "$found" "$kept"
  fi
done
