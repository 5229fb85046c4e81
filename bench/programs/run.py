#!/usr/bin/env python3
"""Runs the programs of this folder beside their twins in Python.

bench/programs/<group>/<name>.m has its twin in <name>.py; a .m without one is a function that others call. Each prints
a checksum. Both are run in turns, the checksums are compared, and the time that counts is the processor time of the
whole process less that of an empty one; rows are medians. The ratio is the twin's time over ours: above 1 we are faster.

    run.py [--quick] [--kelo PROGRAM] [WORD...]    only groups and programs whose path contains a word
"""
import argparse
import math
import os
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent


def processor_seconds(command, directory):
    """Processor time of one process, and what it printed."""
    with tempfile.TemporaryFile() as out:
        process = subprocess.Popen(command, cwd=directory, stdin=subprocess.DEVNULL, stdout=out, stderr=out)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = status
        out.seek(0)
        return usage.ru_utime + usage.ru_stime, out.read().decode(errors="replace").strip()


def same(ours, theirs):
    """Whether two outputs hold the same numbers, as far as doubles tell."""
    try:
        a, b = [float(x) for x in ours.split()], [float(x) for x in theirs.split()]
    except ValueError:
        return False
    return len(a) == len(b) and all(math.isclose(x, y, rel_tol=1e-9, abs_tol=1e-9) for x, y in zip(a, b))


def geometric_mean(ratios):
    return math.exp(statistics.fmean(map(math.log, ratios))) if ratios else float("nan")


def measure(pairs, rounds):
    """Medians of both sides for each pair of commands, run in turns; None for a pair whose results differ."""
    rows = []
    for ours, theirs, directory in pairs:
        times = ([], [])
        agree = True
        for _ in range(rounds):
            mine, mine_said = processor_seconds(ours, directory)
            its, it_said = processor_seconds(theirs, directory)
            times[0].append(mine)
            times[1].append(its)
            agree = agree and same(mine_said, it_said)
        rows.append((statistics.median(times[0]), statistics.median(times[1]), agree))
    return rows


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--quick", action="store_true", help="one round each")
    arguments.add_argument("--kelo", default=str(HERE.parents[1] / "build/release/kelo"))
    arguments.add_argument("words", nargs="*")
    options = arguments.parse_args()
    programs = [p.with_suffix(".m") for p in sorted(HERE.glob("*/*.py"))]
    programs = [p for p in programs if not options.words or any(w in str(p.relative_to(HERE)) for w in options.words)]
    rounds = 1 if options.quick else 5

    kelo = [os.path.abspath(options.kelo)]
    start = measure([(kelo + ["-e", ""], [sys.executable, "-c", ""], HERE)], 9)[0]
    pairs = [(kelo + [p.name], [sys.executable, p.with_suffix(".py").name], p.parent) for p in programs]
    groups, ratios, failed = {}, {}, []
    print(f"{'program':36}{'kelo ms':>10}{'python ms':>11}{'ratio':>8}")
    for program, (mine, its, agree) in zip(programs, measure(pairs, rounds)):
        name = str(program.relative_to(HERE).with_suffix(""))
        ours, theirs = max(mine - start[0], 1e-4), max(its - start[1], 1e-4)
        ratios[name] = theirs / ours
        groups.setdefault(program.parent.name, []).append(ratios[name])
        print(f"{name:36}{1e3 * ours:10.1f}{1e3 * theirs:11.1f}{ratios[name]:8.2f}{'' if agree else '  DIFFERENT RESULTS'}")
        if not agree:
            failed.append(name)
    print("\ngeometric means")
    for group, values in groups.items():
        print(f"  {group:34}{geometric_mean(values):8.2f}")
    print(f"  {'all':34}{geometric_mean(ratios.values()):8.2f}")
    print("\nworst ten")
    for name in sorted(ratios, key=ratios.get)[:10]:
        print(f"  {name:34}{ratios[name]:8.2f}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
