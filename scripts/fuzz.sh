#!/bin/sh
# Fuzzes the stream readers (tests/fuzz: CAVLC 4x4, 2x2 and 2x4 chroma DC,
# Exp-Golomb; each export against its plain-reader reference) with ASan and
# UBSan in build/fuzz, each target for a bounded time; fails on any report.
# With clang (the default where it links libFuzzer; CXX=... chooses), libFuzzer
# with its corpus kept in build/fuzz/corpus/; otherwise the targets' seeded
# random driver. Usage: scripts/fuzz.sh [seconds per target, default 20]
set -eu
cd "$(dirname "$0")/.."
secs="${1:-20}"
scripts/deps.sh
dir=build/fuzz
mkdir -p "$dir/corpus"
cxx="${CXX:-}"
if [ -z "$cxx" ] && command -v clang++ > /dev/null &&
  echo 'extern "C" int LLVMFuzzerTestOneInput(const char*, unsigned long) { return 0; }' |
    clang++ -fsanitize=fuzzer -x c++ - -o "$dir/probe" 2> /dev/null; then
  cxx=clang++
fi
cxx="$(command -v "${cxx:-g++}")"
case "$($cxx --version)" in
  *clang*) cc=clang cov=",fuzzer-no-link" libfuzzer=1 ;;
  *) cc=gcc cov="" libfuzzer=0 ;;
esac
# A build dir configured with another compiler starts afresh.
grep -qs "^CMAKE_CXX_COMPILER:[A-Z]*=$cxx\$" "$dir/CMakeCache.txt" || rm -rf "$dir/CMakeCache.txt" "$dir/CMakeFiles"
flags="-fsanitize=address,undefined$cov -fno-sanitize-recover=all -fno-omit-frame-pointer"
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS=-fsanitize=address,undefined \
  -DCMAKE_SHARED_LINKER_FLAGS=-fsanitize=address,undefined -DHUX_FUZZ=ON -DHUX_BUILD_BENCH=OFF \
  -DHUX_BUILD_EXAMPLES=OFF -DHUX_TEST_INSTALL=OFF > /dev/null
targets="fuzz_cavlc4x4 fuzz_chroma_dc420 fuzz_chroma_dc422 fuzz_exp_golomb fuzz_h264dec"
# shellcheck disable=SC2086
cmake --build "$dir" --target $targets
export ASAN_OPTIONS=halt_on_error=1:detect_leaks=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
for t in $targets; do
  log="$dir/$t.log"
  # The outer timeout only guards against a driver that hangs; libFuzzer
  # reports an input slower than 10 s itself.
  seeds=""
  [ "$t" = fuzz_h264dec ] && seeds="tests/h264dec/streams"  # the decoder starts from its corpus
  if [ "$libfuzzer" = 1 ]; then
    mkdir -p "$dir/corpus/$t"
    # shellcheck disable=SC2086
    set -- -max_total_time="$secs" -timeout=10 -rss_limit_mb=2560 -print_final_stats=1 -artifact_prefix="$dir/$t-" "$dir/corpus/$t" $seeds
  else
    # shellcheck disable=SC2086
    set -- "$secs" $( [ -n "$seeds" ] && ls "$seeds"/*.264)
  fi
  if ! timeout $((secs + 120)) "$dir/tests/fuzz/$t" "$@" > "$log" 2>&1; then
    tail -n 60 "$log"
    echo "fuzz: $t failed (log: $log)"
    exit 1
  fi
  if [ "$libfuzzer" = 1 ]; then
    echo "$t: $(grep -E '^stat::(number_of_executed_units|average_exec_per_sec)' "$log" | tr '\n' ' ')"
  else
    tail -n 1 "$log"
  fi
done
echo "fuzz: no report from $targets in ${secs} s each"
