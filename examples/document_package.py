#!/usr/bin/env python3
"""Writes the document of document.c through the Python package.

  document_package.py [FOLDER]
"""

import array
import datetime
import os
import sys
import warnings

import scrivalen
from scrivalen import Blocks, Column, Table, Values


def write_motto(blocks: Blocks) -> None:
    with blocks.paragraph(align="center") as paragraph:
        paragraph.text("Cars in ")
        paragraph.strong("München")
        paragraph.line_break()
        with paragraph.colored("navy", "#FFFFE0") as colored, colored.sized(14) as sized:
            sized.language("de", "Fuhrpark")
        paragraph.link("https://example.org/?a=1&b=2", " and <more>", "all cars")
        paragraph.anchor("cars")
        paragraph.raw("html", "<wbr>")


def write_text(blocks: Blocks) -> None:
    blocks.heading(1, "Fleet")
    with blocks.contents() as contents:
        contents.item(1, "costs", "Costs")
    write_motto(blocks)
    blocks.rule()
    with blocks.quote() as quote:
        quote.paragraph("Every car has a driver.")
    with blocks.list(ordered=True, first=3) as items:
        items.item("third")
        items.item("done", done=True)
    blocks.code("if (a < b)\n\treturn a;\n", "c")
    blocks.page_break()


def write_rows(table: Table) -> None:
    with table.header() as header:
        with header.cell(header=True, align="center", span=2, color="white", background="#204060") as cell:
            cell.text("Car")
        header.cell("Since")
        header.cell("Used")
    table.row("bus", 0.125, datetime.date(2024, 10, 4), True)
    table.row("van", -42, datetime.datetime(1970, 1, 1, 23, 59, 59), None)


def write_columns(table: Table) -> None:
    table.rows({
        "car": ["car", "lorry"],
        "cost": array.array("d", [1234.5, 2]),
        "since": Values(array.array("i", [19000, 0]), "date", validity=b"\x01"),
        "used": [False, True],
    })


def write_costs(blocks: Blocks) -> None:
    blocks.heading(2, "Costs", id="costs")
    columns = [Column("car"), Column("cost", "number", decimals=2), Column(align="center"), Column()]
    with blocks.table(columns, "costs") as table:
        write_rows(table)
        write_columns(table)


def main() -> None:
    warnings.simplefilter("ignore", scrivalen.DocumentWarning)
    folder = sys.argv[1] if len(sys.argv) > 1 else "."
    formats = [name for name in scrivalen.formats() if name != "chm"]  # it needs a help compiler
    outputs = [(os.path.join(folder, "report." + name), name) for name in formats]
    with scrivalen.Document(*outputs, title="Fleet", clock="2026-01-31 23:59:59") as doc:
        with doc.section("Fleet", "fleet") as section:
            write_text(section)
            write_costs(section)
    for warning in doc.warnings:
        print(f"{warning.message} ({warning.count})")


main()
