#!/usr/bin/python3
"""Prints what ezdxf reads of a drawing's layouts, one fact a line.

Usage: ezdxf_layouts.py FILE
  version AC1032
  layout NAME taborder=N block=*Paper_SpaceN active=0|1
  viewport LAYOUT id=N center=X,Y size=W,H vc=X,Y target=X,Y,Z dir=X,Y,Z
           height=H twist=T flags=F layer=L scale=NAME
  attrib LAYOUT HANDLE TAG=VALUE
  entity LAYOUT TYPE HANDLE
The engine's tests compare these lines with what they wrote.
"""
import sys

import ezdxf


def g(v):
    return f"{v:.6g}"


def scale_name(s):
    if s is None:
        return "?"
    for sub in s.xtags.subclasses:
        for code, value in sub:
            if code == 300:
                return value
    return "?"


doc = ezdxf.readfile(sys.argv[1])
print("version", doc.dxfversion)
active = doc.layouts.active_layout().name
for name in doc.layouts.names_in_taborder():
    layout = doc.layouts.get(name)
    print(f"layout {name} taborder={layout.dxf_layout.dxf.taborder} "
          f"block={layout.block_record.dxf.name} active={int(name == active)}")
    for e in layout:
        h = e.dxf.handle
        print(f"entity {name} {e.dxftype()} {h}")
        if e.dxftype() == "VIEWPORT":
            d = e.dxf
            scale = ""
            if e.has_extension_dict:
                xd = e.get_extension_dict()
                rec = xd.get("ASDK_XREC_ANNOTATION_SCALE_INFO")
                if rec is not None:
                    for code, value in rec.tags:
                        if code == 340:
                            s = doc.entitydb.get(value)
                            scale = scale_name(s)
            print(f"viewport {name} id={d.id} center={g(d.center.x)},{g(d.center.y)} "
                  f"size={g(d.width)},{g(d.height)} "
                  f"vc={g(d.view_center_point.x)},{g(d.view_center_point.y)} "
                  f"target={g(d.view_target_point.x)},{g(d.view_target_point.y)},"
                  f"{g(d.view_target_point.z)} "
                  f"dir={g(d.view_direction_vector.x)},{g(d.view_direction_vector.y)},"
                  f"{g(d.view_direction_vector.z)} height={g(d.view_height)} "
                  f"twist={g(d.view_twist_angle)} flags={d.flags} layer={d.layer} "
                  f"status={d.status} scale={scale}")
        if e.dxftype() == "INSERT":
            for a in e.attribs:
                print(f"attrib {name} {a.dxf.handle} {a.dxf.tag}={a.dxf.text}")
