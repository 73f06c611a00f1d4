#!/usr/bin/env python3
"""Runs each line of the shell excerpts in documents that calls the command, and looks for the files that it names.

    run_commands.py COMMAND DOCUMENT...

Each line runs in a folder of its own that has the inputs which the documents speak of.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

EXAMPLES = os.path.dirname(os.path.abspath(__file__))
INPUTS = {"report.md": "report.md", "sales.csv": "sales.csv", "notes.md": "report.md", "prices.csv": "sales.csv",
          "examples/report.md": "report.md", "README.md": "report.md"}
SHELL_EXCERPT = re.compile(r"^```sh\n(.*?)^```", re.DOTALL | re.MULTILINE)
CALL = re.compile(r"(^|\| *)(?:build/linux/bin/)?scrivalen ")
OUTPUT = re.compile(r"(?:(?:-o|--output)[ =](?:\w\w+:)?|> *)([\w./-]*\w)(?![\w:])")  # not standard output


def lines_of(document):
    with open(document, encoding="utf-8") as file:
        for excerpt in SHELL_EXCERPT.findall(file.read()):
            for line in excerpt.replace("\\\n", " ").splitlines():
                if CALL.search(line):
                    yield line


def make_inputs(folder):
    for name in ("examples", "site", "out"):
        os.mkdir(os.path.join(folder, name))
    for name, source in INPUTS.items():
        shutil.copyfile(os.path.join(EXAMPLES, source), os.path.join(folder, name))


def defect_of(command, line):
    """What is wrong with a line; None if it runs and leaves its files."""
    with tempfile.TemporaryDirectory(prefix="scrivalen-commands-") as folder:
        make_inputs(folder)
        run = subprocess.run(["bash", "-o", "pipefail", "-c", CALL.sub(r'\1"$0" ', line), command], cwd=folder,
                             stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, encoding="utf-8", check=False)
        if run.returncode != 0:
            return f"status {run.returncode}: {run.stderr.strip()}"
        for name in OUTPUT.findall(line):
            path = os.path.join(folder, name)
            if not os.path.exists(path) or os.path.getsize(path) == 0:
                return f"it leaves no {name}"
        return None


def main():
    command = os.path.abspath(sys.argv[1])
    lines = [(document, line) for document in sys.argv[2:] for line in lines_of(document)]
    defects = 0
    for document, line in lines:
        defect = defect_of(command, line)
        if defect:
            defects += 1
            print(f"run_commands: {os.path.basename(document)}: {line}\n  {defect}")
    print(f"{len(lines)} lines ran, {defects} of them badly.")
    return 1 if defects or not lines else 0


sys.exit(main())
