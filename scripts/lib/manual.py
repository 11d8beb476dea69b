"""The manual as HTML pages and as one PDF.

manual.py pages FOLDER VERSION   writes FOLDER/*.html with style.css and pictures/
manual.py pdf FILE VERSION       writes the PDF

The pages are docs/manual/index.md, those that its numbered list links to, in that order, and those
of docs/formats. A link leads to another of these pages; a picture lies in docs/pictures. What comes
out depends on these files, the version and SOURCE_DATE_EPOCH alone.
"""
import html
import os
import pathlib
import posixpath
import re
import shutil
import sys

from markdown_it import MarkdownIt

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
INDEX = "docs/manual/index.md"
FORMATS = "docs/formats/README.md"
PICTURES = "docs/pictures"
PLACE = "file:///docs/"
STYLE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "manual.css")
NUMBERED = re.compile(r"^\d+\. \[[^\]]+\]\(([^)]+)\)$", re.MULTILINE)
TABLED = re.compile(r"\| \[[^\]]+\]\(([^)#]+)\) \|$", re.MULTILINE)


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        return file.read()


def linked(index, pattern):
    """Paths of the pages that the links of `index` lead to, each once, in order."""
    folder = posixpath.dirname(index)
    return list(dict.fromkeys(posixpath.normpath(posixpath.join(folder, target))
                              for target in pattern.findall(read(index))))


def anchor_of(title):
    """The name of a heading in a link, as it is on the pages of a code host."""
    return re.sub(r"\s", "-", re.sub(r"[^\w\s-]", "", title.lower()))


class Page:
    def __init__(self, path):
        self.path = path
        folder, name = posixpath.split(path)
        stem = name[:-len(".md")]
        if folder == posixpath.dirname(FORMATS):
            stem = "formats" if stem == "README" else "format-" + stem
        self.name = stem
        self.tokens = MarkdownIt("commonmark").enable("table").parse(read(path))
        self.title = next(self.tokens[i + 1].content for i, token in enumerate(self.tokens)
                          if token.type == "heading_open")

    def body(self, link, picture, anchor):
        """The page's HTML; the three functions say where a link or a picture leads and what the
        name of a heading is."""
        renderer = MarkdownIt("commonmark").enable("table")
        for index, token in enumerate(self.tokens):
            if token.type == "heading_open":
                token.attrSet("id", anchor(self, anchor_of(self.tokens[index + 1].content)))
            for child in token.children or []:
                if child.type == "link_open":
                    child.attrSet("href", link(self, child.attrGet("href")))
                elif child.type == "image":
                    child.attrSet("src", picture(self, child.attrGet("src")))
        return renderer.renderer.render(self.tokens, renderer.options, {})


class Manual:
    def __init__(self):
        paths = [INDEX] + linked(INDEX, NUMBERED) + [FORMATS] + linked(FORMATS, TABLED)
        self.pages = [Page(path) for path in paths]
        self.by_path = {page.path: page for page in self.pages}
        self.pictures = set()

    def target(self, page, href):
        """The page and the heading that a link means."""
        path, _, heading = href.partition("#")
        path = posixpath.normpath(posixpath.join(posixpath.dirname(page.path), path)) \
            if path else page.path
        if path not in self.by_path:
            raise SystemExit(f"{page.path}: {href} is no page of the manual")
        return self.by_path[path], heading

    def picture(self, page, src):
        path = posixpath.normpath(posixpath.join(posixpath.dirname(page.path), src))
        if posixpath.dirname(path) != PICTURES or not os.path.isfile(os.path.join(ROOT, path)):
            raise SystemExit(f"{page.path}: there is no picture {src}")
        name = posixpath.basename(path)
        self.pictures.add(name)
        return "pictures/" + name


def document(title, head, body):
    return ("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            f"<title>{html.escape(title)}</title>\n{head}</head>\n<body>\n{body}</body>\n</html>\n")


def write_pages(folder, version):
    manual = Manual()
    os.makedirs(os.path.join(folder, "pictures"))

    def link(page, href):
        other, heading = manual.target(page, href)
        return f"{other.name}.html" + (f"#{heading}" if heading else "")

    shown = [page for page in manual.pages if not page.name.startswith("format-")]
    for page in manual.pages:
        body = page.body(link, manual.picture, lambda _, anchor: anchor)
        ways = "".join(
            f"<a href=\"{other.name}.html\"{' class=here' if other is page else ''}>"
            f"{html.escape(other.title)}</a>\n" for other in shown)
        head = ('<meta name="viewport" content="width=device-width, initial-scale=1">\n'
                '<link rel="stylesheet" href="style.css">\n')
        title = page.title if page.path == INDEX else f"{page.title} - Corvane"
        text = document(title, head,
                        f"<nav>\n{ways}<p>Version {html.escape(version)}</p>\n</nav>\n"
                        f"<main>\n{body}</main>\n")
        with open(os.path.join(folder, f"{page.name}.html"), "w", encoding="utf-8",
                  newline="\n") as file:
            file.write(text)
    shutil.copyfile(STYLE, os.path.join(folder, "style.css"))
    for name in manual.pictures:
        shutil.copyfile(os.path.join(ROOT, PICTURES, name),
                        os.path.join(folder, "pictures", name))


def write_pdf(path, version):
    from weasyprint import HTML, default_url_fetcher
    manual = Manual()

    def anchor(page, heading):
        return f"{page.name}--{heading}"

    def link(page, href):
        other, heading = manual.target(page, href)
        return "#" + anchor(other, heading or anchor_of(other.title))

    parts = [f"<section>\n{page.body(link, manual.picture, anchor)}</section>\n"
             for page in manual.pages]
    contents = "".join(
        f"<li><a href=\"#{anchor(page, anchor_of(page.title))}\">{html.escape(page.title)}</a></li>"
        for page in manual.pages[1:] if not page.name.startswith("format-"))
    cover = (f"<header><p class=\"name\">Corvane</p><p>Manual, version {html.escape(version)}</p>"
             f"<ol>{contents}</ol></header>\n")
    head = f"<style>\n{read(os.path.relpath(STYLE, ROOT))}</style>\n"
    text = document(f"Corvane {version}: manual", head,
                    f"<main class=\"print\">\n{cover}{''.join(parts)}</main>\n")

    # The PDF names its pictures by their addresses: no folder of this machine may be in them.
    def fetch(address, *rest, **named):
        place = os.path.join(ROOT, "docs", address[len(PLACE):])
        return default_url_fetcher(pathlib.Path(place).as_uri(), *rest, **named)

    HTML(string=text, base_url=PLACE, url_fetcher=fetch).write_pdf(path)


if __name__ == "__main__":
    {"pages": write_pages, "pdf": write_pdf}[sys.argv[1]](*sys.argv[2:])
