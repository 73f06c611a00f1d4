#!/usr/bin/env python3
"""A first document from Python: plain text and a web page."""

import datetime

import scrivalen

with scrivalen.Document("hello.txt", "hello.html", title="Stock") as doc:
    doc.heading(1, "Stock")
    doc.paragraph("What is on the shelves today.")
    with doc.table(["item", scrivalen.Column("price", "number", decimals=2), "since"]) as table:
        table.header("Item", "Price", "Since")
        table.row("Tea & biscuits", 4.5, datetime.date(2026, 1, 31))
        table.row("Coffee", 12.8, None)
