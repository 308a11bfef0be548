"""Writes the small drawings the engine's format tests read.

format_2000.dxf (AC1015, ANSI_1252), format_2018.dxf (AC1032) and
format_2018_binary.dxf (the same drawing as binary DXF), and
format_2018_high_handles.dxf: the 2018 drawing with every handle moved
above 8000000000000000, as some CAD programs number them. Each holds a text
whose value has a caret followed by "[" (as ACIS data does), a text with
a tab, an LWPOLYLINE and a second layout.

Run with Debian's python3-ezdxf: /usr/bin/python3 make_format_samples.py
"""
import os
import sys

import ezdxf

HERE = os.path.dirname(os.path.abspath(__file__))


def build(version):
    doc = ezdxf.new(version)
    msp = doc.modelspace()
    msp.add_text("caret^[kept", dxfattribs={"layer": "0"})
    msp.add_text("tab\there", dxfattribs={"layer": "0"})
    msp.add_lwpolyline([(0, 0), (420, 0), (420, 297), (0, 297)], close=True)
    doc.layouts.new("Sheet 2")
    return doc


def save_ascii(doc, path):
    # ezdxf writes string bytes as they are; CAD programs write a caret as
    # "^ " and control characters in caret form ("^I" for a tab).
    doc.saveas(path)
    with open(path, "rb") as f:
        data = f.read()
    data = data.replace(b"caret^[kept", b"caret^ [kept")
    data = data.replace(b"tab\there", b"tab^Ihere")
    with open(path, "wb") as f:
        f.write(data)


HANDLE_CODES = {5, 105, 1005} | set(range(320, 370)) | set(range(390, 400)) | {
    480, 481}
HIGH = 0x8000000000000000


def move_handles(src, dst):
    with open(src, "rb") as f:
        lines = f.read().split(b"\n")
    seed = False
    for i in range(0, len(lines) - 1, 2):
        code = int(lines[i].strip())
        value = lines[i + 1].strip()
        if lines[i + 1].strip() == b"$HANDSEED":
            seed = True
            continue
        if (code in HANDLE_CODES or seed) and value and value != b"0":
            try:
                moved = int(value, 16) + HIGH
            except ValueError:
                continue  # a name in a pointer group
            lines[i + 1] = b"%X" % moved
        seed = False
    with open(dst, "wb") as f:
        f.write(b"\n".join(lines))


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else HERE
    save_ascii(build("R2000"), os.path.join(out, "format_2000.dxf"))
    doc = build("R2018")
    save_ascii(doc, os.path.join(out, "format_2018.dxf"))
    doc.saveas(os.path.join(out, "format_2018_binary.dxf"), fmt="bin")
    move_handles(os.path.join(out, "format_2018.dxf"),
                 os.path.join(out, "format_2018_high_handles.dxf"))


if __name__ == "__main__":
    main()
