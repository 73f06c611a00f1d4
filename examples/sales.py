"""The first program of README.md: one table in four formats. sales.cpp writes the same."""

import datetime

from scrivalen import Column, Document

with Document("sales.html", "sales.pdf", "sales.rtf", "sales.xlsx", title="Sales 2026") as doc:
    doc.heading(1, "Sales 2026")
    doc.paragraph("Three branches, one year.")
    with doc.table(["branch", "since", "sold", Column("amount", decimals=2)]) as table:
        table.header("Branch", "Open since", "Sold", "Amount")
        table.row("Lyon", datetime.date(2019, 3, 1), 1204, 48161.5)
        table.row("Nuuk", datetime.date(2022, 11, 14), 870, 39020.25)
        table.row("Zürich", None, 96, 12000)
