#!/usr/bin/env bash
# Builds the DLL and the gallery and shows the gallery. Without a display it runs
# under Xvfb and writes its picture to docs/screenshots/gallery.png.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
"$root/scripts/setup.sh"
"$root/scripts/build-win32.sh" --target gallery QUILL32
source "$root/scripts/wine-up.sh"
if [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; then
  wine_up ""
  trap wine_down EXIT
  "$root/scripts/wine-run.sh" build/win32/bin/gallery.exe
else
  wine_up ""
  trap wine_down EXIT
  mkdir -p docs/screenshots
  "$root/scripts/wine-run.sh" build/win32/bin/gallery.exe /shot "$(winepath -w build/gallery.bmp)"
  convert build/gallery.bmp docs/screenshots/gallery.png
  echo "gallery: docs/screenshots/gallery.png"
fi
