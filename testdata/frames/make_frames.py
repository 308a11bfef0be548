#!/usr/bin/python3
"""Writes the drawings of the frame search tests.

polylines.dxf: closed frames on layer FRAMES drawn as lightweight
  polylines: P4 (4 vertices) at (0, 0) 420 x 297, P5 (5 vertices, the
  first repeated) at (1000, 0), R30 (4 vertices, turned 30 degrees about
  its first corner) at (2000, 0); rejected shapes: a 3-vertex and a
  6-vertex polyline; a line and a circle; and a 4-vertex look-alike in
  paper space (layout "Sheet") that the search never finds.

blocks.dxf: block FRAME (a 420 x 297 polyline on layer 0, attributes
  SHEET and TITLE), block TWO (two qualifying polylines: 420 x 297, then a
  100 x 50 title box at (320, 0), which wins), block BAD (only a 3- and a
  6-vertex polyline), block CONST (a 420 x 297 polyline and a constant
  attribute SHEET "C-1"). References on layer FRAMES: F1 FRAME at (0, 0)
  SHEET "A/1", F2 FRAME at (1000, 0) scale 2 rotated 90 degrees SHEET
  "A:2", T TWO at (0, 1000), B BAD at (1000, 1000), C CONST at
  (2000, 1000); and a FRAME reference in paper space.

xref.dxf: an external reference XPART to xref_frame.dxf (one 420 x 297
  polyline) at (1000, 0). xref_frame.dxf is written beside it.

based.dxf: block BASED, a 420 x 297 polyline drawn with the base point
  (210, 0) at the middle of its bottom side; references on layer FRAMES at
  (5000, 0) turned 30 degrees and at (6000, 0) mirrored (X scale -1).

mixed.dxf: several kinds of frame candidates: three references of block
  FRAME (a 420 x 297 polyline), two 420 x 297 polylines and one 594 x 420
  polyline on layer FRAMES, one 420 x 297 polyline on layer SHEETS; and
  what is no candidate: block LOGO (a circle only), a 3-vertex polyline.

tie.dxf: two 420 x 297 polylines on layer FRAMES and two references of
  block FRAME: two groups of equal size.

Handles are fixed by the order of creation; the tests look entities up
by layer and position, not by handle. Run with /usr/bin/python3.
"""
import math

import ezdxf

W, H = 420.0, 297.0
RECT = [(0, 0), (W, 0), (W, H), (0, H)]


def new_doc():
    doc = ezdxf.new("R2018")
    doc.layers.add("FRAMES", color=1)
    return doc


def polylines():
    doc = new_doc()
    msp = doc.modelspace()
    on = {"layer": "FRAMES"}
    msp.add_lwpolyline(RECT, close=True, dxfattribs=on)
    msp.add_lwpolyline([(x + 1000, y) for x, y in RECT] + [(1000, 0)],
                       dxfattribs=on)
    a = math.radians(30)
    c, s = math.cos(a), math.sin(a)
    msp.add_lwpolyline([(2000 + x * c - y * s, x * s + y * c)
                        for x, y in RECT], close=True, dxfattribs=on)
    msp.add_lwpolyline([(3000, 0), (3000 + W, 0), (3000 + W, H)],
                       close=True, dxfattribs=on)
    msp.add_lwpolyline([(4000, 0), (4000 + W, 0), (4000 + W, H),
                        (4000 + W / 2, H + 50), (4000, H), (4000, H / 2)],
                       close=True, dxfattribs=on)
    msp.add_line((0, -100), (500, -100), dxfattribs=on)
    msp.add_circle((200, -300), 50, dxfattribs=on)
    sheet = doc.layouts.new("Sheet")
    sheet.add_lwpolyline(RECT, close=True, dxfattribs=on)
    doc.saveas("polylines.dxf")


def blocks():
    doc = new_doc()
    frame = doc.blocks.new("FRAME")
    frame.add_lwpolyline(RECT, close=True)
    frame.add_attdef("SHEET", (W - 50, 10), dxfattribs={"height": 5})
    frame.add_attdef("TITLE", (W - 100, 20), dxfattribs={"height": 5})
    two = doc.blocks.new("TWO")
    two.add_lwpolyline(RECT, close=True)
    two.add_lwpolyline([(320, 0), (420, 0), (420, 50), (320, 50)], close=True)
    bad = doc.blocks.new("BAD")
    bad.add_lwpolyline([(0, 0), (W, 0), (W, H)], close=True)
    bad.add_lwpolyline([(0, 0), (W, 0), (W, H), (W / 2, H + 20), (0, H),
                        (0, H / 2)], close=True)
    const = doc.blocks.new("CONST")
    const.add_lwpolyline(RECT, close=True)
    const.add_attdef("SHEET", (W - 50, 10), text="C-1",
                     dxfattribs={"height": 5, "flags": 2})
    msp = doc.modelspace()
    on = {"layer": "FRAMES"}
    f1 = msp.add_blockref("FRAME", (0, 0), dxfattribs=on)
    f1.add_auto_attribs({"SHEET": "A/1", "TITLE": "Plan"})
    f2 = msp.add_blockref("FRAME", (1000, 0), dxfattribs=dict(
        on, xscale=2, yscale=2, rotation=90))
    f2.add_auto_attribs({"SHEET": "A:2", "TITLE": "Roof"})
    msp.add_blockref("TWO", (0, 1000), dxfattribs=on)
    msp.add_blockref("BAD", (1000, 1000), dxfattribs=on)
    msp.add_blockref("CONST", (2000, 1000), dxfattribs=on)
    sheet = doc.layouts.new("Sheet")
    p = sheet.add_blockref("FRAME", (0, 0), dxfattribs=on)
    p.add_auto_attribs({"SHEET": "P-1", "TITLE": "Paper"})
    doc.saveas("blocks.dxf")


def xref():
    part = ezdxf.new("R2018")
    part.modelspace().add_lwpolyline(RECT, close=True)
    part.saveas("xref_frame.dxf")
    doc = new_doc()
    doc.add_xref_def("xref_frame.dxf", "XPART")
    doc.modelspace().add_blockref("XPART", (1000, 0),
                                  dxfattribs={"layer": "FRAMES"})
    doc.saveas("xref.dxf")


def based():
    doc = new_doc()
    block = doc.blocks.new("BASED", base_point=(W / 2, 0))
    block.add_lwpolyline(RECT, close=True)
    msp = doc.modelspace()
    msp.add_blockref("BASED", (5000, 0),
                     dxfattribs={"layer": "FRAMES", "rotation": 30})
    msp.add_blockref("BASED", (6000, 0),
                     dxfattribs={"layer": "FRAMES", "xscale": -1})
    doc.saveas("based.dxf")


def frame_block(doc):
    frame = doc.blocks.new("FRAME")
    frame.add_lwpolyline(RECT, close=True)


def mixed():
    doc = new_doc()
    doc.layers.add("SHEETS")
    frame_block(doc)
    doc.blocks.new("LOGO").add_circle((0, 0), 10)
    msp = doc.modelspace()
    on = {"layer": "FRAMES"}
    for i in range(3):
        msp.add_blockref("FRAME", (i * 1000, 0), dxfattribs=on)
    for i in range(2):
        msp.add_lwpolyline([(x + i * 1000, y + 1000) for x, y in RECT],
                           close=True, dxfattribs=on)
    msp.add_lwpolyline([(3000, 1000), (3594, 1000), (3594, 1420),
                        (3000, 1420)], close=True, dxfattribs=on)
    msp.add_lwpolyline([(x, y + 3000) for x, y in RECT], close=True,
                       dxfattribs={"layer": "SHEETS"})
    msp.add_blockref("LOGO", (0, -500), dxfattribs=on)
    msp.add_lwpolyline([(0, -1000), (W, -1000), (W, -1000 + H)],
                       close=True, dxfattribs=on)
    doc.saveas("mixed.dxf")


def tie():
    doc = new_doc()
    frame_block(doc)
    msp = doc.modelspace()
    on = {"layer": "FRAMES"}
    for i in range(2):
        msp.add_blockref("FRAME", (i * 1000, 0), dxfattribs=on)
        msp.add_lwpolyline([(x + i * 1000, y + 1000) for x, y in RECT],
                           close=True, dxfattribs=on)
    doc.saveas("tie.dxf")


polylines()
blocks()
xref()
based()
mixed()
tie()
