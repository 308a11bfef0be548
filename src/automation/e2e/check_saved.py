#!/usr/bin/env python3
"""Reads the drawing that the COM end-to-end test saved through
layomat-automation.exe and checks it with ezdxf, as the command line's own
output is checked: the release kept, nine layouts Sheet-1 .. Sheet-9 in order,
each with one viewport beside its own and the pattern's text, and a clean
audit. Exits 1 with the reason on the first failure (this exit status is what
ctest reads)."""
import sys

import ezdxf


def main(path):
    doc = ezdxf.readfile(path)
    if doc.dxfversion != "AC1032":
        return "release %s, expected AC1032" % doc.dxfversion
    names = [l.name for l in doc.layouts if l.name.startswith("Sheet-")]
    if names != ["Sheet-%d" % i for i in range(1, 10)]:
        return "layouts %r" % names
    for name in names:
        layout = doc.layouts.get(name)
        own = [v for v in layout.query("VIEWPORT") if v.dxf.id != 1]
        if len(own) != 1:
            return "%s: %d viewports" % (name, len(own))
        if len(layout.query("TEXT")) != 1:
            return "%s: no pattern text" % name
    errors = doc.audit().errors
    if errors:
        return "audit: %r" % errors[:3]
    return None


if __name__ == "__main__":
    problem = main(sys.argv[1])
    if problem:
        print("check_saved.py: %s: %s" % (sys.argv[1], problem))
        sys.exit(1)
    print("check_saved.py: %s is sound" % sys.argv[1])
