"""Puts what the fuzz targets reported into one table.

    fuzz_table.py FOLDER

FOLDER holds fuzz_NAME.txt of each target, as libFuzzer wrote it. What is reached are edges of the
target's control flow, of all those in the program that is linked with it. A target that says
nothing of itself ends it with 1.
"""

import re
import sys
from pathlib import Path


def of_target(log):
    text = log.read_text(errors="replace")
    edges = re.search(r"\((\d+) inline 8-bit counters\)", text)
    executions = re.search(r"^stat::number_of_executed_units: (\d+)", text, re.MULTILINE)
    reached = re.findall(r"\bcov: (\d+) .*?\bcorp: (\d+)", text)
    took = re.search(r"^Done \d+ runs in (\d+) second", text, re.MULTILINE)
    if not (edges and executions and reached and took):
        return None
    cov, inputs = map(int, reached[-1])
    return int(executions[1]), max(int(took[1]), 1), cov, int(edges[1]), inputs


def main():
    logs = sorted(Path(sys.argv[1]).glob("fuzz_*.txt"))
    line = "{:<18} {:>12} {:>9} {:>8} {:>8} {:>7}"
    print(line.format("target", "executions", "a second", "reached", "of edges", "inputs"))
    silent = []
    in_all = 0
    for log in logs:
        name = log.stem.removeprefix("fuzz_")
        told = of_target(log)
        if told is None:
            silent.append(name)
            continue
        executions, seconds, cov, edges, inputs = told
        in_all += executions
        print(line.format(name, executions, executions // seconds, cov, edges, inputs))
    print(line.format("all", in_all, "", "", "", ""))
    for name in silent:
        print(f"{name} ended without its figures")
    return 1 if silent or not logs else 0


if __name__ == "__main__":
    sys.exit(main())
