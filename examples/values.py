#!/usr/bin/env python3
"""Writes values of every type, in the plain form and as people of some country read them."""

import datetime

import scrivalen
from scrivalen import Column

DAY = datetime.date(2026, 1, 31)
NOON = datetime.datetime(2026, 1, 31, 12, 30, 5)


def write(doc):
    with doc.table(["number", Column("rounded", decimals=2), Column("formatted", format="#,##0.0"), "other"]) as table:
        table.header("Number", "Two decimals", "#,##0.0", "Other")
        table.row(0.1, 0.125, 1234.56, DAY)
        table.row(1e300, 2.5, 0.05, NOON)
        table.row(1234567, 1234567, 1234567, True)
        table.row(-0.0, -1.005, -1000, False)


with scrivalen.Document("plain.txt", "plain.html", "plain.xml", "plain.md", "plain.rtf", "plain.pdf") as doc:
    write(doc)

settings = {"numbers": "1.234,5", "dates": "dd.mm.yyyy"}
with scrivalen.Document("german.txt", "german.html", "german.xml", "german.xlsx", **settings) as doc:
    write(doc)
