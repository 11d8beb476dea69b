"""The files that the lints look at, and how a finding is told."""
import os
import re
import subprocess
from typing import NamedTuple

SKIPPED_FOLDERS = {".git", "build", "dist", "demo-output", "__pycache__"}
CODE_ROOTS = ("src", "archive", "tools", "standin", "demo", "tests", "fuzz", "bench")
TEXT_ENDINGS = (".h", ".cpp", ".py", ".sh", ".cmake", ".md", ".json", ".rc", ".manifest", ".in",
                ".yml")
TEXT_NAMES = {"CMakeLists.txt", ".clang-format", ".gitignore", "run"}


class Finding(NamedTuple):
    path: str
    line: int
    lint: str
    message: str

    def __str__(self):
        return f"{self.path}:{self.line}: [{self.lint}] {self.message}"


class Tree:
    """The project's files by their path from its root, with "/" between the parts."""

    def __init__(self, root):
        self.root = root
        self.paths = sorted(p for p in self._list() if os.path.isfile(os.path.join(root, p)))
        self._texts = {}

    def _list(self):
        if os.path.exists(os.path.join(self.root, ".git")):
            listed = subprocess.run(
                ["git", "-c", "safe.directory=*", "ls-files", "-z", "--cached", "--others",
                 "--exclude-standard"], cwd=self.root, capture_output=True, check=True)
            return set(listed.stdout.decode("utf-8", "surrogateescape").split("\0")) - {""}
        found = set()
        for folder, folders, names in os.walk(self.root):
            folders[:] = [name for name in folders if name not in SKIPPED_FOLDERS]
            for name in names:
                found.add(os.path.relpath(os.path.join(folder, name), self.root))
        return found

    def full(self, path):
        return os.path.join(self.root, path)

    def text(self, path):
        """The content; bytes that are no UTF-8 come as lone surrogates."""
        if path not in self._texts:
            with open(self.full(path), encoding="utf-8", errors="surrogateescape",
                      newline="") as file:
                self._texts[path] = file.read()
        return self._texts[path]

    def lines(self, path):
        """(number, line) from 1 on."""
        return enumerate(self.text(path).split("\n"), 1)

    def code(self):
        """Paths of the C++ files."""
        return [p for p in self.paths if p.endswith((".h", ".cpp")) and under(p, CODE_ROOTS)]

    def written(self):
        """Paths of everything that people write and read as text, data files left out."""
        return [p for p in self.paths
                if p.endswith(TEXT_ENDINGS) or os.path.basename(p) in TEXT_NAMES]


def under(path, folders):
    return path.split("/", 1)[0] in folders


def is_windows_file(path):
    """A file that may know the system; only its like include its header."""
    return path.endswith(("_win.cpp", "_win.h"))


TOKEN = re.compile(
    r"""//[^\n]*|/\*.*?\*/|R"([^()\\\s]{0,16})\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+'""",
    re.DOTALL)


def bare_code(text):
    """The C++ text with comments and the insides of literals blanked, line by line."""
    def blank(match):
        found = match.group(0)
        if found.startswith("'") and match.start() and text[match.start() - 1].isalnum():
            return found  # digits grouped as in 1'000'000
        return re.sub(r"[^\n]", " ", found)
    return TOKEN.sub(blank, text)


def at(text, position):
    """The line number of a position."""
    return text.count("\n", 0, position) + 1
