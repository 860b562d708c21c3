#!/bin/sh
# Malformed input: truncated, corrupted and padded variants of the corpus streams must end with status 0 or 1
# (1 with a message), never a crash, a sanitizer report or a hang.   malformed.sh DECODER STREAMDIR
set -u
dec=$1 dir=$2
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
export ASAN_OPTIONS="${ASAN_OPTIONS:-}:exitcode=99" UBSAN_OPTIONS="${UBSAN_OPTIONS:-}:exitcode=99"
bad=0 runs=0
try() {
  runs=$((runs + 1))
  timeout 30 "$dec" --framemd5 "$1" > /dev/null 2> "$tmp/err"
  st=$?
  if [ $st -gt 1 ] || { [ $st = 1 ] && ! grep -q '^huxvc-h264dec: .*: ' "$tmp/err"; }; then
    echo "status $st on $2"; tail -n 5 "$tmp/err"; bad=1
  fi
}
for s in "$dir"/baseline_cif.264 "$dir"/high_everything.264 "$dir"/bpyramid.264 "$dir"/weightp_fade.264; do
  size=$(wc -c < "$s")
  for cut in 40 300 $((size / 3)) $((size / 2)) $((size - 7)); do
    head -c "$cut" "$s" > "$tmp/t.264"; try "$tmp/t.264" "$(basename "$s") cut at $cut"
  done
  i=0
  while [ $i -lt 24 ]; do  # single-byte corruption, spread over the stream
    off=$(( (size * i) / 24 + 5 + i ))
    for v in 000 377 125; do
      cp "$s" "$tmp/c.264"
      printf "\\$v" | dd of="$tmp/c.264" bs=1 seek=$off conv=notrunc 2> /dev/null
      try "$tmp/c.264" "$(basename "$s") byte $off = octal $v"
    done
    i=$((i + 1))
  done
  # A long run of zero bits inside slice data, and the parameter sets missing.
  { head -c $((size / 2)) "$s"; head -c 600 /dev/zero | tr '\0' '\200' | tr '\200' '\0'; printf '\1\1\1\1'; tail -c +$((size / 2)) "$s"; } > "$tmp/z.264"
  try "$tmp/z.264" "$(basename "$s") with zero bytes"
  tail -c +40 "$s" > "$tmp/m.264"; try "$tmp/m.264" "$(basename "$s") without its first 40 bytes"
done
printf 'not a stream' > "$tmp/n.264"; try "$tmp/n.264" "text"
: > "$tmp/e.264"; try "$tmp/e.264" "empty file"
echo "$runs malformed inputs, $( [ $bad = 0 ] && echo all ended cleanly || echo FAILURES)"
exit $bad
