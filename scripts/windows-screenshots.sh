#!/usr/bin/env bash
# Screenshots of the add-in's windows, in Russian and in English, under a
# virtual X display: build-win/artifacts/main-window-ru.png and
# main-window-en.png, and for every other window NAME-ru.png and NAME-en.png
# (NAME the window's name; the showcase walks all windows the add-in has).
# Run after scripts/test-windows.sh has built build-win/
# (it calls this script at its end). Without Xvfb, or without the showcase
# program, it says so and succeeds: screenshots are artifacts, not tests.
#
# The tests run Wine on its null display driver; for the pictures the X11
# driver is switched on and afterwards off again, and the program runs in a
# virtual desktop (which draws title bars where no window manager runs). Any Wine server of
# the prefix is stopped first and last, so that no desktop process of one
# driver serves programs of the other.
set -uo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=$root/build-win
art=$build/artifacts
exe=$build/src/ui/ui_showcase.exe
drawing=$root/testdata/frames/polylines.dxf

if ! command -v Xvfb >/dev/null; then
  echo "screenshots skipped: Xvfb is not installed"; exit 0
fi
if [[ ! -f $exe ]]; then
  echo "screenshots skipped: $exe was not built"; exit 0
fi
export WINEPREFIX=$build/.wine WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
wine=$(command -v wine64 || command -v wine)
w() { timeout -k 5 60 "$wine" "$@"; }
winpath() { echo "Z:${1//\//\\}"; }

display=""
for n in $(seq 91 119); do
  if [[ ! -e /tmp/.X11-unix/X$n && ! -e /tmp/.X$n-lock ]]; then display=$n; break; fi
done
if [[ -z $display ]]; then echo "screenshots skipped: no free display"; exit 0; fi

timeout 30 wineserver -k >/dev/null 2>&1 || true
timeout 30 wineserver -w >/dev/null 2>&1 || true
Xvfb ":$display" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
restore() {
  w reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
  timeout 30 wineserver -k >/dev/null 2>&1 || true
  timeout 30 wineserver -w >/dev/null 2>&1 || true
  kill "$xvfb" 2>/dev/null; wait "$xvfb" 2>/dev/null
}
trap restore EXIT
for _ in $(seq 50); do [[ -e /tmp/.X11-unix/X$display ]] && break; sleep 0.1; done
export DISPLAY=:$display

w reg delete 'HKCU\Software\Wine\Drivers' /v Graphics /f >/dev/null 2>&1

mkdir -p "$art"
status=0
for lang in ru en; do
  folder=$art/showcase-$lang
  rm -rf "$folder"; mkdir -p "$folder/appdata" "$folder/windows"
  # An empty language file beside the add-in makes the English installation.
  if [[ $lang == en ]]; then : > "$folder/Lang.ini"; fi
  shot=$folder/main-window.bmp
  # A virtual desktop of its own draws the title bar and is large enough
  # for the window (the default one is 1024 x 768).
  out=$(w explorer "/desktop=LayomatShots,1280x1000" "$(winpath "$exe")" \
          "$(winpath "$folder")" "$(winpath "$folder/appdata")" \
          "$(winpath "$drawing")" "$(winpath "$shot")" \
          "$(winpath "$folder/windows")" 2>&1)
  # BMP -> PNG pairs: the main window, then each other window by name.
  pairs=()
  [[ -f $shot ]] && pairs+=("$shot" "$art/main-window-$lang.png")
  for bmp in "$folder"/windows/*.bmp; do
    [[ -f $bmp ]] || continue
    name=$(basename "$bmp" .bmp)
    pairs+=("$bmp" "$art/$name-$lang.png")
  done
  if [[ -f $shot ]] && /usr/bin/python3 - "${pairs[@]}" <<'PY'
import struct, sys, zlib
def convert(source, target):
    data = open(source, 'rb').read()
    offset, = struct.unpack_from('<I', data, 10)
    width, height, _, bits = struct.unpack_from('<iiHH', data, 18)
    assert bits == 24
    stride = (width * 3 + 3) & ~3
    rows = []
    for y in range(abs(height)):
        src = height - 1 - y if height > 0 else y
        row = data[offset + src * stride: offset + src * stride + width * 3]
        rgb = bytearray(row)
        rgb[0::3], rgb[2::3] = row[2::3], row[0::3]
        rows.append(b'\0' + bytes(rgb))
    def chunk(kind, body):
        return (struct.pack('>I', len(body)) + kind + body +
                struct.pack('>I', zlib.crc32(kind + body) & 0xffffffff))
    png = (b'\x89PNG\r\n\x1a\n' +
           chunk(b'IHDR', struct.pack('>IIBBBBB', width, abs(height), 8, 2, 0, 0, 0)) +
           chunk(b'IDAT', zlib.compress(b''.join(rows), 9)) + chunk(b'IEND', b''))
    open(target, 'wb').write(png)
args = sys.argv[1:]
for i in range(0, len(args), 2):
    convert(args[i], args[i + 1])
PY
  then
    for ((i = 0; i < ${#pairs[@]}; i += 2)); do
      rm -f "${pairs[i]}"
      echo "screenshot: ${pairs[i+1]}"
    done
  else
    status=1
  fi
  # The showcase counts one picture per window; any window it could not
  # show or read fails the run (when its output comes through the desktop).
  if [[ $out =~ [1-9][0-9]*\ failed ]]; then
    echo "screenshots ($lang) incomplete: $out"
    status=1
  fi
done
exit $status
