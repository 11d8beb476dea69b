"""Looks into a package: what is in it, and whether that fits together.

check_package.py ZIP_FILE VERSION SOURCE_FOLDER   names what is wrong
check_package.py same ONE_ZIP OTHER_ZIP           names what differs

Ends with 1 when there is a finding. The package must bear the time of SOURCE_DATE_EPOCH.
SOURCE_FOLDER is the one it was built in; no program may name it.
"""
import hashlib
import html.parser
import os
import posixpath
import re
import struct
import sys
import time
import zipfile
import zlib

NEEDED = ("Corvane.exe", "SdrStandin.exe", "practise.cmd", "scenarios/practice.txt",
          "scenarios/demo.txt", "scenarios/faults.txt", "samples/TETRA_GSSI.txt",
          "samples/TETRA_SSI.txt", "samples/TETRA_mcc.txt", "samples/TETRA_mnc.txt",
          "samples/TETRA_la.txt", "samples/TETRA_rec_gssi.txt", "manual/index.html",
          "manual/style.css", "Corvane-manual.pdf", "SHA256SUMS")
KINDS = re.compile(r"[\w-]+\.exe|practise\.cmd|SHA256SUMS|Corvane-manual\.pdf|scenarios/\w+\.txt|"
                   r"samples/TETRA_\w+\.txt|manual/[\w-]+\.html|manual/style\.css|"
                   r"manual/pictures/[\w-]+\.png")
ICON_SIZES = [16, 20, 24, 32, 40, 48, 64, 256]
ICON, GROUP_ICON, VERSION_INFO, MANIFEST = 3, 14, 16, 24
COMMON_FIELDS = {"CompanyName": "The Corvane developers", "ProductName": "Corvane"}


class Program:
    """A Windows program's header and resources, by kind and number."""

    def __init__(self, data):
        self.data = data
        header = struct.unpack_from("<I", data, 0x3C)[0]
        if data[header:header + 4] != b"PE\0\0":
            raise ValueError("no Windows program")
        sections, self.time = struct.unpack_from("<HI", data, header + 6)
        optional = struct.unpack_from("<H", data, header + 20)[0]
        directory = header + 24 + 112 + 2 * 8
        address, _ = struct.unpack_from("<II", data, directory)
        for index in range(sections):
            at = header + 24 + optional + 40 * index
            size, begin, _, place = struct.unpack_from("<IIII", data, at + 8)
            if begin <= address < begin + size:
                self.shift = place - begin
                self.base = address + self.shift
        self.resources = {(kind, number): self._data(self._entries(languages)[0][1])
                          for kind, numbers in self._entries(0)
                          for number, languages in self._entries(numbers)}

    def _entries(self, offset):
        named, numbered = struct.unpack_from("<HH", self.data, self.base + offset + 12)
        found = []
        for index in range(named + numbered):
            number, place = struct.unpack_from("<II", self.data,
                                               self.base + offset + 16 + 8 * index)
            found.append((number, place & 0x7FFFFFFF))
        return found

    def _data(self, offset):
        address, size = struct.unpack_from("<II", self.data, self.base + offset)
        return self.data[address + self.shift:address + self.shift + size]

    def icon_sizes(self):
        """Of the pictures that are there, in the order of the group."""
        group = self.resources.get((GROUP_ICON, 1), b"\0" * 6)
        sizes = []
        for index in range(struct.unpack_from("<H", group, 4)[0]):
            width, height, _, _, _, bits, size, number = struct.unpack_from(
                "<BBBBHHIH", group, 6 + 14 * index)
            picture = self.resources.get((ICON, number), b"")
            if width == height and bits == 32 and len(picture) == size and \
                    picture_width(picture) == (width or 256):
                sizes.append(width or 256)
        return sizes

    def version(self):
        """The file's and the product's numbers, and the texts."""
        data = self.resources.get((VERSION_INFO, 1), b"")
        text = data.decode("utf-16-le", "replace")
        fixed = data.find(struct.pack("<I", 0xFEEF04BD))
        if fixed < 0:
            return None, None, {}
        numbers = [f"{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}"
                   for high, low in (struct.unpack_from("<II", data, fixed + 8),
                                     struct.unpack_from("<II", data, fixed + 16))]
        words = [word for word in text.split("\0") if word]
        names = ("CompanyName", "FileDescription", "FileVersion", "InternalName",
                 "OriginalFilename", "ProductName", "ProductVersion")
        texts = {name: words[index + 1] for index, word in enumerate(words[:-1])
                 for name in names if word.endswith(name)}
        return numbers[0], numbers[1], texts


def picture_width(picture):
    if picture.startswith(b"\x89PNG"):
        return struct.unpack_from(">I", picture, 16)[0]
    return struct.unpack_from("<i", picture, 4)[0] if len(picture) > 40 else 0


def check_program(name, data, version, source):
    program = Program(data)
    if program.time != 0:
        yield f"{name}: its header has the time {program.time}"
    if source.encode() in data:
        yield f"{name}: names the folder {source}"
    if program.icon_sizes() != ICON_SIZES:
        yield f"{name}: icons of {program.icon_sizes()} instead of {ICON_SIZES}"
    file_version, product_version, texts = program.version()
    for number in (file_version, product_version):
        if number != version + ".0":
            yield f"{name}: version {number} instead of {version}.0"
    wanted = dict(COMMON_FIELDS, FileVersion=version, ProductVersion=version,
                  InternalName=name[:-len(".exe")], OriginalFilename=name)
    for field, value in wanted.items():
        if texts.get(field) != value:
            yield f"{name}: {field} is {texts.get(field)!r} instead of {value!r}"
    if not texts.get("FileDescription"):
        yield f"{name}: no description"
    if name == "Corvane.exe" and (MANIFEST, 1) not in program.resources:
        yield f"{name}: no manifest"


class Links(html.parser.HTMLParser):
    """Where a page's links and pictures lead, and what can be led to."""

    def __init__(self, text):
        super().__init__()
        self.targets, self.anchors, self.pictures = [], set(), []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        found = dict(attributes)
        if "id" in found:
            self.anchors.add(found["id"])
        for name in ("href", "src"):
            if name in found:
                self.targets.append(found[name])
        if tag == "img":
            self.pictures.append(found.get("alt", ""))


def check_manual(files):
    pages = {name: Links(data.decode("utf-8")) for name, data in files.items()
             if name.endswith(".html")}
    led_to = {"manual/index.html"}
    for name, page in pages.items():
        for target in page.targets:
            path, _, anchor = target.partition("#")
            path = posixpath.normpath(posixpath.join(posixpath.dirname(name), path)) \
                if path else name
            led_to.add(path)
            if path not in files:
                yield f"{name}: {target} does not exist"
            elif anchor and anchor not in pages[path].anchors:
                yield f"{name}: {target} has no such heading"
        if "" in page.pictures:
            yield f"{name}: a picture without a text in its place"
    for name in files:
        if name.startswith("manual/") and name not in led_to:
            yield f"{name}: nothing leads to it"
    pictures = {name: data for name, data in files.items() if name.endswith(".png")}
    if len(set(pictures.values())) != len(pictures):
        yield "manual: the same picture under two names"
    for name, data in pictures.items():
        if not data.startswith(b"\x89PNG") or not data.endswith(b"IEND\xaeB`\x82"):
            yield f"{name}: no whole picture"


def pdf_objects(data):
    """The PDF with those of its objects made readable that are packed into streams."""
    packed = re.finditer(rb"<<(?:(?!>>).)*/Type /ObjStm(?:(?!>>).)*>>\s*stream\r?\n", data,
                         re.DOTALL)
    return b"\n".join([data] + [zlib.decompressobj().decompress(data[match.end():])
                                for match in packed])


def check_pdf(data, pages):
    if not data.startswith(b"%PDF-") or b"%%EOF" not in data[-32:]:
        yield "Corvane-manual.pdf: no whole PDF"
        return
    count = len(re.findall(rb"/Type /Page\b", pdf_objects(data)))
    if count < pages:
        yield f"Corvane-manual.pdf: {count} sheets for {pages} pages of the manual"
    if not re.search(rb"/Subtype /Image\b", data):
        yield "Corvane-manual.pdf: no pictures"


def check_sums(files):
    lines = files["SHA256SUMS"].decode("ascii").splitlines()
    told = {name: digest for digest, name in (line.split("  ", 1) for line in lines)}
    for name in sorted(set(files) - {"SHA256SUMS"} | set(told)):
        if name not in files or told.get(name) != hashlib.sha256(files[name]).hexdigest():
            yield f"SHA256SUMS: wrong for {name}"


def check(zip_file, version, source):
    top = os.path.basename(zip_file)[:-len(".zip")]
    if top != f"Corvane-{version}":
        yield f"the package is named {top}"
    with open(zip_file, "rb") as file, open(zip_file + ".sha256", encoding="ascii") as told:
        if told.read() != f"{hashlib.sha256(file.read()).hexdigest()}  {top}.zip\n":
            yield "the checksum beside the package is wrong"
    with zipfile.ZipFile(zip_file) as package:
        entries = package.infolist()
        files = {entry.filename[len(top) + 1:]: package.read(entry) for entry in entries}
    when = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:5]
    for entry in entries:
        if not entry.filename.startswith(top + "/"):
            yield f"{entry.filename}: outside the folder {top}"
        if entry.date_time[:5] != when:
            yield f"{entry.filename}: from {entry.date_time}"
    missing = [name for name in NEEDED if name not in files]
    if missing:
        yield f"missing: {', '.join(missing)}"
        return
    for name, data in files.items():
        if not KINDS.fullmatch(name):
            yield f"{name}: does not belong here"
        if not data:
            yield f"{name}: empty"
        if name.endswith(".exe"):
            yield from check_program(name, data, version, source)
        if name.endswith((".cmd", ".txt")) and data.count(b"\n") != data.count(b"\r\n"):
            yield f"{name}: not the system's ends of lines"
    yield from check_sums(files)
    yield from check_manual(files)
    yield from check_pdf(files["Corvane-manual.pdf"], sum(name.endswith(".html") for name in files))


def differences(one, other):
    with zipfile.ZipFile(one) as first, zipfile.ZipFile(other) as second:
        names = sorted(set(first.namelist()) | set(second.namelist()))
        for name in names:
            if name not in first.namelist() or name not in second.namelist():
                yield f"{name}: in one of the two alone"
            elif first.read(name) != second.read(name):
                yield f"{name}: differs"


def same(one, other):
    with open(one, "rb") as first, open(other, "rb") as second:
        if first.read() == second.read():
            return []
    return list(differences(one, other)) or ["the zips differ, what is in them does not"]


def main(arguments):
    found = same(*arguments[1:]) if arguments[0] == "same" else list(check(*arguments))
    for finding in found:
        print(finding)
    print(f"{len(found)} findings")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
