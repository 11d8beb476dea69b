#!/usr/bin/env python3
"""Checks what a program can check of the project's rules.

`scripts/lint.py` first tries every lint on broken examples, then checks the whole project. Prints
one line per finding, "path:line: [lint] message", and ends with 1 when there is any. What cannot
be checked on this machine is told in a line that begins with "note: ".
`scripts/lint.py FOLDER` checks a project in another folder, without the examples.
"""
import os
import sys

sys.dont_write_bytecode = True

from lints import (control_ids, form, includes, lists, manual, scripts,  # noqa: E402
                   unreached, words)
from lints.tree import Tree  # noqa: E402

LINTS = (includes, words, form, lists, control_ids, scripts, manual, unreached)


def findings_of(root):
    tree = Tree(root)
    found = set()
    for lint in LINTS:
        found.update(lint.check(tree))
    return sorted(found)


def main(arguments):
    if arguments:
        root = arguments[0]
    else:
        import lint_test
        if not lint_test.passes():
            return 1
        root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    found = findings_of(root)
    for finding in found:
        print(finding)
    for note in form.notes():
        print(f"note: {note}")
    print(f"{len(found)} findings")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
