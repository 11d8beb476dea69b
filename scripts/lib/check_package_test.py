"""Tries check_package.py on packages that are right but for one thing.

check_package_test.py ZIP_FILE VERSION SOURCE_FOLDER   the package to spoil must be right

Each example is the package with one fault; a finding must name it.
"""
import hashlib
import os
import struct
import sys
import tempfile
import zipfile

import check_package


def replaced(data, old, new):
    if old not in data:
        raise SystemExit(f"nothing to spoil: {old!r}")
    return data.replace(old, new)


def changed(name, spoil):
    """The package with the bytes of one file changed, its checksum made to fit."""
    def apply(files):
        files[name] = spoil(files[name])
    return apply


def wide(text):
    return text.encode("utf-16-le")


def with_time(data):
    place = struct.unpack_from("<I", data, 0x3C)[0] + 8
    return data[:place] + struct.pack("<I", 1_700_000_000) + data[place + 4:]


def without_last_icon(data):
    group = struct.pack("<HHH", 0, 1, len(check_package.ICON_SIZES))
    return replaced(data, group, struct.pack("<HHH", 0, 1, len(check_package.ICON_SIZES) - 1))


def without_sum(files):
    files["SHA256SUMS"] = files["SHA256SUMS"].split(b"\n", 1)[1]


def another_name(old, new):
    def apply(files):
        files[new] = files.pop(old)
    return apply


def added(name, data):
    def apply(files):
        files[name] = data
    return apply


def examples(version, source):
    """(what is wrong, how to bring it about, what a finding says)"""
    page, program = "manual/index.html", "Corvane.exe"
    return [
        ("no time in the header", changed(program, with_time), "its header has the time"),
        ("a folder in a program", changed(program, lambda d: d + source.encode()),
         "names the folder"),
        ("an icon less", changed(program, without_last_icon), "icons of"),
        ("the stand-in's icons", changed("SdrStandin.exe", without_last_icon), "icons of"),
        ("another product", changed(program, lambda d: replaced(
            d, wide("ProductName\0\0Corvane"), wide("ProductName\0\0Covrane"))), "ProductName"),
        ("another version", changed("SdrStandin.exe", lambda d: replaced(
            d, wide("FileVersion\0\0" + version), wide("FileVersion\0\0" + "9" * len(version)))),
         "FileVersion"),
        ("a dead link", changed(page, lambda d: replaced(d, b"record.html", b"recode.html")),
         "does not exist"),
        ("a dead heading", changed("manual/lock-and-hold.html",
                                   lambda d: replaced(d, b"#the-editor", b"#an-editor")),
         "no such heading"),
        ("a picture that is not there", another_name("manual/pictures/compact.png",
                                                     "manual/pictures/small.png"),
         "compact.png does not exist"),
        ("a picture twice", lambda files: files.update(
            {"manual/pictures/compact.png": files["manual/pictures/options.png"]}),
         "the same picture"),
        ("half a picture", changed("manual/pictures/compact.png", lambda d: d[:len(d) // 2]),
         "no whole picture"),
        ("half a PDF", changed("Corvane-manual.pdf", lambda d: d[:len(d) // 2]), "no whole PDF"),
        ("a PDF without pictures", changed("Corvane-manual.pdf", lambda d: replaced(
            d, b"/Subtype /Image", b"/Subtype /Imago")), "no pictures"),
        ("a file less", lambda files: files.pop("scenarios/practice.txt"), "missing"),
        ("a file more", added("manual.md", b"# Corvane\n"), "does not belong here"),
        ("an empty file", changed("samples/TETRA_mcc.txt", lambda _: b""), "empty"),
        ("ends of lines", changed("samples/TETRA_mcc.txt", lambda d: d.replace(b"\r\n", b"\n")),
         "ends of lines"),
        ("a sum less", without_sum, "SHA256SUMS: wrong"),
    ]


def write(path, top, files, date):
    with zipfile.ZipFile(path, "w") as package:
        for name in sorted(files):
            package.writestr(zipfile.ZipInfo(f"{top}/{name}", date), files[name])
    with open(path, "rb") as file, open(path + ".sha256", "w", encoding="ascii") as told:
        told.write(f"{hashlib.sha256(file.read()).hexdigest()}  {os.path.basename(path)}\n")


def sums(files):
    return "".join(f"{hashlib.sha256(data).hexdigest()}  {name}\n"
                   for name, data in sorted(files.items()) if name != "SHA256SUMS").encode()


def main(zip_file, version, source):
    top = os.path.basename(zip_file)[:-len(".zip")]
    with zipfile.ZipFile(zip_file) as package:
        date = package.infolist()[0].date_time
        good = {entry.filename[len(top) + 1:]: package.read(entry) for entry in package.infolist()}
    wrong = 0
    with tempfile.TemporaryDirectory() as folder:
        spoilt = os.path.join(folder, os.path.basename(zip_file))
        tried = examples(version, source)
        for what, spoil, expected in tried:
            files = dict(good)
            spoil(files)
            if files["SHA256SUMS"] == good["SHA256SUMS"]:
                files["SHA256SUMS"] = sums(files)
            write(spoilt, top, files, date)
            found = list(check_package.check(spoilt, version, source))
            if not any(expected in finding for finding in found):
                wrong += 1
                print(f"{what}: expected \"{expected}\", found {found}")
        write(spoilt, top, good, date)
        if list(check_package.check(spoilt, version, source)):
            wrong += 1
            print("the good package has findings")
        write(spoilt, top, good, (1999, 12, 31, 0, 0, 0))
        if not any("from (1999" in found for found in check_package.check(spoilt, version, source)):
            wrong += 1
            print("another time was not found")
    print(f"{len(tried) + 2} examples, {wrong} went wrong")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
