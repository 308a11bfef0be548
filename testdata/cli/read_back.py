#!/usr/bin/python3
"""Reads a drawing back with ezdxf for the command-line tests of frame marks,
named views and layout tab order. One word per line kind:

  marks FILE      "mark KIND LAYER NUMBER X,Y X,Y ..." per model-space object
                  with LAYOMAT_MARK extended data (outline vertices, or the
                  text's insertion point), then "model COUNT".
  listing FILE    every model-space entity without the marks: its type and
                  all its DXF attributes, one line each, in file order.
  views FILE      "view NAME X Y WIDTH HEIGHT TWIST_DEGREES" per VIEW entry,
                  X Y the world point shown at the middle (target plus the
                  centre, which is in the view's twisted axes).
  active FILE     "active X Y HEIGHT TWIST_DEGREES TILEMODE" of the model view
                  (VPORT *Active), X Y as for views.
  tabs FILE       "tab ORDER NAME ENTITIES" per paper layout, by tab order.
  add-line IN OUT copies IN with a user LINE on layer AViewport.
  make-tabs OUT   a drawing with layouts Sheet-10, Sheet-2, sheet-1, Sheet-9
                  and Notes in that tab order, each but Notes with a title
                  block whose attribute NO is Z, B, C, A, and a circle.

Usage: /usr/bin/python3 read_back.py WORD FILE [OUT]
"""
import math
import sys
import ezdxf

APP = "LAYOMAT_MARK"


def marked(e):
    return e.has_xdata(APP)


def fmt(v):
    return "%.6f" % v


word, path = sys.argv[1], sys.argv[2]
if word == "make-tabs":
    doc = ezdxf.new("R2018")
    block = doc.blocks.new("TITLE")
    block.add_lwpolyline([(0, 0), (100, 0), (100, 20), (0, 20)], close=True)
    block.add_attdef("NO", (5, 5), dxfattribs={"height": 3})
    for name, value in (("Sheet-10", "Z"), ("Sheet-2", "B"), ("sheet-1", "C"),
                        ("Sheet-9", "A"), ("Notes", None)):
        layout = doc.layouts.new(name)
        layout.add_circle((50, 50), 10)
        if value is not None:
            ref = layout.add_blockref("TITLE", (10, 10))
            ref.add_attrib("NO", value, (15, 15))
    doc.layouts.delete("Layout1")
    doc.saveas(path)
    sys.exit(0)
doc = ezdxf.readfile(path)
msp = doc.modelspace()
if word == "marks":
    for e in msp:
        if not marked(e):
            continue
        data = [v for code, v in e.get_xdata(APP) if code == 1000]
        if e.dxftype() == "LWPOLYLINE":
            points = [fmt(x) + "," + fmt(y) for x, y in e.get_points("xy")]
            print("mark", data[0], e.dxf.layer, data[1], "closed" if e.closed
                  else "open", *points)
        else:
            p = e.dxf.insert
            print("mark", data[0], e.dxf.layer, e.dxf.text, "text",
                  fmt(p.x) + "," + fmt(p.y))
    print("model", len(msp))
elif word == "listing":
    for e in msp:
        if marked(e):
            continue
        attribs = sorted(e.dxfattribs().items())
        print(e.dxftype(), repr(attribs))
elif word == "views":
    for v in doc.views:
        c, t = v.dxf.center, v.dxf.target
        a = -math.radians(v.dxf.get("view_twist", 0))
        x = t[0] + c[0] * math.cos(a) - c[1] * math.sin(a)
        y = t[1] + c[0] * math.sin(a) + c[1] * math.cos(a)
        print("view", v.dxf.name, fmt(x), fmt(y), fmt(v.dxf.width),
              fmt(v.dxf.height), fmt(v.dxf.get("view_twist", 0)))
elif word == "active":
    v = doc.viewports.get("*Active")
    v = v[0] if isinstance(v, list) else v
    c, t = v.dxf.center, v.dxf.target
    a = -math.radians(v.dxf.get("view_twist", 0))
    x = t[0] + c[0] * math.cos(a) - c[1] * math.sin(a)
    y = t[1] + c[0] * math.sin(a) + c[1] * math.cos(a)
    print("active", fmt(x), fmt(y), fmt(v.dxf.height),
          fmt(v.dxf.get("view_twist", 0)), doc.header.get("$TILEMODE", 1))
elif word == "tabs":
    paper = [l for l in doc.layouts if l.name != "Model"]
    for l in sorted(paper, key=lambda l: l.dxf_layout.dxf.taborder):
        content = sorted(e.dxftype() + ":" + e.dxf.handle for e in l)
        print("tab", l.dxf_layout.dxf.taborder, l.name, " ".join(content))
elif word == "add-line":
    if "AViewport" not in doc.layers:
        doc.layers.add("AViewport")
    msp.add_line((0, 0), (1000, 1000), dxfattribs={"layer": "AViewport"})
    doc.saveas(sys.argv[3])
