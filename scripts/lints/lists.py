"""Every source is built and every folder of tests is run: nothing is forgotten in a list."""
import os
import re

from .tree import CODE_ROOTS, Finding, under

SOURCE = re.compile(r"[\w./${}-]+\.cpp\b")
HERE = ("${CMAKE_CURRENT_SOURCE_DIR}/", "${CMAKE_CURRENT_LIST_DIR}/")
TOP = ("${PROJECT_SOURCE_DIR}/", "${CMAKE_SOURCE_DIR}/")


def without_comments(text):
    return re.sub(r"#[^\n]*", "", text)


def listed_path(folder, name):
    """The path that a name in the list of `folder` means; None when it holds other variables."""
    for prefix in TOP:
        if name.startswith(prefix):
            folder, name = "", name[len(prefix):]
    for prefix in HERE:
        if name.startswith(prefix):
            name = name[len(prefix):]
    return None if "$" in name else os.path.normpath(os.path.join(folder, name))


def check(tree):
    lists = [p for p in tree.paths if os.path.basename(p) == "CMakeLists.txt"]
    known, listed = set(tree.paths), set()
    for path in lists:
        text = without_comments(tree.text(path))
        for match in SOURCE.finditer(text):
            target = listed_path(os.path.dirname(path), match.group(0))
            if target is None:
                continue
            listed.add(target)
            if target not in known:
                yield Finding(path, text.count("\n", 0, match.start()) + 1, "list",
                              f"{target} does not exist")
    for path in tree.code():
        if path.endswith(".cpp") and path not in listed:
            yield Finding(path, 1, "list", "in no CMakeLists.txt")
    yield from check_folders(tree, lists)


def check_folders(tree, lists):
    """A folder's list counts only when the list above it takes it in."""
    for path in lists:
        folder = os.path.dirname(path)
        if not folder or not under(folder, CODE_ROOTS):
            continue
        above = os.path.dirname(folder)
        while above and f"{above}/CMakeLists.txt" not in lists:
            above = os.path.dirname(above)
        upper = os.path.join(above, "CMakeLists.txt")
        if upper not in tree.paths:
            yield Finding(path, 1, "list", "no CMakeLists.txt above takes it in")
            continue
        words = set(re.findall(r"[\w.-]+", without_comments(tree.text(upper))))
        if os.path.basename(folder) not in words:
            yield Finding(path, 1, "list", f"{upper} does not take this folder in")
