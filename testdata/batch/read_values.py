#!/usr/bin/python3
"""Prints what the batch tests compare, one line each, read by ezdxf:
  attrib LAYOUT|BLOCK|TAG=VALUE   for every INSERT in a layout
  defattrib BLOCK|INNERBLOCK|TAG=VALUE  for INSERTs inside block definitions
  text LAYOUT|TYPE=CONTENT         TEXT, MTEXT and MULTILEADER contents
  deftext BLOCK|TYPE=CONTENT       texts inside block definitions
  audit N                          ezdxf audit errors
"""
import sys
import ezdxf

def texts(entity):
    t = entity.dxftype()
    if t == "TEXT":
        return [entity.dxf.text]
    if t == "MTEXT":
        return [entity.text]
    if t == "MULTILEADER":
        ctx = entity.context
        return [ctx.mtext.default_content] if ctx.mtext else []
    return []

doc = ezdxf.readfile(sys.argv[1])
for layout in doc.layouts:
    for e in layout:
        if e.dxftype() == "INSERT":
            for a in e.attribs:
                print(f"attrib {layout.name}|{e.dxf.name}|{a.dxf.tag}={a.dxf.text}")
        for c in texts(e):
            print(f"text {layout.name}|{e.dxftype()}={c}")
for block in doc.blocks:
    if block.name.startswith("*"):
        continue
    for e in block:
        if e.dxftype() == "INSERT":
            for a in e.attribs:
                print(f"defattrib {block.name}|{e.dxf.name}|{a.dxf.tag}={a.dxf.text}")
        for c in texts(e):
            print(f"deftext {block.name}|{e.dxftype()}={c}")
print(f"audit {len(doc.audit().errors)}")
