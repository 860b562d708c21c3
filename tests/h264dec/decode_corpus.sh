#!/bin/sh
# Decodes every stream of a corpus directory (NAME.264 with ffmpeg's per-frame MD5s in NAME.md5) and compares
# every frame.   decode_corpus.sh DECODER DIR      (DIR "generate": make the streams now with x264 and ffmpeg)
set -u
dec=$1 dir=$2
if [ "$dir" = generate ]; then
  dir=$(mktemp -d)
  trap 'rm -rf "$dir"' EXIT
  "$(dirname "$0")/make_streams.sh" "$dir" || exit $?
fi
fail=0 n=0
for s in "$dir"/*.264; do
  name=$(basename "$s" .264)
  got=$("$dec" --framemd5 "$s" 2>/dev/null | grep -v '^#' | awk -F', *' '{print $6}')
  if [ "$got" = "$(cat "${s%.264}.md5")" ]; then n=$((n + 1)); else echo "mismatch: $name"; fail=1; fi
done
echo "$n streams bit-exact"
exit $fail
