"""Streams a document once and writes it in every format that was asked for.

::

    import scrivalen

    with scrivalen.Document("stock.html", "stock.txt", title="Stock") as doc:
        doc.heading(1, "Stock")
        with doc.table([scrivalen.Column("item"), scrivalen.Column("price", "number", decimals=2)]) as table:
            table.header("Item", "Price")
            table.row("Tea & biscuits", 4.5)

One thread at a time uses a document; documents share nothing. The package needs no compiler: it calls the library
through ctypes.
"""

from __future__ import annotations

from typing import List as _List

from ._columns import Values
from ._document import Document, Output
from ._errors import (Cancelled, DocumentWarning, Error, FileError, InputError, MisuseError, OutOfMemory,
                      TemplateNotFound, UnknownFormat, UnknownSetting)
from ._library import library as _library
from ._parts import (Blocks, Cell, Code, Column, Contents, Heading, Inlines, Item, List_ as List, Paragraph, Part,
                     Quote, Row, Section, Span, Table)

__all__ = [
    "Blocks", "Cancelled", "Cell", "Code", "Column", "Contents", "Document", "DocumentWarning", "Error", "FileError",
    "Heading", "Inlines", "InputError", "Item", "List", "MisuseError", "OutOfMemory", "Output", "Paragraph", "Part",
    "Quote", "Row", "Section", "Span", "Table", "TemplateNotFound", "UnknownFormat", "UnknownSetting", "Values",
    "formats"
]

#: The version of the library.
__version__: str = _library.version().decode()


def formats() -> _List[str]:
    """The names of the formats that the library writes."""
    names: _List[str] = []
    while True:
        name = _library.format(len(names))
        if name is None:
            return names
        names.append(name.decode())
