#!/usr/bin/env bash
# Installs what the build and the tests need on a fresh Debian 12 machine, once.
set -u
pkgs=(wine wine32:i386 g++-mingw-w64-i686 mingw-w64-i686-dev binutils-mingw-w64-i686 cmake ninja-build
      xvfb xauth x11-utils googletest clang libclang-rt-14-dev imagemagick python3 file)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "setup: installing ${missing[*]}"
SUDO=; [ "$(id -u)" = 0 ] || SUDO=sudo
dpkg --print-foreign-architectures | grep -qx i386 || $SUDO dpkg --add-architecture i386
# The i386 security index can be out of step with the main one: not a reason to stop.
$SUDO apt-get update -q || true
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -q -t bookworm --no-install-recommends "${missing[@]}"
