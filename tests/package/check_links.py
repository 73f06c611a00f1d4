#!/usr/bin/env python3
"""Follows the relative links of every Markdown file below a folder and reports broken ones.

    check_links.py FOLDER [FILE...]

With FILEs, which are relative to the folder, only these are read. A target is a file or folder below FOLDER, or the
anchor of a heading after a "#".
"""

import os
import re
import sys
import urllib.parse

FENCE = re.compile(r"^ {0,3}(```+|~~~+)")
HEADING = re.compile(r"^ {0,3}#{1,6}[ \t]+(.*?)[ \t]*#*[ \t]*$")
CODE_SPAN = re.compile(r"(`+)(?!`).*?(?<!`)\1(?!`)", re.DOTALL)
INLINE_LINK = re.compile(r"\]\(\s*(<[^>\n]*>|[^\s()]*)[^()]*\)")
LINK_DEFINITION = re.compile(r"^ {0,3}\[[^\]]+\]:\s*(<[^>\n]*>|\S+)", re.MULTILINE)
HTML_LINK = re.compile(r"<(?:a|img)\b[^>]*\b(?:href|src)=\"([^\"]*)\"")
SCHEME = re.compile(r"^[A-Za-z][A-Za-z0-9+.-]*:")


def text_of(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def without_code_blocks(text):
    lines = []
    fence = None
    for line in text.splitlines():
        match = FENCE.match(line)
        if fence is None and match:
            fence = match.group(1)
        elif fence is None:
            lines.append(line)
        elif match and match.group(1).startswith(fence) and line.strip() == match.group(1):
            fence = None
    return "\n".join(lines)


def anchor_of(heading):
    """As common repository hosts build it: letters, digits, hyphens and underscores stay."""
    shown = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading)
    return re.sub(r"[^\w\- ]", "", shown.lower()).replace(" ", "-")


def anchors_of(path):
    anchors = set()
    seen = {}
    for line in without_code_blocks(text_of(path)).splitlines():
        match = HEADING.match(line)
        if match:
            anchor = anchor_of(match.group(1))
            count = seen.get(anchor, 0)
            seen[anchor] = count + 1
            anchors.add(f"{anchor}-{count}" if count else anchor)
    return anchors


def links_of(path):
    text = CODE_SPAN.sub("", without_code_blocks(text_of(path)))
    for pattern in (INLINE_LINK, LINK_DEFINITION, HTML_LINK):
        for match in pattern.finditer(text):
            link = match.group(1).strip("<>")
            if not SCHEME.match(link) and not link.startswith("//"):
                yield link


def defect_of(link, source, root):
    """Why a link is broken; None for a good one."""
    path, _, anchor = link.partition("#")
    target = os.path.normpath(os.path.join(os.path.dirname(source), urllib.parse.unquote(path))) if path else source
    if os.path.isabs(path) or os.path.relpath(target, root).startswith(".."):
        return "leads out of the folder"
    if not os.path.exists(target):
        return "is not there"
    if anchor and not (target.endswith(".md") and urllib.parse.unquote(anchor) in anchors_of(target)):
        return "has no such heading"
    return None


def documents_below(root):
    for folder, folders, files in os.walk(root):
        folders.sort()
        yield from (os.path.join(folder, name) for name in sorted(files) if name.endswith(".md"))


def main():
    root = os.path.abspath(sys.argv[1])
    documents = [os.path.join(root, name) for name in sys.argv[2:]] or list(documents_below(root))
    checked = 0
    broken = 0
    for document in documents:
        for link in links_of(document):
            checked += 1
            defect = defect_of(link, document, root)
            if defect:
                broken += 1
                print(f"check_links: {os.path.relpath(document, root)}: {link} {defect}")
    if checked == 0:
        print("check_links: there are no links to check")
    return 1 if broken or checked == 0 else 0


sys.exit(main())
