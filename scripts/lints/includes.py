"""Who may include whom: folders point down, files make no circles, systems stay at the edge."""
import os
import re

from .tree import Finding, is_windows_file, under

# What each folder of src/ may use besides itself.
LAYERS = {
    "base": [],
    "panel": ["base"],
    "store": ["panel", "base"],
    "record": ["panel", "base"],
    "core": ["record", "store", "panel", "base"],
    "link": ["core", "record", "store", "panel", "base"],
    "ui": ["link", "core", "record", "store", "panel", "base"],
    "app": ["ui", "link", "core", "record", "store", "panel", "base"],
}
STANDIN_USES = ["base"]
# The companion decides as the program does, but has no window and no link. Its commands stand on
# what reads the program's files.
COMPANION_USES = {
    "archive": ["core", "record", "store", "panel", "base"],
    "tools": ["archive", "core", "record", "store", "panel", "base"],
}

STANDARD = set("""
    algorithm any array atomic barrier bit bitset cassert cctype cerrno charconv chrono cmath
    compare complex concepts condition_variable csignal cstddef cstdint cstdio cstdlib cstring
    ctime deque exception filesystem fstream functional future initializer_list iomanip iosfwd
    iostream istream iterator latch limits list map memory memory_resource mutex new numbers
    numeric optional ostream queue random ranges ratio regex semaphore set shared_mutex
    source_location span sstream stack stdexcept streambuf string string_view system_error
    thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
    variant vector version""".split())
# The program reaches files, time and the screen through its seams alone.
BESIDE_THE_SEAMS = {"filesystem", "fstream", "iostream", "thread", "chrono", "ctime", "mutex",
                    "future", "random", "csignal", "condition_variable"}
# Other headers that one file may include all the same, each with the reason.
OTHER_HEADERS = {
    ("bench/store_bench.cpp", "malloc.h"): "asks how much memory is in use",
    ("fuzz/replay_input.cpp", "sys/mman.h"): "keeps its files in memory",
    ("fuzz/replay_input.cpp", "unistd.h"): "keeps its files in memory",
    ("tests/simulation/long_life.cpp", "malloc.h"): "asks how much memory is in use",
    ("tests/unit/tools/lists_command_test.cpp", "fcntl.h"): "maps a program as a system does",
    ("tests/unit/tools/lists_command_test.cpp", "sys/mman.h"): "maps a program as a system does",
    ("tests/unit/tools/lists_command_test.cpp", "unistd.h"): "maps a program as a system does",
    ("tools/system_posix.cpp", "fcntl.h"): "opens files that are to be on the disk when closed",
    ("tools/system_posix.cpp", "spawn.h"): "starts the program of a hook",
    ("tools/system_posix.cpp", "sys/file.h"): "claims the list of an outbox",
    ("tools/system_posix.cpp", "sys/wait.h"): "asks how the program of a hook ended",
    ("tools/system_posix.cpp", "unistd.h"): "puts files on the disk",
    ("tools/terminal_posix.cpp", "unistd.h"): "asks whether a stream is a terminal",
}
TEST_LIBRARIES = ("gtest/", "gmock/", "benchmark/")

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?:<([^>\n]+)>|"([^"\n]+)")', re.MULTILINE)


def includes_of(tree, path):
    """(line, name, quoted) of each include."""
    text = tree.text(path)
    for match in INCLUDE.finditer(text):
        yield text.count("\n", 0, match.start(1) if match.group(1) else match.start(2)) + 1, \
            match.group(1) or match.group(2), match.group(2) is not None


def resolve(tree, path, name):
    """The included file's path, or None. A name counts from src/, the root or tests/."""
    for base in ("src", "", "tests", os.path.dirname(path)):
        candidate = os.path.normpath(os.path.join(base, name))
        if candidate in tree.code_set:
            return candidate
    return None


def check(tree):
    tree.code_set = set(tree.code())
    graph = {}
    for path in tree.code():
        graph[path] = []
        for line, name, quoted in includes_of(tree, path):
            if not quoted:
                yield from check_system(path, line, name)
                continue
            target = resolve(tree, path, name)
            if target is None:
                yield Finding(path, line, "include", f'"{name}" is no file of the project')
                continue
            graph[path].append(target)
            yield from check_direction(path, line, target)
            yield from check_portable(path, line, target)
    yield from circles(graph)


def check_system(path, line, name):
    test_library = name.startswith(TEST_LIBRARIES)
    if is_windows_file(path) or (path, name) in OTHER_HEADERS:
        return
    if test_library and not under(path, ("tests", "bench")):
        yield Finding(path, line, "include", f"<{name}> outside tests and benchmarks")
    elif not test_library and name not in STANDARD:
        yield Finding(path, line, "system-header",
                      f"<{name}> is no standard header; only *_win.* may include others")
    elif name in BESIDE_THE_SEAMS and under(path, ("src", "standin")):
        yield Finding(path, line, "seam", f"<{name}> goes past the seams")


def check_portable(path, line, target):
    """A header of the system's own carries the system's headers with it. What lies in tests/desktop
    is built for Windows alone."""
    if target.endswith("_win.h") and not is_windows_file(path) and \
            not path.startswith("tests/desktop/"):
        yield Finding(path, line, "system-header", f"only *_win.* may include {target}")


def check_direction(path, line, target):
    parts, target_parts = path.split("/"), target.split("/")
    if parts[0] == "src":
        folder = parts[1]
        if folder not in LAYERS:
            yield Finding(path, line, "direction", f"src/{folder} has no place in the layers")
        elif target_parts[0] != "src":
            yield Finding(path, line, "direction", f"src/ may not include {target}")
        elif target_parts[1] != folder and target_parts[1] not in LAYERS[folder]:
            yield Finding(path, line, "direction",
                          f"{folder} may not include {target_parts[1]} ({target})")
    elif parts[0] == "standin":
        if target_parts[0] != "standin" and target_parts[1] not in STANDIN_USES:
            yield Finding(path, line, "direction", f"standin may not include {target}")
    elif parts[0] in COMPANION_USES:
        folder = target_parts[1] if target_parts[0] == "src" else target_parts[0]
        if folder != parts[0] and folder not in COMPANION_USES[parts[0]]:
            yield Finding(path, line, "direction", f"{parts[0]} may not include {target}")
    elif parts[:2] in (["tests", "sim"], ["tests", "sim_desktop"]) and \
            target.startswith("tests/desktop/"):
        yield Finding(path, line, "direction", "the simulation may not include the desktop tests")


def circles(graph):
    """Each circle of includes once, told at its alphabetically first file."""
    state, stack, told = {}, [], set()

    def visit(path):
        state[path] = "open"
        stack.append(path)
        for target in graph.get(path, []):
            if state.get(target) == "open":
                ring = stack[stack.index(target):]
                key = tuple(sorted(ring))
                if key not in told:
                    told.add(key)
                    yield Finding(key[0], 1, "circle", " -> ".join(ring + [target]))
            elif target not in state:
                yield from visit(target)
        stack.pop()
        state[path] = "done"

    for path in sorted(graph):
        if path not in state:
            yield from visit(path)
