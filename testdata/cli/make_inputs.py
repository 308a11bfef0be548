#!/usr/bin/python3
"""Writes the command line's round-trip inputs: one small drawing in three
files, frames_2000.dxf (DXF 2000, AC1015, ASCII), frames_2018.dxf (DXF 2018,
AC1032, ASCII) and frames_2018_bin.dxf (the same, binary DXF); and
frames_r12.dxf, the drawing in R12, which the commands write as R12.

The drawing: block "FRAME" holding an A3 frame at 1:100 (a closed
polyline) referenced twice on layer FRAMES, the second reference turned by
30 degrees; a circle inside each frame and one far outside both; layout
"Pattern" with a text, for copying pattern layouts; layout "Sheet" with one
viewport showing the first frame, for the viewport commands.

Run with Debian's python3-ezdxf: /usr/bin/python3 make_inputs.py
"""
import math
import ezdxf

W, H = 42000.0, 29700.0  # A3 at 1:100


def drawing(release):
    doc = ezdxf.new(release, setup=True)
    doc.header["$INSUNITS"] = 4
    doc.layers.add("FRAMES", color=1)
    doc.layers.add("CONTENT", color=3)
    frame = doc.blocks.new("FRAME")
    frame.add_lwpolyline([(0, 0), (W, 0), (W, H), (0, H)], close=True)

    msp = doc.modelspace()
    for x, degrees in [(0.0, 0.0), (60000.0, 30.0)]:
        msp.add_blockref("FRAME", (x, 0),
                         dxfattribs={"layer": "FRAMES", "rotation": degrees})
        a = math.radians(degrees)
        cx = x + W / 2 * math.cos(a) - H / 2 * math.sin(a)
        cy = W / 2 * math.sin(a) + H / 2 * math.cos(a)
        msp.add_circle((cx, cy), 3000, dxfattribs={"layer": "CONTENT"})
    msp.add_circle((0, -100000), 3000, dxfattribs={"layer": "CONTENT"})

    pattern = doc.layouts.new("Pattern")
    pattern.add_text("Pattern title",
                     dxfattribs={"height": 5, "insert": (20, 10)})
    sheet = doc.layouts.new("Sheet")
    sheet.add_viewport(center=(210, 148.5), size=(420, 297),
                       view_center_point=(W / 2, H / 2), view_height=H)
    return doc


drawing("R2000").saveas("frames_2000.dxf")
drawing("R2018").saveas("frames_2018.dxf")
drawing("R2018").saveas("frames_2018_bin.dxf", fmt="bin")

# R12, which the engine reads but does not write: every command runs on it
# and then has its save refused. The frames as polylines, and a viewport in
# paper space.
r12 = ezdxf.new("R12")
r12.modelspace().add_polyline2d([(0, 0), (W, 0), (W, H), (0, H)], close=True)
r12.modelspace().add_circle((W / 2, H / 2), 3000)
r12.modelspace().add_circle((0, -100000), 3000)
r12.layout().add_viewport(center=(210, 148.5), size=(420, 297),
                          view_center_point=(W / 2, H / 2), view_height=H)
r12.saveas("frames_r12.dxf")
