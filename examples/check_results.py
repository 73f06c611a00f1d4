#!/usr/bin/env python3
"""Runs an example and checks that each result in a document is in a file that the example writes.

    check_results.py DOCUMENT PROGRAM [ARGUMENT...]

Results are the excerpts in text, html, xml and markdown.
"""

import os
import re
import subprocess
import sys
import tempfile

RESULT = re.compile(r"^```(?:text|html|xml|markdown)\n(.*?)^```", re.DOTALL | re.MULTILINE)


def text_of(path):
    with open(path, "rb") as file:
        content = file.read()
    text = content.decode("utf-16" if content.startswith(b"\xff\xfe") else "utf-8", "replace")
    return text.replace("\r\n", "\n")


def main():
    document, *program = sys.argv[1:]
    with open(document, encoding="utf-8") as file:
        results = RESULT.findall(file.read())
    with tempfile.TemporaryDirectory(prefix="scrivalen-results-") as folder:
        subprocess.run(program, cwd=folder, check=True)
        written = [text_of(os.path.join(folder, name)) for name in sorted(os.listdir(folder))]
    absent = [result for result in results if not any(result in text for text in written)]
    for result in absent:
        print(f"check_results: {os.path.basename(document)}: no file has this:\n{result}")
    print(f"{len(results) - len(absent)} results of {len(results)} are as written.")
    return 1 if absent or not results else 0


sys.exit(main())
