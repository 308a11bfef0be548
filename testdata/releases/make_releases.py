#!/usr/bin/python3
"""Writes one small sheet set in several releases and encodings, so that the
round-trip, viewport and pattern tests run on drawings of our own (run with
Debian's python3-ezdxf: /usr/bin/python3 make_releases.py).

sheets_2000.dxf (AC1015, ASCII), sheets_2018.dxf (AC1032, ASCII) and
sheets_2018_bin.dxf (AC1032, binary) hold the same content:
  model space: three A3 frames at 1:100 (42000 x 29700) side by side, 5000
    apart: two references of block "FRAME_A3" (a closed polyline and
    attribute definitions SHEET and TITLE, filled in) and one closed
    polyline on layer FRAMES; a circle, a line, a text and an mtext inside
    each frame.
  layout "Sheets": 420 x 297 mm, its own viewport (id 1), a viewport at
    1:100 showing the first frame (on) and one showing the second (off).
  layout "Pattern": 420 x 297 mm, its own viewport only and a title text.
  layout "Status": its own viewport and two more that are on and off by
    their flags (group 90) but all carry status 0 (group 68), as drawings
    of some CAD programs do.
sheets_r12.dxf (AC1009): the model space above; R12 has no layouts.

The files are committed beside this script; rerun it after changing it.
"""
import ezdxf

W, H = 42000.0, 29700.0
OFF = 131072


def rectangle(space, x, attribs=None):
    points = [(x, 0), (x + W, 0), (x + W, H), (x, H)]
    if space.doc.dxfversion == "AC1009":
        return space.add_polyline2d(points, close=True, dxfattribs=attribs)
    return space.add_lwpolyline(points, close=True, dxfattribs=attribs)


def content(doc):
    doc.header["$INSUNITS"] = 4
    doc.layers.add("FRAMES", color=1)
    doc.layers.add("CONTENT", color=3)
    doc.layers.add("Viewports", color=7)
    blk = doc.blocks.new("FRAME_A3")
    rectangle(blk, 0)
    blk.add_attdef("SHEET", (W - 3000, 1500), dxfattribs={"height": 500})
    blk.add_attdef("TITLE", (W - 17000, 3000), dxfattribs={"height": 700})
    msp = doc.modelspace()
    for i in range(3):
        x = i * (W + 5000)
        if i < 2:
            ref = msp.add_blockref("FRAME_A3", (x, 0),
                                   dxfattribs={"layer": "FRAMES"})
            ref.add_auto_attribs({"SHEET": f"S-{i + 1}", "TITLE": f"Plan {i + 1}"})
        else:
            rectangle(msp, x, {"layer": "FRAMES"})
        msp.add_circle((x + W / 3, H / 2), 6000, dxfattribs={"layer": "CONTENT"})
        msp.add_line((x + 2000, 2000), (x + W - 20000, H - 2000),
                     dxfattribs={"layer": "CONTENT"})
        msp.add_text(f"Room {i + 1}", dxfattribs={
            "layer": "CONTENT", "height": 800, "insert": (x + 3000, H - 3000)})
        if doc.dxfversion != "AC1009":
            msp.add_mtext(f"Note {i + 1}\\PSecond line", dxfattribs={
                "layer": "CONTENT", "char_height": 500,
                "insert": (x + 3000, H - 6000)})


def sheet(doc, name):
    layout = doc.layouts.new(name)
    layout.page_setup(size=(420, 297), margins=(0, 0, 0, 0), units="mm")
    return layout


def frame_viewport(layout, frame, on=True, status=None):
    vp = layout.add_viewport(center=(210, 148.5), size=(420, 297),
                             view_center_point=(frame * (W + 5000) + W / 2,
                                                H / 2),
                             view_height=H,
                             dxfattribs={"layer": "Viewports"})
    if not on:
        vp.dxf.flags = vp.dxf.flags | OFF
        vp.dxf.status = 0
    if status is not None:
        vp.dxf.status = status
    return vp


def with_layouts(version):
    doc = ezdxf.new(version)
    content(doc)
    sheets = sheet(doc, "Sheets")
    frame_viewport(sheets, 0)
    frame_viewport(sheets, 1, on=False)
    pattern = sheet(doc, "Pattern")
    pattern.add_text("Pattern title", dxfattribs={"height": 5,
                                                   "insert": (20, 20)})
    status = sheet(doc, "Status")
    for vp in status.query("VIEWPORT"):
        vp.dxf.status = 0
    frame_viewport(status, 0, status=0)
    frame_viewport(status, 2, on=False, status=0)
    # Layout1, which every new drawing has, is not needed.
    doc.layouts.delete("Layout1")
    return doc


with_layouts("R2000").saveas("sheets_2000.dxf")
doc = with_layouts("R2018")
doc.saveas("sheets_2018.dxf")
doc.saveas("sheets_2018_bin.dxf", fmt="bin")
r12 = ezdxf.new("R12")
content(r12)
r12.saveas("sheets_r12.dxf")
