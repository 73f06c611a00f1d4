"""Compares what pandoc reads from Markdown and from the Word document made of it: the words, in their order, and how
many there are of each kind of block and span.

    compare_round_trip.py MARKDOWN DOCX
"""

import collections
import json
import re
import subprocess
import sys

KINDS = ["BulletList", "OrderedList", "Table", "CodeBlock", "BlockQuote", "Link", "Image", "Emph", "Strikeout"]


def pandoc(source, form, target):
    return subprocess.run(["pandoc", "-f", form, source, "-t", target, "--wrap=none"], check=True, capture_output=True,
                          encoding="utf-8").stdout


def kinds(element, found):
    if isinstance(element, dict):
        kind = element.get("t")
        found[kind + str(element["c"][0]) if kind == "Header" else kind] += 1
        element = list(element.values())
    if isinstance(element, list):
        for part in element:
            kinds(part, found)
    return found


def read(source, form):
    words = re.findall(r"\w+", pandoc(source, form, "plain"))
    found = kinds(json.loads(pandoc(source, form, "json"))["blocks"], collections.Counter())
    return words, {kind: found[kind] for kind in KINDS + ["Header%d" % level for level in range(1, 7)]}


def main():
    given, made = read(sys.argv[1], "gfm"), read(sys.argv[2], "docx")
    same = sum((collections.Counter(given[0]) & collections.Counter(made[0])).values())
    print("%s: %d of %d words, %d of %d blocks and spans" % (sys.argv[1], same, len(given[0]), sum(made[1].values()),
                                                            sum(given[1].values())))
    return None if given == made else "there were %s, there are %s" % (given[1], made[1])


sys.exit(main())
