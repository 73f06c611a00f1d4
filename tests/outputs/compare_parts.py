"""Compares the parts of an office document, element by element, with those that other programs write for the same
content.

    compare_parts.py xlsx|docx OWN PEER...

- The children of an element come in the order that each peer gives them.
- An element or attribute that no peer has there, or that every peer has there, is one of the differences listed below.
  Only peers that have the element, or one of the same kind, are asked.
- The same holds for parts.
- A listed difference that is none any more is an error, too.
"""

import re
import sys
import xml.etree.ElementTree as xml
import zipfile

# Patterns of differences, and why they are there. "+": no peer has it there; "-": every peer has it there.
BOTH = [
    (r"docProps/core.xml coreProperties .* before .*", "they may come in any order"),
]
EXPLAINED = {
    "xlsx": BOTH + [
        (r"docProps/app.xml Properties -AppVersion", "optional, and the version of another program"),
        (r"docProps/core.xml coreProperties -lastModifiedBy", "optional: nobody has modified it"),
        (r"xl/drawings/drawing.xml wsDr (\+one|-two)CellAnchor", "a picture keeps its size when columns get wider"),
        (r"xl/styles.xml fonts/font -family", "optional: readers know their fonts by name"),
        (r"xl/styles.xml xf/alignment -@horizontal", "joined cells aside, alignment is that of the value"),
        (r"xl/workbook.xml workbook -(calcPr|fileVersion|workbookPr)", "optional: there are no formulas"),
        (r"xl/worksheets/sheet.xml worksheet -dimension", "optional: not known before the rows"),
        (r"(xl/worksheets/sheet.xml row/c \+is|xl/sharedStrings.xml -part)", "texts are in their cells: one pass"),
    ],
    "docx": BOTH + [
        (r"docProps/app.xml -part", "optional: statistics"),
        (r"word/fontTable.xml -part", "optional: substitutes for fonts"),
        (r"word/(document|header).xml p/(hyperlink \+@history|r \+(fldChar|instrText)|r -(t|tab|rPr)|pPr -rPr)",
         "links to addresses are fields"),
        (r"word/document.xml hyperlink/r -rPr", "the same"),
        (r"word/document.xml r/fldChar \+@dirty", "the numbers of pages are counted when it is opened"),
        (r"word/document.xml (drawing/inline|nvPicPr/cNvP\w+|pic/spPr) -\S+", "optional: what a picture lacks anyway"),
        (r"word/document.xml \w+/(bidi|keepNext|cantSplit|tblHeader) -@val", "optional: on"),
        (r"word/document.xml pPr/spacing -@before", "optional: that of the style"),
        (r"word/styles.xml pPr/numPr -ilvl", "optional: some styles have the number of no list"),
        (r"word/document.xml pPr/sectPr -(docGrid|formProt|pgNumType|textDirection)", "optional: the default"),
        (r"word/document.xml rPr/shd \+@color", "no pattern is drawn over the background"),
        (r"word/document.xml tblPr/tblCellMar -(top|bottom)", "optional: zero"),
        (r"word/\w+.xml (p/pPr pStyle before sectPr|\w+/rPr (b before bCs|i before iCs|bCs before i))",
         "the order of the schema, unlike LibreOffice's"),
        (r"word/document.xml p/pPr pStyle before numPr", "the order of the schema, unlike pandoc's"),
        (r"word/document.xml tr/trPr cantSplit before tblHeader", "they may come in any order"),
        (r"word/header.xml (hdr -@Ignorable|r/t \+@space)", "nothing of other programs; outer blanks are kept"),
        (r"word/settings.xml settings -zoom", "optional: the reader's own"),
        (r"word/styles.xml (docDefaults/pPrDefault -pPr|style/tblStylePr -tblPr)", "optional: empty"),
        (r"word/styles.xml style/rPr \+noProof", "code is not spelled"),
    ],
}


def name_of(tag):
    """The name without its namespace, which the names of parents and parts make clear enough."""
    return tag.split("}")[-1]


class Kind:
    """What the elements of one name below parents of one name have."""

    def __init__(self):
        self.always = None
        self.ever = set()
        self.orders = set()

    def add(self, element):
        here = {"@" + name_of(name) for name in element.attrib} | {name_of(child.tag) for child in element}
        self.always = here if self.always is None else self.always & here
        self.ever |= here
        children = [name_of(child.tag) for child in element]
        self.orders |= {(a, b) for i, a in enumerate(children) for b in children[i + 1:] if a != b}


def kinds_of(path):
    kinds = {}
    with zipfile.ZipFile(path) as archive:
        for part in archive.namelist():
            if not re.search(r"\.(xml|rels|vml)$", part):
                continue
            root = xml.fromstring(archive.read(part))
            kind = re.sub(r"\d+", "", part)
            parents = [("", root)]
            for parent, element in parents:
                name = name_of(element.tag)
                kinds.setdefault((kind, parent, name), Kind()).add(element)
                parents.extend((name, child) for child in element)
    return kinds


def differences(own, peers):
    for key, kind in own.items():
        asked = [peer[key] for peer in peers if key in peer]
        if not asked:
            # Reported with the parent, whose child it is.
            continue
        for peer in asked:
            for first, second in kind.orders:
                if (second, first) in peer.orders and (second, first) not in kind.orders and \
                        (first, second) not in peer.orders:
                    yield key, first + " before " + second
        for item in kind.ever - set().union(*(peer.ever for peer in asked)):
            yield key, "+" + item
        for item in set.intersection(*(peer.always for peer in asked)) - kind.always:
            yield key, "-" + item
    parts = [{key[0] for key in kinds} for kinds in [own] + peers]
    for part in parts[0] - set().union(*parts[1:]):
        yield (part, "", ""), "+part"
    for part in set.intersection(*parts[1:]) - parts[0]:
        yield (part, "", ""), "-part"


def line_of(key, what):
    part, parent, name = key
    element = [parent + "/" + name if parent else name] if name else []
    return " ".join([part] + element + [what])


def main():
    form, own, *peers = sys.argv[1:]
    found = {line_of(*found) for found in differences(kinds_of(own), [kinds_of(peer) for peer in peers])}
    patterns = [pattern for pattern, _ in EXPLAINED[form]]
    unknown = sorted(line for line in found if not any(re.fullmatch(pattern, line) for pattern in patterns))
    gone = [pattern for pattern in patterns if not any(re.fullmatch(pattern, line) for line in found)]
    print("\n".join(unknown + ["no difference any more: " + pattern for pattern in gone]))
    return 1 if unknown or gone else 0


sys.exit(main())
