#!/usr/bin/python3
"""Writes the drawings of the embedded host's tests (run with Debian's
python3-ezdxf: /usr/bin/python3 make_drawings.py).

viewports.dxf (2018):
  model space: block "TB" with a constant attribute FIRM = "ACME" and a
  variable one NO, referenced once at (0, 0) with NO = "7"; a polyline with
  a half-circle bulge from (0, 0) to (10, 0); an xref "PART" to
  xref_part.dxf placed at (1000, 0); circles inside (5000, 3000) and far
  outside (100000, 100000) of the viewport window, a line crossing its edge,
  a small circle at (26000, 17000) that only an untwisted window would hold.
  layout "Sheet": a 420 x 297 viewport at paper (210, 148.5) showing a
  42000 x 29700 window centred on (5000, 3000), twisted by 30 degrees
  (scale 1:100, target 0, view centre R(30)·(5000, 3000)).
xref_part.dxf: one line from (0, 0) to (100, 50).
"""
import math
import ezdxf

part = ezdxf.new("R2018")
part.modelspace().add_line((0, 0), (100, 50))
part.saveas("xref_part.dxf")

doc = ezdxf.new("R2018", setup=True)
doc.layers.add("FRAMES", color=1)
doc.layers.add("VP", color=4)
tb = doc.blocks.new("TB")
tb.add_lwpolyline([(0, 0), (100, 0), (100, 50), (0, 50)], close=True)
tb.add_attdef("FIRM", (5, 5), text="ACME",
              dxfattribs={"height": 2.5, "flags": 2})
tb.add_attdef("NO", (50, 5), dxfattribs={"height": 2.5})
msp = doc.modelspace()
ref = msp.add_blockref("TB", (0, 0), dxfattribs={"layer": "FRAMES"})
# Constant attributes get no ATTRIB in a reference.
ref.add_attrib("NO", "7", (50, 5), dxfattribs={"height": 2.5})
msp.add_lwpolyline([(0, 0, 0, 0, 1), (10, 0)], format="xyseb")
doc.add_xref_def("xref_part.dxf", "PART")
msp.add_blockref("PART", (1000, 0))
msp.add_circle((5000, 3000), 100)
msp.add_circle((100000, 100000), 100)
# Crosses the window's edge: the window is 42000 x 29700 around (5000, 3000)
# turned by -30 degrees; this line runs from the centre far to the right.
msp.add_line((5000, 3000), (60000, 3000))
# Inside the window's unturned outline but outside the turned window.
msp.add_circle((26000, 17000), 10)

sheet = doc.layouts.new("Sheet")
vp = sheet.add_viewport(center=(210, 148.5), size=(420, 297),
                        view_center_point=(0, 0), view_height=29700)
tw = math.radians(30)
cx = 5000 * math.cos(tw) - 3000 * math.sin(tw)
cy = 5000 * math.sin(tw) + 3000 * math.cos(tw)
vp.dxf.view_center_point = (cx, cy)
vp.dxf.view_target_point = (0, 0, 0)
vp.dxf.view_twist_angle = 30
vp.dxf.layer = "VP"
doc.saveas("viewports.dxf")
