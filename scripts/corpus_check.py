#!/usr/bin/python3
"""Runs the commands that need no template over a folder of drawings and
says of each file whether it came through.

For every drawing: `viewports off` then `viewports on` on the result (the
round trip), `frames`, `replace-attributes` with a rule for a tag no
drawing has (so nothing may change), and `recover`. Each file is:

  ok       every command ran, or refused only for a reason of its own
           (exit 1: nothing to do), and every drawing written reads back
           in ezdxf with the same entities per layout and no more audit
           errors than the input;
  refused  the drawing was refused (exit 3) with its place and reason by
           the strict commands and by recover alike;
  wrong    a written drawing lost or changed entities, gained audit
           errors, or a command claimed success yet wrote nothing; or
           viewports off then on did not give the input back byte for
           byte (the viewports' 68 status numbers apart);
  crashed  a signal, a sanitizer report or a timeout.

  /usr/bin/python3 scripts/corpus_check.py LAYOMAT FOLDER... [--jobs N]
      [--timeout S] [--only NAME]

Prints one line per file, then the counts; exits 1 when any file is wrong
or crashed. Needs python3-ezdxf (Debian).
"""
import argparse
import concurrent.futures
import os
import subprocess
import sys
import tempfile

import ezdxf
from ezdxf import recover as ezdxf_recover

NO_OP_RULE = [
    "--set", "OknoFunctionReplaceAtribut.UniTextNameAtribut1=LAYOMAT_NO_SUCH_TAG",
    "--set", "OknoFunctionReplaceAtribut.UniTextValueAtribut1=x",
    "--set", "OknoFunctionReplaceAtribut.OptionSaveKuda2=True",
]
SANITIZER_WORDS = ("AddressSanitizer", "LeakSanitizer", "runtime error:",
                   "UndefinedBehaviorSanitizer")


class Crash(Exception):
    pass


def run(layomat, args, cwd, timeout):
    env = dict(os.environ, XDG_CONFIG_HOME=cwd)
    try:
        p = subprocess.run([layomat] + args, cwd=cwd, env=env, timeout=timeout,
                           capture_output=True, text=True, errors="replace")
    except subprocess.TimeoutExpired:
        raise Crash(f"{args[0]}: timeout after {timeout} s")
    if p.returncode < 0 or p.returncode > 3:
        raise Crash(f"{args[0]}: exit {p.returncode}")
    if any(w in p.stderr for w in SANITIZER_WORDS):
        line = next(l for l in p.stderr.splitlines()
                    if any(w in l for w in SANITIZER_WORDS))
        raise Crash(f"{args[0]}: {line.strip()}")
    return p


def contents(path):
    """Entities per layout and audit errors as ezdxf reads them."""
    try:
        doc = ezdxf.readfile(path)
    except Exception:  # any reader failure: the files are damaged on purpose
        try:
            doc, _ = ezdxf_recover.readfile(path)
        except Exception as e:
            return None, f"ezdxf cannot read it: {e}"
    layouts = {}
    for layout in doc.layouts:
        layouts[layout.name] = sorted(e.dxftype() for e in layout)
    return (layouts, len(doc.audit().errors)), None


def compare(before, after_path, what):
    if before is None:
        return None  # ezdxf cannot read the input: nothing to compare with
    after, why = contents(after_path)
    if after is None:
        return f"{what}: {why}"
    (lay_a, err_a), (lay_b, err_b) = before, after
    for name, types in lay_a.items():
        if name not in lay_b:
            return f"{what}: layout {name} lost"
        if lay_b[name] != types:
            return (f"{what}: layout {name} has {len(lay_b[name])} entities, "
                    f"the input {len(types)}")
    if err_b > err_a:
        return f"{what}: {err_b} audit errors, the input {err_a}"
    return None


def tags_of(data):
    """(code, raw value) pairs; binary values as ezdxf decodes them."""
    if data.startswith(b"AutoCAD Binary DXF"):
        from ezdxf.lldxf.tagger import binary_tags_loader
        return [(t.code, repr(t.value)) for t in binary_tags_loader(data)]
    lines = data.split(b"\n")
    return [(int(lines[i].strip() or b"-1"), lines[i + 1])
            for i in range(0, len(lines) - 1, 2)]


def untouched(before_path, after_path):
    """Viewports off then on must give the input back byte for byte, but
    for the viewports' status numbers (68), given out afresh, and the flags
    (90) of viewports that were off."""
    a = open(before_path, "rb").read()
    b = open(after_path, "rb").read()
    if a == b:
        return None
    try:
        ta, tb = tags_of(a), tags_of(b)
    except ValueError:
        return "viewports off/on: the output differs and is not tag for tag"
    if len(ta) != len(tb):
        return (f"viewports off/on: {len(tb)} tags written, "
                f"the input has {len(ta)}")
    for i, ((ca, va), (cb, vb)) in enumerate(zip(ta, tb)):
        if (ca, va) == (cb, vb) or (ca == cb == 68):
            continue
        if ca == cb == 90:
            try:
                if int(va.strip() if isinstance(va, bytes) else va) & 131072:
                    continue  # it was off: on changes its flag
            except ValueError:
                pass
        return (f"viewports off/on: tag {i} ({ca}) changed: "
                f"{va!r} became {vb!r}")
    return None


def check(layomat, path, timeout):
    name = os.path.basename(path)
    with tempfile.TemporaryDirectory(prefix="lmt-corpus-") as tmp:
        open(os.path.join(tmp, "settings.ini"), "wb").close()
        common = ["--settings", os.path.join(tmp, "settings.ini")]
        try:
            before, _ = contents(path)
            off = os.path.join(tmp, "off.dxf")
            on = os.path.join(tmp, "on.dxf")
            p = run(layomat, ["viewports", "off", path, "-o", off] + common,
                    tmp, timeout)
            if p.returncode == 3:
                reason = (p.stderr.strip().splitlines() or ["?"])[-1]
                r = run(layomat, ["recover", path, "-o",
                                  os.path.join(tmp, "rec.dxf")] + common,
                        tmp, timeout)
                if r.returncode == 0:
                    why = compare(before, os.path.join(tmp, "rec.dxf"),
                                  "recover")
                    if why:
                        return name, "wrong", why
                    return name, "refused", reason + " (recover repairs it)"
                return name, "refused", reason
            problems = []
            if p.returncode == 0:
                p = run(layomat, ["viewports", "on", off, "-o", on] + common,
                        tmp, timeout)
                if p.returncode == 0:
                    problems.append(compare(before, on, "viewports off/on"))
                    problems.append(untouched(path, on))
                elif p.returncode == 3:
                    problems.append("viewports on: " + p.stderr.strip())
            run(layomat, ["frames", path] + common, tmp, timeout)
            folder = os.path.join(tmp, "replaced")
            p = run(layomat, ["replace-attributes", path] + common + NO_OP_RULE
                    + ["--set", "OknoFunctionReplaceAtribut."
                       f"UniTextNamePapkaSave={folder}"], tmp, timeout)
            out = os.path.join(folder, name)
            if p.returncode == 0:
                if os.path.exists(out):
                    problems.append(compare(before, out, "replace-attributes"))
            elif p.returncode == 3:
                problems.append("replace-attributes: " +
                                (p.stderr.strip().splitlines() or ["?"])[-1])
            p = run(layomat, ["recover", path, "-o",
                              os.path.join(tmp, "rec.dxf")] + common,
                    tmp, timeout)
            if p.returncode != 0:
                problems.append("recover: " + p.stderr.strip())
            else:
                problems.append(compare(before, os.path.join(tmp, "rec.dxf"),
                                        "recover"))
        except Crash as e:
            return name, "crashed", str(e)
        problems = [p for p in problems if p]
        if problems:
            return name, "wrong", "; ".join(problems)
        return name, "ok", ""


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("layomat")
    ap.add_argument("folders", nargs="+")
    ap.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    ap.add_argument("--timeout", type=float, default=120)
    ap.add_argument("--only")
    args = ap.parse_args()
    layomat = os.path.abspath(args.layomat)
    files = []
    for folder in args.folders:
        for f in sorted(os.listdir(folder)):
            if f.lower().endswith(".dxf") and (not args.only or args.only in f):
                files.append(os.path.join(os.path.abspath(folder), f))
    counts = {"ok": 0, "refused": 0, "wrong": 0, "crashed": 0}
    with concurrent.futures.ThreadPoolExecutor(args.jobs) as pool:
        for name, verdict, why in pool.map(
                lambda f: check(layomat, f, args.timeout), files):
            counts[verdict] += 1
            print(f"{verdict:8} {name}" + (f": {why}" if why else ""),
                  flush=True)
    print(f"\n{len(files)} files: " +
          ", ".join(f"{n} {k}" for k, n in counts.items()))
    return 1 if counts["wrong"] or counts["crashed"] else 0


if __name__ == "__main__":
    sys.exit(main())
