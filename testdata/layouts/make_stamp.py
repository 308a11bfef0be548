"""Writes the stamp drawing the insertion tests insert as a block.

Its model space: a frame on its own layer, a line, a text in its own style,
a reference of a nested block and three attribute definitions (defaults
"##3", "Sheet ##1 of ##N" and a fixed word). Its insertion base is its
lower right corner.
Usage: make_stamp.py OUT.dxf
"""
import sys

import ezdxf


def main(path):
    doc = ezdxf.new("R2018")
    doc.layers.add("STAMP-LINES", color=3)
    doc.styles.add("StampFont", font="romans.shx")
    logo = doc.blocks.new("LOGO")
    logo.add_circle((0, 0), 4)
    msp = doc.modelspace()
    msp.add_lwpolyline([(0, 0), (180, 0), (180, 40), (0, 40)], close=True,
                       dxfattribs={"layer": "STAMP-LINES"})
    msp.add_line((0, 20), (180, 20))
    msp.add_text("Layomat", dxfattribs={"style": "StampFont", "height": 3,
                                        "insert": (150, 30)})
    msp.add_blockref("LOGO", (170, 30))
    for tag, text, y in (("LAYOUT", "##3", 25), ("SHEET", "Sheet ##1 of ##N", 5),
                         ("FIXED", "Layomat", 12)):
        msp.add_attdef(tag, (10, y), text, dxfattribs={"height": 2.5})
    doc.header["$INSBASE"] = (180, 0, 0)
    doc.saveas(path)


if __name__ == "__main__":
    main(sys.argv[1])
