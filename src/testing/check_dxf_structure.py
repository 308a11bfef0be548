#!/usr/bin/python3
"""Structural check of a DXF file we wrote, for the tests (testing::RunDxfCheck).

Usage: check_dxf_structure.py FILE

Reads the raw tag stream (ASCII or binary, R12 and later) and checks what
CAD programs rely on when they open a drawing:
  * handles are unique and nonzero, and $HANDSEED lies above all of them;
  * every owner pointer (330 of the common part) and extension dictionary
    (360) names an object of the file;
  * every DICTIONARY entry names an object of the file;
  * every LAYOUT names its BLOCK_RECORD, and that record names it back (340);
  * every layout name appears exactly once in the ACAD_LAYOUT dictionary, and
    every entry there is a LAYOUT;
  * a layout's last active viewport (331) resolves;
  * each paper-space block that holds viewports holds one with id 1.
Then ezdxf loads the file and runs its auditor.

The report is stable: one "problem: ..." line per finding, then the
summary lines the tests parse:
    structural problems: N
    audit errors: E, fixes: F
A file ezdxf cannot load or audit counts as one audit error; a file whose
tags cannot be read at all gets "load failed: ..." and no summary.
The exit status is 0 whenever a report was printed, 2 on a bad command line.
"""
import io
import sys

import ezdxf
from ezdxf.lldxf.tagger import ascii_tags_loader, binary_tags_loader

BINARY_SENTINEL = b"AutoCAD Binary DXF\r\n\x1a\x00"


def read_tags(path):
    """The file's tags as (code, value) pairs; values of handle codes as text."""
    with open(path, "rb") as f:
        data = f.read()
    if data.startswith(BINARY_SENTINEL):
        return "binary", [(t.code, t.value) for t in binary_tags_loader(data)]
    # Handles and names used here are ASCII; the code page does not matter.
    text = data.decode("cp1252", errors="replace")
    tags = ascii_tags_loader(io.StringIO(text), skip_comments=True)
    return "ascii", [(t.code, t.value) for t in tags]


class Record:
    """One object of a section: its type, tags and the section it lives in."""

    def __init__(self, section, kind):
        self.section = section
        self.kind = kind
        self.tags = []

    def finish(self):
        """Reads the common part once all tags are in."""
        self.handle = None
        self.owner = None
        self.xdict = None
        in_group = False
        handle_code = 105 if self.kind == "DIMSTYLE" else 5
        for code, value in self.tags:
            if code == 102:
                in_group = str(value).startswith("{")
                continue
            if code == 100:
                break  # the common part ends at the first subclass marker
            # DIMSTYLE keeps its handle in 105 (its 5 is DIMBLK's name).
            if code == handle_code and self.handle is None:
                self.handle = str(value).strip().upper()
            elif code == 330 and not in_group and self.owner is None:
                self.owner = str(value).strip().upper()
            elif code == 360 and in_group and self.xdict is None:
                self.xdict = str(value).strip().upper()

    def subclass_values(self, marker, code):
        """Values of `code` after the subclass marker `marker`."""
        inside, out = False, []
        for c, v in self.tags:
            if c == 100:
                inside = v == marker
            elif inside and c == code:
                out.append(v)
        return out

    def first(self, code, default=None):
        for c, v in self.tags:
            if c == code:
                return v
        return default

    def label(self):
        return f"{self.kind} #{self.handle}" if self.handle else self.kind


def split_records(tags):
    """Header variables and the objects of every other section."""
    header, records = {}, []
    section, current = None, None
    i = 0
    var = None
    while i < len(tags):
        code, value = tags[i]
        if code == 0 and value == "SECTION":
            section = str(tags[i + 1][1]) if i + 1 < len(tags) else None
            current = None
            i += 2
            continue
        if code == 0 and value in ("ENDSEC", "EOF"):
            section, current = None, None
            i += 1
            continue
        if section == "HEADER":
            if code == 9:
                var = value
            elif var is not None and var not in header:
                header[var] = value
        elif section is not None and code == 0:
            current = Record(section, str(value))
            records.append(current)
        elif current is not None:
            current.tags.append((code, value))
        i += 1
    for r in records:
        r.finish()
    return header, records


def hex_value(text):
    try:
        return int(str(text), 16)
    except ValueError:
        return None


def check_structure(header, records):
    problems = []
    by_handle = {}
    for r in records:
        if r.handle is None:
            continue
        value = hex_value(r.handle)
        if value is None or value == 0:
            problems.append(f"{r.kind} has handle {r.handle!r}")
            continue
        if r.handle in by_handle:
            problems.append(f"handle {r.handle} used by {by_handle[r.handle].kind}"
                            f" and {r.kind}")
            continue
        by_handle[r.handle] = r

    def resolves(handle):
        return handle in by_handle

    seed = hex_value(header.get("$HANDSEED", "")) if by_handle else None
    if by_handle:
        top = max(hex_value(h) for h in by_handle)
        if seed is None or seed <= top:
            problems.append(f"$HANDSEED {header.get('$HANDSEED')} not above "
                            f"the largest handle {top:X}")

    for r in records:
        if r.owner not in (None, "0") and not resolves(r.owner):
            problems.append(f"{r.label()}: owner {r.owner} does not exist")
        if r.xdict not in (None, "0") and not resolves(r.xdict):
            problems.append(f"{r.label()}: extension dictionary {r.xdict} "
                            "does not exist")

    dictionaries = [r for r in records
                    if r.kind in ("DICTIONARY", "ACDBDICTIONARYWDFLT")]
    entries_of = {}
    for d in dictionaries:
        entries, name = [], None
        for code, value in d.tags:
            if code == 3:
                name = str(value)
            elif code in (350, 360) and name is not None:
                handle = str(value).strip().upper()
                entries.append((name, handle))
                if not resolves(handle):
                    problems.append(f"{d.label()}: entry {name!r} names "
                                    f"missing {handle}")
                name = None
        entries_of[d.handle] = entries

    layouts = [r for r in records if r.kind == "LAYOUT"]
    for lay in layouts:
        name = (lay.subclass_values("AcDbLayout", 1) or ["?"])[0]
        records_named = lay.subclass_values("AcDbLayout", 330)
        block = str(records_named[0]).strip().upper() if records_named else None
        rec = by_handle.get(block)
        if rec is None or rec.kind != "BLOCK_RECORD":
            problems.append(f"layout {name!r}: block record {block} missing")
        else:
            back = str(rec.first(340, "0")).strip().upper()
            if back != lay.handle:
                problems.append(f"layout {name!r}: block record {block} names "
                                f"layout {back}")
        for vp in lay.subclass_values("AcDbLayout", 331):
            vp = str(vp).strip().upper()
            if vp != "0" and not resolves(vp):
                problems.append(f"layout {name!r}: viewport {vp} missing")
    for rec in records:
        if rec.kind != "BLOCK_RECORD":
            continue
        lay = str(rec.first(340, "0")).strip().upper()
        if lay == "0":
            continue
        target = by_handle.get(lay)
        if target is None or target.kind != "LAYOUT":
            problems.append(f"block record {rec.first(2)!r}: layout {lay} "
                            "missing")

    # The layout dictionary: the root dictionary's ACAD_LAYOUT entry.
    root = next((d for d in dictionaries if d.section == "OBJECTS"), None)
    if layouts and root is not None:
        layout_dict = dict(entries_of.get(root.handle, [])).get("ACAD_LAYOUT")
        entries = entries_of.get(layout_dict)
        if entries is None:
            problems.append("no ACAD_LAYOUT dictionary")
        else:
            for key, handle in entries:
                target = by_handle.get(handle)
                if target is not None and target.kind != "LAYOUT":
                    problems.append(f"ACAD_LAYOUT entry {key!r} is a "
                                    f"{target.kind}")
            for lay in layouts:
                name = (lay.subclass_values("AcDbLayout", 1) or ["?"])[0]
                count = sum(1 for key, _ in entries if key == name)
                if count != 1:
                    problems.append(f"layout {name!r} appears {count} times in "
                                    "ACAD_LAYOUT")

    # Viewports by the paper-space block that owns them.
    paper_blocks = {r.handle for r in records if r.kind == "BLOCK_RECORD"
                    and str(r.first(2, "")).upper().startswith("*PAPER_SPACE")}
    viewports = {}
    for r in records:
        if r.kind == "VIEWPORT" and r.section in ("ENTITIES", "BLOCKS"):
            viewports.setdefault(r.owner, []).append(r)
    for owner, vps in viewports.items():
        if owner not in paper_blocks:
            continue
        if not any(int(v.first(69, 0) or 0) == 1 for v in vps):
            rec = by_handle[owner]
            problems.append(f"paper space {rec.first(2)!r}: {len(vps)} "
                            "viewport(s), none with id 1")
    return problems


def main(argv):
    if len(argv) != 2:
        print(__doc__.strip().splitlines()[2], file=sys.stderr)
        return 2
    path = argv[1]
    try:
        fmt, tags = read_tags(path)
    except (OSError, ezdxf.DXFError) as e:
        print(f"file: {path}\nload failed: {e}")
        return 0
    header, records = split_records(tags)
    version = header.get("$ACADVER", "?")
    print(f"file: {path}")
    print(f"format: {fmt}, {version}, {len(records)} objects")
    problems = check_structure(header, records)
    for p in problems:
        print(f"problem: {p}")
    print(f"structural problems: {len(problems)}")
    # ezdxf raises more than DXFError on damaged files (KeyError, TypeError,
    # ...); any of them means a CAD program may fail too: one audit error.
    try:
        doc = ezdxf.readfile(path)
        auditor = doc.audit()
    except Exception as e:  # noqa: BLE001 - the verdict, not a crash
        print(f"audit error: ezdxf failed: {type(e).__name__}: {e}")
        print("audit errors: 1, fixes: 0")
        return 0
    # ezdxf gives R12's SEQENDs no owner and then deletes them as orphans:
    # the reader's doing, not the file's.
    fixes = [f for f in auditor.fixes
             if not (doc.dxfversion == "AC1009"
                     and f.message.startswith("Deleted SEQEND"))]
    for e in auditor.errors:
        print(f"audit error: {e.message}")
    for f in fixes:
        print(f"audit fix: {f.message}")
    print(f"audit errors: {len(auditor.errors)}, fixes: {len(fixes)}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
