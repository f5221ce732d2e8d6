#!/usr/bin/env bash
# Installs the built library into a scratch prefix, then builds and runs a
# small consumer through the CMake package and through pkg-config.
set -euo pipefail
build_dir=$1
source_dir=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null

# The umbrella header names every public header that is installed.
for header in "$work"/prefix/include/zkit/*.h; do
    name=$(basename "$header")
    [ "$name" = zkit.h ] && continue
    if ! grep -q "#include \"$name\"" "$work/prefix/include/zkit/zkit.h"; then
        echo "zkit.h does not include $name" >&2
        exit 1
    fi
done

cmake -S "$source_dir/consumer" -B "$work/cmake-build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
LD_LIBRARY_PATH="$work/prefix/lib:$work/prefix/lib/x86_64-linux-gnu:${LD_LIBRARY_PATH:-}" \
    "$work/cmake-build/consumer"

libdir=$(ls -d "$work"/prefix/lib*/pkgconfig | head -n 1)
flags=$(PKG_CONFIG_PATH="$libdir" pkg-config --cflags --libs zkit)
# shellcheck disable=SC2086
c++ -std=c++17 -fPIC "$source_dir/consumer/main.cpp" -o "$work/pc-consumer" $flags
LD_LIBRARY_PATH="$(dirname "$libdir"):${LD_LIBRARY_PATH:-}" "$work/pc-consumer"
echo "package: cmake and pkg-config consumers ran"
