# Sourced: the environment every Wine run of this project uses.
QUILL_ROOT=${QUILL_ROOT:-$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)}
export WINEPREFIX=${QUILL_WINEPREFIX:-$QUILL_ROOT/build/wineprefix}
export WINEARCH=win32
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml="
export LC_ALL=C.UTF-8
export TZ=UTC
