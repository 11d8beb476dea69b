"""Tells what the native tests run through of src/.

    coverage.py COVERAGE.json CHECKOUT

COVERAGE.json is what llvm-cov export wrote. Ends with 1 when a way of a branch that no test takes,
or a function that none calls, is not in CHECKOUT/tests/unreached.txt (scripts/lints/unreached.py
tells its form), or when one of that list is reached after all. What is built for Windows alone,
*_win.cpp, is run by the contract and desktop tests and not counted here.
"""

import json
import sys
from collections import defaultdict
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent.parent))

from lints import unreached  # noqa: E402


class Source:
    """One file, and how often what stands at a place of it was run. A place is its first line and
    column and the end; all that a template was made for is counted together."""

    def __init__(self, path):
        self.rows = path.read_text().split("\n")
        self.ways = defaultdict(lambda: [0, 0])
        self.functions = defaultdict(int)
        self.lines = [0, 0]

    def text_at(self, line, column, end_line, end_column):
        rows = self.rows[line - 1:end_line]
        rows[-1] = rows[-1][:end_column - 1]
        rows[0] = rows[0][column - 1:]
        return unreached.plain(" ".join(rows))

    def decides(self, place):
        """Not what a macro of the system decides, nor what the compiler does."""
        before = self.rows[place[0] - 1][:place[1] - 1]
        return self.text_at(*place) != "" and not before.endswith("if constexpr (")

    def unreached(self):
        """(text, way) -> first line; of a function that is not called, nothing but itself."""
        found = {}
        idle = sorted(place for place, times in self.functions.items() if times == 0)
        for place in idle:
            found.setdefault((unreached.plain(self.rows[place[0] - 1]), "run"), place[0])
        for place, both in sorted(self.ways.items()):
            if any(begin[:2] <= place[:2] < begin[2:] for begin in idle):
                continue
            for way, times in zip(("true", "false"), both):
                if times == 0:
                    found.setdefault((self.text_at(*place), way), place[0])
        return found


def read(report, root):
    """By path from the root."""
    data = json.loads(Path(report).read_text())["data"][0]
    sources = {}
    for entry in data["files"]:
        path = Path(entry["filename"])
        if not path.is_relative_to(root / "src"):
            continue
        source = sources[str(path.relative_to(root))] = Source(path)
        lines = entry["summary"]["lines"]
        source.lines = [lines["count"], lines["covered"]]
        for branch in entry["branches"]:
            place = tuple(branch[:4])
            if source.decides(place):
                source.ways[place][0] += branch[4]
                source.ways[place][1] += branch[5]
    for function in data["functions"]:
        path = Path(function["filenames"][0])
        if path.is_relative_to(root / "src"):
            source = sources[str(path.relative_to(root))]
            source.functions[tuple(function["regions"][0][:4])] += function["count"]
    return sources


def print_table(sources):
    row = "{:<14} {:>7} {:>8} {:>8} {:>8}"
    print(row.format("folder", "lines", "run", "ways", "taken"))
    sums = defaultdict(lambda: [0, 0, 0, 0])
    for name, source in sources.items():
        times = [count for both in source.ways.values() for count in both]
        counts = source.lines + [len(times), sum(1 for count in times if count)]
        for folder in (str(Path(name).parent), "src"):
            sums[folder] = [a + b for a, b in zip(sums[folder], counts)]
    for folder in sorted(sums, key=lambda name: (name == "src", name)):
        lines, run, ways, taken = sums[folder]
        print(row.format(folder, lines, f"{100 * run / max(lines, 1):.1f} %", ways,
                         f"{100 * taken / max(ways, 1):.1f} %"))


def main():
    root = Path(sys.argv[2]).resolve()
    sources = read(sys.argv[1], root)
    if not sources:
        sys.exit("nothing of src/ was counted")
    print_table(sources)
    found = {unreached.Entry(name, *key): line for name, source in sources.items()
             for key, line in source.unreached().items()}
    listed = {entry for _, entry in unreached.entries((root / unreached.PATH).read_text())}
    for entry, line in sorted(found.items()):
        if entry not in listed:
            print(f"{entry.source}:{line}: not reached: {entry.text} | {entry.way}")
    for entry in sorted(listed - set(found)):
        print(f"{entry.source}: reached after all: {entry.text} | {entry.way}")
    print(f"{len(found)} ways and functions are not reached, "
          f"{len(listed & set(found))} of them with a reason")
    return 0 if listed == set(found) else 1


if __name__ == "__main__":
    sys.exit(main())
