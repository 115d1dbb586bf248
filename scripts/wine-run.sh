#!/usr/bin/env bash
# Runs one Win32 program under the project's Wine prefix (used by ctest as its emulator).
source "$(dirname "${BASH_SOURCE[0]}")/wine-env.sh"
exec wine "$@"
