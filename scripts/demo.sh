#!/bin/sh
# Builds the library and runs the motion-search demonstration on its built-in
# synthetic frames (pass "cur.y ref.y width height" to use raw luma frames).
set -eu
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake --preset release > /dev/null
cmake --build --preset release --target motion_search
exec build/release/examples/motion_search "$@"
