#!/usr/bin/env python3
"""The excerpts of docs/python.md, one after another."""

import array
import datetime
import decimal
import io
import sys
import warnings

import scrivalen

with scrivalen.Document("parts.html") as doc:
    with doc.section("Fleet", id="fleet") as section:
        with section.paragraph(align="center") as paragraph:
            paragraph.text("Cars in ")
            paragraph.strong("München")
            with paragraph.link("https://example.org/") as link:
                link.emphasis("all of them")
        with section.list(ordered=True) as items:
            items.item("wash")
            items.item("refuel", done=True)

with scrivalen.Document("values.txt", "values.html") as doc:
    with doc.table(["name", scrivalen.Column("price", "number", decimals=2), "since", "sold"]) as table:
        table.header("Name", "Price", "Since", "Sold")
        table.row("Tea", 4.5, datetime.date(2026, 1, 31), True)
        table.row("Coffee", decimal.Decimal("12.80"), None, False)
        with table.row() as row:
            row.cell("All", span=3, background="#EEEEEE")
            with row.cell(align="center") as cell:
                cell.strong("yes")

with scrivalen.Document("columns.html") as doc:
    with doc.table(2) as table:
        table.header("Number", "Price")
        table.rows((number, number * 0.5) for number in range(3))
        table.rows({"number": [3, 4], "price": array.array("d", [1.5, 2])})
        days = scrivalen.Values(array.array("i", [19782, 0]), "date", validity=b"\x01")
        table.columns(array.array("q", [5, 6]), days)


def write_batches(doc, batches):
    """Batches are what Arrow's libraries, data frames and databases give."""
    with doc.table() as table:
        table.header("Number", "Text")
        for batch in batches:
            table.rows(batch)


with scrivalen.Document("arrow.html") as doc:
    write_batches(doc, [])

page = io.BytesIO()
with scrivalen.Document((page, "html"), (sys.stdout.buffer, "text"), title="Streams") as doc:
    doc.set_progress(lambda rows, written: written < 10_000_000)
    doc.paragraph("Into memory, and to standard output.")

try:
    with scrivalen.Document("report.html", "no such folder/report.txt") as doc:
        doc.paragraph("The first content creates the files.")
except scrivalen.FileError as error:
    print(f"{error.output} failed: {error.reason}")

with warnings.catch_warnings():
    warnings.simplefilter("ignore", scrivalen.DocumentWarning)
    with scrivalen.Document("report.md") as doc:
        with doc.paragraph() as paragraph:
            paragraph.colored("red", text="Markdown has no colours.")
for warning in doc.warnings:
    print(warning.output, warning.count, warning.message)
