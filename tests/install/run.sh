#!/bin/sh
# Installs the build into a temporary prefix, then builds a small consumer
# against it twice: with find_package(huxvc) and with pkg-config.
set -eu
build="$1"
work="$2"
consumer="$3"
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/prefix" > "$work/install.log"
cmake -S "$consumer" -B "$work/cmake-build" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" > "$work/configure.log"
cmake --build "$work/cmake-build" > "$work/build.log"
"$work/cmake-build/consumer"
libdir=$(ls -d "$work/prefix"/lib*/pkgconfig | head -n 1)
flags=$(PKG_CONFIG_PATH="$libdir" pkg-config --cflags --libs huxvc)
# shellcheck disable=SC2086
cc -std=c99 -o "$work/consumer-pc" "$consumer/consumer.c" $flags -Wl,-rpath,"$(dirname "$libdir")"
"$work/consumer-pc"
