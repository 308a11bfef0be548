#!/usr/bin/python3
"""Writes the drawings of the batch tests (run once; the output is committed).

attributes.dxf: a title block TITLE (tags SHEET, NAME, DATE) in model space
and on the layouts "Sheet A" and "Sheet B"; a block OTHER with a SHEET tag;
a block OUTER holding a reference of INNER (tag CODE), inserted ten times.
texts.dxf: TEXT, MTEXT with formatting and an MLEADER in model space, a
block TB holding a TEXT, and a TEXT on the layout "Sheet A".
"""
import ezdxf
import ezdxf.math
import ezdxf.render.mleader

def attributes():
    doc = ezdxf.new("R2010")
    title = doc.blocks.new("TITLE")
    title.add_lwpolyline([(0, 0), (100, 0), (100, 50), (0, 50)], close=True)
    for i, tag in enumerate(["SHEET", "NAME", "DATE"]):
        title.add_attdef(tag, (5, 5 + 10 * i), dxfattribs={"height": 2.5})
    other = doc.blocks.new("OTHER")
    other.add_attdef("SHEET", (0, 0), dxfattribs={"height": 2.5})
    inner = doc.blocks.new("INNER")
    inner.add_attdef("CODE", (0, 0), dxfattribs={"height": 2.5})
    outer = doc.blocks.new("OUTER")
    ref = outer.add_blockref("INNER", (1, 1))
    ref.add_auto_attribs({"CODE": "C0"})
    msp = doc.modelspace()
    msp.add_blockref("TITLE", (0, 0)).add_auto_attribs(
        {"SHEET": "12", "NAME": "Aa plan", "DATE": "2020"})
    msp.add_blockref("OTHER", (200, 0)).add_auto_attribs({"SHEET": "o1"})
    for i in range(10):
        msp.add_blockref("OUTER", (300 + 10 * i, 0))
    for name, sheet in (("Sheet A", "A1"), ("Sheet B", "B1")):
        layout = doc.layouts.new(name)
        layout.add_blockref("TITLE", (0, 0)).add_auto_attribs(
            {"SHEET": sheet, "NAME": "layout " + sheet, "DATE": "2021"})
    doc.saveas("attributes.dxf")

def texts():
    doc = ezdxf.new("R2010")
    msp = doc.modelspace()
    msp.add_text("Plan 1", dxfattribs={"height": 2.5})
    msp.add_mtext("{\\fArial|b1;Plan} detail\\PPlan two",
                  dxfattribs={"insert": (0, 20), "char_height": 2.5})
    ml = msp.add_multileader_mtext("Standard")
    ml.set_content("Plan leader", char_height=2.5)
    ml.add_leader_line(ezdxf.render.mleader.ConnectionSide.left,
                       [ezdxf.math.Vec2(40, 40)])
    ml.build(insert=ezdxf.math.Vec2(50, 50))
    tb = doc.blocks.new("TB")
    tb.add_text("Plan in block", dxfattribs={"height": 2.5})
    for i in range(3):
        msp.add_blockref("TB", (100 + 10 * i, 0))
    doc.layouts.new("Sheet A").add_text("Plan sheet",
                                        dxfattribs={"height": 2.5})
    doc.saveas("texts.dxf")

attributes()
texts()
