#!/usr/bin/env python3
"""Changes src/ one token at a time, at random, and tells which changes no native test notices.

    scripts/mutate.py [--seed N] [--count N] [--jobs N] FOLDER...

FOLDER is one of src/, as in `core link`. The tests are built as for scripts/coverage.sh, which also
installs what that needs. Each changed source is compiled by itself and linked in front of the
library that it comes from, first with the unit tests of its folder, then with the others, until one
fails; the checkout is only read. A change that does not compile is not counted. Survivors are
either a test that is missing or a change without an effect; which of the two only a person can
tell: docs/mutation.md.
"""

import argparse
import json
import os
import random
import re
import resource
import shlex
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/coverage"
COMPILE = ["clang++", "-std=c++20", "-O0", "-w", f"-I{ROOT}/src"]
# What most sources include, compiled once.
COMMON = ("algorithm", "array", "charconv", "cmath", "cstdint", "functional", "limits", "map",
          "memory", "optional", "ranges", "set", "span", "string", "string_view", "unordered_map",
          "utility", "vector")
# A change can make a loop endless or a table grow without end. A healthy run takes a tenth.
CPU_SECONDS = 120
MEMORY_BYTES = 6 << 30

SWAPS = [(r" <= ", " < "), (r" >= ", " > "), (r" < ", " <= "), (r" > ", " >= "), (r" == ", " != "),
         (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "), (r" \+ ", " - "),
         (r" - ", " + "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\+\+(?=\w)", "--"),
         (r"(?<![\w.])--(?=\w)", "++")]
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")
CONDITION = re.compile(r"\bif \((?!constexpr)")
STATEMENT = re.compile(r"\s+(?!return|const|auto|using|throw|delete|else|if|for|while|switch|break"
                       r"|continue|case|default)[\w.>\[\]()\-*:]+(\(.*\)| [+\-|]?= .*);\s*$")
DECLARATION = re.compile(r"\s+[\w:<>]+ \w+(\(|\s=|;)")
# Places are judged by eye, numbers of controls by the lints.
LEFT_OUT = re.compile(r"_layout|control_ids|_win\.cpp$")
NO_CODE = ("//", "#", "namespace", "static_assert", "template")


def negated(row, begin):
    """The row with the condition from `begin` on turned over; None where it is not a plain one."""
    end, depth = begin, 1
    while end < len(row) and depth:
        depth += {"(": 1, ")": -1}.get(row[end], 0)
        end += 1
    condition = row[begin:end - 1]
    if depth or ";" in condition or re.search(r"\w [*&]?\w+ = ", condition):
        return None
    return f"{row[:begin]}!({condition}){row[end - 1:]}"


def changes_of(row):
    code = row.split(" // ")[0]
    if not code.strip() or code.strip().startswith(NO_CODE):
        return

    def outside_of_texts(pattern):
        return (m for m in re.finditer(pattern, code) if code[:m.start()].count('"') % 2 == 0)
    for pattern, other in SWAPS:
        for match in outside_of_texts(pattern):
            yield code[:match.start()] + other + code[match.end():]
    for match in outside_of_texts(NUMBER):
        yield code[:match.start()] + str(int(match[1]) + 1) + code[match.end():]
    for match in outside_of_texts(CONDITION):
        changed = negated(code, match.end())
        if changed:
            yield changed
    if STATEMENT.match(code) and not DECLARATION.match(code):
        yield re.match(r"\s*", code)[0] + ";"


def link_commands():
    """Program -> its link command, for the programs of all native tests."""
    tests = json.loads(subprocess.run(
        ["ctest", "--test-dir", BUILD, "--show-only=json-v1"], capture_output=True, check=True,
        text=True).stdout)["tests"]
    programs = sorted({test["command"][0] for test in tests})
    commands = {}
    for program in programs:
        if not program.startswith(f"{BUILD}/"):
            continue
        name = str(Path(program).relative_to(BUILD))
        last = subprocess.run(["ninja", "-C", BUILD, "-t", "commands", name], capture_output=True,
                              check=True, text=True).stdout.strip().split("\n")[-1]
        commands[name] = shlex.split(last[last.index("clang++"):].split(" && ")[0])
    return commands


def order_for(folder, commands):
    """The programs that hold the folder's library: its own tests, other units, then the rest."""
    holding = [name for name, command in commands.items()
               if any(word.endswith(f"libcorvane_{folder}.a") for word in command)]
    return sorted(holding, key=lambda name: (Path(name).name != f"unit_{folder}",
                                             "/unit/" not in name, "simulation" in name, name))


def limit():
    resource.setrlimit(resource.RLIMIT_CPU, (CPU_SECONDS, CPU_SECONDS))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))


def noticed_by(path, content, commands, folder):
    """The program that fails with the changed source, "" for none, None if it is not compiled."""
    with tempfile.TemporaryDirectory() as place:
        source, changed, program = f"{place}/{path.name}", f"{place}/changed.o", f"{place}/test"
        Path(source).write_text(content)
        if subprocess.run([*COMPILE, "-include-pch", f"{folder}/common.pch", "-c", source, "-o",
                           changed], capture_output=True).returncode:
            return None
        for name in order_for(path.parent.name, commands):
            command = list(commands[name])
            command[command.index("-o") + 1] = program
            command.insert(next(i for i, word in enumerate(command) if word.endswith(".o")),
                           changed)
            subprocess.run(command, cwd=BUILD, capture_output=True, check=True)
            if subprocess.run([program, "--gtest_fail_fast", "--gtest_brief=1"], cwd=ROOT,
                              capture_output=True, preexec_fn=limit,
                              env={**os.environ, "LLVM_PROFILE_FILE": "/dev/null"}).returncode:
                return name
    return ""


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folders", nargs="+")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=60)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    wanted = parser.parse_args()
    pool = []
    for folder in wanted.folders:
        for path in sorted((ROOT / "src" / folder).glob("*.cpp")):
            if LEFT_OUT.search(path.name):
                continue
            for number, row in enumerate(path.read_text().split("\n")):
                pool += [(path, number, changed) for changed in changes_of(row)]
    random.Random(wanted.seed).shuffle(pool)
    for build in (["--preset", "coverage"], ["--build", BUILD]):
        subprocess.run(["cmake", *build], cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    commands = link_commands()
    print(f"seed {wanted.seed}: {wanted.count} of {len(pool)} changes", flush=True)
    caught = survived = 0
    with tempfile.TemporaryDirectory() as folder, ThreadPoolExecutor(wanted.jobs) as pool_of_jobs:
        header = Path(folder) / "common.h"
        header.write_text("".join(f"#include <{name}>\n" for name in COMMON))
        subprocess.run([*COMPILE, "-x", "c++-header", header, "-o", f"{folder}/common.pch"],
                       check=True)

        def tried(change):
            path, number, changed = change
            rows = path.read_text().split("\n")
            told = f"{path.relative_to(ROOT)}:{number + 1}: {rows[number].strip()} -> " \
                   f"{changed.strip()}"
            rows[number] = changed
            return told, noticed_by(path, "\n".join(rows), commands, folder)
        for told, by in pool_of_jobs.map(tried, pool[:wanted.count]):
            if by == "":
                survived += 1
                print(told, flush=True)
            elif by is not None:
                caught += 1
    print(f"{caught} of {caught + survived} changes were noticed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
