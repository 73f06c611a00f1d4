#!/usr/bin/env python3
"""Writes one report per customer, each by a task of its own.

  reports.py FOLDER COUNT [PROCESSES]    all of them, in several processes
  reports.py FOLDER --only NUMBER...     some of them, as a task of another program
"""

import functools
import multiprocessing
import os
import sys

import scrivalen


def write_report(folder, customer):
    """Writes the report of one customer and returns its path. It shares nothing with another call."""
    path = os.path.join(folder, f"customer-{customer:05}.html")
    with scrivalen.Document(path, title=f"Customer {customer}") as doc:
        doc.heading(1, f"Customer {customer}")
        doc.paragraph("What was bought this year.")
        with doc.table(["article", scrivalen.Column("price", "number", decimals=2)]) as table:
            table.header("Article", "Price")
            table.rows((f"Article {number}", customer % 97 + number * 0.25) for number in range(100))
    return path


def write_reports(folder, count, processes=None):
    with multiprocessing.Pool(processes) as pool:
        for path in pool.imap_unordered(functools.partial(write_report, folder), range(count), chunksize=16):
            print(path)


def main():
    folder, what, *rest = sys.argv[1:]
    if what == "--only":
        for customer in rest:
            print(write_report(folder, int(customer)))
    else:
        write_reports(folder, int(what), int(rest[0]) if rest else None)


if __name__ == "__main__":
    main()
