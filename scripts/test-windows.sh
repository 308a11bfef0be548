#!/usr/bin/env bash
# Cross-builds Layomat for 64-bit Windows (mingw-w64) into build-win/ and runs
# every test there under Wine. Installs what it needs with apt-get (root) when
# it is missing. The Wine prefix lives in build-win/.wine; a fresh one is made
# when it is absent (LMT_FRESH_PREFIX=1 forces a new one).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=$root/build-win
jobs=${LMT_JOBS:-$(nproc)}
started=$SECONDS

packages=(wine wine64 fonts-wine libwine-dev g++-mingw-w64-x86-64-posix
          mingw-w64-tools xvfb xauth nsis)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" \
    || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "installing: ${missing[*]}"
  apt-get update -qq
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}"
fi

export WINEPREFIX=$build/.wine WINEARCH=win64 WINEDEBUG=-all
# No Mono or Gecko installer prompts; a crash ends the program instead of
# waiting in Wine's debugger.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
# Wine must never wait for a display: COM and window logic run on the null
# graphics driver; Xvfb is only for screenshots.
unset DISPLAY
wine=$(command -v wine64 || command -v wine)
w() { timeout -k 5 "${LMT_WINE_TIMEOUT:-120}" "$wine" "$@"; }

# The server of this prefix is ours: stop it however the script ends.
server_up=0
stop_server() {
  if ((server_up)); then timeout 30 wineserver -k >/dev/null 2>&1 || true; fi
}
trap stop_server EXIT

mkdir -p "$build"
if [[ ${LMT_FRESH_PREFIX:-0} == 1 ]]; then rm -rf "$WINEPREFIX"; fi
if [[ ! -f $WINEPREFIX/.lmt-ready ]]; then
  echo "== new Wine prefix in $WINEPREFIX"
  rm -rf "$WINEPREFIX"
  server_up=1
  # Without waiting for the server after wineboot, the first out-of-process
  # COM activation hangs.
  timeout 300 wineboot -i >/dev/null 2>&1
  timeout 120 wineserver -w
  # Debian's Wine does not load its own fonts (Tahoma carries Cyrillic).
  cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  w reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
  timeout 120 wineserver -w
  touch "$WINEPREFIX/.lmt-ready"
  echo "   prefix ready after $((SECONDS - started)) s"
fi

echo "== cross build (mingw-w64) in build-win"
cmake -S . -B "$build" -G Ninja \
  -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" >/dev/null
cmake --build "$build" -j "$jobs"
echo "   built after $((SECONDS - started)) s"

# A persistent server saves every test program Wine's cold start.
server_up=1
timeout 30 wineserver -k >/dev/null 2>&1 || true  # one left by a broken run
timeout 30 wineserver -p
w cmd /c exit

echo "== tests under Wine"
# Wine passes the environment on, and its file functions open Unix paths.
shared=${LMT_SHARED_DIR:-$root/../shared}
if [[ -d $shared ]]; then
  export LMT_SHARED_DIR
  LMT_SHARED_DIR=$(cd "$shared" && pwd)
  echo "   shared folder: $LMT_SHARED_DIR"
else
  unset LMT_SHARED_DIR
  echo "   no shared folder ($shared): the tests that need it skip"
fi
tests=0
ctest --test-dir "$build" --output-on-failure -j "$jobs" --no-tests=error \
  || tests=$?

# Also after failed tests: the pictures help to see what went wrong.
echo "== screenshots of the windows"
# The screenshot script stops this server and leaves none running.
timeout 30 wineserver -k >/dev/null 2>&1 || true
server_up=0
"$root/scripts/windows-screenshots.sh"
echo "== Windows leg took $((SECONDS - started)) s"
exit "$tests"
