"""Writes hostile texts into every place of workbooks and Word documents, and pictures that are broken, and has openpyxl,
python-docx and LibreOffice read them back.

  hostile_office.py FOLDER
"""

import csv
import glob
import html
import os
import re
import struct
import subprocess
import sys
import warnings
import xml.etree.ElementTree
import zipfile
import zlib

import docx
from docx.oxml.ns import qn
import openpyxl
from openpyxl.utils.escape import unescape

import scrivalen

LONG = 100000
TEXT = "{urn:oasis:names:tc:opendocument:xmlns:text:1.0}"
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
    "link": "HYPERLINK \"x\" \\l \"y\" ' \\\\e\\org\\ {HYPERLINK \\* x} \\",
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


def names_that_differ_in_case():
    """Names that readers take for the same, two by two: of each pair of letters in the BMP, one is in each name."""
    letters = [chr(code) for code in range(0x80, 0xfffe) if not 0xd800 <= code < 0xe000]
    pairs = [(form, letter) for letter in letters for form in sorted({letter.lower(), letter.casefold()} - {letter})]
    pairs.append(("i", "\u0131"))
    assert len(pairs) > 1300, len(pairs)
    parts = [pairs[at:at + 10] for at in range(0, len(pairs), 10)]
    return ["".join(letters) for part in parts for letters in zip(*part)]


def sheet_names(path):
    with zipfile.ZipFile(path) as archive:
        workbook = archive.read("xl/workbook.xml").decode("utf-8")
    return [html.unescape(name) for name in re.findall(r'<sheet name="([^"]*)"', workbook)]


def settings(text, path):
    """LibreOffice needs minutes for a header of 100,000 characters in a Word document."""
    shown = text[:1000] if path.endswith(".docx") else text
    names = ("title", "author", "subject", "keywords", "font", "property:</a> \"b\" & 'c'")
    return dict({name: text for name in names}, header=shown, footer=shown)


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
        paragraph.link("#" + text, text, title=text)
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
        if text == TEXTS["escape"]:
            assert sheet.oddHeader.left.text == sheet.oddFooter.left.text == text, sheet.oddHeader.left.text
    assert book.properties.title == mended(text), book.properties.title[:80]
    assert book.properties.creator == mended(text)


def fields(element):
    """The instructions of the fields in it, with the runs that each is divided into."""
    found = []
    isInstruction = False
    for part in element.iter(qn("w:fldChar"), qn("w:instrText"), qn("w:fldSimple")):
        assert part.tag != qn("w:fldSimple"), part.get(qn("w:instr"))
        kind = part.get(qn("w:fldCharType"))
        if kind is None:
            assert isInstruction, part.text
            found[-1] += part.text
        else:
            isInstruction = kind == "begin"
            found += [""] if isInstruction else []
    return found


def arguments(instruction):
    """Those in quotation marks; a backslash stands before one that is part of a text."""
    rest = re.sub(r'"((?:[^"\\]|\\\\)*)"', "", instruction)
    return rest.split(), [given.replace("\\\\", "\\") for given in re.findall(r'"((?:[^"\\]|\\\\)*)"', instruction)]


def check_fields(document, text):
    """Each link is the only field, its address is what was given, and its title as much of that as Word takes."""
    title = text.replace('"', "'").encode("utf-16-le")[:2 * 260].decode("utf-16-le")
    found = fields(document.element.body)
    assert len(found) == 2, found
    for instruction in found:
        words, given = arguments(instruction)
        assert words == ["HYPERLINK", "\\o", "\\t"], (words, instruction[:200])
        assert given == ["https://e.org/" + text.replace('"', "%22"), title, "_self"], [part[:300] for part in given]
    for section in document.sections:
        assert not fields(section.header._element) and not fields(section.footer._element)
    tips = [link.get(qn("w:tooltip")) for link in document.element.body.iter(qn("w:hyperlink"))]
    assert tips == [title] * 2, tips


def check_document(path, text):
    document = docx.Document(path)
    wanted = mended(text)
    paragraphs = [paragraph.text for paragraph in document.paragraphs]
    assert paragraphs.count(wanted) >= 6, [(paragraph[:80], paragraph == wanted) for paragraph in paragraphs]
    assert [cell.text for cell in document.tables[0].rows[1].cells] == [wanted, "1"]
    assert document.core_properties.title == wanted
    assert document.sections[0].header.paragraphs[0].text.startswith(wanted[:4])
    check_fields(document, wanted)


def write_names(path, names):
    with scrivalen.Document(path) as document:
        for name in names:
            with document.section(name) as section:
                section.paragraph("x")


def check_names(folder):
    """Readers change the second of two names that they take for the same."""
    names = sheet_names(os.path.join(folder, "names.xlsx"))
    assert len(names) == len(names_that_differ_in_case())
    assert openpyxl.load_workbook(os.path.join(folder, "names.xlsx")).sheetnames == names
    found = {os.path.basename(path)[len("names-"):-len(".csv")]
             for path in glob.glob(os.path.join(folder, "names-*.csv"))}
    assert found == set(names), (found - set(names), set(names) - found)


def convert(folder, form, *names):
    subprocess.run(["soffice", "-env:UserInstallation=file://" + os.path.join(folder, "settings"), "--headless",
                    "--convert-to", form, "--outdir", folder, *(os.path.join(folder, name) for name in names)],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=240)


def without_space(text):
    return re.sub(r"\s", "", text)


def check_links_with_libreoffice(folder):
    """Links lead where they are meant to, and nothing else is a field. LibreOffice keeps the backslashes of fields double."""
    texts = [TEXTS[name] for name in ("field", "link", "quotes", "markup", "escape", "bidi")]
    write(os.path.join(folder, "links.docx"), texts)
    convert(folder, "fodt", "links.docx")
    root = xml.etree.ElementTree.parse(os.path.join(folder, "links.fodt")).getroot()
    found = [link.get("{http://www.w3.org/1999/xlink}href") for link in root.iter(TEXT + "a")]
    wanted = ["https://e.org/" + text.replace('"', "%22").replace("\\", "\\\\") for text in texts]
    for at, address in enumerate(found):
        assert re.fullmatch(r"#\w+", address) if at % 2 else address == wanted[at // 4], address
    assert len(found) == 4 * len(texts), found
    known = {"a", "bookmark", "h", "line-break", "list", "list-item", "p", "s", "section", "span", "tab",
             "sequence-decls", "sequence-decl"}
    body = next(root.iter("{urn:oasis:names:tc:opendocument:xmlns:office:1.0}text"))
    strange = {element.tag for element in body.iter() if element.tag.startswith(TEXT)} - {TEXT + name for name in known}
    assert not strange, strange


def check_with_libreoffice(folder):
    """LibreOffice takes seconds for each long text, so one that is just too long for a cell stands for them."""
    texts = [text[:33000] for text in TEXTS.values()]
    write(os.path.join(folder, "all.xlsx"), texts)
    write(os.path.join(folder, "all.docx"), texts)
    write_names(os.path.join(folder, "names.xlsx"), names_that_differ_in_case())
    convert(folder, "csv:Text - txt - csv (StarCalc):44,34,76,1,,1033,false,true,true,false,false,-1", "all.xlsx",
            "names.xlsx")
    check_names(folder)
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


def png(width, height, rows=b"\0\xff"):
    """A grey PNG that states a size; these rows are right for one pixel."""
    chunks = {b"IHDR": struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0), b"IDAT": zlib.compress(rows), b"IEND": b""}
    return b"\x89PNG\r\n\x1a\n" + b"".join(
        struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))
        for name, data in chunks.items())


BROKEN_PICTURES = {
    "damaged": png(1, 1).replace(b"IDAT", b"IDAT\x01", 1),
    "short": png(1, 1)[:-20],
    "huge": png(2 ** 31 - 1, 2 ** 31 - 1),
    "large": png(30000, 30000),
    "more": png(8000, 8000),
    "none": png(0, 1),
    "jpeg": b"\xff\xd8\xff\xe0\0\x10JFIF",
    "vector": b"<svg xmlns='http://www.w3.org/2000/svg' width='1' height='1'/>",
    "empty": b"",
}


def check_pictures(folder):
    """Those that cannot be used are their texts; the others are there."""
    paths = [os.path.join(folder, "pictures" + extension) for extension in (".docx", ".xlsx")]
    document = scrivalen.Document(*paths)
    with warnings.catch_warnings(record=True):
        with document:
            with document.table() as table:
                for name, picture in BROKEN_PICTURES.items():
                    with table.row() as row:
                        row.cell(name)
                        with row.cell() as cell:
                            cell.image(picture, "text of " + name)
            document.image(png(1, 1), "whole")
    assert sum(warning.count for warning in document.warnings) == len(BROKEN_PICTURES), document.warnings
    wanted = [[name, "text of " + name] for name in BROKEN_PICTURES]
    read = docx.Document(paths[0])
    assert [[cell.text for cell in row.cells] for row in read.tables[0].rows] == wanted
    assert len(read.inline_shapes) == 1
    sheet = openpyxl.load_workbook(paths[1]).active
    assert [[cell.value for cell in row[:2]] for row in sheet.iter_rows(max_row=len(wanted))] == wanted
    with zipfile.ZipFile(paths[1]) as archive:
        assert [name for name in archive.namelist() if "/media/" in name] == ["xl/media/image1.png"]


def main():
    folder = sys.argv[1]
    csv.field_size_limit(10 ** 6)
    for name, text in TEXTS.items():
        write(os.path.join(folder, name + ".xlsx"), [text])
        check_workbook(os.path.join(folder, name + ".xlsx"), text)
        write(os.path.join(folder, name + ".docx"), [text])
        check_document(os.path.join(folder, name + ".docx"), text)
    check_pictures(folder)
    check_with_libreoffice(folder)
    check_links_with_libreoffice(folder)
    print("%d hostile texts read from workbooks and documents" % len(TEXTS))


main()
