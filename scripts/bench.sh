#!/usr/bin/env bash
# Builds and runs the benchmarks under Wine; each prints its figures and the
# ratio to the platform routine it is measured against in the same run.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
"$root/scripts/setup.sh"
"$root/scripts/build-win32.sh"
source "$root/scripts/wine-up.sh"
wine_up "$root/build/win32/bin/wine_keepalive.exe"
trap wine_down EXIT
for b in build/win32/bin/*_bench.exe; do
  echo "== $(basename "$b" .exe)"
  "$root/scripts/wine-run.sh" "$b"
done
