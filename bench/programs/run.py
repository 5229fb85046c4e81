#!/usr/bin/env python3
"""Runs the programs of this folder beside their twins in Python.

bench/programs/<group>/<name>.m has its twin in <name>.py; a .m without one is a function that others call. Each prints
a checksum, but for those of the group process. Both are run in turns, the checksums are compared, and rows are medians.
The ratio is the twin's time over ours: above 1 we are faster.

A group with a prepare.py is run in a copy of its folder in which that script has written what its programs need,
programs among them.

What counts as time:
  process       wall time of whole processes, nothing taken off
  linear        wall time less that of an empty process: both sides use OpenBLAS with its threads, as many for both
  other groups  processor time less that of an empty process, so that cores which help count in full
The empty process of a twin imports the libraries that the twin imports. A row whose twin took less than LEAST_SECONDS in
itself says nothing; it is marked and left out of the means. Of our own time, less than RESOLUTION counts as that much.

    run.py [--quick | --rounds N] [--kelo PROGRAM] [WORD...]    only groups and programs whose path contains a word
"""
import argparse
import functools
import math
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from pathlib import Path

HERE = Path(__file__).resolve().parent
LEAST_SECONDS = {"arrays": 0.06, "linear": 0.06, "process": 0}
LEAST_OF_OTHERS = 0.01
RESOLUTION = 0.002  # of our own time: what is shorter counts as this
LIBRARIES = ("numpy", "scipy.linalg", "scipy.special", "scipy.signal")

Times = namedtuple("Times", "processor wall")


def run(command, directory):
    """Times of one process, and what it printed."""
    with tempfile.TemporaryFile() as out:
        begin = time.perf_counter()
        process = subprocess.Popen(command, cwd=directory, stdin=subprocess.DEVNULL, stdout=out, stderr=out)
        _, status, usage = os.wait4(process.pid, 0)
        wall = time.perf_counter() - begin
        process.returncode = status
        out.seek(0)
        return Times(usage.ru_utime + usage.ru_stime, wall), out.read().decode(errors="replace").strip()


def medians(times):
    return Times(*(statistics.median(each) for each in zip(*times)))


def same(ours, theirs):
    """Whether two outputs hold the same numbers, as far as doubles tell."""
    try:
        a, b = [float(x) for x in ours.split()], [float(x) for x in theirs.split()]
    except ValueError:
        return False
    return len(a) == len(b) > 0 and all(math.isclose(x, y, rel_tol=1e-9, abs_tol=1e-9) for x, y in zip(a, b))


def geometric_mean(ratios):
    return math.exp(statistics.fmean(map(math.log, ratios))) if ratios else float("nan")


@functools.lru_cache
def python_with(libraries):
    """A Python that has them: this one, or the system's."""
    imports = "import " + ", ".join(libraries) if libraries else ""
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", imports], stderr=subprocess.DEVNULL).returncode == 0:
            return [python], imports
    sys.exit("no Python with " + ", ".join(libraries))


@functools.lru_cache
def empty_process(command):
    return medians([run(list(command), HERE)[0] for _ in range(7)])


def measure(program, kelo, rounds):
    """Medians of both sides, empty processes taken off where the group wants it, and whether both print the same."""
    twin = program.with_suffix(".py")
    python, imports = python_with(tuple(name for name in LIBRARIES if name in twin.read_text()))
    ours, theirs, agree = [], [], True
    for _ in range(rounds):
        mine, said = run(kelo + [program.name], program.parent)
        its, it_said = run(python + [twin.name], program.parent)
        ours.append(mine)
        theirs.append(its)
        agree = agree and (program.parent.name == "process" or same(said, it_said))
    if program.parent.name == "process":
        return medians(ours), medians(theirs), agree
    bare = empty_process(tuple(kelo + ["-e", ""])), empty_process(tuple(python + ["-c", imports]))
    return *(Times(*(x - y for x, y in zip(medians(t), b))) for t, b in zip((ours, theirs), bare)), agree


def programs_of(group, scratch):
    """The programs of a folder, those that are written for it included."""
    if (group / "prepare.py").exists():
        copy = Path(scratch) / group.name
        shutil.copytree(group, copy)
        subprocess.run([sys.executable, "prepare.py"], cwd=copy, check=True)
        group = copy
    return [p for p in sorted(group.glob("*.m")) if p.with_suffix(".py").exists() and not p.stem.startswith("part")]


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--rounds", type=int, default=5, help="processes of each side")
    arguments.add_argument("--quick", action="store_const", const=1, dest="rounds", help="one round each")
    arguments.add_argument("--kelo", default=str(HERE.parents[1] / "build/release/kelo"))
    arguments.add_argument("words", nargs="*")
    options = arguments.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        programs = [p for group in sorted(HERE.iterdir()) if group.is_dir() for p in programs_of(group, scratch)]
        return compare(programs, options)


def compare(programs, options):
    groups, ratios, failed = {}, {}, []
    print(f"{'program':36}{'kelo ms':>10}{'python ms':>11}{'ratio':>8}{'other clock':>13}")
    for program in programs:
        group, name = program.parent.name, f"{program.parent.name}/{program.stem}"
        if options.words and not any(word in name for word in options.words):
            continue
        mine, its, agree = measure(program, [os.path.abspath(options.kelo)], options.rounds)
        by_wall = group in ("linear", "process")
        ours, theirs = (mine.wall, its.wall) if by_wall else (mine.processor, its.processor)
        other = (its.processor, mine.processor) if by_wall else (its.wall, mine.wall)
        ratio = max(theirs, 1e-4) / max(ours, RESOLUTION)
        note = "" if agree else "  DIFFERENT RESULTS"
        if theirs < LEAST_SECONDS.get(group, LEAST_OF_OTHERS):
            note += "  too short"
        else:
            ratios[name] = ratio
            groups.setdefault(group, []).append(ratio)
        if not agree:
            failed.append(name)
        print(f"{name:36}{1e3 * ours:10.1f}{1e3 * theirs:11.1f}{ratio:8.2f}"
              f"{max(other[0], 1e-4) / max(other[1], 1e-4):13.2f}{note}", flush=True)
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
