#!/usr/bin/python3
"""Loads each DXF file with ezdxf and runs its auditor.

Used by the engine's tests for drawings check_dxf.py does not cover (R12).
Exit status 1 when a file cannot be loaded or the audit reports an error.
"""
import sys

import ezdxf

status = 0
for fn in sys.argv[1:]:
    try:
        doc = ezdxf.readfile(fn)
    except Exception as e:  # report and go on with the next file
        print(f"{fn}: cannot load: {e}")
        status = 1
        continue
    auditor = doc.audit()
    print(f"{fn}: {doc.dxfversion}, audit errors {len(auditor.errors)}, "
          f"fixes {len(auditor.fixes)}")
    for err in auditor.errors:
        print(f"   {err.message}")
    if auditor.has_errors:
        status = 1
sys.exit(status)
