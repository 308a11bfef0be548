#!/usr/bin/env bash
# The main job on the shipped example drawing: installs what is needed,
# builds, finds the nine frames of testdata/example.dxf (title-block
# references measured by their size, and polylines) and makes one layout
# per frame (copies of the drawing's "Pattern" layout, named Sheet-1 ..
# Sheet-9, each with a 1:100 viewport on layer "Viewports" that shows exactly
# its frame, and a sheet label "Sheet N scale 1:100"), saves
# out/example-layouts.dxf, plots the nine new sheets to
# out/example-layouts.pdf (one landscape A3 page each), and lists what
# ezdxf reads back from the drawing and poppler from the PDF.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake -S . -B build -G Ninja >/dev/null
cmake --build build -j "$(nproc)"
scripts/install-manual.sh build
mkdir -p out

# An empty settings file, so that a user's own settings do not change the
# demo.
settings=$(mktemp)
trap 'rm -f "$settings"' EXIT

# Each plain option sets the window controls a --set would
# (`build/layomat help options` lists them).
build/layomat create-layouts testdata/example.dxf -o out/example-layouts.dxf \
  --settings "$settings" \
  --by-size --numbering 10/20 --names Sheet- --pattern-layout Pattern \
  --scale 1:100 --layer Viewports \
  --text "Sheet ##1 scale ##4" --text-at 300,20 --text-height 5 \
  --pdf out/example-layouts.pdf

echo
echo "== what ezdxf reads in out/example-layouts.dxf"
/usr/bin/python3 - out/example-layouts.dxf <<'PY'
import math
import sys

import ezdxf

doc = ezdxf.readfile(sys.argv[1])
for layout in doc.layouts:
    if layout.name == "Model":
        continue
    line = f"{layout.name:10}"
    for vp in layout.query("VIEWPORT"):
        if vp.dxf.id == 1:
            continue
        v = vp.dxf
        s = v.height / v.view_height
        t = -math.radians(v.view_twist_angle)
        dx, dy = v.view_center_point[0], v.view_center_point[1]
        cx = v.view_target_point[0] + dx * math.cos(t) - dy * math.sin(t)
        cy = v.view_target_point[1] + dx * math.sin(t) + dy * math.cos(t)
        line += (f" viewport {v.width:.0f} x {v.height:.0f} at 1:{1 / s:.0f},"
                 f" twist {round(v.view_twist_angle) % 360} deg, shows ({cx:.0f}, {cy:.0f})")
    for text in layout.query("MTEXT"):
        line += f', text "{text.text}"'
    print(line)
auditor = doc.audit()
print(f"audit: {len(auditor.errors)} errors")
PY

echo
echo "== what poppler reads in out/example-layouts.pdf"
pdfinfo out/example-layouts.pdf | grep -E '^(Pages|Page size):'
