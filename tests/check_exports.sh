#!/bin/sh
# Compares the dynamic symbols a shared library defines with the export list
# read from the public header.
set -eu
lib="$1"
expected="$2"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
nm -D --defined-only "$lib" | awk '$2 ~ /^[TtWiI]$/ {print $3}' | sed 's/@.*//' | sort -u > "$tmp/actual"
sort -u "$expected" > "$tmp/want"
if ! diff "$tmp/actual" "$tmp/want" > "$tmp/diff"; then
  echo "exported symbols differ from the header (< library, > header):"
  cat "$tmp/diff"
  exit 1
fi
echo "$(wc -l < "$tmp/actual") exports, as declared"
