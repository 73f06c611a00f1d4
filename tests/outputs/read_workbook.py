"""Prints the cells of a spreadsheet as openpyxl reads them: position, text and formatting."""

import sys

import openpyxl


def look(cell):
    parts = [f"{cell.font.name} {cell.font.sz:g}"]
    if cell.font.b:
        parts.append("bold")
    if cell.font.color is not None and cell.font.color.type == "rgb":
        parts.append("color=" + cell.font.color.rgb[2:])
    if cell.fill.fill_type == "solid":
        parts.append("fill=" + cell.fill.fgColor.rgb[2:])
    return " ".join(parts)


book = openpyxl.load_workbook(sys.argv[1])
for sheet in book:
    print(f"[{sheet.title}] frozen at {sheet.freeze_panes}")
    for row in sheet.iter_rows():
        for cell in row:
            if cell.value is not None:
                print(f"{cell.coordinate} {cell.data_type} {cell.value!r} {look(cell)}")
