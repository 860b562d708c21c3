#!/bin/sh
# Builds the library and its H.264 decoder example, decodes a stream and says whether every frame matched
# ffmpeg's decoder, and how fast it went. Without arguments it decodes a committed stream of the test corpus
# (its ffmpeg frame MD5s beside it); with STREAM.264 it decodes that one, comparing against ffmpeg when
# ffmpeg is installed. The motion-search demonstration: build/release/examples/motion_search.
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --preset release > /dev/null
cmake --build --preset release --target h264dec motion_search > /dev/null
stream="${1:-tests/h264dec/streams/high_everything.264}"
dec=build/release/examples/huxvc-h264dec
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
if [ -z "${1:-}" ]; then
  cp "${stream%.264}.md5" "$tmp/want"
elif command -v ffmpeg > /dev/null; then
  ffmpeg -v error -threads 1 -i "$stream" -f framemd5 - | grep -v '^#' | awk -F', *' '{print $6}' > "$tmp/want"
fi
"$dec" --framemd5 "$stream" 2> "$tmp/err" | grep -v '^#' | awk -F', *' '{print $6}' > "$tmp/got"
echo "decoded $stream"
tail -n 1 "$tmp/err"
if [ -f "$tmp/want" ]; then
  n=$(wc -l < "$tmp/want")
  same=$(paste -d' ' "$tmp/got" "$tmp/want" | awk '$1 == $2' | wc -l)
  echo "$same of $n frames bit-exact with ffmpeg's decoder"
  [ "$same" = "$n" ] && [ "$(wc -l < "$tmp/got")" = "$n" ]
fi
