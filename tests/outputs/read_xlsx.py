"""Prints the cells of a workbook, one line per row, with a tab between two cells.

  read_xlsx.py FILE          the texts; line breaks and tabs in them are written as \\n and \\t
  read_xlsx.py --looks FILE  each text followed by its weight and fill, as in "a[bold FFFF00]"; then the frozen rows
"""
import sys

import openpyxl


def escaped(text):
    return text.replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t")


def looks(cell):
    words = ["bold"] if cell.font.b else []
    if cell.fill.fill_type == "solid":
        words.append(cell.fill.fgColor.rgb[-6:])
    return "[" + " ".join(words) + "]"


def main():
    with_looks = sys.argv[1] == "--looks"
    book = openpyxl.load_workbook(sys.argv[-1])
    for sheet in book.worksheets:
        for row in sheet.iter_rows():
            cells = [cell for cell in row if cell.value is not None]
            last = cells[-1].column if cells else 0
            texts = [escaped(str(cell.value or "")) + (looks(cell) if with_looks else "") for cell in row[:last]]
            print("\t".join(texts))
        if with_looks:
            print("frozen", sheet.freeze_panes)


main()
