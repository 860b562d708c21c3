#!/bin/sh
# Installs the build into a temporary prefix, then builds the worked example
# (a C99 program) from the installed files alone, as a user would: with
# find_package(huxvc) against the shared and the static library, and with
# pkg-config, shared and fully static. Each program must run and pass.
set -eu
build="$1"
work="$2"
consumer="$3"
example="$4"
rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$work/prefix" > "$work/install.log"
cmake -S "$consumer" -B "$work/cmake-build" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" -DEXAMPLE="$example" > "$work/configure.log"
cmake --build "$work/cmake-build" > "$work/build.log"
"$work/cmake-build/example_shared" > /dev/null
"$work/cmake-build/example_static" > /dev/null
libdir=$(ls -d "$work/prefix"/lib*/pkgconfig | head -n 1)
export PKG_CONFIG_PATH="$libdir"
# shellcheck disable=SC2046
cc -std=c99 -Wall -Werror -o "$work/example-pc" "$example" $(pkg-config --cflags --libs huxvc) -Wl,-rpath,"$(dirname "$libdir")"
"$work/example-pc" > /dev/null
# shellcheck disable=SC2046
cc -std=c99 -Wall -Werror -static -o "$work/example-static" "$example" $(pkg-config --cflags --libs --static huxvc)
"$work/example-static"
