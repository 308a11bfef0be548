#!/usr/bin/python3
"""Writes the drawings of the layout utilities' tests (run with Debian's
python3-ezdxf: /usr/bin/python3 make_drawings.py).

sheets.dxf (2018), every layout 420 x 297 with its own (id 1) viewport first:
  layout "Own":  only its own viewport and a paper-space text.
  layout "A3":   a 420 x 297 viewport at paper (210, 148.5), scale 1:100
                 (view height 29700), showing the window of 42000 x 29700
                 around (5000, 3000), so x -16000 .. 26000 and
                 y -11850 .. 17850; a paper-space line.
  layout "Pair": two 200 x 140 viewports at 1:100; the first (locked) shows
                 20000 x 14000 around (100000, 100000), the second (off)
                 around (5000, 3000).
  model space:   a circle at the view centre; a line from (20000, 3000) to
                 (30000, 3000) across the right edge; a circle at
                 (27000, 3000), radius 500, just outside it; a rectangle far
                 to the left; a circle near the top right corner inside; a
                 text at the origin; a circle at (100000, 100000).
leftover.dxf (2018): sheets.dxf with a layout "ViewportOffOn" (own viewport
  only) left behind by an interrupted run.
no_viewports.dxf (2018): a line and a circle; one layout without viewports.
"""
import ezdxf

LOCKED = 16384
OFF = 131072


def sheet(doc, name):
    layout = doc.layouts.new(name)
    layout.page_setup(size=(420, 297), margins=(0, 0, 0, 0), units="mm")
    return layout


doc = ezdxf.new("R2018", setup=True)
msp = doc.modelspace()
msp.add_circle((5000, 3000), 100)
msp.add_line((20000, 3000), (30000, 3000))
msp.add_circle((27000, 3000), 500)
msp.add_lwpolyline([(-30000, -5000), (-20000, -5000), (-20000, 0),
                    (-30000, 0)], close=True)
msp.add_circle((25900, 17800), 40)
msp.add_text("inside", dxfattribs={"height": 250})
msp.add_circle((100000, 100000), 100)

own = sheet(doc, "Own")
own.add_text("sheet Own", dxfattribs={"height": 5, "insert": (20, 20)})

a3 = sheet(doc, "A3")
a3.add_viewport(center=(210, 148.5), size=(420, 297),
                view_center_point=(5000, 3000), view_height=29700)
a3.add_line((0, 0), (420, 297))

pair = sheet(doc, "Pair")
far = pair.add_viewport(center=(105, 148.5), size=(200, 140),
                        view_center_point=(100000, 100000), view_height=14000)
far.dxf.flags = far.dxf.flags | LOCKED
near = pair.add_viewport(center=(315, 148.5), size=(200, 140),
                         view_center_point=(5000, 3000), view_height=14000)
near.dxf.flags = near.dxf.flags | OFF
near.dxf.status = 0

doc.layouts.delete("Layout1")
doc.saveas("sheets.dxf")

sheet(doc, "ViewportOffOn")
doc.saveas("leftover.dxf")

bare = ezdxf.new("R2018", setup=True)
bare.modelspace().add_line((0, 0), (100, 100))
bare.modelspace().add_circle((50, 50), 10)
bare.saveas("no_viewports.dxf")
