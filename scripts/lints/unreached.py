"""The list of what of src/ no native test can reach names text that is still there.

A line of tests/unreached.txt is

    src/folder/file.cpp | source text | way | why

where the text is a condition, a case or what a switch looks at, each gap between its words a space,
and the way is the one that is never taken: true or false; of a switch, true is the way past its
cases. "run" is the way of a function that is never called, and its text is the line of its brace.
A text stands for every place in the file where it is found.
"""
from typing import NamedTuple

from .tree import Finding, is_windows_file

PATH = "tests/unreached.txt"
WAYS = ("true", "false", "run")


class Entry(NamedTuple):
    source: str
    text: str
    way: str


def plain(text):
    return " ".join(text.split())


def entry_of(line):
    """None for a line that is not understood."""
    parts = line.split(" | ")
    if len(parts) < 4 or parts[-2] not in WAYS or not parts[-1].strip():
        return None
    return Entry(parts[0], " | ".join(parts[1:-2]), parts[-2])


def entries(content):
    """(line number, Entry or None)"""
    for number, line in enumerate(content.split("\n"), 1):
        if line.strip() and not line.startswith("#"):
            yield number, entry_of(line)


def check(tree):
    if PATH not in tree.paths:
        return
    seen = set()
    for line, entry in entries(tree.text(PATH)):
        if entry is None:
            yield Finding(PATH, line, "unreached", "not `source | text | way | why`")
        elif entry in seen:
            yield Finding(PATH, line, "unreached", "stands there already")
        elif not entry.source.startswith("src/") or entry.source not in tree.paths \
                or is_windows_file(entry.source):
            yield Finding(PATH, line, "unreached", f"{entry.source} is not counted")
        elif entry.text not in plain(tree.text(entry.source)):
            yield Finding(PATH, line, "unreached", f"no such text in {entry.source}: {entry.text}")
        seen.add(entry)
