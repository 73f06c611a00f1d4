"""What the tests of the package share."""

import io
import os
import shutil
import tempfile
import unittest

import scrivalen


class DocumentTest(unittest.TestCase):
    """Documents in memory and in a folder of their own."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="scrivalen-python-")
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def write_file(self, name, content):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(content)

    def read_file(self, name):
        with open(self.path(name), encoding="utf-8") as file:
            return file.read()

    def files(self):
        return sorted(os.listdir(self.folder))

    def written(self, write, format="markdown"):
        """What a function writes into a document."""
        stream = io.BytesIO()
        with scrivalen.Document((stream, format)) as doc:
            write(doc)
        return stream.getvalue().decode()

    def rows(self, write, columns=None):
        """The rows that a function writes into a table: lists of the texts of cells in XML."""
        def write_table(doc):
            with doc.table(columns) as table:
                write(table)

        xml = self.written(write_table, "xml")
        return [[cell.split("</cell>")[0].partition(">")[2] for cell in row.split("<cell")[1:]]
                for row in xml.split("<row")[1:]]

    def row(self, *values):
        return self.rows(lambda table: table.row(*values))[0]
