#!/usr/bin/env bash
# Configures and builds the Win32 side (DLL, tests, gallery, benchmarks) in build/win32.
set -e
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
mkdir -p build
# One build at a time in build/win32: several people and scripts share it.
exec 9>build/.win32.lock
flock 9
if [ ! -f build/win32/build.ninja ]; then
  cmake -S . -B build/win32 -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/i686-mingw.cmake" ${QUILL_CMAKE_ARGS:-}
fi
cmake --build build/win32 -j"${QUILL_JOBS:-2}" "$@"
