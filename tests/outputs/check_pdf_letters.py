"""Has the command write words whose letters are more, or fewer, than their glyphs, and compares what readers extract.

  check_pdf_letters.py FOLDER COMMAND...

Each word is a document, because readers join short lines. "poppler" is the order of reading, which pdftotext has by default,
and "poppler-raw" that of the file.
MuPDF and Ghostscript give letters from right to left in the order of the page, whoever wrote the file. Words are missing for a
reader that cannot be helped: Ghostscript 10.00 garbles all but the first of the characters that a glyph stands for, and reads none
past the basic plane; pdf.js and PDFium leave out joiners beside those, and order marks by their places.
"""
import json
import pathlib
import re
import subprocess
import sys

DIRECTIONS = re.compile("[\u200e\u200f\u202a-\u202e\u2066-\u2069\ufeff\0]")
POPPLER = {"poppler", "poppler-raw"}
OTHERS = {"pdf.js", "pdfium"}

# A word, the readers that give it as it is, and those that give it in the order of the page.
WORDS = [
    ("\u0644\u0627", POPPLER | OTHERS, {"mupdf"}),  # two letters, one glyph
    ("\u0633\u0644\u0627\u0645", POPPLER | OTHERS, {"mupdf"}),
    ("\u0645\u06cc\u200c\u062e\u0648\u0627\u0647\u0645", POPPLER | OTHERS, {"mupdf"}),  # with a joiner
    ("\u0645\u064f\u062d\u064e\u0645\u064e\u0651\u062f\u064c", {"poppler"}, {"mupdf"}),  # with vowels
    ("\u05e9\u05b8\u05c1\u05dc\u05d5\u05b9\u05dd", POPPLER, {"mupdf"}),
    ("\u05db\u05dc \u05d1\u05e0\u05d9 \u05d4\u05d0\u05d3\u05dd", {"poppler"} | OTHERS, {"mupdf"}),
    ("q\u0303x", POPPLER | OTHERS, set()),
    ("a\u200cb", POPPLER | OTHERS | {"mupdf"}, set()),
    ("\u2764\ufe0f", POPPLER | OTHERS | {"mupdf"}, set()),
    ("\U0001f468\u200d\U0001f469\u200d\U0001f467", POPPLER | {"mupdf"}, set()),
    ("\U0001f600\u200d\U0001f600", POPPLER | {"mupdf", "pdfium"}, set()),
]
# What is left of a word where a reader has no joiners.
WITHOUT_JOINERS = {"\U0001f468\u200d\U0001f469\u200d\U0001f467": OTHERS, "\U0001f600\u200d\U0001f600": {"pdf.js"}}


def write(folder, command):
    """Returns the words' files."""
    files = []
    for number, (word, _, _) in enumerate(WORDS):
        source = folder / f"word{number}.md"
        source.write_text(word + "\n", encoding="utf-8")
        files.append(source.with_suffix(".pdf"))
        subprocess.run([*command, source, "-q", "-o", files[-1]], check=True)
    return files


def read(folder, files):
    """Returns what each reader finds in each file."""
    here = pathlib.Path(__file__).resolve().parent
    result = folder / "words.json"
    subprocess.run(["node", here / "pdf_readers.mjs", result, *files], check=True, capture_output=True)
    found = json.loads(result.read_text(encoding="utf-8"))
    for path in files:
        texts = found[str(path)]
        texts["poppler-raw"] = texts["poppler"]
        shown = subprocess.run(["pdftotext", "-enc", "UTF-8", path, "-"], check=True, capture_output=True)
        texts["poppler"] = [shown.stdout.decode()]
    return [{reader: plain("".join(pages)) for reader, pages in found[str(path)].items()} for path in files]


def plain(text):
    return DIRECTIONS.sub("", text).strip()


def compare(folder, command):
    wrong = False
    for (word, as_it_is, turned), texts in zip(WORDS, read(folder, write(folder, command))):
        expected = {reader: word for reader in as_it_is} | {reader: word[::-1] for reader in turned}
        expected |= {reader: word.replace("\u200d", "") for reader in WITHOUT_JOINERS.get(word, ())}
        for reader, text in sorted(expected.items()):
            if texts[reader] != text:
                print(f"{reader}: expected {ascii(text)}, found {ascii(texts[reader])}")
                wrong = True
    return wrong


if __name__ == "__main__":
    sys.exit(compare(pathlib.Path(sys.argv[1]), sys.argv[2:]))
