#!/usr/bin/python3
"""How closely our renderer draws what ezdxf's drawing add-on draws.

For each drawing, model space and every paper layout with content are
rendered by both at the same raster size over the same window (the
layout's extents as ezdxf measures them): ours through render_window (built
beside this build's tests), ezdxf's through matplotlib. Ink is every pixel that
differs from the raster's background. The overlap of the two is the
harmonic mean of the share of our ink lying within 2 pixels of theirs and
the share of theirs lying within 2 pixels of ours (1 = the same drawing).

  /usr/bin/python3 src/render/render_quality.py build/src/render/render_window \
      OUT_DIR DXF_OR_DIR... [--size PX] [--worst N] [--json FILE]
      [--require-each MIN]

Prints one line per view (overlap, ink counts, file and layout), then the
distribution, and keeps side-by-side pictures of the worst N views in
OUT_DIR. With --require-each, exits 1 when a view's overlap is below MIN.
Needs python3-ezdxf and python3-matplotlib (Debian); exits 77 without.
"""
import argparse
import json
import logging
import os
import statistics
import subprocess
import sys

try:
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.image as mpimg
    import matplotlib.pyplot as plt
    import numpy as np

    import ezdxf
    from ezdxf import bbox, recover
    from ezdxf.addons.drawing import Frontend, RenderContext
    from ezdxf.addons.drawing.matplotlib import MatplotlibBackend
except ImportError as missing:  # a test runner reads 77 as "skipped"
    print(f"render_quality: {missing}; install python3-matplotlib and "
          "python3-ezdxf", file=sys.stderr)
    sys.exit(77)

# SHX font names that matplotlib looks up in vain, once per text.
logging.getLogger("matplotlib.font_manager").setLevel(logging.ERROR)

DPI = 100


def ink(path):
    """Pixels that differ from the most common colour (the background)."""
    img = mpimg.imread(path)[:, :, :3]
    flat = (img * 255).astype(np.uint8).reshape(-1, 3)
    colours, counts = np.unique(flat, axis=0, return_counts=True)
    background = colours[np.argmax(counts)]
    return np.any(np.abs(img * 255 - background) > 24, axis=2)


def dilate(mask, r=2):
    out = mask.copy()
    h, w = mask.shape
    for dy in range(-r, r + 1):
        for dx in range(-r, r + 1):
            shifted = np.zeros_like(mask)
            ys, yd = (slice(dy, h), slice(0, h - dy)) if dy >= 0 else (slice(0, h + dy), slice(-dy, h))
            xs, xd = (slice(dx, w), slice(0, w - dx)) if dx >= 0 else (slice(0, w + dx), slice(-dx, w))
            shifted[ys, xs] = mask[yd, xd]
            out |= shifted
    return out


def overlap(ours, theirs):
    if ours.sum() == 0 and theirs.sum() == 0:
        return 1.0
    if ours.sum() == 0 or theirs.sum() == 0:
        return 0.0
    precision = (ours & dilate(theirs)).sum() / ours.sum()
    recall = (theirs & dilate(ours)).sum() / theirs.sum()
    if precision + recall == 0:
        return 0.0
    return float(2 * precision * recall / (precision + recall))


def window_of(layout, size):
    ext = bbox.extents(layout, fast=True)
    if not ext.has_data:
        return None
    (x0, y0, _), (x1, y1, _) = ext.extmin, ext.extmax
    w, h = x1 - x0, y1 - y0
    if not (w > 0 or h > 0):
        return None
    w, h = max(w, h / 50), max(h, w / 50)
    cx, cy = (x0 + x1) / 2, (y0 + y1) / 2
    w, h = w * 1.04, h * 1.04
    px_w = size if w >= h else max(32, round(size * w / h))
    px_h = size if h >= w else max(32, round(size * h / w))
    return (cx - w / 2, cy - h / 2, cx + w / 2, cy + h / 2), px_w, px_h


def render_ezdxf(doc, layout, window, px_w, px_h, out):
    fig = plt.figure(figsize=(px_w / DPI, px_h / DPI), dpi=DPI)
    ax = fig.add_axes([0, 0, 1, 1])
    ctx = RenderContext(doc)
    ctx.set_current_layout(layout)
    Frontend(ctx, MatplotlibBackend(ax)).draw_layout(layout, finalize=False)
    ax.set_xlim(window[0], window[2])
    ax.set_ylim(window[1], window[3])
    ax.set_aspect("auto")
    # Not axis("off"): that hides the layout's background too, and model
    # space draws white lines on a dark one.
    ax.xaxis.set_visible(False)
    ax.yaxis.set_visible(False)
    for spine in ax.spines.values():
        spine.set_visible(False)
    fig.savefig(out, dpi=DPI, facecolor=ax.get_facecolor())
    plt.close(fig)


def views(path):
    try:
        doc = ezdxf.readfile(path)
    except Exception:  # the corpus holds damaged files on purpose
        try:
            doc, _ = recover.readfile(path)
        except Exception:
            return
    for layout in doc.layouts:
        if len(layout) == 0:
            continue
        yield doc, layout


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("render_window")
    ap.add_argument("out_dir")
    ap.add_argument("inputs", nargs="+")
    ap.add_argument("--size", type=int, default=600)
    ap.add_argument("--worst", type=int, default=10)
    ap.add_argument("--json")
    ap.add_argument("--require-each", type=float)
    args = ap.parse_args()
    os.makedirs(args.out_dir, exist_ok=True)
    files = []
    for p in args.inputs:
        if os.path.isdir(p):
            files += sorted(os.path.join(p, f) for f in os.listdir(p)
                            if f.lower().endswith(".dxf"))
        else:
            files.append(p)
    results = []
    for path in files:
        for doc, layout in views(path):
            try:
                found = window_of(layout, args.size)
            except Exception as e:  # ezdxf cannot measure it: say so
                print(f"skip {path} {layout.name}: extents: {e}", flush=True)
                continue
            if found is None:
                continue
            window, px_w, px_h = found
            stem = f"{len(results):04d}"
            ours = os.path.join(args.out_dir, stem + "-ours.png")
            theirs = os.path.join(args.out_dir, stem + "-ezdxf.png")
            run = subprocess.run(
                [args.render_window, path, layout.name]
                + [repr(v) for v in window] + [str(px_w), str(px_h), ours],
                capture_output=True, text=True, timeout=300)
            if run.returncode != 0:
                print(f"skip {path} {layout.name}: ours: {run.stderr.strip()}",
                      flush=True)
                continue
            try:
                render_ezdxf(doc, layout, window, px_w, px_h, theirs)
            except Exception as e:
                print(f"skip {path} {layout.name}: ezdxf: {e}", flush=True)
                continue
            a, b = ink(ours), ink(theirs)
            # matplotlib rounds the figure to whole pixels its own way.
            h, w = min(a.shape[0], b.shape[0]), min(a.shape[1], b.shape[1])
            if abs(a.shape[0] - b.shape[0]) > 2 or abs(a.shape[1] - b.shape[1]) > 2:
                print(f"skip {path} {layout.name}: sizes differ", flush=True)
                continue
            a, b = a[:h, :w], b[:h, :w]
            score = overlap(a, b)
            results.append({"file": path, "layout": layout.name,
                            "overlap": score, "ink_ours": int(a.sum()),
                            "ink_ezdxf": int(b.sum()), "stem": stem,
                            "not_drawn": run.stdout.strip()})
            print(f"{score:.3f} {a.sum():7d} {b.sum():7d} {path} "
                  f"[{layout.name}] {run.stdout.strip()}", flush=True)
    if not results:
        print("no views")
        return 1
    scores = sorted(r["overlap"] for r in results)
    deciles = statistics.quantiles(scores, n=10) if len(scores) > 1 else scores
    print(f"\n{len(results)} views of {len(files)} files: median "
          f"{statistics.median(scores):.3f}, 10th percentile {deciles[0]:.3f}, "
          f"mean {statistics.mean(scores):.3f}")
    worst = sorted(results, key=lambda r: r["overlap"])[: args.worst]
    print("worst:")
    keep = set()
    for r in worst:
        print(f"  {r['overlap']:.3f} {r['file']} [{r['layout']}] {r['not_drawn']}")
        keep.add(r["stem"])
    for r in results:  # only the worst views' pictures stay
        if r["stem"] not in keep:
            for side in ("ours", "ezdxf"):
                os.remove(os.path.join(args.out_dir, f"{r['stem']}-{side}.png"))
    if args.json:
        with open(args.json, "w") as f:
            json.dump(results, f, indent=1)
    if args.require_each is not None and scores[0] < args.require_each:
        print(f"overlap {scores[0]:.3f} is below {args.require_each}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
