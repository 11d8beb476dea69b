#!/usr/bin/env python3
"""Runs `corvane-tools watch` as its user does: what it prints, writes and starts.

`watch_test.py PROGRAM` ends with 1 and a line for each thing that is wrong.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as ElementTree

LIMIT_S = 60


def wait_for(what, condition):
    end = time.monotonic() + LIMIT_S
    while not condition():
        if time.monotonic() > end:
            return [f"{what}: not within {LIMIT_S} s"]
        time.sleep(0.05)
    return []


def content(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except OSError:
        return b""


def tells_and_starts(program, root):
    """A notice is a line, and one argument of the user's program; the log's lines are stamped."""
    folder = os.path.join(root, "corvane")
    hook = os.path.join(root, "hook")
    stamps = os.path.join(root, "stamps")
    os.makedirs(folder)
    with open(hook, "w", encoding="ascii") as file:
        file.write('#!/bin/sh\nprintf "%s|" "$#" "$@" >>"$0.out"\n')
    os.chmod(hook, 0o755)
    said = open(os.path.join(root, "said"), "wb")
    process = subprocess.Popen(
        [program, "watch", "--folder", folder, "--deaf", "0", "--room", "4000000000",
         "--stamps", stamps, "--exec", f"{hook} -n NOTICE"], stdout=said)
    try:
        wrong = wait_for("a notice", lambda: b"the disk runs low: " in content(said.name))
        wrong += wait_for("the hook", lambda: content(hook + ".out").endswith(b" MB are left|"))
        if not content(hook + ".out").startswith(b"2|-n|the disk runs low: "):
            wrong.append(f"the hook got {content(hook + '.out')!r}")
        # Whichever side of midnight this is.
        for day in (time.time(), time.time() + 86400):
            path = os.path.join(folder, "Daily", time.strftime("%Y%m%d", time.localtime(day)))
            os.makedirs(path)
            with open(os.path.join(path, "TETRA_cc.log"), "wb") as log:
                log.write(b"a line\r\nhalf")
        wrong += wait_for("a stamped line", lambda: content(stamps).endswith(b" a line\r\n"))
        if len(content(stamps).splitlines()) != 1 or content(stamps)[4:5] != b"-":
            wrong.append(f"stamped {content(stamps)!r}")
        if process.poll() is not None:
            wrong.append(f"it ended with {process.returncode}")
    finally:
        process.terminate()
        process.wait()
        said.close()
    return wrong


def main(arguments):
    root = tempfile.mkdtemp(prefix="corvane-watch-")
    try:
        wrong = tells_and_starts(arguments[0], root)
    finally:
        shutil.rmtree(root)
    suite = ElementTree.Element("testsuites")
    case = ElementTree.SubElement(suite, "testcase", name="tells_and_starts", classname="WatchRuns",
                                  status="run", result="completed")
    for line in wrong:
        print(line)
        ElementTree.SubElement(case, "failure", message=line)
    where = os.environ.get("GTEST_OUTPUT", "")
    if where.startswith("xml:") and where.endswith("/"):
        ElementTree.ElementTree(suite).write(os.path.join(where[4:], "watch_runs.xml"))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
