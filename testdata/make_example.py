#!/usr/bin/python3
"""Writes example.dxf: a small plan sheet set drawn at 1:100 in millimetres.

Six A3 title-block frames as references of block "FRAME_A3" (two rows of
three, with SHEET and TITLE attributes, one row turned by 90 degrees), three
A3 frames drawn as closed polylines on layer FRAMES (one rotated by 30
degrees), some content inside every frame, and a paper-space layout
"Pattern" (landscape A3 without margins) holding a title text, for copying
pattern layouts.

Run with Debian's python3-ezdxf: /usr/bin/python3 make_example.py
"""
import math
import ezdxf

W, H = 42000.0, 29700.0  # A3 at 1:100

doc = ezdxf.new("R2018", setup=True)
doc.header["$INSUNITS"] = 4
doc.layers.add("FRAMES", color=1)
doc.layers.add("CONTENT", color=3)
doc.layers.add("TITLE", color=5)

blk = doc.blocks.new("FRAME_A3")
blk.add_lwpolyline([(0, 0), (W, 0), (W, H), (0, H)], close=True,
                   dxfattribs={"layer": "0"})
blk.add_lwpolyline([(W - 18000, 0), (W, 0), (W, 5500), (W - 18000, 5500)],
                   close=True, dxfattribs={"layer": "0"})
blk.add_attdef("SHEET", (W - 3000, 1500), dxfattribs={"height": 500})
blk.add_attdef("TITLE", (W - 17000, 3000), dxfattribs={"height": 700})

msp = doc.modelspace()
titles = ["Site plan", "Ground floor", "First floor",
          "Roof", "Section A-A", "Section B-B"]
for i, title in enumerate(titles):
    row, col = divmod(i, 3)
    x, y = col * (W + 5000), -row * (H + 5000)
    ref = msp.add_blockref("FRAME_A3", (x, y), dxfattribs={"layer": "FRAMES"})
    ref.add_auto_attribs({"SHEET": f"A-{i + 1:02d}", "TITLE": title})
    msp.add_circle((x + W / 3, y + H / 2), 6000, dxfattribs={"layer": "CONTENT"})
    msp.add_line((x + 2000, y + 2000), (x + W - 20000, y + H - 2000),
                 dxfattribs={"layer": "CONTENT"})
    msp.add_text(title, dxfattribs={"layer": "CONTENT", "height": 800,
                                    "insert": (x + 2000, y + H - 3000)})

# Polyline frames below the blocks; the last one rotated by 30 degrees.
base_y = -2 * (H + 5000) - 10000
for i in range(3):
    x0, y0 = i * (W + 5000), base_y
    angle = math.radians(30) if i == 2 else 0.0
    c, s = math.cos(angle), math.sin(angle)
    pts = [(x0 + px * c - py * s, y0 + px * s + py * c)
           for px, py in [(0, 0), (W, 0), (W, H), (0, H)]]
    msp.add_lwpolyline(pts, close=True, dxfattribs={"layer": "FRAMES"})
    cx = x0 + (W / 2) * c - (H / 2) * s
    cy = y0 + (W / 2) * s + (H / 2) * c
    msp.add_circle((cx, cy), 4000, dxfattribs={"layer": "CONTENT"})

pattern = doc.layouts.new("Pattern")
# Landscape A3 without margins: the 420 x 297 viewport of a sheet covers the
# paper exactly, so a plot shows the whole frame. (A new layout comes turned
# by a quarter, which makes the sheet portrait.)
setup = pattern.dxf_layout.dxf
setup.plot_rotation = 0
for margin in ("left_margin", "bottom_margin", "right_margin", "top_margin"):
    setup.set(margin, 0.0)
pattern.add_text("Project Layomat example",
                 dxfattribs={"layer": "TITLE", "height": 5, "insert": (20, 10)})

doc.saveas("example.dxf")
