"""Calls, signs of unfinished work and addresses that must not stand in the project.

A pattern is written in pieces where it would otherwise find itself.
"""
import re

from .tree import Finding, at, bare_code, is_windows_file, under

UNFINISHED = [
    (r"\bTO" + r"DO\b|\bFIX" + r"ME\b|\bHA" + r"CK\b", "unfinished"),
    (r"\bTEMPO" + r"RARY\b", "unfinished"),
]
ADDRESS = re.compile(r"https?://([A-Za-z0-9.-]+)")
# Names of XML dialects, not places.
HOSTS = {"schemas.microsoft.com"}

# Files that wait on the system's clock, each with the reason.
SLEEPERS = {
    "tests/desktop/harness/wait.h": "waits for other programs",
    "tools/system_posix.cpp": "waits between two looks at a day folder",
}


# What C++ code must not call; the last column tells whether the rule holds for a path.
def everywhere(_):
    return True


def portable(path):
    return not is_windows_file(path)


def portable_program(path):
    return portable(path) and under(path, ("src", "archive", "tools", "standin"))


def tests(path):
    return under(path, ("tests",))


CALLS = [
    (r"(?<![\w:])(?:std::)?(gets|sprintf|vsprintf|strcpy|strcat|strncpy|strtok|scanf|sscanf)\s*\(",
     "unbounded or stateful text call", everywhere),
    (r"(?<![\w.>:])(?:std::)?(system|popen)\s*\(", "runs a shell", everywhere),
    (r"(?<![\w.>:])(?:std::)?s?rand\s*\(", "random numbers without a seed that is printed",
     everywhere),
    (r"\b(stoi|stol|stoll|stoul|stoull|stof|stod|stold|atoi|atol|atoll|atof|strtol|strtoll|strtoul"
     r"|strtoull|strtod)\s*\(", "number reading that depends on the region or throws; use "
     "base/number_text.h", portable_program),
    (r"(?<![\w.>:])(?:std::)?(time|localtime|gmtime|mktime|strftime|clock)\s*\(",
     "time comes from Loop or WallClock", portable_program),
    (r"\b(system_clock|steady_clock|high_resolution_clock)\b",
     "time comes from Loop or WallClock", portable_program),
    (r"(?<![\w.>])(?:::)?(usleep|sleep|nanosleep|sleep_for|sleep_until)\s*\(",
     "waits are Loop's", lambda path: portable(path) and path not in SLEEPERS),
    (r"\breinterpret_cast\b", "bytes are made and read one by one", portable),
    (r"\b(setlocale|toupper|tolower|isalpha|isdigit|isspace)\s*\(",
     "depends on the region", portable_program),
    (r"\bstd::(basic_)?regex\b", "goes as deep as its input is long", portable_program),
    (r"\busing\s+namespace\s+std\b", "names of std are written out", everywhere),
    (r"\bDISABLED_|\bGTEST_SKIP\b|\bSUCCEED\s*\(", "a test that does not test", tests),
    (r"\b(EXPECT|ASSERT)_(TRUE\s*\(\s*true\s*\)|FALSE\s*\(\s*false\s*\))",
     "a test that cannot fail", tests),
]


def check(tree):
    for path in tree.written():
        for line, text in tree.lines(path):
            for match in ADDRESS.finditer(text):
                if match.group(1) not in HOSTS:
                    yield Finding(path, line, "word", f"address of a server: {match.group(1)}")
        for pattern, why in UNFINISHED:
            for match in re.finditer(pattern, tree.text(path)):
                yield Finding(path, at(tree.text(path), match.start()), "word",
                              f"{why}: {match.group(0)}")
    for path in tree.code():
        code = bare_code(tree.text(path))
        for pattern, why, where in CALLS:
            if where(path):
                for match in re.finditer(pattern, code):
                    yield Finding(path, at(code, match.start()), "call",
                                  f"{match.group(0).strip()}: {why}")
