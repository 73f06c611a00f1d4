"""Writes hostile texts into every place of workbooks and Word documents, and has openpyxl, python-docx and LibreOffice
read them back.

  hostile_office.py FOLDER
"""

import csv
import os
import re
import subprocess
import sys

import docx
import openpyxl
from openpyxl.utils.escape import unescape

import scrivalen

LONG = 100000
TEXTS = {
    "formula": "=HYPERLINK(\"https://e.org\",\"x\")",
    "command": "=cmd|'/c calc'!A0",
    "plus": "+1+1",
    "at": "@SUM(1+1)",
    "minus": "-2+3",
    "escape": "_x0041_ _x005F_ _x000D_",
    "markup": "</t></is></c><c t=\"e\"><v>#REF!</v></c> </w:t></w:r><w:r><w:t>",
    "quotes": "a\" b='c' <!-- & &amp; &#0; ]]> <?x?> <![CDATA[",
    "field": "\" \\o \"x\" { PAGE } \\* MERGEFORMAT &P &N &G &\"Arial\"",
    "name": "[a]:b*c?d/e\\f'",
    "long": "123456789 " * (LONG // 10 - 1) + "1234567890",
    "surrogates": "a\ud800b\udfffc",
    "excluded": "a\x01b\x08c\x0bd\x1fe\ufffef\uffff",
    "bidi": "\u202eabc\u2066def\u2069 \u05d0\u200f",
    "letters": "\u00e4\u20ac\u4e2d\u0634\U0001f600",
    "history": "History",
}


def mended(text):
    """What a part of XML can hold of it: each lone surrogate has three bytes, none of which is UTF-8."""
    return re.sub("[\x00-\x08\x0b\x0c\x0e-\x1f\ufffe\uffff]", "\ufffd", re.sub("[\ud800-\udfff]", "\ufffd" * 3, text))


def settings(text, path):
    """LibreOffice needs minutes for a header of 100,000 characters in a Word document."""
    shown = text[:1000] if path.endswith(".docx") else text
    return {name: shown if name in ("header", "footer") else text for name in ("title", "author", "subject", "keywords", "header", "footer", "font",
                                    "property:</a> \"b\" & 'c'")}


def write(path, texts):
    """Writes each text into two sections, and the first one into the settings."""
    with scrivalen.Document(path) as document:
        for name, value in settings(texts[0], path).items():
            document.set(name, value)
        for text in texts:
            for number in range(2):
                with document.section(text) as section:
                    write_section(section, text)


def write_section(section, text):
    section.heading(1, text)
    with section.paragraph() as paragraph:
        paragraph.link("https://e.org/" + text, text, title=text)
    with section.paragraph() as paragraph:
        paragraph.link("#" + text, text)
    with section.list() as items:
        items.item(text)
    section.code(text)
    with section.table() as table:
        table.header(text, "b")
        table.row(text, 1)


def check_workbook(path, text):
    book = openpyxl.load_workbook(path)
    names = book.sheetnames
    assert len(names) == len({name.lower() for name in names}) == 2, names
    for name in names:
        assert 0 < len(name.encode("utf-16-le")) // 2 <= 31 and not re.search(r"[\[\]:*?/\\]|^'|'$", name), name
        assert name.lower() != "history", name
    wanted = mended(text)[:32767]
    for sheet in book:
        found = [unescape(cell.value) for row in sheet.iter_rows() for cell in row if isinstance(cell.value, str)]
        assert found.count(wanted) >= 4, (found.count(wanted), [cell[:80] for cell in found])
        assert all(cell.data_type != "f" for row in sheet.iter_rows() for cell in row)
        for link in sheet._hyperlinks:
            assert len(link.ref) > 0 and len(link.target or link.location) <= 2079, link
    assert book.properties.title == mended(text), book.properties.title[:80]
    assert book.properties.creator == mended(text)


def check_document(path, text):
    document = docx.Document(path)
    wanted = mended(text)
    paragraphs = [paragraph.text for paragraph in document.paragraphs]
    assert paragraphs.count(wanted) >= 6, [(paragraph[:80], paragraph == wanted) for paragraph in paragraphs]
    assert [cell.text for cell in document.tables[0].rows[1].cells] == [wanted, "1"]
    assert document.core_properties.title == wanted
    assert document.sections[0].header.paragraphs[0].text.startswith(wanted[:4])


def convert(folder, form, name):
    subprocess.run(["soffice", "-env:UserInstallation=file://" + os.path.join(folder, "settings"), "--headless",
                    "--convert-to", form, "--outdir", folder, os.path.join(folder, name)], check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=240)


def without_space(text):
    return re.sub(r"\s", "", text)


def check_with_libreoffice(folder):
    """LibreOffice takes seconds for each long text, so one that is just too long for a cell stands for them."""
    texts = [text[:33000] for text in TEXTS.values()]
    write(os.path.join(folder, "all.xlsx"), texts)
    write(os.path.join(folder, "all.docx"), texts)
    convert(folder, "csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true,true,false,false,-1", "all.xlsx")
    convert(folder, "txt:Text (encoded):UTF8", "all.docx")
    with open(os.path.join(folder, "all.txt"), encoding="utf-8-sig") as file:
        found = without_space(file.read())
    names = openpyxl.load_workbook(os.path.join(folder, "all.xlsx")).sheetnames
    for number, name in enumerate(names):
        text = texts[number // 2]
        with open(os.path.join(folder, "all-%s.csv" % name), encoding="utf-8", newline="") as file:
            cells = [cell for row in csv.reader(file) for cell in row]
        assert cells.count(mended(text)[:32767]) >= 4, (name, [cell[:80] for cell in cells])
        assert found.count(without_space(mended(text))) >= 10, name
    assert len(names) == 2 * len(texts), names


def main():
    folder = sys.argv[1]
    csv.field_size_limit(10 ** 6)
    for name, text in TEXTS.items():
        write(os.path.join(folder, name + ".xlsx"), [text])
        check_workbook(os.path.join(folder, name + ".xlsx"), text)
        write(os.path.join(folder, name + ".docx"), [text])
        check_document(os.path.join(folder, name + ".docx"), text)
    check_with_libreoffice(folder)
    print("%d hostile texts read from workbooks and documents" % len(TEXTS))


main()
