#!/usr/bin/env python3
"""Writes the ledger as a document from columns that scrivalen_columns stored, and prints the cpu seconds of that alone.

  document_columns.py FORMAT FOLDER FILE
"""

import array
import os
import sys
import time

import scrivalen
from scrivalen import Column, Values


def load(folder, name, code):
    values = array.array(code)
    with open(os.path.join(folder, name), "rb") as file:
        values.frombytes(file.read())
    return values


def load_texts(folder, name):
    with open(os.path.join(folder, name + ".bytes"), "rb") as file:
        return file.read(), load(folder, name + ".offsets", "q")


def write(columns, format, path):
    numbers, names, remarks, amounts, days, statuses = columns
    with scrivalen.Document((path, format), clock="1700000000") as doc:
        doc.heading(1, "Ledger")
        described = [Column("number", "integer"), Column("name"), Column("remark"),
                     Column("amount", "number", format="#,##0.00"), Column("day", "date"), Column("status")]
        with doc.table(described, "ledger") as table:
            table.columns(numbers, *[Values(text, "text", offsets=offsets) for text, offsets in (names, remarks)],
                          amounts, Values(days, "date"), Values(statuses[0], "text", offsets=statuses[1]))


def main():
    format, folder, path = sys.argv[1:]
    columns = (load(folder, "number", "q"), load_texts(folder, "name"), load_texts(folder, "remark"),
               load(folder, "amount", "d"), load(folder, "day", "i"), load_texts(folder, "status"))
    before = time.process_time()
    write(columns, format, path)
    print(f"{time.process_time() - before:.6f}")


main()
