"""The table of control numbers: one `name = number,` per line, each name and number once."""
import re

from .tree import Finding

PATH = "src/ui/control_ids.h"
ENTRY = re.compile(r"\s*([A-Za-z_]\w*) = ([0-9]+),$")
BEGIN = re.compile(r"\benum class \w+[^{;]*\{$")


def check(tree):
    if PATH not in tree.paths:
        return
    names, numbers, inside, entries = {}, {}, False, 0
    for line, text in tree.lines(PATH):
        if BEGIN.search(text):
            inside = True
        elif inside and text.startswith("};"):
            inside = False
        elif inside and text.strip() and not text.strip().startswith("//"):
            entry = ENTRY.match(text)
            if not entry:
                yield Finding(PATH, line, "control-id", f"not `name = number,`: {text.strip()}")
                continue
            entries += 1
            name, number = entry.group(1), int(entry.group(2))
            for seen, key in ((names, name), (numbers, number)):
                if key in seen:
                    yield Finding(PATH, line, "control-id",
                                  f"{key} stands in line {seen[key]} already")
                seen.setdefault(key, line)
    if entries == 0:
        yield Finding(PATH, 1, "control-id", "no table of numbers found")
