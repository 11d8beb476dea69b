#!/usr/bin/env python3
"""Tries the lints on small projects that are right but for one thing.

Each example is a project of a few files plus one fault; the lint named with it must find exactly
that fault. What no file may hold is put together from pieces.
"""
import os
import sys
import tempfile

sys.dont_write_bytecode = True

from lints import form  # noqa: E402

GOOD = {
    ".clang-format": "BasedOnStyle: Google\nColumnLimit: 100\n",
    "CMakeLists.txt": "add_subdirectory(src/base)\nadd_subdirectory(src/core)\n"
                      "add_subdirectory(src/ui)\nadd_subdirectory(src/store)\n"
                      "add_subdirectory(src/record)\n"
                      "add_subdirectory(src/panel)\nadd_subdirectory(tests)\n"
                      "add_subdirectory(standin)\nadd_subdirectory(demo)\n"
                      "add_subdirectory(tools)\n",
    "src/base/CMakeLists.txt": "corvane_library(base\n  thing.cpp\n  thing_win.cpp)\n",
    "src/base/thing.h": "// A thing.\n#pragma once\n\n#include <string>\n",
    "src/base/thing.cpp": '// How things are.\n#include "base/thing.h"\n',
    "src/base/thing_win.cpp": "// Things of the system.\n#include <windows.h>\n",
    "src/core/CMakeLists.txt": "corvane_library(core\n  follow.cpp)\n",
    "src/core/follow.h": '// Follows.\n#pragma once\n\n#include "base/thing.h"\n',
    "src/core/follow.cpp": '// How to follow.\n#include "core/follow.h"\n',
    "src/store/CMakeLists.txt": "corvane_library(store\n  kept.cpp)\n",
    "src/store/kept.h": "// Kept.\n#pragma once\n",
    "src/store/kept.cpp": '// How to keep.\n#include "store/kept.h"\n',
    "src/record/CMakeLists.txt": "corvane_library(record\n  sound.cpp)\n",
    "src/record/sound.cpp": "// Sound.\n",
    "src/ui/CMakeLists.txt": "corvane_library(ui\n  form.cpp)\n",
    "src/ui/form.cpp": '// A form.\n#include "core/follow.h"\n',
    "src/ui/control_ids.h": "// Numbers.\n#pragma once\n\nenum class ControlId : int {\n"
                            "  // The first.\n  lblOne = 1001,\n  lblTwo = 1002,\n};\n",
    "standin/CMakeLists.txt": "add_library(standin model.cpp)\n",
    "standin/model.cpp": '// A model.\n#include "base/thing.h"\n',
    "tools/CMakeLists.txt": "add_executable(tools tool.cpp)\n",
    "tools/tool.cpp": '// A tool.\n#include "core/follow.h"\n',
    "demo/CMakeLists.txt": "add_executable(demo show.cpp)\n",
    "demo/show.cpp": "// Shows.\n#include <chrono>\n",
    "tests/CMakeLists.txt": "foreach(folder base)\n  add_subdirectory(unit/${folder})\n"
                            "endforeach()\n",
    "tests/unit/base/CMakeLists.txt": "corvane_test(unit_base SOURCES thing_test.cpp)\n",
    "tests/unit/base/thing_test.cpp": '#include "base/thing.h"\n\n#include <gtest/gtest.h>\n',
    "scripts/run.sh": "#!/bin/bash\necho ready\n",
    "src/panel/CMakeLists.txt": "corvane_library(panel\n  captions.cpp)\n",
    "src/panel/captions.cpp": '// Captions.\nconst char* kStart = "Start";  // "Gone"\n'
                              'const char* kNone =\n    "No network "\n    "found - ";\n',
    "docs/manual/index.md": "Press **Start**, see \"No network found\", `lblOne`, `**code**`.\n",
    "README.md": "See [the form](src/ui/form.cpp).\n",
}

THING = "src/base/thing.cpp"
UNREACHED = "tests/unreached.txt"


def code(body, path=THING):
    """The file with `body` behind what is there."""
    return {path: GOOD[path] + "\n" + body + "\n"}


def listed(path, body):
    """A new file that its folder's list names."""
    folder, name = os.path.split(path)
    upper = folder + "/CMakeLists.txt"
    return {path: body, upper: GOOD[upper] + f"# more\ntarget_sources(x PRIVATE {name})\n"}


def function(lines):
    return "void Long() {\n" + "  Step();\n" * (lines - 2) + "}"


# (name, files changed or added, lint that finds it, path of the finding)
BROKEN = [
    ("base includes core", {"src/base/thing.h": "// A thing.\n#pragma once\n\n"
                            '#include "core/other.h"\n',
                            "src/core/other.h": "// Other.\n#pragma once\n"},
     "direction", "src/base/thing.h"),
    ("core includes ui", {"src/core/follow.cpp": '// F.\n#include "ui/control_ids.h"\n'},
     "direction", "src/core/follow.cpp"),
    ("record includes store", {"src/record/sound.cpp": '// Sound.\n#include "store/kept.h"\n'},
     "direction", "src/record/sound.cpp"),
    ("store includes record", {"src/record/loud.h": "// Loud.\n#pragma once\n",
                               "src/store/kept.cpp": '// Kept.\n#include "record/loud.h"\n'},
     "direction", "src/store/kept.cpp"),
    ("a relative include goes up too", {"src/core/follow.cpp":
                                        '// F.\n#include "../ui/control_ids.h"\n'},
     "direction", "src/core/follow.cpp"),
    ("src includes tests", {"tests/fake.h": "// Fake.\n#pragma once\n",
                            "src/ui/form.cpp": '// A form.\n#include "tests/fake.h"\n'},
     "direction", "src/ui/form.cpp"),
    ("standin includes core", {"standin/model.cpp": '// M.\n#include "core/follow.h"\n'},
     "direction", "standin/model.cpp"),
    ("circle of headers", {"src/base/a.h": '// A.\n#pragma once\n\n#include "base/b.h"\n',
                           "src/base/b.h": '// B.\n#pragma once\n\n#include "base/a.h"\n'},
     "circle", "src/base/a.h"),
    ("unknown include", code('#include "base/nothing.h"'), "include", THING),
    ("test library in the program", code("#include <gtest/gtest.h>"), "include", THING),
    ("system header in a portable source", code("#include <windows.h>"), "system-header", THING),
    ("Windows header in a portable source",
     {"src/base/box_win.h": "// Box.\n#pragma once\n\n#include <winsock2.h>\n",
      **code('#include "base/box_win.h"')}, "system-header", THING),
    ("a tool includes a window", {"tools/tool.cpp": '// T.\n#include "ui/control_ids.h"\n'},
     "direction", "tools/tool.cpp"),
    ("the archive includes a command",
     {"tools/tool.h": "// T.\n#pragma once\n",
      "archive/day.h": '// D.\n#pragma once\n\n#include "tools/tool.h"\n'},
     "direction", "archive/day.h"),
    ("the program includes a tool",
     {"tools/tool.h": "// T.\n#pragma once\n",
      "src/core/follow.cpp": '// F.\n#include "core/follow.h"\n\n#include "tools/tool.h"\n'},
     "direction", "src/core/follow.cpp"),
    ("system header in the model", {"standin/model.cpp": "// M.\n#include <windows.h>\n"},
     "system-header", "standin/model.cpp"),
    ("system header in a test", {"tests/unit/base/thing_test.cpp": "#include <unistd.h>\n"},
     "system-header", "tests/unit/base/thing_test.cpp"),
    ("files past the seam", code("#include <fstream>"), "seam", THING),
    ("unbounded copy", code("void F() { strcpy(a, b); }"), "call", THING),
    ("unbounded print", code("void F() { std::sprintf(a, b); }"), "call", THING),
    ("unbounded reading", code("void F() { gets(a); }"), "call", THING),
    ("shell", code("void F() { system(a); }"), "call", THING),
    ("random", code("int F() { return rand(); }"), "call", THING),
    ("number reading", code("int F() { return std::stoi(a); }"), "call", THING),
    ("wall clock", code("auto F() { return time(nullptr); }"), "call", THING),
    ("system clock", code("auto F() { return std::chrono::system_clock::now(); }"), "call", THING),
    ("sleeping", code("void F() { ::usleep(5); }"), "call", THING),
    ("sleeping test", code("void F() { std::this_thread::sleep_for(a); }",
                           "tests/unit/base/thing_test.cpp"),
     "call", "tests/unit/base/thing_test.cpp"),
    ("regular expression", code("const std::regex kWord(a);"), "call", THING),
    ("casting bytes", code("auto F() { return reinterpret_cast<int*>(a); }"), "call", THING),
    ("disabled test", code("TEST(Thing, DISABLED_Works) {}", "tests/unit/base/thing_test.cpp"),
     "call", "tests/unit/base/thing_test.cpp"),
    ("empty claim", code("void F() { EXPECT_TRUE(true); }", "tests/unit/base/thing_test.cpp"),
     "call", "tests/unit/base/thing_test.cpp"),
    ("server", {"README.md": "Get it from http" + "://example.org/x.\n"}, "word", "README.md"),
    ("unfinished", code("// TO" + "DO: more"), "word", THING),
    ("unfinished in a script", {"scripts/run.sh": "#!/bin/bash\n# FIX" + "ME\n"},
     "word", "scripts/run.sh"),
    ("no opening comment", {"src/base/thing.h": "#pragma once\n"}, "opening", "src/base/thing.h"),
    ("no guard", {"src/base/thing.h": "// A thing.\n"}, "opening", "src/base/thing.h"),
    ("long opening", {THING: "// More.\n" * 7}, "opening", THING),
    ("long file", {THING: "// A.\n\n" + "int a();\n" * 400}, "file-length", THING),
    ("long function", code(function(80)), "function-length", THING),
    ("long line", code("// " + "x" * 120), "line-length", THING),
    ("long line of a script", {"scripts/run.sh": "#!/bin/bash\n# " + "x" * 120 + "\n"},
     "line-length", "scripts/run.sh"),
    ("tab", {"scripts/run.sh": "#!/bin/bash\n\techo\n"}, "tab", "scripts/run.sh"),
    ("blank at the end", {"README.md": "Text \n"}, "blank", "README.md"),
    ("no end of line", {"README.md": "Text"}, "blank", "README.md"),
    ("text outside ASCII", code("// Stra\u00dfe"), "ascii", THING),
    ("format", code("int  a ;"), "format", THING),
    ("source in no list", {"src/base/lost.cpp": "// Lost.\n"}, "list", "src/base/lost.cpp"),
    ("test in no list", {"tests/unit/base/lost_test.cpp": "// Lost.\n"},
     "list", "tests/unit/base/lost_test.cpp"),
    ("source of the demonstration in no list", {"demo/lost.cpp": "// Lost.\n"},
     "list", "demo/lost.cpp"),
    ("system header in the demonstration",
     {"demo/show.cpp": "// Shows.\n#include <windows.h>\n"}, "system-header", "demo/show.cpp"),
    ("list of a missing source", {"src/record/CMakeLists.txt":
                                  "corvane_library(record sound.cpp noise.cpp)\n"},
     "list", "src/record/CMakeLists.txt"),
    ("folder in no list", {"tests/unit/more/CMakeLists.txt": "corvane_test(more)\n"},
     "list", "tests/unit/more/CMakeLists.txt"),
    ("caption that is not there", {"docs/manual/index.md": "Press **Stop**.\n"},
     "manual", "docs/manual/index.md"),
    ("part of a caption in bold", {"docs/manual/index.md": "Press **Sta**.\n"},
     "manual", "docs/manual/index.md"),
    ("text that no program shows", {"docs/manual/index.md": "It says \"Network\".\n"},
     "manual", "docs/manual/index.md"),
    ("text of a comment", {"docs/manual/index.md": "It says \"Gone\".\n"},
     "manual", "docs/manual/index.md"),
    ("quotation mark left open", {"docs/manual/index.md": "It says \"Start\" and \".\n"},
     "manual", "docs/manual/index.md"),
    ("control without a number", {"docs/manual/index.md": "See `lblThree`.\n"},
     "manual", "docs/manual/index.md"),
    ("number twice", {"src/ui/control_ids.h": GOOD["src/ui/control_ids.h"].replace("1002", "1001")},
     "control-id", "src/ui/control_ids.h"),
    ("name twice", {"src/ui/control_ids.h":
                    GOOD["src/ui/control_ids.h"].replace("lblTwo", "lblOne")},
     "control-id", "src/ui/control_ids.h"),
    ("number without a name", {"src/ui/control_ids.h":
                               GOOD["src/ui/control_ids.h"].replace(" = 1002", "")},
     "control-id", "src/ui/control_ids.h"),
    ("broken script", {"scripts/run.sh": "#!/bin/bash\nif true; then\n"},
     "shell", "scripts/run.sh"),
    ("broken script without an ending", {"scripts/run": "#!/bin/sh\ndone\n"},
     "shell", "scripts/run"),
    ("broken python", {"scripts/run.py": "def f(:\n"}, "python", "scripts/run.py"),
    ("a way that is not there any more",
     {UNREACHED: "src/core/follow.cpp | gone | true | never\n"}, "unreached", UNREACHED),
    ("a way without a reason",
     {UNREACHED: "src/core/follow.cpp | How to | true | \n"}, "unreached", UNREACHED),
    ("a way twice", {UNREACHED: "src/core/follow.cpp | How to | true | a\n"
                                "src/core/follow.cpp | How to | true | b\n"},
     "unreached", UNREACHED),
    ("a way in a Windows source",
     {UNREACHED: "src/base/thing_win.cpp | Things | true | never\n"}, "unreached", UNREACHED),
    ("dead link", {"README.md": "See [it](docs/none.md).\n"}, "link", "README.md"),
]

# Things that look like faults and are none.
FINE = [
    ("bounded print", code("void F() { std::snprintf(a, 3, b); }")),
    ("a member named Sleep", code("void F() { loop.Sleep(5); }")),
    ("a call in a comment", code("// Not strcpy(a, b).")),
    ("a call in a text", code('const char* a = "strcpy(a, b)";')),
    ("a call in a raw text", code('const char* a = R"(strcpy(a, b))";')),
    ("a quote as a character", code("char a = '\"';")),
    ("a cast in a Windows source", {"src/base/thing_win.cpp": GOOD["src/base/thing_win.cpp"] +
                                    "\nauto F() { return reinterpret_cast<int*>(a); }\n"}),
    ("system header in a Windows header",
     {"src/base/box_win.h": "// Box.\n#pragma once\n\n#include <winsock2.h>\n"}),
    ("a longest function", code(function(75))),
    ("a way over two lines",
     {UNREACHED: "# Why.\n\nsrc/core/follow.cpp | How to follow. #include | false | never\n"}),
    ("a new source that is listed", listed("src/store/more.cpp", "// More.\n")),
]


def findings_with(lint, changes):
    with tempfile.TemporaryDirectory() as root:
        for path, text in {**GOOD, **changes}.items():
            full = os.path.join(root, path)
            os.makedirs(os.path.dirname(full), exist_ok=True)
            with open(full, "w", encoding="utf-8", newline="") as file:
                file.write(text)
        return lint.findings_of(root)


def with_formatter(version, try_it):
    """What try_it() gives where clang-format is of this version and changes every file."""
    with tempfile.TemporaryDirectory() as folder:
        for command in form.FORMATTERS:
            with open(os.path.join(folder, command), "w", encoding="utf-8") as file:
                file.write("#!/bin/sh\n"
                           f"[ $1 = --version ] && echo 'clang-format version {version}.0.6' ||\n"
                           f"{{ echo '{THING}:1:1: error: not so' >&2; exit 1; }}\n")
            os.chmod(os.path.join(folder, command), 0o755)
        path = os.environ["PATH"]
        os.environ["PATH"] = folder + os.pathsep + path
        try:
            return try_it()
        finally:
            os.environ["PATH"] = path


def formats_tried(lint):
    """What is wrong with how the version of clang-format is heeded."""
    def findings_and_notes():
        return [f.lint for f in findings_with(lint, {})], len(list(form.notes()))
    for version, expected in ((form.FORMATTER_VERSION, (["format"], 0)), (19, ([], 1))):
        found = with_formatter(version, findings_and_notes)
        if found != expected:
            yield f"clang-format {version}: expected {expected}, found {found}"


def passes():
    """Tries everything; prints what went wrong."""
    import lint
    wrong = list(formats_tried(lint))
    for finding in findings_with(lint, {}):
        wrong.append(f"the good example: {finding}")
    for name, changes in FINE:
        wrong += [f"{name}: {finding}" for finding in findings_with(lint, changes)]
    formatted = form.formatter()[0] is not None
    for name, changes, expected, path in BROKEN:
        if expected == "format" and not formatted:
            continue
        found = findings_with(lint, changes)
        if not found or any((f.lint, f.path) != (expected, path) for f in found):
            wrong.append(f"{name}: expected [{expected}] in {path}, found "
                         f"{[str(f) for f in found]}")
    for line in wrong:
        print(line)
    print(f"{len(BROKEN) + len(FINE) + 3} examples of the lints, {len(wrong)} went wrong")
    return not wrong


if __name__ == "__main__":
    sys.exit(0 if passes() else 1)
