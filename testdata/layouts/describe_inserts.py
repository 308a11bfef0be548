"""Describes the block references on a drawing's layouts and the block
definitions they use, as ezdxf reads them.

One tab-separated record per line:
  insert LAYOUT BLOCK X Y XSCALE YSCALE ROTATION LAYER
  attrib LAYOUT BLOCK TAG VALUE X Y HEIGHT
  block NAME BASE_X BASE_Y ENTITIES MIN_X MIN_Y MAX_X MAX_Y
  layer NAME
  style NAME
Usage: describe_inserts.py DRAWING
"""
import sys

import ezdxf
from ezdxf import bbox


def row(*fields):
    print("\t".join(str(f) for f in fields))


def main(path):
    doc = ezdxf.readfile(path)
    for layout in doc.layouts:
        for e in layout.query("INSERT"):
            d = e.dxf
            row("insert", layout.name, d.name, d.insert[0], d.insert[1],
                d.get("xscale", 1), d.get("yscale", 1), d.get("rotation", 0),
                d.layer)
            for a in e.attribs:
                row("attrib", layout.name, d.name, a.dxf.tag, a.dxf.text,
                    a.dxf.insert[0], a.dxf.insert[1], a.dxf.height)
    for block in doc.blocks:
        if block.name.startswith("*"):
            continue
        box = bbox.extents(block)
        base = block.block.dxf.base_point
        row("block", block.name, base[0], base[1], len(block),
            box.extmin[0], box.extmin[1], box.extmax[0], box.extmax[1])
    for layer in doc.layers:
        row("layer", layer.dxf.name)
    for style in doc.styles:
        row("style", style.dxf.name)


if __name__ == "__main__":
    main(sys.argv[1])
