"""Writes what the programs of this group need into the directory it is run in: functions, long programs, numbers."""
from pathlib import Path

FUNCTIONS, LINES = 300, 5000

calls, modules = ["s = 0;"], ["s = 0"]
for k in range(1, FUNCTIONS + 1):
    Path(f"part{k}.m").write_text(
        f"function y = part{k}(x)\n% adds {k}\nif x > {k}\n  y = x + {k};\nelse\n  y = x - {k};\nend\n")
    Path(f"part{k}.py").write_text(
        f"def part{k}(x):\n    # adds {k}\n    if x > {k}:\n        y = x + {k}\n    else:\n        y = x - {k}\n"
        "    return y\n")
    calls.append(f"s = part{k}(s);")
    modules.append(f"from part{k} import part{k}\ns = part{k}(s)")
Path("many_functions.m").write_text("\n".join(calls) + "\ndisp(s)\n")
Path("many_functions.py").write_text("import numpy\n" + "\n".join(modules) + "\nprint(s)\n")

ours, theirs = ["x = 1;"], ["import numpy", "x = 1"]
for k in range(LINES):
    ours.append(f"a{k % 50} = {k} + x * (2 - {k % 7}) / 3;")
    theirs.append(f"a{k % 50} = {k} + x * (2 - {k % 7}) / 3")
Path("long_program.m").write_text("\n".join(ours) + "\ndisp(a7)\n")
Path("long_program.py").write_text("\n".join(theirs) + "\nprint(a7)\n")

Path("numbers.csv").write_text(
    "\n".join(",".join(str((i * 7919 + j * 104729) % 10007 / 100) for j in range(200)) for i in range(1500)) + "\n")
