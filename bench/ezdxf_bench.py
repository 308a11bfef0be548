#!/usr/bin/python3
"""ezdxf's readfile and saveas on the benchmark drawing, for comparison with
dxf_bench.

Usage: ezdxf_bench.py FILE [RUNS]
Prints the best time of RUNS, MB/s, and the peak resident memory of the
process (measured around the first load).
"""
import os
import resource
import sys
import tempfile
import time

import ezdxf

path = sys.argv[1]
runs = int(sys.argv[2]) if len(sys.argv) > 2 else 3
size = os.path.getsize(path) / 1e6

before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
load_best = float("inf")
doc = None
for _ in range(runs):
    t0 = time.perf_counter()
    doc = ezdxf.readfile(path)
    load_best = min(load_best, time.perf_counter() - t0)
    if _ == 0:
        peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
save_best = float("inf")
with tempfile.TemporaryDirectory() as tmp:
    out = os.path.join(tmp, "out.dxf")
    for _ in range(runs):
        t0 = time.perf_counter()
        doc.saveas(out)
        save_best = min(save_best, time.perf_counter() - t0)
print(f"ezdxf {ezdxf.__version__}: file {size:.1f} MB")
print(f"  readfile {load_best * 1000:.0f} ms = {size / load_best:.1f} MB/s")
print(f"  saveas   {save_best * 1000:.0f} ms = {size / save_best:.1f} MB/s")
print(f"  peak RSS after first load {peak / 1024:.0f} MB "
      f"(grown {(peak - before) / 1024:.0f} MB, "
      f"{(peak - before) / 1024 / size:.1f}x file)")
