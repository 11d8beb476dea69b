"""Packs the check for a person with Windows: pack_check.py ZIP_FILE

The programs come from dist/ and build/mingw/, the page from docs/. The zip's name without its
ending is the one folder in it.
"""
import os
import sys
import zipfile

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
CASES = "build/mingw/tests"
FILES = (
    "dist/Corvane.exe",
    "dist/SdrStandin.exe",
    "dist/corvane-tools.exe",
    f"{CASES}/contract/contract_win.exe",
    f"{CASES}/contract/contract_win_mci.exe",
    f"{CASES}/desktop/desktop_test.exe",
    f"{CASES}/desktop/hold_recordings.exe",
    f"{CASES}/desktop/latency_bench.exe",
    f"{CASES}/desktop/persistence_link_test.exe",
    f"{CASES}/desktop/persistence_test.exe",
    f"{CASES}/desktop/windows_check.exe",
    "scripts/lib/check.cmd",
)
# What persistence_test reads of the checkout, at its places there.
FOLDERS = ("samples", "tests/corpus", "tests/golden")
PAGE = ("docs/windows-check.md", "README.txt")


def with_windows_lines(path):
    with open(path, "rb") as file:
        return file.read().replace(b"\r\n", b"\n").replace(b"\n", b"\r\n")


def files_in(folders):
    for folder in folders:
        for place, _, names in sorted(os.walk(os.path.join(ROOT, folder))):
            for name in sorted(names):
                yield os.path.relpath(os.path.join(place, name), ROOT).replace(os.sep, "/")


def main(zip_file):
    top = os.path.basename(zip_file)[:-len(".zip")]
    part = zip_file + ".part"
    with zipfile.ZipFile(part, "w", zipfile.ZIP_DEFLATED) as package:
        for name in FILES:
            path = os.path.join(ROOT, name)
            place = f"{top}/{os.path.basename(name)}"
            if name.endswith(".cmd"):
                package.writestr(place, with_windows_lines(path))
            else:
                package.write(path, place)
        for name in files_in(FOLDERS):
            package.write(os.path.join(ROOT, name), f"{top}/{name}")
        package.writestr(f"{top}/{PAGE[1]}", with_windows_lines(os.path.join(ROOT, PAGE[0])))
    os.replace(part, zip_file)


if __name__ == "__main__":
    main(*sys.argv[1:])
