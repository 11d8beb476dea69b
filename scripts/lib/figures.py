"""Puts the figures of all benchmarks into one table and one file of comma-separated values.

    figures.py FOLDER

FOLDER holds what the programs of scripts/bench.sh printed: NAME.json of those that Google Benchmark
runs, NAME.log of the others. Written is FOLDER/figures.csv. A figure that
is missing ends it with 1: no table is shorter than it should be without a word.
"""

import csv
import json
import re
import statistics
import sys
from pathlib import Path


class Missing(Exception):
    """A figure that no program printed."""


def found(pattern, text, what):
    match = re.search(pattern, text, re.MULTILINE)
    if match is None:
        raise Missing(what)
    return [float(group) for group in match.groups()]


def printed(folder, program):
    return (folder / f"{program}.log").read_text(errors="replace").replace("\r", "")


def times(folder, program):
    """Processor time by benchmark in us, the fastest of the repetitions."""
    micro = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}
    fastest = {}
    for run in json.loads((folder / f"{program}.json").read_text())["benchmarks"]:
        if run["run_type"] == "iteration":
            name = re.sub(r"/(iterations|repeats):\d+", "", run["run_name"])
            time = run["cpu_time"] * micro[run["time_unit"]]
            fastest[name] = min(time, fastest.get(name, time))
    return fastest


def timed(rows, all_times, names, unit, factor, beside):
    """Rows of one family, each beside the first."""
    for name, what in names:
        if name not in all_times:
            raise Missing(name)
        rows.append((what, all_times[name] * factor, unit, beside, all_times[names[0][0]] * factor))


def native_rows(folder):
    rows = []
    poll = times(folder, "bench_poll_step")
    for family, what in (("NothingNew", "a poll without a new line"),
                         ("TalkerOfTheCall", "a poll with a talker of the call"),
                         ("WholeCall", "the five polls of a whole call")):
        timed(rows, poll,
              [(f"{family}/{size}", f"{what}, {size} groups and radios known")
               for size in (0, 1000, 100000)], "us", 1, "none known")
    log = times(folder, "bench_log")
    timed(rows, log, [(f"{name}/100000", f"a poll's line with {what}") for name, what in
                      (("NoLogs", "no log"), ("CcAndEventLog", "cc and event log"))],
          "us", 1, "no log")
    store = times(folder, "bench_store")
    timed(rows, store, [("BM_LoadLists/1000", "start-up: loading 1000 groups and radios"),
                        ("BM_LoadLists/100000", "start-up: loading 100000 of each")],
          "ms", 1e-3, "a hundredth of them")
    timed(rows, store, [("BM_ExchangeSort/5000", "5000 lines by the exchange sort"),
                        ("BM_SortKeyedLines/5000", "5000 lines sorted into the same order")],
          "ms", 1e-3, "the exchange sort")
    return rows


def load_rows(folder):
    text = printed(folder, "bench_load")
    rows = []
    for rate in (1, 4, 8, 12, 15):
        mean, theory = found(rf"^ +{rate} +(\d+) \( *(\d+)\)", text, f"load of {rate} lines/s")
        rows.append((f"setup to command at {rate} lines a second, mean, virtual clock", mean, "ms",
                     "queueing theory", theory))
    for rate in (17, 20):
        followed, of = found(rf"^ +{rate} .* (\d+) of (\d+) +\d+ of \d+$", text,
                             f"load of {rate} lines/s")
        rows.append((f"calls followed at {rate} lines a second", followed, "calls", "all", of))
    took, polls = found(r"followed after ([\d.]+) s \(([\d.]+) s of polls\)", text, "catching up")
    rows.append(("caught up with 1000 lines at once", took, "s", "a thousand polls", polls))
    return rows


def window_rows(folder):
    rows = []
    text = printed(folder, "latency")
    for label, what in (("median", "median"), ("95th percentile", "19 in 20")):
        figure, tick = found(rf"{label} +(\d+) ms .*the tick alone: (\d+)\)", text, label)
        rows.append((f"setup to command with real windows, {what}", figure, "ms",
                     "the poll timer alone", tick))
    # As many rates as were measured.
    for rate, mean, theory in re.findall(r"^ +(\d+) +(\d+) \( *([\d-]+)\)",
                                         printed(folder, "load"), re.MULTILINE):
        if theory != "-":
            rows.append((f"setup to command at {rate} lines a second, mean, real windows",
                         float(mean), "ms", "queueing theory", float(theory)))
    text = printed(folder, "usage")
    for label, what, unit in (("start to window", "program start to its window", "ms"),
                              ("processor before \"Start\"", "processor before \"Start\"", "ms/s"),
                              ("processor on the control channel",
                               "processor on the control channel", "ms/s"),
                              ("processor in a call", "processor in a call", "ms/s"),
                              ("memory of its own", "memory", "KiB")):
        figure, other = found(rf"^{label}: ([\d.]+) .*\(the stand-in: ([\d.]+)\)", text, label)
        rows.append((what, figure, unit, "the stand-in for SDR#", other))
    text = printed(folder, "editor")
    for known in (10, 1000, 10000):
        median, timer = found(rf"^ *{known} groups, .*median +(\d+) ms.*alone: (\d+)\)", text,
                              f"editor of {known}")
        rows.append((f"the editor filled, {known} groups and radios", median, "ms",
                     "its timer alone", timer))
    return rows


def replay_rows(folder):
    rates = {}
    lines = printed(folder, "replay").splitlines()
    header = "what,lines,clock_s,processor_s,memory_kb"
    for row in csv.DictReader(lines[lines.index(header):]):
        rates.setdefault(row["what"], []).append(int(row["lines"]) / float(row["clock_s"]))
    rate = {what: statistics.median(of_runs) for what, of_runs in rates.items()}
    return [(f"corvane-tools {what}", rate[what], "lines/s", "grep -c -F", rate["grep -c -F"])
            for what in ("replay", "replay -F json")]


def size_rows(folder):
    size = dict(line.split() for line in printed(folder, "sizes").splitlines())
    return [("size of Corvane.exe", int(size["Corvane.exe"]) / 1024, "KiB", "SdrStandin.exe",
             int(size["SdrStandin.exe"]) / 1024)]


def shown(number):
    return f"{number:.0f}" if number >= 100 else f"{number:.3g}"


def main(folder):
    rows = []
    for part in (window_rows, load_rows, native_rows, replay_rows, size_rows):
        rows += part(folder)
    with open(folder / "figures.csv", "w", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(("what", "figure", "unit", "beside", "its_figure"))
        writer.writerows((what, f"{figure:.6g}", unit, beside, f"{other:.6g}")
                         for what, figure, unit, beside, other in rows)
    print("| what | figure | beside it |\n|---|---|---|")
    for what, figure, unit, beside, other in rows:
        print(f"| {what} | {shown(figure)} {unit} | {shown(other)} ({beside}) |")


if __name__ == "__main__":
    try:
        main(Path(sys.argv[1]))
    except (Missing, KeyError, ValueError, OSError) as error:
        sys.exit(f"figures.py: missing: {error}")
