#!/bin/sh
# Installs the Debian packages the build, the tests, the HTML reference
# (doxygen), the fuzz targets (clang with libFuzzer's runtime) and the
# benchmarks need, and x264 and ffmpeg (the H.264 decoder's streams and cross-checks), where they are missing. Needs root (or sudo) only when something is missing.
set -eu
need=""
for p in cmake ninja-build g++ gcc-multilib g++-multilib googletest libgtest-dev libbenchmark-dev ccache pkg-config binutils python3 doxygen clang libclang-rt-14-dev x264 ffmpeg; do
  dpkg -s "$p" > /dev/null 2>&1 || need="$need $p"
done
[ -z "$need" ] && exit 0
sudo=""
[ "$(id -u)" -ne 0 ] && sudo=sudo
echo "installing:$need"
$sudo apt-get update -qq
# shellcheck disable=SC2086
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $need
