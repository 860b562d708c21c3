#!/bin/sh
# Builds the library and runs every test in the release, sanitizer (ASan +
# UBSan) and 32-bit builds. Usage: scripts/test.sh [preset ...]
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh
presets="${*:-release asan m32}"
for p in $presets; do
  echo "=== $p"
  cmake --workflow --preset "$p"
done
echo "all tests passed in: $presets"
