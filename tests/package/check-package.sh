#!/usr/bin/env bash
# Installs the built library into a scratch prefix, then builds and runs the
# example consumer (examples/consumer) through the CMake package and through
# pkg-config, so that packaging cannot rot; the README's tutorial is built and
# its document linted the same way.
set -euo pipefail
build_dir=$1
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
consumer="$source_dir/examples/consumer"
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
if grep -q '^ZKIT_BUILD_TOOLS:BOOL=ON' "$build_dir/CMakeCache.txt" && [ ! -x "$work/prefix/bin/zkit-preview" ]; then
    echo "zkit-preview is not installed" >&2
    exit 1
fi

libdir=$(ls -d "$work"/prefix/lib*/pkgconfig | head -n 1)
export LD_LIBRARY_PATH="$(dirname "$libdir"):${LD_LIBRARY_PATH:-}"

cmake -S "$consumer" -B "$work/cmake-build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
"$work/cmake-build/consumer"

mkdir "$work/pc-build"
flags=$(PKG_CONFIG_PATH="$libdir" pkg-config --cflags --libs zkit)
# shellcheck disable=SC2086
c++ -std=c++17 -fPIC "$consumer/main.cpp" -o "$work/pc-build/consumer" $flags
cp "$consumer/consumer.xml" "$work/pc-build/"
"$work/pc-build/consumer"

# The README's tutorial: its program builds against the installed package and
# its document loads without a diagnostic.
block() { awk -v lang="$1" '$0 == "```" lang { inside = 1; next } $0 == "```" { if (inside) exit } inside' "$source_dir/README.md"; }
block cpp > "$work/tutorial.cpp"
block xml > "$work/hello.xml"
[ -s "$work/tutorial.cpp" ] && [ -s "$work/hello.xml" ] || { echo "README has no tutorial blocks" >&2; exit 1; }
# shellcheck disable=SC2086
c++ -std=c++17 -fPIC "$work/tutorial.cpp" -o "$work/tutorial" $flags
if [ -x "$work/prefix/bin/zkit-preview" ]; then
    "$work/prefix/bin/zkit-preview" --lint "$work/hello.xml"
fi
echo "package: cmake and pkg-config consumers ran, the README tutorial builds and lints"
