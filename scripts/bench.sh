#!/bin/sh
# Builds the release preset and runs every benchmark program; prints the
# reference-against-SSE2 tables that BENCHMARKS.md records. Extra arguments go
# to each benchmark (e.g. --benchmark_min_time=0.2).
#
# Then, when the peer harness is found, the side-by-side runs against x264 and
# FFmpeg: the harness is not part of this repository; it is looked for in
# $PEERS_DIR (default: ../shared/peers beside the checkout, where our own
# workspace keeps it). The library is installed into build/release/peers-prefix,
# the harness is built into build/release/peers, run $PEER_RUNS times (default
# 3), and scripts/bench_chart.py prints the ratio table and writes the chart
# bench/peer-ratios.png (needs python3-matplotlib).
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh
# The chart needs Debian's matplotlib (the benchmarks only; deps.sh leaves it out).
if ! dpkg -s python3-matplotlib > /dev/null 2>&1; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo=sudo
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends python3-matplotlib
fi
cmake --preset release > /dev/null
cmake --build --preset release
out=build/release/bench-results
mkdir -p "$out"
echo "# Reference against SSE2 ($(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2 | sed 's/^ //'), $(c++ --version | head -n1))"
echo
for b in build/release/bench/bench_*; do
  [ -x "$b" ] || continue
  name=$(basename "$b")
  "$b" --benchmark_format=json --benchmark_out="$out/$name.json" "$@" > /dev/null
  echo "## $name"
  echo
  python3 scripts/bench_table.py "$out/$name.json"
  echo
done

peers=${PEERS_DIR:-../shared/peers}
if [ ! -x "$peers/build.sh" ]; then
  echo "No peer harness at $peers (set PEERS_DIR): side-by-side runs skipped."
  exit 0
fi
cmake --install build/release --prefix "$PWD/build/release/peers-prefix" > /dev/null
BUILD_DIR="$PWD/build/release/peers" "$peers/build.sh" "$PWD/build/release/peers-prefix"
runs=""
i=1
while [ "$i" -le "${PEER_RUNS:-3}" ]; do
  build/release/peers/vcbench --json "$out/peers-run$i.json" > /dev/null
  runs="$runs $out/peers-run$i.json"
  i=$((i + 1))
done
echo "## Against the peers"
echo
# shellcheck disable=SC2086
/usr/bin/python3 scripts/bench_chart.py --png bench/peer-ratios.png $runs
