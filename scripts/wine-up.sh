# Sourced: brings up what the Win32 programs need, once per run: a display
# (Xvfb when there is none), the project's Wine prefix, a persistent wineserver
# and one long-running Wine process. wine_down undoes what was started here.
source "$(dirname "${BASH_SOURCE[0]}")/wine-env.sh"

wine_up() {
  local keepalive=$1   # path of wine_keepalive.exe, or empty
  QUILL_STARTED_XVFB=
  if [ -z "${DISPLAY:-}" ] || ! xdpyinfo >/dev/null 2>&1; then
    local n
    for n in 91 92 93 94 95 96 97 98; do
      [ -e /tmp/.X11-unix/X$n ] || [ -e /tmp/.X$n-lock ] && continue
      Xvfb :$n -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
      QUILL_STARTED_XVFB=$!
      export DISPLAY=:$n
      break
    done
    for _ in $(seq 50); do [ -e /tmp/.X11-unix/X${DISPLAY#:} ] && break; sleep 0.1; done
  fi
  mkdir -p "$(dirname "$WINEPREFIX")"
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    wineboot -i >/dev/null 2>&1 || true
    wineserver -w
  fi
  # Without a window manager every hide or destroy of a visible window waits 2 s
  # unless Wine manages the windows itself.
  wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
  # A crashing test program ends at once instead of waiting in the debugger.
  wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d '' /f >/dev/null 2>&1
  wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Auto /d 0 /f >/dev/null 2>&1
  wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1
  # Every run starts from the same "Intl" settings, whatever an earlier run left:
  # the values that the library also takes when the profile has none.
  wine regedit /S "$(winepath -w "$QUILL_ROOT/scripts/intl-defaults.reg")" >/dev/null 2>&1
  wineserver -p || true
  QUILL_KEEPALIVE=
  if [ -n "$keepalive" ] && [ -f "$keepalive" ]; then
    wine "$keepalive" >/dev/null 2>&1 &
    QUILL_KEEPALIVE=$!
  fi
  return 0
}

# Stops what wine_up started. The wineserver itself stays for other runs on the
# same prefix unless the caller asks with "all".
wine_down() {
  [ -n "${QUILL_KEEPALIVE:-}" ] && kill "$QUILL_KEEPALIVE" 2>/dev/null
  [ "${1:-}" = all ] && { wineserver -k 2>/dev/null || true; }
  [ -n "${QUILL_STARTED_XVFB:-}" ] && kill "$QUILL_STARTED_XVFB" 2>/dev/null
  return 0
}
