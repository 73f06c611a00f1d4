#!/usr/bin/env python3
"""Writes the document of document.c through ctypes.

  document.py LIBRARY [FOLDER]
"""

import ctypes
import os
import sys
from ctypes import POINTER, Structure, byref, c_char_p, c_double, c_int, c_int32, c_int64, c_size_t, c_uint64, c_void_p

NUL = c_size_t(-1).value
CENTER = 2
STRONG = 1
TEXT, NUMBER, DATE, BOOLEAN = 1, 2, 4, 6


class Sized(Structure):
    """A struct that begins with its size."""

    def __init__(self, **fields):
        super().__init__(size=ctypes.sizeof(self), **fields)


class ParagraphStyle(Sized):
    _fields_ = [("size", c_size_t), ("align", c_int)]


class Column(Sized):
    _fields_ = [("size", c_size_t), ("name", c_char_p), ("type", c_int), ("align", c_int), ("width", c_double),
                ("decimals", c_int), ("format", c_char_p)]


class CellStyle(Sized):
    _fields_ = [("size", c_size_t), ("header", c_int), ("align", c_int), ("span", c_int), ("color", c_char_p),
                ("background", c_char_p)]


class ColumnData(Sized):
    _fields_ = [("size", c_size_t), ("type", c_int), ("values", c_void_p), ("offsets", POINTER(c_int64)),
                ("validity", c_char_p), ("offset", c_size_t)]


class Warning(Sized):
    _fields_ = [("size", c_size_t), ("output", c_size_t), ("code", c_int), ("count", c_uint64), ("message", c_char_p)]


class Document:
    """Calls the functions of the library by their names without the prefix; raises the first failure."""

    def __init__(self, library):
        self._library = library
        self.handle = c_void_p(library.scrivalen_new())

    def __getattr__(self, name):
        function = getattr(self._library, "scrivalen_" + name)

        def call(*arguments):
            if function(self.handle, *map(self._argument, arguments)) != 0:
                raise RuntimeError(self._library.scrivalen_error(self.handle).decode())
        return call

    @staticmethod
    def _argument(value):
        if isinstance(value, str):
            return c_char_p(value.encode())
        if isinstance(value, float):
            return c_double(value)
        return c_size_t(value) if value == NUL else value


def load(path):
    library = ctypes.CDLL(path)
    library.scrivalen_new.restype = c_void_p
    library.scrivalen_error.restype = c_char_p
    library.scrivalen_format.restype = c_char_p
    library.scrivalen_format.argtypes = [c_size_t]
    library.scrivalen_cell_integer.argtypes = [c_void_p, c_int64]
    library.scrivalen_cell_time.argtypes = [c_void_p, c_int64]
    library.scrivalen_rows.argtypes = [c_void_p, POINTER(ColumnData), c_size_t, c_size_t]
    library.scrivalen_begin_table.argtypes = [c_void_p, POINTER(Column), c_size_t, c_char_p]
    return library


def formats(library):
    index = 0
    while name := library.scrivalen_format(index):
        yield name.decode()
        index += 1


def write_text(document):
    document.heading(1, "Fleet", NUL)
    document.begin_contents()
    document.contents_item(1, "costs", "Costs", NUL)
    document.end()
    document.begin_paragraph(byref(ParagraphStyle(align=CENTER)))
    document.text("Cars in ", NUL)
    document.begin_span(STRONG)
    document.text("München", NUL)
    document.end()
    document.line_break()
    document.begin_colored("navy", "#FFFFE0")
    document.begin_sized(14.0)
    document.begin_language("de")
    document.text("Fuhrpark", NUL)
    for _ in range(3):
        document.end()
    document.begin_link("https://example.org/?a=1&b=2", "all cars")
    document.text(" and <more>", NUL)
    document.end()
    document.anchor("cars")
    document.raw("html", "<wbr>", NUL)
    document.end()
    document.rule()


def write_blocks(document):
    document.begin_quote()
    document.paragraph("Every car has a driver.", NUL)
    document.end()
    document.begin_list(1, 3, 1)
    for text, task in (("third", 0), ("done", 2)):
        document.begin_item(task)
        document.text(text, NUL)
        document.end()
    document.end()
    document.begin_code("c")
    document.text("if (a < b)\n\treturn a;\n", NUL)
    document.end()
    document.page_break()


def write_cells(document):
    document.begin_row(1)
    document.begin_cell(byref(CellStyle(header=1, align=CENTER, span=2, color=b"white", background=b"#204060")))
    document.text("Car", NUL)
    document.end()
    document.cell("Since", NUL)
    document.cell("Used", NUL)
    document.end()
    document.begin_row(0)
    document.cell("bus", 3)
    document.cell_number(0.125)
    document.cell_date(20000)
    document.cell_boolean(1)
    document.end()
    document.begin_row(0)
    document.cell("van", 3)
    document.cell_integer(-42)
    document.cell_time(86399)
    document.cell("", 0)
    document.end()


def write_rows(document):
    def address(values):
        return ctypes.cast(values, c_void_p)

    columns = (ColumnData * 4)(
        ColumnData(type=TEXT, values=address(b"carlorry"), offsets=(c_int64 * 3)(0, 3, 8)),
        ColumnData(type=NUMBER, values=address((c_double * 2)(1234.5, 2))),
        ColumnData(type=DATE, values=address((c_int32 * 2)(19000, 0)), validity=b"\x01"),
        ColumnData(type=BOOLEAN, values=address(b"\x02")))
    document.rows(columns, 4, 2)


def write_table(document):
    document.begin_heading(2, "costs", None)
    document.text("Costs", NUL)
    document.end()
    columns = (Column * 4)(Column(name=b"car"), Column(name=b"cost", type=NUMBER, decimals=2), Column(align=CENTER),
                           Column())
    document.begin_table(columns, 4, "costs")
    write_cells(document)
    write_rows(document)
    document.end()


def main():
    library = load(sys.argv[1])
    folder = sys.argv[2] if len(sys.argv) > 2 else "."
    document = Document(library)
    for name in formats(library):
        if name != "chm":  # it needs a help compiler
            document.add_file(os.path.join(folder, "report." + name), name)
    document.set("title", "Fleet")
    document.set("clock", "2026-01-31 23:59:59")
    document.begin_section("Fleet", "fleet")
    write_text(document)
    write_blocks(document)
    write_table(document)
    document.end()
    document.close()
    warning = Warning()
    while library.scrivalen_next_warning(document.handle, byref(warning)):
        print(f"{warning.message.decode()} ({warning.count})")
    library.scrivalen_free(document.handle)


main()
