"""Scripts can at least be read by their interpreter; links in the pages lead somewhere."""
import os
import re
import subprocess

from .tree import Finding

LINK = re.compile(r"\]\(([^)\s#]+)[^)]*\)")


def check(tree):
    for path in tree.paths:
        if is_shell(tree, path):
            run = subprocess.run(["bash", "-n", tree.full(path)], capture_output=True, text=True)
            if run.returncode != 0:
                line = re.search(r"line (\d+):", run.stderr)
                yield Finding(path, int(line.group(1)) if line else 1, "shell",
                              run.stderr.strip().splitlines()[0])
        elif path.endswith(".py"):
            try:
                compile(tree.text(path), path, "exec")
            except SyntaxError as error:
                yield Finding(path, error.lineno or 1, "python", error.msg)
        elif path.endswith(".md"):
            yield from check_links(tree, path)


def is_shell(tree, path):
    if path.endswith(".sh"):
        return True
    if "." in os.path.basename(path):
        return False
    with open(tree.full(path), "rb") as file:
        first = file.readline(80)
    return first.startswith(b"#!") and b"sh" in first.split(b"/")[-1]


def check_links(tree, path):
    for line, text in tree.lines(path):
        for match in LINK.finditer(text):
            target = match.group(1)
            if ":" not in target and not os.path.exists(
                    os.path.join(tree.root, os.path.dirname(path), target)):
                yield Finding(path, line, "link", f"{target} does not exist")
