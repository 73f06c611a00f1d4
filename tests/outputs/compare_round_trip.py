"""Compares what pandoc reads from Markdown and from the Word document made of it: the words, in their order; how many
there are of each kind of block and span; and the lines of the Markdown that pandoc writes of both.

    compare_round_trip.py MARKDOWN DOCX

All lines have to be equal after both lost what pandoc 2.17 reads from no Word document: the language of code, rules, and
the weight and slope of code. For a list in a quote it reads quotes in a list. The alignment of columns and the titles of
links are read from the document's XML instead. Names and sizes of pictures are left out, too, and code in links, which has
the style of a link.
"""

import collections
import difflib
import json
import re
import subprocess
import sys

import docx
from docx.oxml.ns import qn

KINDS = ["BulletList", "OrderedList", "Table", "CodeBlock", "BlockQuote", "Link", "Image", "Emph", "Strikeout"]
NOTHING = ["", [], []]
SPACE = {"t": "Space"}
SIDES = {"AlignLeft": "left", "AlignCenter": "center", "AlignRight": "right"}


def pandoc(source, form, target, given=None):
    return subprocess.run(["pandoc", "-f", form, source, "-t", target, "--wrap=none"], check=True, capture_output=True,
                          encoding="utf-8", input=given).stdout


def elements(part):
    """Each element, with those in it."""
    if isinstance(part, dict):
        if "t" in part:
            yield part
        part = list(part.values())
    if isinstance(part, list):
        for inner in part:
            yield from elements(inner)


def kind_of(element):
    return "Header%d" % element["c"][0] if element["t"] == "Header" else element["t"]


def kinds(blocks):
    found = collections.Counter(kind_of(element) for element in elements(blocks))
    found["HeaderCell"] = sum(len(row[1]) for table in tables(blocks) for row in table["c"][3][1])
    return {kind: found[kind] for kind in KINDS + ["HeaderCell"] + ["Header%d" % level for level in range(1, 7)]}


def tables(blocks):
    return [element for element in elements(blocks) if element["t"] == "Table"]


def quoted(block):
    """A list in a quote as one whose paragraphs are quotes."""
    def of(item):
        return [{"t": "BlockQuote", "c": [dict(inner, t="Para")]} if inner["t"] in ("Plain", "Para") else quoted(inner)
                for inner in item]
    if block["t"] == "BulletList":
        return {"t": "BulletList", "c": [of(item) for item in block["c"]]}
    if block["t"] == "OrderedList":
        return {"t": "OrderedList", "c": [block["c"][0], [of(item) for item in block["c"][1]]]}
    return block


def divided(quote):
    """A quote without the lists in it, which come between its parts."""
    parts = []
    for block in quote["c"]:
        if block["t"] in ("BulletList", "OrderedList"):
            parts.append(quoted(block))
        elif parts and parts[-1]["t"] == "BlockQuote":
            parts[-1]["c"].append(block)
        else:
            parts.append({"t": "BlockQuote", "c": [block]})
    return parts


def around_code(span):
    """A span without the code in it, which comes between its parts, as do the blanks beside it."""
    parts = []
    for inner in span["c"]:
        if inner["t"] == "Code":
            blanks = [parts[-1]["c"].pop()] if parts and parts[-1]["c"][-1:] == [SPACE] else []
            parts += blanks + [inner]
        elif inner == SPACE and parts and parts[-1]["t"] == "Code":
            parts.append(inner)
        elif parts and parts[-1]["t"] == span["t"]:
            parts[-1]["c"].append(inner)
        else:
            parts.append({"t": span["t"], "c": [inner]})
    return parts


def readable(part):
    """What pandoc can read of it from a Word document."""
    if isinstance(part, dict):
        return {key: readable(value) for key, value in simplified(part).items()}
    if isinstance(part, list):
        return [readable(inner) for element in part for inner in parts_of(element)]
    return part


def parts_of(element):
    kind = element.get("t") if isinstance(element, dict) else None
    if kind == "BlockQuote":
        return divided(element)
    if kind in ("Strong", "Emph"):
        return around_code(element)
    return [] if kind == "HorizontalRule" else [element]


def simplified(element):
    kind = element.get("t")
    if kind == "CodeBlock":
        return {"t": kind, "c": [NOTHING, element["c"][1]]}
    if kind == "Image":
        return {"t": kind, "c": [NOTHING, element["c"][1], ["picture", ""]]}
    if kind == "Link":
        texts = [{"t": "Str", "c": inner["c"][1]} if inner["t"] == "Code" else inner for inner in element["c"][1]]
        return {"t": kind, "c": [NOTHING, texts, [element["c"][2][0], ""]]}
    if kind == "Table":
        columns = [[{"t": "AlignDefault"}, {"t": "ColWidthDefault"}] for _ in element["c"][2]]
        return {"t": kind, "c": element["c"][:2] + [columns] + element["c"][3:]}
    return element


class Content:
    def __init__(self, source, form):
        self.words = re.findall(r"\w+", pandoc(source, form, "plain"))
        self.lines = pandoc(source, form, "gfm").splitlines()
        document = json.loads(pandoc(source, form, "json"))
        self.blocks = document["blocks"]
        document["blocks"] = readable(self.blocks)
        self.kinds = kinds(document["blocks"])
        self.readable_lines = pandoc("-", "json", "gfm", json.dumps(document)).splitlines()


def equal_percent(given, made):
    pairs = difflib.SequenceMatcher(None, given, made, autojunk=False).get_matching_blocks()
    return 100 * sum(pair.size for pair in pairs) / max(len(given), len(made), 1)


def alignment(paragraph):
    found = paragraph.find("./" + qn("w:pPr") + "/" + qn("w:jc"))
    return "left" if found is None else found.get(qn("w:val"))


def wrong_alignments(blocks, path):
    """The cells of which a column with an alignment has another one."""
    wrong = []
    made = docx.Document(path).tables
    given = tables(blocks)
    assert len(made) == len(given), "there are %d tables of %d" % (len(made), len(given))
    for number, table in enumerate(given):
        for column, (align, _) in enumerate(table["c"][2]):
            side = SIDES.get(align["t"])
            for row, cell in enumerate(made[number].columns[column].cells):
                found = {alignment(paragraph) for paragraph in cell._element.iter(qn("w:p"))}
                if side and found != {side}:
                    wrong.append((number, row, column, side, found))
    return wrong


def titles(path):
    """Those of links: to places they are an attribute, to addresses an argument of a field."""
    body = docx.Document(path).element.body
    fields = "".join(part.text for part in body.iter(qn("w:instrText")))
    tips = [link.get(qn("w:tooltip")) for link in body.iter(qn("w:hyperlink"))]
    return sorted(re.findall(r'\\o "([^"]*)"', fields) + [tip for tip in tips if tip])


def main():
    source, path = sys.argv[1:]
    given, made = Content(source, "gfm"), Content(path, "docx")
    same = sum((collections.Counter(given.words) & collections.Counter(made.words)).values())
    reached = equal_percent(given.readable_lines, made.readable_lines)
    print("%s: %d of %d words, %d of %d blocks and spans, %.1f %% of %d lines (%.1f %% of them as they stand)" % (
        source, same, len(given.words), sum(made.kinds.values()), sum(given.kinds.values()), reached,
        len(given.readable_lines), equal_percent(given.lines, made.lines)))
    if given.words != made.words or given.kinds != made.kinds:
        return "the words differ, or there were %s, and there are %s" % (given.kinds, made.kinds)
    if given.readable_lines != made.readable_lines:
        return "\n".join(difflib.unified_diff(given.readable_lines, made.readable_lines, "given", "made", lineterm=""))
    wrong = wrong_alignments(given.blocks, path)
    if wrong:
        return "columns have other alignments: %s" % wrong
    links = [element["c"][2][1] for element in elements(given.blocks) if element["t"] == "Link"]
    wanted = sorted(title for title in links if title)
    return None if titles(path) == wanted else "the titles of links are %s, not %s" % (titles(path), wanted)


if __name__ == "__main__":
    sys.exit(main())
