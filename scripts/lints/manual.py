"""The user's manual speaks of nothing that is not there: words in bold are captions, words in
quotation marks texts that the programs show, and names of controls have a number."""
import re

from .tree import Finding, at, under

FOLDER = "docs/manual/"
PROGRAMS = ("src", "archive", "tools", "standin")
NUMBERS = "src/ui/control_ids.h"

# Captions and texts of other programs, and where they are met.
ELSEWHERE = {
    "Net Remote": "the header of a panel of SDR#",
    "TETRA Demodulator": "the header of a panel of SDR#",
    "Stereo Mix": "a recording device of Windows",
    "Show Disabled Devices": "the sound control panel of Windows",
    "Microphone access": "the settings of Windows",
    "Let desktop apps access your microphone": "the settings of Windows",
    "UTF-8 with BOM": "Notepad",
}

CODE = re.compile(r"^```.*?^```$|^ {4}.*$|`[^`\n]*`", re.MULTILINE | re.DOTALL)
BOLD = re.compile(r"(?<!\*)\*\*(?![\s*])([^*]+)\*\*(?!\*)")
QUOTED = re.compile(r'"([^"]*)"')
NAME = re.compile(r"\b(?:lbl|lst|txt|chk|cbo|cmd|opt|fra|mnu|Shape)[A-Z]\w*")
LITERAL = re.compile(r'"((?:\\.|[^"\\\n])*)"(?:\s*"((?:\\.|[^"\\\n])*)")*')
PIECE = re.compile(r'"((?:\\.|[^"\\\n])*)"')
# What parts a text from a date or a name beside it.
ENDS = re.compile(r"^ *(- )?|( -)? *$")
COMMENT = re.compile(r"//[^\n]*")


def check(tree):
    pages = [path for path in tree.paths if path.startswith(FOLDER) and path.endswith(".md")]
    if not pages:
        return
    shown = texts_of(tree)
    numbers = set(re.findall(r"^  (\w+) = \d+,$", tree.text(NUMBERS), re.MULTILINE)) \
        if NUMBERS in tree.paths else set()
    for words in sorted(shown & set(ELSEWHERE)):
        yield Finding(pages[0], 1, "manual", f"{words} is shown by a program: take it off the list "
                      "of texts of others")
    for path in pages:
        whole = tree.text(path)
        text = CODE.sub(lambda match: re.sub(r"[^\n]", " ", match.group(0)), whole)
        for match in BOLD.finditer(text):
            if one_line(match.group(1)) not in shown and match.group(1) not in ELSEWHERE:
                yield finding(path, text, match, "is no caption")
        for match in QUOTED.finditer(text):
            words = one_line(match.group(1))
            if words not in ELSEWHERE and not any(literal.startswith(words) for literal in shown):
                yield finding(path, text, match, "is shown by no program")
        if text.count('"') % 2:
            yield Finding(path, 1, "manual", "a quotation mark without its other one")
        for match in NAME.finditer(whole):
            if match.group(0) not in numbers:
                yield finding(path, whole, match, "is no control")


def finding(path, text, match, what):
    return Finding(path, at(text, match.start()), "manual", f"{match.group(0)} {what}")


def one_line(text):
    return " ".join(text.split())


def texts_of(tree):
    """The texts in the programs' code, without blanks and dashes at their ends. Those that stand
    side by side are one. What follows the end of a line is a text of its own."""
    found = set()
    for path in tree.code():
        if not under(path, PROGRAMS) or tree.text(path) is None:
            continue
        for match in LITERAL.finditer(COMMENT.sub("", tree.text(path))):
            whole = "".join(PIECE.findall(match.group(0)))
            for line in whole.replace("\\r", "\\n").split("\\n"):
                text = ENDS.sub("", line.replace('\\"', '"').replace("\\\\", "\\"))
                if text:
                    found.add(text)
    return found
