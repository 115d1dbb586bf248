#!/usr/bin/env bash
# Builds everything and runs every test: the Win32 programs under Wine and Xvfb,
# the window-free layers natively under ASan and UBSan, each fuzz target for a
# short bounded time, and the checks of the shipped DLL. Ends with a count.
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
"$root/scripts/setup.sh" || { echo "setup failed"; exit 2; }
fuzz_seconds=${QUILL_FUZZ_SECONDS:-8}
start=$(date +%s)
passed=0; failed=0
pass() { passed=$((passed + 1)); echo "PASS: $*"; }
fail() { failed=$((failed + 1)); echo "FAIL: $*"; }

echo "== build: Win32"
"$root/scripts/build-win32.sh" >build-win32.log 2>&1 || { tail -40 build-win32.log; echo "0 passed, 1 failed"; exit 1; }
echo "== build: native (ASan+UBSan)"
{ [ -f build/native/build.ninja ] || CC=clang CXX=clang++ cmake -S . -B build/native -G Ninja -DQUILL_NATIVE=ON; } >build-native.log 2>&1
cmake --build build/native -j2 >>build-native.log 2>&1 || { tail -40 build-native.log; echo "0 passed, 1 failed"; exit 1; }
echo "== build: fuzz targets"
{ [ -f build/fuzz/build.ninja ] || CC=clang CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DQUILL_NATIVE=ON -DQUILL_FUZZ=ON; } >build-fuzz.log 2>&1
cmake --build build/fuzz -j2 >>build-fuzz.log 2>&1 || { tail -40 build-fuzz.log; echo "0 passed, 1 failed"; exit 1; }
rm -f build-win32.log build-native.log build-fuzz.log

# gtest reports: every case counts once.
rm -rf build/win32/reports/*.xml build/native/reports/*.xml
count_reports() {
  local f t u
  for f in "$@"; do
    [ -f "$f" ] || continue
    t=$(grep -o '<testsuites [^>]*' "$f" | grep -o ' tests="[0-9]*"' | grep -o '[0-9]*')
    u=$(grep -o '<testsuites [^>]*' "$f" | grep -o ' failures="[0-9]*"' | grep -o '[0-9]*')
    passed=$((passed + ${t:-0} - ${u:-0})); failed=$((failed + ${u:-0}))
  done
}
run_ctest() { # build dir, label
  local out
  out=$(ctest --test-dir "$1" --output-on-failure 2>&1)
  echo "$out" | grep -E 'tests passed|tests failed|Failed|\[  FAILED  \]|Segmentation|ERROR' | head -40
  # a program that died before writing its report counts as one failure
  local n_prog n_rep
  n_prog=$(echo "$out" | grep -c 'Test #')
  n_rep=$(ls "$1"/reports/*.xml 2>/dev/null | wc -l)
  [ "$n_rep" -lt "$n_prog" ] && failed=$((failed + n_prog - n_rep)) && echo "FAIL: $2: $((n_prog - n_rep)) program(s) wrote no report"
  count_reports "$1"/reports/*.xml
}

echo "== Win32 tests under Wine"
source "$root/scripts/wine-up.sh"
wine_up "$root/build/win32/bin/wine_keepalive.exe"
trap "wine_down all" EXIT
run_ctest build/win32 win32

echo "== image tests again with Wine reporting Windows 98 (the other GetVersion path)"
rm -f build/win32/reports/win9x_images.xml
(cd build/win32 && timeout 300 "$root/scripts/test-win9x-images.sh" --gtest_output=xml:reports/win9x_images.xml >/dev/null 2>&1)
if [ -f build/win32/reports/win9x_images.xml ]; then count_reports build/win32/reports/win9x_images.xml; else fail "image tests as Windows 98 wrote no report"; fi

echo "== gallery screenshot"
mkdir -p docs/screenshots
rm -f build/gallery.bmp
if timeout 120 "$root/scripts/wine-run.sh" build/win32/bin/gallery.exe /shot "$(winepath -w build/gallery.bmp 2>/dev/null)" \
   && [ -s build/gallery.bmp ] && convert build/gallery.bmp docs/screenshots/gallery.png 2>/dev/null; then
  pass "gallery screenshot docs/screenshots/gallery.png"
else
  fail "gallery screenshot"
fi
wine_down all; trap - EXIT

echo "== the shipped DLL"
dll=build/win32/bin/QUILL32.dll
if i686-w64-mingw32-objdump -f "$dll" | grep -q 'file format pei-i386'; then pass "DLL is PE32 i386"; else fail "DLL is PE32 i386"; fi
imports=$(i686-w64-mingw32-objdump -p "$dll" | sed -n 's/.*DLL Name: //p' | tr 'A-Z' 'a-z' | sort -u | tr '\n' ' ')
bad=$(for d in $imports; do case $d in kernel32.dll|user32.dll|gdi32.dll|msvcrt.dll|winmm.dll|advapi32.dll) ;; *) echo "$d";; esac; done)
if [ -z "$bad" ]; then pass "DLL imports only system DLLs ($imports)"; else fail "DLL imports $bad"; fi
exports=$(i686-w64-mingw32-objdump -p "$dll" | sed -n '/\[Ordinal\/Name Pointer\] Table/,$p' | sed -n 's/^\s*\[ *[0-9]*\] //p')
want=$(grep -v -E '^\s*(;|LIBRARY|EXPORTS|$)' src/quill32.def | sed -E 's/[[:space:]]*=.*//; s/@[0-9]+.*//; s/[[:space:]]+$//')
missing=$(comm -23 <(echo "$want" | sort) <(echo "$exports" | sort))
decorated=$(echo "$exports" | grep -E '@|^_Z' || true)
if [ -z "$missing" ] && [ -z "$decorated" ]; then pass "DLL exports $(echo "$want" | wc -l) plain names"; else fail "exports: missing [$missing] decorated [$decorated]"; fi

echo "== native tests (ASan+UBSan)"
run_ctest build/native native

echo "== fuzz targets, ${fuzz_seconds}s each"
for f in build/fuzz/bin/*_fuzz; do
  [ -x "$f" ] || continue
  name=$(basename "$f")
  work=build/fuzz/run/$name; rm -rf "$work"; mkdir -p "$work"
  seeds=fuzz/corpus/$name; [ -d "$seeds" ] || seeds=
  if "$f" -max_total_time="$fuzz_seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 "$work" $seeds >"$work.log" 2>&1; then
    pass "fuzz $name ($(grep -o 'stat::number_of_executed_units: *[0-9]*' "$work.log" | grep -o '[0-9]*$') runs)"
  else
    fail "fuzz $name"; grep -E 'ERROR|SUMMARY|==[0-9]+==' "$work.log" | head -10
  fi
done

echo "== done in $(( $(date +%s) - start )) s"
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
