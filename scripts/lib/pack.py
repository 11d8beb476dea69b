"""Packs what the programs' build and the manual's have left.

pack.py MANUAL_FOLDER ZIP_FILE

MANUAL_FOLDER holds manual/ and manual.pdf; the programs lie in dist/. The zip's name without its
ending is the one folder in it. Names are in order, times are SOURCE_DATE_EPOCH's, rights are fixed,
so that equal files give equal bytes. ZIP_FILE.sha256 holds the checksum of the whole.
"""
import glob
import hashlib
import os
import sys
import time
import zipfile

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
# Where each file comes from; with "/" at its end the place is a folder. The ends of lines become
# those of Windows in files that are read by people or by the system's shell.
FILES = (
    ("dist/Corvane.exe", "Corvane.exe"),
    ("dist/SdrStandin.exe", "SdrStandin.exe"),
    ("standin/practise.cmd", "practise.cmd"),
    ("standin/scenarios/*.txt", "scenarios/"),
    ("samples/*.txt", "samples/"),
)
WINDOWS_LINES = (".cmd", ".txt")
CHECKSUMS = "SHA256SUMS"


def read(path):
    with open(path, "rb") as file:
        data = file.read()
    if path.endswith(WINDOWS_LINES):
        data = data.replace(b"\r\n", b"\n").replace(b"\n", b"\r\n")
    return data


def contents(manual_folder):
    """The bytes of each file by its name in the package."""
    found = {}
    for pattern, place in FILES:
        paths = glob.glob(os.path.join(ROOT, pattern))
        if not paths:
            raise SystemExit(f"there is no {pattern}")
        for path in paths:
            name = place + os.path.basename(path) if place.endswith("/") else place
            found[name] = read(path)
    found["Corvane-manual.pdf"] = read(os.path.join(manual_folder, "manual.pdf"))
    pages = os.path.join(manual_folder, "manual")
    for folder, _, names in os.walk(pages):
        for name in names:
            path = os.path.join(folder, name)
            found["manual/" + os.path.relpath(path, pages).replace(os.sep, "/")] = read(path)
    found[CHECKSUMS] = "".join(f"{hashlib.sha256(found[name]).hexdigest()}  {name}\n"
                               for name in sorted(found)).encode("ascii")
    return found


def main(manual_folder, zip_file):
    found = contents(manual_folder)
    date = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
    top = os.path.basename(zip_file)[:-len(".zip")]
    part = zip_file + ".part"
    with zipfile.ZipFile(part, "w") as package:
        for name in sorted(found):
            entry = zipfile.ZipInfo(f"{top}/{name}", date)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3
            entry.external_attr = 0o100644 << 16
            package.writestr(entry, found[name], compresslevel=9)
    os.replace(part, zip_file)
    with open(zip_file, "rb") as file:
        whole = hashlib.sha256(file.read()).hexdigest()
    with open(zip_file + ".sha256", "w", encoding="ascii", newline="\n") as file:
        file.write(f"{whole}  {os.path.basename(zip_file)}\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
