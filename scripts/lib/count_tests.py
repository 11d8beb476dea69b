#!/usr/bin/env python3
"""Counts test cases: `count_tests.py RESULTS_FOLDER PROGRAM=EXIT_CODE...`

Each program left its cases in RESULTS_FOLDER/PROGRAM.xml (GoogleTest's XML). Prints one line
"passed failed" and after it the name of every case that failed. A case that was skipped or disabled
counts as failed, and so does a program that ended badly without a failed case, or ran no case.
"""
import glob
import os
import sys
import xml.etree.ElementTree as ElementTree


def cases_of(path):
    """(passed names, failed names) in one file; what cannot be read is a failure."""
    try:
        root = ElementTree.parse(path).getroot()
    except (ElementTree.ParseError, OSError) as error:
        return [], [f"{os.path.basename(path)}: {error}"]
    passed, failed = [], []
    for case in root.iter("testcase"):
        name = f"{case.get('classname')}.{case.get('name')}"
        ran = case.get("status") == "run" and case.get("result") == "completed"
        good = ran and case.find("failure") is None and case.find("skipped") is None
        (passed if good else failed).append(name if ran else name + " (did not run)")
    return passed, failed


def main(folder, programs):
    passed, failed = [], []
    for program in programs:
        name, code = program.rsplit("=", 1)
        good, bad = [], []
        for path in sorted(glob.glob(os.path.join(glob.escape(folder), name + ".xml"))):
            more_good, more_bad = cases_of(path)
            good += more_good
            bad += more_bad
        if int(code) != 0 and not bad:
            bad.append(f"{name} (ended with code {code})")
        elif not good and not bad:
            bad.append(f"{name} (ran no case)")
        passed += good
        failed += bad
    print(len(passed), len(failed))
    for name in failed:
        print(name)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2:])
