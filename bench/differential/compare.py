#!/usr/bin/env python3
"""Runs random programs on two builds of kelo and compares all that they print.

    compare.py OLD NEW [--native] [--programs N] [--seed S] [--most SHOWN]

A program is one console command over a cleared workspace; a process runs many of them, so that thousands take a
minute. A batch that differs is run program by program, and the lines that differ are printed. One difference is meant and
passed over: in a write `end` of an empty or a new variable is 0, where older builds complained.

With --native the programs are loops of numbers (hot_loops.py); OLD makes no native code and NEW makes it at once. OLD
and NEW may be one and the same program.
"""
import argparse
import difflib
import os
import random
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

import hot_loops
import programs

BATCH = 40
MEANT = 'The operator "end" should not be used for an empty array'


def run(kelo, texts, mode):
    """What a process says to these commands, and how it ended; each command in an empty work directory."""
    command = [kelo, "--digits", "16"]
    for text in texts:
        command += ["-e", "clear()", "-e", text]
    with tempfile.TemporaryDirectory() as folder:
        try:
            done = subprocess.run(command, cwd=folder, env={**os.environ, "KELO_NATIVE": mode}, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, timeout=120)
        except subprocess.TimeoutExpired:
            return "timeout", -1
    return done.stdout.decode(errors="replace"), done.returncode


def differing(old, new, texts, modes):
    """The programs of a batch that the two builds do not agree on."""
    if run(old, texts, modes[0]) == run(new, texts, modes[1]):
        return []
    found = []
    for text in texts:
        before, after = run(old, [text], modes[0]), run(new, [text], modes[1])
        if before != after and MEANT not in before[0]:
            found.append((text, before, after))
    return found


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("old")
    arguments.add_argument("new")
    arguments.add_argument("--native", action="store_true", help="hot loops, without native code and with it")
    arguments.add_argument("--programs", type=int, default=20000)
    arguments.add_argument("--seed", type=int, default=1)
    arguments.add_argument("--most", type=int, default=5, help="differences shown")
    options = arguments.parse_args()
    source = random.Random(options.seed)
    maker, modes = (hot_loops, ("off", "eager")) if options.native else (programs, ("", ""))
    texts = [maker.program(source) for _ in range(options.programs)]
    batches = [texts[k:k + BATCH] for k in range(0, len(texts), BATCH)]
    differences = 0
    with ThreadPoolExecutor(2) as pool:
        for found in pool.map(lambda batch: differing(options.old, options.new, batch, modes), batches):
            for text, before, after in found:
                differences += 1
                if differences <= options.most:
                    lines = difflib.unified_diff(before[0].splitlines(), after[0].splitlines(), "old", "new", "", "", 2)
                    print("---- program\n" + text.split(maker.FUNCTIONS)[0] + "\n".join(lines), before[1], after[1])
    print(f"{options.programs} programs with seed {options.seed}: {differences} differences")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
