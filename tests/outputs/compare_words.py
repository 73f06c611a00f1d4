"""Compares the words of documents with those of their sources, each as a program that is not ours reads it.

  compare_words.py FOLDER NAME...

For a source NAME.md, NAME.csv or NAME.tsv the folder has NAME.html, NAME.xml, NAME.out.md, NAME.txt (tables with tabs, long
lines), NAME.aligned.txt, NAME.fodt (the RTF as LibreOffice has read it) and NAME.help, a folder (the help file as chmlib
has unpacked it). cmark-gfm reads Markdown, Python's modules csv, html.parser and expat the rest.

What separates words is white space, the border of a block or cell, and a line break. These are no words: list bullets,
checkboxes, the marks of quotes, lines made of "-", "=", "~", "." or "|". A control character is U+FFFD, as in every output. Of front
matter the title is expected where no heading begins the document, of raw HTML the text between tags and what is left of
its pictures, of a picture its alternative text, or else its address if it is on another computer. Plain text has the numbers of lists and, in parentheses, the addresses of links;
those of a table follow it.
"""
import collections
import csv
import html.parser
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as tree
import xml.parsers.expat

HIDDEN = {"script", "style", "head", "title"}
BLOCK_HTML = {"address", "article", "aside", "blockquote", "body", "br", "caption", "center", "dd", "details", "div", "dl",
              "dt", "figcaption", "figure", "footer", "h1", "h2", "h3", "h4", "h5", "h6", "header", "hr", "html", "li",
              "main", "nav", "ol", "p", "pre", "section", "summary", "table", "tbody", "td", "tfoot", "th", "thead",
              "tr", "ul"}
INLINE_XML = {"link", "image", "strong", "emphasis", "inlinecode", "deleted", "anchor"}
MARK = re.compile(r"[-=>|~]+|[.]+|\[x\]|\[|\]|[\u2022\u25e6\u25aa\u2610\u2611]")
CONTROL = re.compile("[\x00-\x08\x0b\x0c\x0e-\x1f\x7f-\x9f]")


def words(text):
    text = CONTROL.sub("\ufffd", text)
    return [word for word in re.split("[ \t\r\n]+", text) if word and not MARK.fullmatch(word)]


class Page(html.parser.HTMLParser):
    """The text of markup."""

    def __init__(self, picture=None, link=None):
        """@param picture, link  called for a picture, and for the end of a link, of raw HTML in Markdown"""
        super().__init__()
        self.parts = []
        self.hidden = 0
        self.picture = picture or (lambda alternative, address: self.add(alternative))
        self.link = link
        self.links = []

    def add(self, text):
        if not self.hidden:
            self.parts.append(text)

    def handle_starttag(self, tag, attributes):
        self.hidden += tag in HIDDEN
        if tag in BLOCK_HTML:
            self.add(" ")
        values = {name: value or "" for name, value in attributes}
        if tag == "img" and not self.hidden:
            self.picture(values.get("alt", ""), values.get("src", "").strip())
        elif tag == "a" and "href" in values:
            self.end_link()
            self.links.append((len(self.parts), values["href"].strip()))

    def end_link(self):
        if self.links and self.link:
            start, address = self.links.pop()
            self.link("".join(self.parts[start:]), address)

    def handle_endtag(self, tag):
        self.hidden -= tag in HIDDEN and self.hidden > 0
        if tag == "a":
            self.end_link()
        if tag in BLOCK_HTML:
            self.add(" ")

    def handle_data(self, data):
        self.add(data)


def read_html(markup):
    page = Page()
    page.feed(markup)
    page.close()
    return "".join(page.parts)


class Markdown:
    """The text of a document that cmark-gfm has parsed."""

    def __init__(self, as_text):
        self.page = Page(self.add_picture, self.add_address)
        self.as_text = as_text
        self.table_links = None  # in plain text, addresses in a table come after it
        self.in_link = False

    def visit(self, node):
        kind = node.tag.rpartition("}")[2]
        method = getattr(self, "visit_" + kind, None)
        if method:
            method(node)
        elif kind in ("text", "code"):
            self.page.add(node.text or "")
        else:
            self.visit_children(node)

    def visit_children(self, node):
        inline = node.tag.rpartition("}")[2] in ("emph", "strong", "strikethrough", "link", "image")
        if not inline:
            self.page.add(" ")
        for child in node:
            self.visit(child)
        if not inline:
            self.page.add(" ")

    def visit_code_block(self, node):
        self.page.add(f" {node.text or ''} ")

    def visit_html_block(self, node):
        self.page.add(" ")
        self.page.feed(node.text or "")
        self.page.add(" ")

    def visit_html_inline(self, node):
        self.page.feed(node.text or "")

    def visit_softbreak(self, node):
        self.page.add(" ")

    visit_linebreak = visit_softbreak

    def visit_list(self, node):
        numbers = self.as_text and node.get("type") == "ordered"
        number = int(node.get("start") or 1)
        for item in node:
            self.page.add(f" {number}. " if numbers else " ")
            number += 1
            self.visit(item)

    def visit_table(self, node):
        self.table_links = []
        self.visit_children(node)
        self.page.add(" " + " ".join(self.table_links) + " ")
        self.table_links = None

    def visit_link(self, node):
        start = len(self.page.parts)
        self.in_link = True
        self.visit_children(node)
        self.in_link = False
        self.add_address("".join(self.page.parts[start:]), node.get("destination"))

    def visit_image(self, node):
        start = len(self.page.parts)
        self.visit_children(node)
        alternative = "".join(self.page.parts[start:])
        del self.page.parts[start:]
        self.add_picture(alternative, node.get("destination"))

    def add_picture(self, alternative, address):
        """One on another computer becomes a link; others are missing here."""
        is_far = re.match("https?:", address)
        self.page.add(alternative or (address if is_far else ""))
        if is_far and alternative and not self.in_link and not self.page.links:
            self.add_address(alternative, address)

    def add_address(self, text, address):
        shown = {address, *(address.removeprefix(prefix) for prefix in ("http://", "https://", "mailto:"))}
        if not self.as_text or not address or address.startswith("#") or text in shown:
            return
        if self.table_links is None:
            self.page.add(f" ({address})" if text else address)
        elif f"{text} ({address})" not in self.table_links:
            self.table_links.append(f"{text} ({address})" if text else address)


def take_front_matter(text):
    """The title in a document's front matter, and the text after it."""
    found = re.match("---\n(.*?\n)(?:---|[.]{3})\n", text, re.DOTALL)
    if not found:
        return "", text
    title = re.search("^title: *\"?(.*?)\"? *$", found[1], re.MULTILINE)
    return title[1] if title else "", text[found.end():]


def read_markdown(path, as_text=False, document=None):
    title, text = take_front_matter(pathlib.Path(path).read_text(encoding="utf-8", errors="replace"))
    extensions = ("table", "strikethrough", "autolink", "tasklist")
    command = ["cmark-gfm", "-t", "xml", *(word for name in extensions for word in ("-e", name))]
    parsed = subprocess.run(command, check=True, input=text.encode(), capture_output=True).stdout.decode()
    root = tree.fromstring(CONTROL.sub("\ufffd", parsed))
    document = document or Markdown(as_text)
    document.visit(root)
    begins_with_heading = len(root) > 0 and root[0].tag.endswith("}heading")
    return ("" if begins_with_heading else title + " ") + "".join(document.page.parts)


def read_rows(path):
    text = pathlib.Path(path).read_bytes().decode("utf-8-sig", "replace")
    separator = max(",;\t|", key=text.partition("\n")[0].count)
    return list(csv.reader(text.splitlines(keepends=True), delimiter=separator))


def read_csv(path):
    return "\n".join(" ".join(row) for row in read_rows(path))


def read_xml(path, root, inline):
    """The text in elements of one name; those that are not inline separate words."""
    parts = []
    depth = 0

    def start(name, attributes):
        nonlocal depth
        depth += name == root
        parts.append("" if name in inline else " ")
        if name == "image":
            parts.append(attributes.get("alternative", ""))

    def end(name):
        nonlocal depth
        depth -= name == root
        parts.append("" if name in inline else " ")

    parser = xml.parsers.expat.ParserCreate()
    parser.StartElementHandler = start
    parser.EndElementHandler = end
    parser.CharacterDataHandler = lambda data: parts.append(data if depth else "")
    parser.Parse(pathlib.Path(path).read_bytes(), True)
    return "".join(parts)


class Office:
    """The text of a flat OpenDocument file. LibreOffice calls lists lists only if they are numbered from 1; other numbers
    are text before a tab."""

    NUMBER = re.compile("^[0-9]+[.]\t")

    def __init__(self, path):
        self.parts = []
        self.tables = []  # that follow each other
        body = next(element for element in tree.parse(path).iter() if element.tag.endswith("office:1.0}text"))
        self.visit_children(body)
        self.end_tables()

    def visit(self, node):
        kind = node.tag.rpartition("}")[2]
        if kind == "table":
            self.tables.append([[self.read_cell(cell) for cell in row if cell.tag.endswith("}table-cell")]
                                for row in node.iter() if row.tag.endswith("}table-row")])
        elif kind in ("p", "h"):
            self.add_paragraph(self.NUMBER.sub("", self.read_inline(node), count=1))
        else:
            self.visit_children(node)

    def visit_children(self, node):
        for child in node:
            self.visit(child)

    def read_inline(self, node):
        kind = node.tag.rpartition("}")[2]
        text = {"tab": "\t", "line-break": " ", "s": " "}.get(kind, node.text or "")
        return text + "".join(self.read_inline(child) + (child.tail or "") for child in node)

    def read_cell(self, cell):
        return " ".join(self.read_inline(paragraph) for paragraph in cell)

    def add_paragraph(self, text):
        if text:  # there is an empty one between tables
            self.end_tables()
        self.parts.append(text + "\n")

    def end_tables(self):
        """A wide table is in parts that repeat its first column, and each 40 rows of it are in parts of their own, the
        first of which repeats its header."""
        whole = []
        for part in self.tables:
            previous = whole[1 - len(part):]
            if not whole:
                header, whole = list(part[0]), part
            elif part[0] == header:
                whole += part[1:]
            elif [row[0] for row in part[1:]] == [row[0] for row in previous]:
                first = len(whole) == len(part)
                for row, more in zip(whole if first else previous, part if first else part[1:]):
                    row += more[1:]
            else:
                whole += part
        self.parts += [" ".join(row) + "\n" for row in whole]
        self.tables = []


def read_help(folder):
    topics = sorted(pathlib.Path(folder).glob("topic*.htm"), key=lambda path: int(path.stem[5:]))
    return " ".join(read_html(topic.read_bytes().decode("cp1252")) for topic in topics)


def read_text(path):
    return pathlib.Path(path).read_text(encoding="utf-8")


def report(path, expected, found):
    """Prints where two lists of words differ, and returns whether they do."""
    if expected == found:
        return False
    at = next((at for at, pair in enumerate(zip(expected, found)) if pair[0] != pair[1]), min(len(expected), len(found)))
    print(f"{path}, word {at + 1}: expected {expected[at:at + 6]}, found {found[at:at + 6]}")
    return True


def characters(listed):
    counts = collections.Counter("".join(listed))
    return sorted((character, count) for character, count in counts.items() if character not in "-=|~.[]x>")


def compare(folder, source):
    path = folder / source
    is_table = path.suffix != ".md"
    expected = words(read_csv(path) if is_table else read_markdown(path))
    shown = expected if is_table else words(read_markdown(path, as_text=True))
    if not expected:
        sys.exit(f"{source} has no words")
    name = folder / path.stem
    aligned = words(read_text(f"{name}.aligned.txt"))
    different = [
        report(f"{name}.html", expected, words(read_html(read_text(f"{name}.html")))),
        report(f"{name}.xml", expected, words(read_xml(f"{name}.xml", "document", INLINE_XML))),
        report(f"{name}.out.md", expected, words(read_markdown(f"{name}.out.md"))),
        report(f"{name}.txt", shown, words(read_text(f"{name}.txt"))),
        report(f"{name}.aligned.txt", characters(shown), characters(aligned)),
        report(f"{name}.fodt", expected, words("".join(Office(f"{name}.fodt").parts))),
        report(f"{name}.help", expected, words(read_help(f"{name}.help"))),
    ]
    return any(different)


if __name__ == "__main__":
    sys.exit(any([compare(pathlib.Path(sys.argv[1]), name) for name in sys.argv[2:]]))
