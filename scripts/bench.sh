#!/bin/sh
# Builds the release preset and runs every benchmark program; prints the
# reference-against-SSE2 tables that BENCHMARKS.md records. Extra arguments go
# to each benchmark (e.g. --benchmark_min_time=0.2).
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --preset release > /dev/null
cmake --build --preset release
out=build/release/bench-results
mkdir -p "$out"
for b in build/release/bench/bench_*; do
  [ -x "$b" ] || continue
  name=$(basename "$b")
  "$b" --benchmark_format=json --benchmark_out="$out/$name.json" "$@" > /dev/null
  echo "## $name"
  echo
  python3 scripts/bench_table.py "$out/$name.json"
  echo
done
