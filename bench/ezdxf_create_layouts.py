#!/usr/bin/python3
"""The create-layouts job done with ezdxf, for comparison with
`layomat create-layouts`: read the drawing, find the frames (closed
four-vertex polylines in model space and block references whose block
holds one), order them in rows from the top left, make one layout per
frame with one 1:100 viewport showing the frame, save.

Usage: ezdxf_create_layouts.py IN.dxf OUT.dxf
Prints the number of layouts and the elapsed time in seconds.
"""
import sys
import time

import ezdxf
from ezdxf.math import Matrix44, Vec3


def block_frame(doc, name, cache):
    if name not in cache:
        corners = None
        for e in doc.blocks.get(name) or []:
            if e.dxftype() == "LWPOLYLINE" and e.closed and len(e) == 4:
                corners = [Vec3(x, y, 0) for x, y in e.get_points("xy")]
                break
        cache[name] = corners
    return cache[name]


def main(src, dst):
    t0 = time.perf_counter()
    doc = ezdxf.readfile(src)
    frames = []
    cache = {}
    for e in doc.modelspace():
        kind = e.dxftype()
        if kind == "LWPOLYLINE" and e.closed and len(e) == 4:
            frames.append([Vec3(x, y, 0) for x, y in e.get_points("xy")])
        elif kind == "INSERT":
            local = block_frame(doc, e.dxf.name, cache)
            if local:
                m = e.matrix44()
                frames.append([m.transform(p) for p in local])
    # Rows from the top, left to right within a row.
    frames.sort(key=lambda q: (-round(min(p.y for p in q)), min(p.x for p in q)))
    scale = 0.01
    for i, q in enumerate(frames, start=1):
        w = (q[1] - q[0]).magnitude
        h = (q[2] - q[1]).magnitude
        angle = (q[1] - q[0]).angle_deg
        centre = (q[0] + q[2]) / 2
        layout = doc.layouts.new(str(i))
        vp = layout.add_viewport(center=(w * scale / 2, h * scale / 2),
                                 size=(w * scale, h * scale),
                                 view_center_point=centre, view_height=h)
        vp.dxf.view_twist_angle = -angle % 360
        vp.dxf.status = 2
    doc.saveas(dst)
    print(f"{len(frames)} layouts, {time.perf_counter() - t0:.3f} s")


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
