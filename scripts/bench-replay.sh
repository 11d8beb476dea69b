#!/bin/bash
# How fast corvane-tools replay goes through a log of a million lines, beside grep -c -F for the
# keys that it looks for, on the same file and in turns. Prints one line of comma-separated values a
# run: what, lines, seconds of the clock, seconds of the processor, highest memory in KB.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/common.sh
source scripts/lib/packages.sh
source scripts/lib/programs.sh

LINES_READ=1000000
RUNS=5
need_packages $TOOLS_PACKAGES cmake ninja-build python3
build_native_tools
LOG=$BUILD/replay-speed.log
cat tests/scenarios/busy_hour/following/*/TETRA_cc.log >"$LOG.hour"
python3 - "$LOG.hour" "$LOG" "$LINES_READ" <<'PYTHON'
import itertools
import sys

hour, log, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
with open(hour, "rb") as source, open(log, "wb") as target:
    target.writelines(itertools.islice(itertools.cycle(source.readlines()), count))
PYTHON
python3 - "$LOG" "$LINES_READ" "$RUNS" <<'PYTHON'
import os
import subprocess
import sys
import time

log, count, runs = sys.argv[1:]
KEYS = ("D_Setup", "D_Release", "D_Disconnect", "D_TX_Granted", "D_TX_Ceased")
COMMANDS = (
    ("replay", ["dist/corvane-tools", "replay", log, "--lists", "tests/golden/replay", "-q"]),
    ("replay -F json", ["dist/corvane-tools", "replay", log, "--lists", "tests/golden/replay",
                        "-q", "-F", "json"]),
    ("grep -c -F", ["grep", "-c", "-F"] + [word for key in KEYS for word in ("-e", key)] + [log]))
print("what,lines,clock_s,processor_s,memory_kb")
for _ in range(int(runs)):
    for name, command in COMMANDS:
        begin = time.monotonic()
        # grep stops at its first match when it writes to /dev/null.
        with open(f"{log}.out", "wb") as out:
            process = subprocess.Popen(command, stdout=out)
            _, status, used = os.wait4(process.pid, 0)
        if status != 0:
            raise SystemExit(f"{name} failed: {status}")
        print(f"{name},{count},{time.monotonic() - begin:.3f},"
              f"{used.ru_utime + used.ru_stime:.3f},{used.ru_maxrss}")
PYTHON
