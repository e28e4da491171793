#!/usr/bin/env bash
# Installs the build into a temporary prefix, then builds and runs a consumer
# twice: once through find_package(Mox), once through pkg-config.
set -euo pipefail
build=$1
source_dir=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" > "$work/install.log"
test -f "$work/prefix/include/Mox/Mox.h"
test -f "$work/prefix/include/Mox/System/Object.h"

cmake -S "$source_dir/consumer" -B "$work/cmake-consumer" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" > "$work/configure.log"
cmake --build "$work/cmake-consumer" > "$work/build.log"
LD_LIBRARY_PATH="$work/prefix/lib" "$work/cmake-consumer/consumer" | grep -qx "consumer: 5 characters"

export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
sed -i "s|^prefix=.*|prefix=$work/prefix|" "$work/prefix/lib/pkgconfig/mox.pc"
# shellcheck disable=SC2046
g++ "$source_dir/consumer/Consumer.cpp" -o "$work/pkg-consumer" $(pkg-config --cflags --libs mox)
LD_LIBRARY_PATH="$work/prefix/lib" "$work/pkg-consumer" | grep -qx "consumer: 5 characters"
echo "install check passed"
