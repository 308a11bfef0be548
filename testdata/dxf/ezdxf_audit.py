#!/usr/bin/python3
"""Loads each DXF file with ezdxf and runs its auditor.

Used by the engine's tests for drawings check_dxf.py does not cover (R12).
Prints "audit errors E, fixes F" per file, then each error and fix.
ezdxf 0.18 deletes every SEQEND of an R12 file as having no owner (R12 has
no owners at all); those fixes are the reader's, not the file's, and are not
counted. Exit status 1 when a file cannot be loaded or the audit reports an
error.
"""
import sys

import ezdxf


def counted(fix, dxfversion):
    return not (dxfversion == "AC1009" and fix.message.startswith("Deleted SEQEND")
                and fix.message.endswith("invalid owner handle #None."))


status = 0
for fn in sys.argv[1:]:
    try:
        doc = ezdxf.readfile(fn)
    except Exception as e:  # report and go on with the next file
        print(f"{fn}: cannot load: {e}")
        status = 1
        continue
    auditor = doc.audit()
    fixes = [f for f in auditor.fixes if counted(f, doc.dxfversion)]
    print(f"{fn}: {doc.dxfversion}, audit errors {len(auditor.errors)}, "
          f"fixes {len(fixes)}")
    for err in auditor.errors:
        print(f"   {err.message}")
    for fix in fixes:
        print(f"   fixed: {fix.message}")
    if auditor.has_errors:
        status = 1
sys.exit(status)
