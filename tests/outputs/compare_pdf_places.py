"""Compares the outlines and links of PDF documents with the headings and links of their sources in Markdown.

  compare_pdf_places.py FOLDER RESULT NAME...

For a source NAME.md, RESULT has what pdf_places.mjs has found in NAME.pdf. The outline has the headings, in order, with
their levels, none of which is skipped; MuPDF finds the same. The links lead where those of the source do, in order. A link
within the document leads to the place of the heading that it names. poppler finds the same addresses.
"""
import json
import pathlib
import re
import subprocess
import sys

from compare_words import Markdown, read_markdown

NOT_IN_ID = re.compile(r"[^\w\- ]")
NUMBERED = re.compile(r"(.*)-[0-9]+")


class Places(Markdown):
    """Also notes headings and links."""

    def __init__(self):
        super().__init__(as_text=False)
        self.headings = []
        self.links = []

    def visit_heading(self, node):
        start = len(self.page.parts)
        self.visit_children(node)
        self.headings.append((int(node.get("level")), " ".join("".join(self.page.parts[start:]).split())))

    def visit_link(self, node):
        self.links.append(node.get("destination"))
        super().visit_link(node)


def nested(headings):
    """Depths without gaps, and titles."""
    above = []
    for level, title in headings:
        while above and above[-1] >= level:
            above.pop()
        above.append(level)
        yield len(above) - 1, title


def id_of(title):
    return NOT_IN_ID.sub("", title.lower()).replace(" ", "-")


def once(links):
    """A link over several lines has a part on each."""
    return [link for at, link in enumerate(links) if at == 0 or link != links[at - 1]]


def output(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout.decode()


def first_difference(what, expected, found):
    """Returns what is wrong."""
    if expected == found:
        return ""
    at = next((at for at, pair in enumerate(zip(expected, found)) if pair[0] != pair[1]), min(len(expected), len(found)))
    return f"{what}, from number {at + 1} on: expected {expected[at:at + 3]}, found {found[at:at + 3]}"


def compare_outline(path, headings, found):
    """Returns what is wrong."""
    expected = list(nested(headings))
    entries = [(entry["depth"], " ".join(entry["title"].split())) for entry in found]
    shown = re.findall(r'"(.*)"\t', output("mutool", "show", str(path), "outline"))
    return (first_difference("the outline", expected, entries) or
            first_difference("MuPDF's outline", [title for _, title in expected], [" ".join(title.split()) for title in shown]))


def compare_links(path, addresses, found):
    """Returns what is wrong."""
    targets = once([link["address"] if "address" in link else "#" + link["name"] for link in found["links"]])
    outer = [address for address in targets if not address.startswith("#")]
    listed = [line.split(maxsplit=2)[2] for line in output("pdfinfo", "-url", str(path)).splitlines()[1:]]
    return (first_difference("the links", once(addresses), targets) or
            first_difference("poppler's addresses", outer, once(listed)) or compare_targets(found))


def compare_targets(found):
    """Returns what is wrong."""
    headings = {}
    for entry in found["outline"]:
        headings.setdefault(id_of(entry["title"]), []).append((entry["target"], entry["top"]))
    for link in found["links"]:
        name = link.get("name")
        if name is not None:
            numbered = NUMBERED.fullmatch(name)
            places = headings.get(name) or (headings.get(numbered[1]) if numbered else None)
            if not places or (link.get("target"), link.get("top")) not in places:
                return f"the link to {name} leads to page {link.get('target')}, {link.get('top')}, and the heading is at {places}"
    return ""


def compare(folder, places, source):
    path = folder / source
    document = Places()
    read_markdown(path, document=document)
    found = places[f"./{path.stem}.pdf"]
    pdf = path.with_suffix(".pdf")
    problems = [compare_outline(pdf, document.headings, found["outline"]), compare_links(pdf, document.links, found)]
    for problem in filter(None, problems):
        print(f"{path.stem}.pdf, {problem}")
    return any(problems)


if __name__ == "__main__":
    results = json.loads(pathlib.Path(sys.argv[2]).read_text(encoding="utf-8"))
    sys.exit(any([compare(pathlib.Path(sys.argv[1]), results, name) for name in sys.argv[3:]]))
