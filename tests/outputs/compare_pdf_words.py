"""Compares the words of PDF documents with those of their sources, as five programs that are not ours read them.

  compare_pdf_words.py FOLDER RESULT NAME...

For a source NAME.md, NAME.csv or NAME.tsv, RESULT has the pages of NAME.pdf as pdf_readers.mjs has written them. poppler
keeps the order of what is drawn. Its words are those of the source, in order, where

- a word may go on in the next line,
- the header rows of a table come again on the next page,
- a table that is too wide is in parts, each with the header and the first column,
- words from right to left are in the order of the page, marks beside them on either side.

On each page the others find the same words, in any order. Of a page with writing from right to left only the letters are
compared, because MuPDF and Ghostscript have them in the order of the page. No word is off the page.
"""
import collections
import json
import pathlib
import re
import subprocess
import sys
import unicodedata

from compare_words import CONTROL, MARK, Markdown, read_markdown, read_rows, words

# What some readers write around text from right to left, and what no reader keeps.
DIRECTIONS = re.compile("[\u200e\u200f\u202a-\u202e\u2066-\u2069\ufeff\0]")
# Ghostscript 10.00 writes other characters for these.
UNREADABLE = re.compile("[\ufe0e\ufe0f\U00010000-\U0010ffff]")
# In what pdftotext writes with -bbox.
PAGE_OR_WORD = re.compile('<page (width="[^>]*)>|<word ([^>]*)>')
NUMBER = re.compile('="([-0-9.]+)"')
LIST_MARK = re.compile("[0-9]+[.]|\u2013")


def is_right_to_left(word):
    return any(unicodedata.bidirectional(character) in ("R", "AL") for character in word)


def end_of_right_to_left(listed_words, begin):
    """Where words from right to left end, together with those between them that have no direction."""
    end = begin
    for at in range(begin, len(listed_words)):
        if is_right_to_left(listed_words[at]):
            end = at + 1
        elif any(unicodedata.bidirectional(character) == "L" for character in listed_words[at]):
            break
    return end


def plain(text):
    return DIRECTIONS.sub("", text).replace("\xa0", " ")


def expected_words(text):
    return words(plain(text))


def found_words(text):
    return CONTROL.sub("\ufffd", plain(text).replace("\f", " ").replace("\n", " ").replace("\r", " ")).split()


class Found:
    """The words that a reader has found, and how far they have been compared."""

    def __init__(self, pages):
        self.words = found_words("\n".join(pages))
        self.at = 0

    def take(self, expected):
        """Passes words, which may be divided. Returns whether they come next; if not, nothing is passed."""
        begin = self.at
        remaining = list(expected)
        while remaining:
            if self.at == len(self.words):
                self.at = begin
                return False
            word = self.words[self.at]
            self.at += 1
            if remaining[0].startswith(word):
                remaining[0] = remaining[0][len(word):]
                if not remaining[0]:
                    del remaining[0]
            elif not (MARK.fullmatch(word) or LIST_MARK.fullmatch(word)):
                self.at = begin
                return False
        return True

    def take_letters(self, expected):
        """The same for as many words with the same letters."""
        while self.at < len(self.words) and MARK.fullmatch(self.words[self.at]):
            self.at += 1
        next_words = self.words[self.at:self.at + len(expected)]
        if sorted("".join(next_words)) != sorted("".join(expected)):
            return False
        self.at += len(expected)
        return True

    def only_marks_are_left(self):
        return all(MARK.fullmatch(word) for word in self.words[self.at:])

    def __str__(self):
        return f"found {self.words[max(self.at - 4, 0):self.at + 6]}"


class Tables(Markdown):
    """Also notes the headers of tables, and where in the text the rows are."""

    def __init__(self):
        super().__init__(as_text=False)
        self.headers = []

    def visit_table_header(self, node):
        start = len(self.page.parts)
        self.visit_children(node)
        self.headers.append(expected_words("".join(self.page.parts[start:])))


def compare_prose(path, found):
    """Returns what is wrong."""
    tables = Tables()
    expected = expected_words(read_markdown(path, document=tables))
    at = 0
    while at < len(expected):
        end = end_of_right_to_left(expected, at)
        if end > at and found.take_letters(expected[at:end]):
            at = end
        elif found.take(expected[at:at + 1]):
            at += 1
        elif not any(found.take(header) for header in tables.headers):
            return f"word {at + 1}: expected {expected[at:at + 6]}, {found}"
    return "" if found.only_marks_are_left() else f"words too many: {found}"


class Grid:
    """The words of a table that begins with a header."""

    def __init__(self, path):
        self.rows = [[expected_words(cell) for cell in row] for row in read_rows(path) if row]
        self.width = max(len(row) for row in self.rows)

    def take_row(self, found, row, first, end):
        """A row of the part that has the columns from first on; all parts have the first column."""
        columns = [0, *range(max(first, 1), end)]
        cells = self.rows[row]
        return found.take([word for column in columns if column < len(cells) for word in cells[column]])

    def take_part(self, found, first, end, row, last):
        """Passes the header and rows, up to the last if it is known. Returns the row after them, or none."""
        begin = found.at
        at = row
        if self.take_row(found, 0, first, end):
            while at < (last or len(self.rows)) and self.take_row(found, at, first, end):
                at += 1
        if at > row and at == (last or at):
            return at
        found.at = begin
        return None

    def take_rows(self, found, row):
        """Passes all parts of as many rows as there are on the page. Returns the row after them, or none."""
        first, last = 0, None
        while first < self.width:
            for end in range(self.width, first, -1):
                passed = self.take_part(found, first, end, row, last)
                if passed:
                    break
            else:
                return None
            first, last = end, passed
        return last


def compare_table(path, found):
    """Returns what is wrong."""
    grid = Grid(path)
    row = 1
    while row < len(grid.rows):
        passed = grid.take_rows(found, row)
        if not passed:
            return f"row {row + 1}, {grid.rows[row][:4]}: {found}"
        row = passed
    return "" if found.only_marks_are_left() else f"words too many: {found}"


def listed(page):
    """The words and marks of a page, with which PDFium joins the next line; the letters of words from right to left."""
    text = unicodedata.normalize("NFKC", plain(page))
    return collections.Counter("".join(text.split()) if is_right_to_left(text) else re.findall(r"\w+|[^\w\s]", text))


def compare_readers(texts):
    """Returns what is wrong."""
    usual = texts["poppler"]
    for reader, pages in texts.items():
        if len(pages) != len(usual):
            return f"{reader} finds {len(pages)} pages, not {len(usual)}"
        for number, (page, other) in enumerate(zip(usual, pages), start=1):
            missing, added = listed(page) - listed(other), listed(other) - listed(page)
            if reader == "ghostscript" and UNREADABLE.search(page):
                missing = [word for word in missing if not UNREADABLE.search(word)]
                added = []
            if missing or added:
                return f"page {number}: {reader} lacks {list(missing)[:6]}, poppler {list(added)[:6]}"
    return ""


def find_words_off_page(path):
    """Returns what is wrong."""
    read = subprocess.run(["pdftotext", "-bbox", str(path), "-"], check=True, capture_output=True)
    boxes = read.stdout.decode("latin-1")
    width = height = 0.0
    for page, box in PAGE_OR_WORD.findall(boxes):
        if page:
            width, height = (float(number) for number in NUMBER.findall(page))
        else:
            left, top, right, bottom = (float(number) for number in NUMBER.findall(box))
            if left < 0 or top < 0 or right > width or bottom > height:
                return f"a word is off the page: {box}"
    return "" if width > 0 else "no page was found"


def compare(folder, texts, source):
    path = folder / source
    pages = texts[f"./{path.stem}.pdf"]
    found = Found(pages["poppler"])
    problems = [compare_prose(path, found) if path.suffix == ".md" else compare_table(path, found), compare_readers(pages),
                find_words_off_page(path.with_suffix(".pdf"))]
    for problem in filter(None, problems):
        print(f"{path.stem}.pdf, {problem}")
    return any(problems)


if __name__ == "__main__":
    results = json.loads(pathlib.Path(sys.argv[2]).read_text(encoding="utf-8"))
    sys.exit(any([compare(pathlib.Path(sys.argv[1]), results, name) for name in sys.argv[3:]]))
