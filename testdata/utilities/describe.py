#!/usr/bin/python3
"""Describes a drawing for the layout utilities' tests, read by ezdxf:
one line per viewport, "vp HANDLE LAYOUT ID on|off locked|unlocked", with
on/off from bit 131072 of group 90 (group 68 is not reliable), then one line
per model-space entity, "msp HANDLE TYPE", then one per paper-space entity,
"psp LAYOUT HANDLE TYPE", and "layout NAME" for every layout.

Usage: /usr/bin/python3 describe.py FILE
"""
import sys
import ezdxf

OFF = 131072
LOCKED = 16384

doc = ezdxf.readfile(sys.argv[1])
for layout in doc.layouts:
    print("layout", layout.name)
for layout in doc.layouts:
    if layout.name == "Model":
        continue
    for e in layout:
        if e.dxftype() == "VIEWPORT":
            flags = e.dxf.get("flags", 0)
            print("vp", e.dxf.handle, layout.name, e.dxf.get("id", 0),
                  "off" if flags & OFF else "on",
                  "locked" if flags & LOCKED else "unlocked")
        else:
            print("psp", layout.name, e.dxf.handle, e.dxftype())
for e in doc.modelspace():
    print("msp", e.dxf.handle, e.dxftype())
