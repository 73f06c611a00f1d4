"""Writes texts in Hebrew, Arabic and Latin letters into documents whose language is English, Hebrew or Arabic, and asks
python-docx and LibreOffice for the direction of each paragraph, run and table.

  office_directions.py FOLDER
"""

import os
import re
import subprocess
import sys
import xml.etree.ElementTree

import docx
from docx.oxml.ns import qn

import scrivalen

LANGUAGES = ("en", "he", "ar-EG")
FORMATS = ("docx", "rtf")
ODF = {name: "urn:oasis:names:tc:opendocument:xmlns:%s:1.0" % name for name in ("office", "style", "text", "table")}

HEBREW = "\u05e9\u05dc\u05d5\u05dd"
ARABIC = "\u0633\u0644\u0627\u0645"

# Whether each is written from right to left; None: as the document is. Each has a number of its own, by which it is found.
TEXTS = {
    "101 word": False,
    "102 " + HEBREW: True,
    "103 " + ARABIC: True,
    "word 104 " + HEBREW + " word": False,
    HEBREW + " 105 word " + HEBREW: True,
    ARABIC + " 106, (word)": True,
    "(107) \u201c" + HEBREW + "\u201d word": True,
    "108 + 109 = 217": None,
}
NUMBERS = [re.search(r"\d+", text).group() for text in TEXTS]
CELLS = ["word 201", HEBREW + " 202", "word " + ARABIC + " 203"]


def is_right_to_left(language):
    return language != "en"


def write(path, language):
    with scrivalen.Document(path, language=language) as document:
        for text in TEXTS:
            document.paragraph(text)
        document.heading(1, HEBREW + " 301")
        document.heading(2, "word 302")
        with document.list() as items:
            items.item(HEBREW + " 303")
            items.item("word 304")
        with document.quote() as quote:
            quote.paragraph(HEBREW + " 305")
        document.code(HEBREW + " 306")
        with document.paragraph() as paragraph:
            paragraph.text("307 ")
            paragraph.link("https://example.org/", HEBREW)
            paragraph.text(" word")
        with document.table() as table:
            table.row(*CELLS)
            table.row("word 204", "word 205", "word 206")


def expected(language):
    """Whether each paragraph is from right to left, by its number."""
    found = dict(zip(NUMBERS, TEXTS.values()), **{"201": False, "202": True, "203": False, "204": False, "205": False,
                                                  "206": False, "301": True, "302": False, "303": True, "304": False,
                                                  "305": True, "306": False, "307": True})
    return {number: is_right_to_left(language) if value is None else value for number, value in found.items()}


def number_of(text):
    found = re.search(r"\d{3}", text)
    return found.group() if found else None


def is_on(element, *path):
    for name in path:
        element = element.find(qn(name)) if element is not None else None
    return element is not None and element.get(qn("w:val"), "1") not in ("0", "false", "off")


def check_runs(paragraph):
    """Word takes the font and the order of a run from its direction, not from its letters."""
    for run in paragraph.iter(qn("w:r")):
        text = "".join(part.text or "" for part in run.iter(qn("w:t")))
        isRight = is_on(run, "w:rPr", "w:rtl")
        if re.search("[\u0590-\u06ff]", text):
            assert isRight and not re.search("[A-Za-z]", text), text
        elif re.search("[A-Za-z]", text):
            assert not isRight, text


def check_docx(path, language):
    document = docx.Document(path)
    body = document.element.body
    found = {}
    for paragraph in body.iter(qn("w:p")):
        number = number_of("".join(part.text or "" for part in paragraph.iter(qn("w:t"))))
        if number:
            found[number] = is_on(paragraph, "w:pPr", "w:bidi")
            check_runs(paragraph)
    assert found == expected(language), (path, found)
    assert is_on(body, "w:sectPr", "w:bidi") == is_right_to_left(language)
    table = document.tables[0]
    assert is_on(table._tbl, "w:tblPr", "w:bidiVisual") == is_right_to_left(language)
    assert [cell.text for cell in table.rows[0].cells] == CELLS


class Styles:
    """The styles of a document as LibreOffice reads it."""

    def __init__(self, root):
        self.styles = {}
        self.defaults = {}
        for style in root.iter("{%(style)s}style" % ODF):
            self.styles[self.attribute(style, "name"), self.attribute(style, "family")] = style
        for style in root.iter("{%(style)s}default-style" % ODF):
            self.defaults[self.attribute(style, "family")] = style

    @staticmethod
    def attribute(element, name):
        return element.get("{%s}%s" % (ODF["style"], name))

    def mode(self, name, family):
        """The writing mode of a paragraph or table, which a style has from its parent if it has none itself."""
        style = self.styles.get((name, family))
        while style is not None or family in self.defaults:
            style = self.defaults[family] if style is None else style
            properties = style.find("{%s}%s-properties" % (ODF["style"], family))
            mode = None if properties is None else self.attribute(properties, "writing-mode")
            if mode or style is self.defaults.get(family):
                return mode
            style = self.styles.get((self.attribute(style, "parent-style-name"), family))
        return None


def check_fodt(path, language):
    root = xml.etree.ElementTree.parse(path).getroot()
    styles = Styles(root)
    page = Styles.attribute(next(root.iter("{%(style)s}page-layout-properties" % ODF)), "writing-mode")
    found = {}
    for tag in ("p", "h"):
        for paragraph in root.iter("{%s}%s" % (ODF["text"], tag)):
            number = number_of("".join(paragraph.itertext()))
            mode = styles.mode(paragraph.get("{%(text)s}style-name" % ODF), "paragraph")
            if number:
                found[number] = (page if mode == "page" else mode) == "rl-tb"
    assert found == expected(language), (path, found)
    table = next(root.iter("{%(table)s}table" % ODF))
    mode = styles.mode(table.get("{%(table)s}style-name" % ODF), "table")
    assert (mode == "rl-tb") == is_right_to_left(language), (path, mode)


def places(path):
    """The left and right edge of the line or cell that each number is in, and the width of the page."""
    made = subprocess.run(["pdftotext", "-bbox", path, "-"], check=True, capture_output=True, encoding="utf-8").stdout
    width = float(re.search(r'<page width="([\d.]+)"', made).group(1))
    words = [(float(left), float(top), float(right), text) for left, top, right, text in
             re.findall(r'<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="[\d.]+">(.*?)</word>', made)]
    found = {}
    for _, top, _, text in words:
        line = [word for word in words if abs(word[1] - top) < 6]
        found.update({number: (min(word[0] for word in line), max(word[2] for word in line))
                      for number in re.findall(r"\d{3}", text)})
    cells = {number: left for left, _, _, text in words for number in re.findall(r"20\d", text)}
    return found, cells, width


def check_pages(path, language):
    """A paragraph begins at the margin of its side, and the first column is on the side of the language."""
    found, cells, width = places(path)
    for number in NUMBERS:
        left, right = found[number]
        isRight = expected(language)[number]
        assert isRight == (width - right < left), (path, number, left, right)
        assert abs((width - right if isRight else left) - 56.7) < 3, (path, number, left, right)
    order = sorted(("204", "205", "206"), key=lambda number: cells[number])
    assert order == sorted(order, reverse=is_right_to_left(language)), (path, cells)


def convert(folder, form, names):
    subprocess.run(["soffice", "-env:UserInstallation=file://" + os.path.join(folder, "settings"), "--headless",
                    "--convert-to", form, "--outdir", os.path.join(folder, form)] +
                   [os.path.join(folder, name) for name in names], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, timeout=240)


def main():
    folder = sys.argv[1]
    for form in FORMATS:
        names = ["%s.%s" % (language, form) for language in LANGUAGES]
        for name, language in zip(names, LANGUAGES):
            write(os.path.join(folder, name), language)
        for made in ("fodt", "pdf"):
            convert(folder, made, names)
        for name, language in zip(names, LANGUAGES):
            if form == "docx":
                check_docx(os.path.join(folder, name), language)
            check_fodt(os.path.join(folder, "fodt", language + ".fodt"), language)
            check_pages(os.path.join(folder, "pdf", language + ".pdf"), language)
    print("the directions of %d paragraphs read from each of %d documents" % (len(expected("en")),
                                                                             len(LANGUAGES) * len(FORMATS)))


main()
