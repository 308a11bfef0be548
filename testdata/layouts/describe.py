"""Describes a drawing written by layout creation, as ezdxf reads it.

One tab-separated record per line, for the C++ tests to compare:
  layout NAME PLOT_TYPE PAPER_W PAPER_H PLOT_CONFIG
  vp LAYOUT HANDLE ID ON LOCKED LAYER CX CY W H VCX VCY TX TY VH TWIST STATUS
  ent LAYOUT TYPE HANDLE
  mtext LAYOUT LAYER STYLE ATTACH X Y HEIGHT TEXT
  attrib LAYOUT BLOCK TAG VALUE
  layer NAME FROZEN
  vpscale VIEWPORT_HANDLE SCALE_NAME   (a viewport's own annotation scale)
Usage: describe.py DRAWING
"""
import sys

import ezdxf


def row(*fields):
    print("\t".join(str(f) for f in fields))


def main(path):
    doc = ezdxf.readfile(path)
    for layout in doc.layouts:
        if layout.name == "Model":
            continue
        d = layout.dxf_layout.dxf
        row("layout", layout.name, d.get("plot_type", 0),
            d.get("paper_width", 0), d.get("paper_height", 0),
            d.get("plot_configuration_file", ""))
        for e in layout:
            row("ent", layout.name, e.dxftype(), e.dxf.handle)
            if e.dxftype() == "VIEWPORT":
                v = e.dxf
                flags = v.get("flags", 0)
                row("vp", layout.name, v.handle, v.get("id", 0),
                    int(not (flags & 131072)),
                    int(bool(flags & 16384)), v.layer,
                    v.center[0], v.center[1], v.width, v.height,
                    v.view_center_point[0], v.view_center_point[1],
                    v.view_target_point[0], v.view_target_point[1],
                    v.view_height, v.get("view_twist_angle", 0),
                    v.get("status", 0))
                scale = annotation_scale(doc, e)
                if scale:
                    row("vpscale", v.handle, scale)
            elif e.dxftype() == "MTEXT":
                row("mtext", layout.name, e.dxf.layer, e.dxf.get("style", ""),
                    e.dxf.get("attachment_point", 0), e.dxf.insert[0],
                    e.dxf.insert[1], e.dxf.get("char_height", 0), e.text)
            elif e.dxftype() == "INSERT":
                for a in e.attribs:
                    row("attrib", layout.name, e.dxf.name, a.dxf.tag,
                        a.dxf.text)
    for layer in doc.layers:
        row("layer", layer.dxf.name, int(layer.is_frozen()))


def annotation_scale(doc, viewport):
    """The SCALE name the viewport's ASDK_XREC_ANNOTATION_SCALE_INFO names."""
    if not viewport.has_extension_dict:
        return ""
    xdict = viewport.get_extension_dict()
    xrec = xdict.get("ASDK_XREC_ANNOTATION_SCALE_INFO") if xdict else None
    if xrec is None:
        return ""
    for tag in xrec.tags:
        if tag.code == 340:
            scale = doc.entitydb.get(tag.value)
            if scale is not None:
                return scale_name(scale)
    return ""


def scale_name(scale):
    """ezdxf 0.18 keeps SCALE as raw tags: its name is group code 300."""
    for tag in getattr(scale, "xtags", []):
        if tag.code == 300:
            return tag.value
    return scale.dxf.get("name", "")


if __name__ == "__main__":
    main(sys.argv[1])
