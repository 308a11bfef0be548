#!/usr/bin/python3
"""Writes the benchmark drawing: A3 frames at 1:100 filled with lines,
circles and texts, R2018, about 23 MB.

Usage: make_bench_drawing.py OUT.dxf [FRAMES] [ENTITIES]
Frames are INSERTs of a title-block block (a closed 4-vertex LWPOLYLINE
plus attributes) laid out in a grid; the entities are spread over them.
Deterministic: the same arguments give the same file.
"""
import random
import sys

import ezdxf

out = sys.argv[1]
frames = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
count = int(sys.argv[3]) if len(sys.argv) > 3 else 150000

W, H = 42000.0, 29700.0  # A3 at 1:100 in mm
doc = ezdxf.new("R2018", setup=True)
doc.header["$INSUNITS"] = 4
for name, color in (("FRAME", 7), ("GEOM", 3), ("TEXT", 2)):
    doc.layers.add(name, color=color)
blk = doc.blocks.new("A3_FRAME")
blk.add_lwpolyline([(0, 0), (W, 0), (W, H), (0, H)], close=True,
                   dxfattribs={"layer": "FRAME"})
blk.add_attdef("SHEET", (W - 15000, 1500), dxfattribs={"height": 500})
blk.add_attdef("TITLE", (W - 15000, 3000), dxfattribs={"height": 700})
msp = doc.modelspace()
cols = 40
rnd = random.Random(1)
for i in range(frames):
    x, y = (i % cols) * (W + 2000), (i // cols) * (H + 2000)
    ref = msp.add_blockref("A3_FRAME", (x, y), dxfattribs={"layer": "FRAME"})
    ref.add_auto_attribs({"SHEET": str(i + 1), "TITLE": f"Sheet {i + 1}"})
for k in range(count):
    i = rnd.randrange(frames)
    ox, oy = (i % cols) * (W + 2000), (i // cols) * (H + 2000)
    px, py = ox + rnd.uniform(500, W - 500), oy + rnd.uniform(500, H - 500)
    kind = k % 3
    if kind == 0:
        msp.add_line((px, py), (px + rnd.uniform(-400, 400),
                                py + rnd.uniform(-400, 400)),
                     dxfattribs={"layer": "GEOM"})
    elif kind == 1:
        msp.add_circle((px, py), rnd.uniform(10, 300),
                       dxfattribs={"layer": "GEOM"})
    else:
        msp.add_text(f"T{k}", dxfattribs={"layer": "TEXT", "height": 250,
                                          "insert": (px, py)})
doc.saveas(out)
