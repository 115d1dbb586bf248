#!/usr/bin/env bash
# Runs the image and drawing tests once more with Wine reporting Windows 98, so
# that GetVersion has bit 31 set and bitmap resources load by LoadBitmapA (type 1)
# rather than as DIBs with palettes (type 3). Wine's per-program version needs a
# program name of its own: the test program is copied as image9x_tests.exe.
# Expects a built build/win32 and a running Wine (scripts/wine-up.sh).
set -e
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/scripts/wine-env.sh"
bin="$root/build/win32/bin"
cp "$bin/win32_tests.exe" "$bin/image9x_tests.exe"
wine reg add 'HKCU\Software\Wine\AppDefaults\image9x_tests.exe' /v Version /d win98 /f >/dev/null
exec wine "$bin/image9x_tests.exe" --gtest_filter='ImageLoad.*:Draw*:HImage*:HBDrawText*' "$@"
