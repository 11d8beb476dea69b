"""The form of files: openings, lengths, characters, format."""
import re
import shutil
import subprocess

from .tree import Finding, under

LONGEST_LINE = 100
LONGEST_FILE = 400
LONGEST_FUNCTION = 75
LONGEST_OPENING = 6
LONGEST_OPENING_OF_A_TEST = 10
# Files of the program that may be longer, each with the reason.
LONGER_FILES = {}

# Another version lays the same code out otherwise.
FORMATTER_VERSION = 14
FORMATTERS = (f"clang-format-{FORMATTER_VERSION}", "clang-format")


def check(tree):
    for path in tree.written():
        yield from check_characters(tree, path)
    for path in tree.code():
        yield from check_opening(tree, path)
        yield from check_lengths(tree, path)
    yield from check_format(tree)


def check_characters(tree, path):
    text = tree.text(path)
    for line, content in tree.lines(path):
        if "\t" in content:
            yield Finding(path, line, "tab", "a tab")
        if content.endswith((" ", "\r")):
            yield Finding(path, line, "blank", "blank or carriage return at the end of the line")
        if len(content) > LONGEST_LINE and not path.endswith((".md", ".json", ".manifest")):
            yield Finding(path, line, "line-length", f"{len(content)} columns")
        if path.endswith((".h", ".cpp")) and not content.isascii():
            yield Finding(path, line, "ascii", "text outside ASCII: write it as an escape")
    if text and not text.endswith("\n"):
        yield Finding(path, text.count("\n") + 1, "blank", "no end of line at the end of the file")


def check_opening(tree, path):
    lines = tree.text(path).split("\n")
    opening = 0
    while opening < len(lines) and lines[opening].startswith("//"):
        opening += 1
    if opening == 0 and not path.endswith("_test.cpp"):
        yield Finding(path, 1, "opening", "does not begin with a comment on what it is for")
    elif opening > (LONGEST_OPENING_OF_A_TEST if under(path, ("tests",)) else LONGEST_OPENING):
        yield Finding(path, 1, "opening", f"opening comment of {opening} lines")
    if path.endswith(".h") and "#pragma once" not in lines:
        yield Finding(path, 1, "opening", "no #pragma once")


def check_lengths(tree, path):
    if not under(path, ("src", "archive", "tools", "standin")):
        return
    lines = tree.text(path).split("\n")
    if len(lines) - 1 > LONGEST_FILE and path not in LONGER_FILES:
        yield Finding(path, 1, "file-length", f"{len(lines) - 1} lines")
    start = None
    for number, line in enumerate(lines, 1):
        if re.match(r"[A-Za-z_].*\)[^;=]*\{$", line) and not line.startswith("namespace"):
            start = number
        elif re.match(r"    .*\)[^;=]*\{$", line) and start is None:
            # The head of a function on several lines; inner blocks come only behind a start.
            start = number
        elif line == "}" and start is not None:
            if number - start + 1 > LONGEST_FUNCTION:
                yield Finding(path, start, "function-length", f"{number - start + 1} lines")
            start = None
        elif line in ("};", "}  // namespace"):
            start = None


def formatter():
    """The command to check the format with, or None; and which versions there are instead."""
    others = []
    for command in FORMATTERS:
        if shutil.which(command) is not None:
            told = subprocess.run([command, "--version"], capture_output=True, text=True).stdout
            match = re.search(r"version (\d+)", told)
            version = int(match.group(1)) if match else 0
            if version == FORMATTER_VERSION:
                return command, []
            others.append(version)
    return None, others


def notes():
    """What this machine leaves unchecked, told beside the findings."""
    command, others = formatter()
    if command is None and others:
        yield (f"the format is not checked: that takes clang-format {FORMATTER_VERSION}, "
               f"here is {others[0]}")


def check_format(tree):
    code = tree.code()
    if not code:
        return
    command, others = formatter()
    if command is None:
        if not others:
            yield Finding(code[0], 1, "format", f"{FORMATTERS[-1]} is not installed")
        return
    run = subprocess.run([command, "--dry-run", "-Werror", "--style=file", *code], cwd=tree.root,
                         capture_output=True, text=True, errors="replace")
    places = {}
    for match in re.finditer(r"^(.+?):(\d+):\d+: error: ", run.stderr, re.MULTILINE):
        places.setdefault(match.group(1), []).append(int(match.group(2)))
    for path, lines in places.items():
        yield Finding(path, lines[0], "format", f"{command} changes it in {len(lines)} places")
    if run.returncode != 0 and not places:
        yield Finding(code[0], 1, "format", f"{command}: {run.stderr.strip()[:200]}")
