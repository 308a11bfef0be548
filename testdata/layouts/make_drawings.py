#!/usr/bin/python3
"""Writes the drawings of the layout-creation tests (run with Debian's
python3-ezdxf: /usr/bin/python3 make_drawings.py).

frames.dxf (2018), millimetres, frames on layer FRAMES:
  row 1: polyline 42000 x 29700 at (0, 0), not rotated;
  row 2: polyline 42000 x 29700 at (60000, 0) turned by 30 degrees;
  row 3: reference of block "TB" (a 42000 x 29700 frame polyline with
         attributes SHEET and SCALE) at (0, -60000) turned by 90 degrees;
  row 4: reference of "TB" at (60000, -60000) turned by 200 degrees.
  Layout "Pattern": paper 594 x 420 on "Pattern.pc3", plot type 5, a text
  and a reference of block "TB_PAPER" (attributes SHEET, SCALE, and a
  constant attribute ORG); its own viewport only.
  Layout "Old": 420 x 297 with its own viewport and a viewport showing
  (0, 0) at 1:100, switched on.
  Layer "HIDDEN" is frozen (the annotation-scale run thaws every layer at
  its end, this one included); layer "CONTENT" holds a circle at the
  centre of every frame.
"""
import math

import ezdxf

W, H = 42000.0, 29700.0

doc = ezdxf.new("R2018", setup=True)
doc.header["$INSUNITS"] = 4
doc.layers.add("FRAMES", color=1)
doc.layers.add("CONTENT", color=3)
doc.layers.add("HIDDEN", color=4)

tb = doc.blocks.new("TB")
tb.add_lwpolyline([(0, 0), (W, 0), (W, H), (0, H)], close=True)
tb.add_attdef("SHEET", (W - 3000, 1500), dxfattribs={"height": 500})

paper_tb = doc.blocks.new("TB_PAPER")
paper_tb.add_lwpolyline([(0, 0), (180, 0), (180, 55), (0, 55)], close=True)
paper_tb.add_attdef("SHEET", (150, 10), dxfattribs={"height": 5})
paper_tb.add_attdef("SCALE", (150, 25), dxfattribs={"height": 5})
const = paper_tb.add_attdef("ORG", (10, 40), dxfattribs={"height": 5})
const.dxf.flags = 2  # constant
const.dxf.text = "Layomat"

msp = doc.modelspace()


def rotated(x0, y0, deg):
    a = math.radians(deg)
    c, s = math.cos(a), math.sin(a)
    return [(x0 + px * c - py * s, y0 + px * s + py * c)
            for px, py in [(0, 0), (W, 0), (W, H), (0, H)]]


for x0, y0, deg in [(0, 0, 0), (60000, 0, 30)]:
    pts = rotated(x0, y0, deg)
    msp.add_lwpolyline(pts, close=True, dxfattribs={"layer": "FRAMES"})
    cx = sum(p[0] for p in pts) / 4
    cy = sum(p[1] for p in pts) / 4
    msp.add_circle((cx, cy), 3000, dxfattribs={"layer": "CONTENT"})
for x0, y0, deg in [(0, -60000, 90), (60000, -60000, 200)]:
    ref = msp.add_blockref("TB", (x0, y0),
                           dxfattribs={"layer": "FRAMES", "rotation": deg})
    ref.add_auto_attribs({"SHEET": "model"})
    pts = rotated(x0, y0, deg)
    cx = sum(p[0] for p in pts) / 4
    cy = sum(p[1] for p in pts) / 4
    msp.add_circle((cx, cy), 3000, dxfattribs={"layer": "CONTENT"})
msp.add_line((0, 0), (1, 1), dxfattribs={"layer": "HIDDEN"})
doc.layers.get("HIDDEN").freeze()

pattern = doc.layouts.new("Pattern")
pattern.page_setup(size=(594, 420), margins=(0, 0, 0, 0), units="mm",
                   device="Pattern.pc3")
pattern.dxf_layout.dxf.plot_type = 5
pattern.add_text("Pattern title", dxfattribs={"height": 5, "insert": (20, 10)})
ref = pattern.add_blockref("TB_PAPER", (400, 0))
ref.add_auto_attribs({"SHEET": "0", "SCALE": "?"})

old = doc.layouts.new("Old")
old.page_setup(size=(420, 297), margins=(0, 0, 0, 0), units="mm")
vp = old.add_viewport(center=(210, 148.5), size=(420, 297),
                      view_center_point=(0, 0), view_height=29700)
vp.dxf.status = 2

for name in ["Layout1"]:
    if name in doc.layouts:
        doc.layouts.delete(name)
doc.saveas("frames.dxf")
