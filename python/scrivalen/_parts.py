"""The parts of a document, which are context managers that end what they began."""

from __future__ import annotations

import os
from typing import Any, Dict, Iterable, List, Mapping, Optional, Sequence, Tuple, Type, TypeVar, Union, overload

from ._columns import TYPES, Values, of_list, columns_of, pointer_of
from ._core import Core, double, int32, name_of, optional_name, path_of, utf8
from ._library import CellStyle, ColumnDataStruct, ColumnStruct, ParagraphStyle, library
from ._values import cell_of

_ALIGNMENTS = {None: 0, "left": 1, "center": 2, "right": 3, "justify": 4}
_SPANS = {"strong": 1, "emphasis": 2, "code": 3, "deleted": 4, "underlined": 5, "superscript": 6, "subscript": 7}
_TASKS = {None: 0, False: 1, True: 2}
_ROWS_AT_ONCE = 500

Picture = Union[bytes, bytearray, memoryview, str, "os.PathLike[str]"]
_Part = TypeVar("_Part", bound="Part")


def _choice(choices: Mapping[Any, int], value: object, what: str) -> int:
    try:
        return choices[value]
    except (KeyError, TypeError):
        names = ", ".join(repr(name) for name in choices)
        raise ValueError(f"{what} is one of {names}, not {value!r}") from None


def _flag(value: object) -> int:
    return 1 if value else 0


class Column:
    """A column of a table.

    :param name: its element in XML. It is never shown: header rows are the host's.
    :param type: of its texts, what they become in a spreadsheet where they read the same there: ``"auto"``, ``"text"``,
        ``"number"``, ``"integer"``, ``"date"``, ``"time"`` or ``"boolean"``.
    :param align: ``"left"``, ``"center"`` or ``"right"``. None: numbers to the right.
    :param width: a share, beside those of the other columns. 0: from the content.
    :param decimals: of numbers that are given as numbers, 0 to 15. None: as many as they need.
    :param format: of its values, such as ``"0.0%"``, ``"#,##0.00"`` or ``"yyyy-mm"``.
    """

    def __init__(self, name: Optional[str] = None, type: str = "auto", *, align: Optional[str] = None,
                 width: float = 0, decimals: Optional[int] = None, format: Optional[str] = None) -> None:
        # C has 0 for "as many as they need" and -1 for none.
        given = 0 if decimals is None else int32(decimals, "decimals")
        if decimals is not None and not 0 <= given <= 15:
            raise ValueError(f"decimals are 0 to 15, not {given}")
        self._fields: Dict[str, Any] = {
            "name": optional_name(name, "the name of a column"),
            "type": _choice(TYPES, type, "the type of a column"),
            "align": _choice(_ALIGNMENTS, align, "align"),
            "width": double(width, "the width"),
            "decimals": -1 if decimals == 0 else given,
            "format": optional_name(format, "the format of a column"),
        }

    def _struct(self) -> ColumnStruct:
        return ColumnStruct(**self._fields)


class Part:
    """What is begun in a document and ended by its ``with`` block, or by end().

    A part is used while it is the innermost open one; any other use raises MisuseError and does nothing.
    """

    def __init__(self, core: Core, number: int) -> None:
        self._core = core
        self._number = number

    def __enter__(self: _Part) -> _Part:
        self._core.ready(self._number)
        return self

    def __exit__(self, kind: object, error: object, trace: object) -> None:
        status = self._core.end(self._number)
        if kind is None:
            self._core.check(status)

    def end(self) -> None:
        """Ends the part, and the parts inside it. Does nothing when it has ended."""
        if self._number == 0:
            raise TypeError("a document is ended by close()")
        self._core.check(self._core.end(self._number))

    def _call(self, function: Any, *arguments: object) -> None:
        self._core.call(self._number, function, *arguments)

    def _begin(self, part: Type[_Part], function: Any, *arguments: object) -> _Part:
        return part(self._core, self._core.begin(self._number, function, *arguments))

    def _put_text(self, text: str) -> None:
        data = utf8(text, "a text")
        self._call(library.text, data, len(data))

    def _anchor(self, id: str) -> None:
        self._call(library.anchor, name_of(id, "an id"))

    def _image(self, picture: Picture, alternative: str, width: float) -> None:
        text = name_of(alternative, "the alternative text")
        if isinstance(picture, (bytes, bytearray, memoryview)):
            data = bytes(picture)
            self._core.call_long(self._number, library.image, data, len(data), text,
                                 double(width, "the width"))
        else:
            self._core.call_long(self._number, library.image_file, path_of(picture), text,
                                 double(width, "the width"))

    def _raw(self, format: str, markup: str) -> None:
        data = utf8(markup, "markup")
        self._call(library.raw, name_of(format, "a format"), data, len(data))


def _filled(part: _Part, text: Optional[str]) -> _Part:
    """The part; with a text it is whole, and has ended."""
    if text is not None:
        with part:
            part._put_text(text)
    return part


def _checked(text: Optional[str]) -> Optional[str]:
    """A text is checked before its part begins."""
    if text is not None:
        utf8(text, "a text")
    return text


class Inlines(Part):
    """Where there may be text: paragraphs, headings, items, cells, and spans of these.

    The functions for spans write a whole span, which has ended, when they get a text, and begin one otherwise:
    ``paragraph.strong("now")``, or ``with paragraph.strong() as span: span.text("now")``.
    """

    def text(self, text: str) -> None:
        """Writes text. It may come in pieces."""
        self._put_text(text)

    def line_break(self) -> None:
        self._call(library.line_break)

    def anchor(self, id: str) -> None:
        """Names a place that links can lead to."""
        self._anchor(id)

    def image(self, picture: Picture, alternative: str = "", width: float = 0) -> None:
        """Places a picture: the bytes of a PNG or JPEG, or the path of one. The width is in points; 0: its own."""
        self._image(picture, alternative, width)

    def raw(self, format: str, markup: str) -> None:
        """Writes markup for one format, unchanged: "html", "xml", "rtf" or "markdown"."""
        self._raw(format, markup)

    def span(self, kind: str, text: Optional[str] = None) -> Span:
        """A span: "strong", "emphasis", "code", "deleted", "underlined", "superscript" or "subscript"."""
        number = _choice(_SPANS, kind, "the kind of a span")
        text = _checked(text)
        return _filled(self._begin(Span, library.begin_span, number), text)

    def strong(self, text: Optional[str] = None) -> Span:
        return self.span("strong", text)

    def emphasis(self, text: Optional[str] = None) -> Span:
        return self.span("emphasis", text)

    def colored(self, color: Optional[str] = None, background: Optional[str] = None,
                text: Optional[str] = None) -> Span:
        """Text in a colour and on a background, each a CSS name or #RRGGBB; None: unchanged."""
        text = _checked(text)
        return _filled(self._begin(Span, library.begin_colored, optional_name(color, "a colour"),
                                   optional_name(background, "a background")), text)

    def sized(self, points: float, text: Optional[str] = None) -> Span:
        """Text of a size in points: more than 0, at most 1,000."""
        text = _checked(text)
        return _filled(self._begin(Span, library.begin_sized, double(points, "a size")), text)

    def link(self, address: str, text: Optional[str] = None, title: Optional[str] = None) -> Span:
        """A link; "#id" leads to a place in the document."""
        text = _checked(text)
        return _filled(self._begin(Span, library.begin_link, name_of(address, "an address"),
                                   optional_name(title, "a title")), text)

    def language(self, tag: str, text: Optional[str] = None) -> Span:
        """Text in another language, given by its BCP 47 tag."""
        text = _checked(text)
        return _filled(self._begin(Span, library.begin_language, name_of(tag, "a language")), text)


class Span(Inlines):
    """Emphasis, a colour, a size, a link or another language."""


class Paragraph(Inlines):
    """A paragraph."""


class Heading(Inlines):
    """A heading."""


class Code(Part):
    """Code, in which spaces, tabs and line breaks stay."""

    def text(self, text: str) -> None:
        """Writes text. It may come in pieces."""
        self._put_text(text)


class Contents(Part):
    """A list of contents, where the host knows it."""

    def item(self, level: int, id: str, text: str) -> None:
        """Writes a line: its level, 1 to 6, the id that it leads to, and its text."""
        data = utf8(text, "a text")
        self._call(library.contents_item, int32(level, "the level"), name_of(id, "an id"), data, len(data))


class Blocks(Part):
    """Where there may be blocks: the document, sections, quotes and items.

    Functions that take a text write a whole part with it, which has ended, and begin the part without:
    ``doc.paragraph("text")``, or ``with doc.paragraph() as paragraph: paragraph.text("text")``.
    """

    def heading(self, level: int, text: Optional[str] = None, *, id: Optional[str] = None,
                align: Optional[str] = None) -> Heading:
        """A heading of level 1 to 6. Without an id it gets one made from its text."""
        style = ParagraphStyle(align=_choice(_ALIGNMENTS, align, "align"))
        text = _checked(text)
        return _filled(self._begin(Heading, library.begin_heading, int32(level, "the level"),
                                   optional_name(id, "an id"), style), text)

    def paragraph(self, text: Optional[str] = None, *, align: Optional[str] = None) -> Paragraph:
        """A paragraph, aligned "left", "center", "right" or "justify"."""
        style = ParagraphStyle(align=_choice(_ALIGNMENTS, align, "align"))
        text = _checked(text)
        return _filled(self._begin(Paragraph, library.begin_paragraph, style), text)

    def quote(self) -> Quote:
        """Begins a quote, which holds blocks."""
        return self._begin(Quote, library.begin_quote)

    def list(self, ordered: bool = False, *, first: int = 1, tight: bool = True) -> List_:
        """Begins a list. An ordered one counts from its first number; a tight one has no space between its items."""
        return self._begin(List_, library.begin_list, _flag(ordered), int32(first, "the first number"), _flag(tight))

    def code(self, text: Optional[str] = None, language: Optional[str] = None) -> Code:
        """Code, in which spaces, tabs and line breaks stay."""
        text = _checked(text)
        return _filled(self._begin(Code, library.begin_code, optional_name(language, "a language")), text)

    def table(self, columns: Union[None, int, Iterable[Union[str, Column]]] = None,
              name: Optional[str] = None) -> Table:
        """Begins a table.

        :param columns: descriptions or names of the columns, or how many there are. None: as many as the widest row of
            the sample has. Names are not shown: header() writes what is.
        :param name: its element in XML.
        """
        element = optional_name(name, "the name of a table")
        if columns is None or isinstance(columns, int):
            count = int32(columns or 0, "the number of columns")
            if count < 0:
                raise ValueError("the number of columns is not negative")
            return self._begin(Table, library.begin_table, None, count, element)
        given = _columns_from(columns)
        return self._begin(Table, library.begin_table, (ColumnStruct * len(given))(*given), len(given), element)

    def contents(self) -> Contents:
        """Begins a list of contents, where the host knows it."""
        return self._begin(Contents, library.begin_contents)

    def rule(self) -> None:
        """Writes a horizontal line."""
        self._call(library.rule)

    def page_break(self) -> None:
        self._call(library.page_break)

    def anchor(self, id: str) -> None:
        """Names a place that links can lead to."""
        self._anchor(id)

    def image(self, picture: Picture, alternative: str = "", width: float = 0) -> None:
        """Places a picture as a paragraph: the bytes of a PNG or JPEG, or the path of one. The width is in points."""
        self._image(picture, alternative, width)

    def raw(self, format: str, markup: str) -> None:
        """Writes markup for one format, unchanged: "html", "xml", "rtf" or "markdown"."""
        self._raw(format, markup)


def _columns_from(columns: Any) -> List[ColumnStruct]:
    if isinstance(columns, (str, bytes)):
        raise TypeError("columns are an int or an iterable, not " + type(columns).__name__)
    structs = []
    for column in columns:
        if isinstance(column, str):
            column = Column(column)
        if not isinstance(column, Column):
            raise TypeError(f"a column is a Column or its name, not {type(column).__name__}")
        structs.append(column._struct())
    return structs


class Section(Blocks):
    """A sheet, topic or page."""


class Quote(Blocks):
    """A quote."""


class Item(Inlines, Blocks):
    """An item of a list: text, then perhaps blocks."""


class List_(Part):
    """A list."""

    def item(self, text: Optional[str] = None, done: Optional[bool] = None) -> Item:
        """An item; with done it is a task."""
        task = _choice(_TASKS, done, "done")
        text = _checked(text)
        return _filled(self._begin(Item, library.begin_item, task), text)


List_.__name__ = List_.__qualname__ = "List"


class Cell(Inlines):
    """A cell, for text with spans."""


class Row(Part):
    """A row of a table."""

    def cell(self, *value: object, header: bool = False, align: Optional[str] = None, span: int = 1,
             color: Optional[str] = None, background: Optional[str] = None) -> Cell:
        """A cell with a value, for whose types see Table.row; or, without a value, one to be filled in its block.

        :param span: in columns, up to 16,384.
        :param color, background: a CSS name or #RRGGBB.
        """
        if len(value) > 1:
            raise TypeError(f"a cell has one value, not {len(value)}")
        content = cell_of(value[0]) if value else None
        style = CellStyle(header=_flag(header), align=_choice(_ALIGNMENTS, align, "align"),
                          span=int32(span, "the span"), color=optional_name(color, "a colour"),
                          background=optional_name(background, "a background"))
        cell = self._begin(Cell, library.begin_cell, style)
        if content is not None:
            with cell:
                cell._call(*content)
        return cell


class Table(Part):
    """A table."""

    @overload
    def row(self) -> Row: ...

    @overload
    def row(self, first: object, /, *values: object) -> None: ...

    def row(self, *values: object) -> Optional[Row]:
        """Writes a row, ``table.row("Tea", 4.5, None, datetime.date(2026, 1, 31))``; without values it begins one.

        A value is a str; an int or float, or what has ``__index__`` or ``__float__``; a bool; a date; a datetime, in
        UTC if it has a zone, without fractions of a second; a Decimal, written as a text with all its digits; or None,
        an empty cell. An int of more than 64 bits is a text. A float that is not finite is an empty cell and a warning.
        """
        if not values:
            return self._begin(Row, library.begin_row, 0)
        self._write(0, values)
        return None

    @overload
    def header(self) -> Row: ...

    @overload
    def header(self, first: object, /, *values: object) -> None: ...

    def header(self, *values: object) -> Optional[Row]:
        """Writes a header row; without values it begins one. The first ones are repeated on each page."""
        if not values:
            return self._begin(Row, library.begin_row, 1)
        self._write(1, values)
        return None

    def rows(self, data: Any) -> None:
        """Writes many rows: from anything with ``__arrow_c_stream__`` or ``__arrow_c_array__``, such as the tables of
        data frame libraries; from a mapping whose values are columns (see columns()); or from an iterable of rows, each
        an iterable of values. What an iterable raises comes after the rows before it were written."""
        if hasattr(data, "__arrow_c_stream__"):
            self._write_stream(data.__arrow_c_stream__())
        elif hasattr(data, "__arrow_c_array__"):
            self._write_array(data.__arrow_c_array__())
        elif isinstance(data, Mapping):
            self.columns(*data.values())
        else:
            self._write_rows(data)

    def columns(self, *columns: Any) -> None:
        """Writes many rows, column by column, which is the fastest way.

        A column is a buffer of floats, integers or bools (array.array, memoryview and the like), a sequence of values,
        or Values. All columns have the same number of rows. A buffer of double or int64, and Values, are not copied.
        """
        self._core.ready(self._number)
        given, sequences, rows = columns_of(columns)
        ready = [column for column in given if column is not None]
        if len(ready) == len(given):
            self._write_columns(ready, rows)
        else:
            self._write_cells(given, sequences, rows)

    def _write_rows(self, data: Iterable[Any]) -> None:
        """Writes rows some hundreds at a time, because columns take a quarter of the time of cells."""
        waiting: List[Tuple[object, ...]] = []
        try:
            for row in data:
                if isinstance(row, (str, bytes, Mapping)):
                    raise TypeError(f"a row is an iterable of values, not {type(row).__name__}")
                waiting.append(tuple(row))
                if len(waiting) == _ROWS_AT_ONCE:
                    taken, waiting = waiting, []
                    self._write_batch(taken)
        finally:
            self._write_batch(waiting)

    def _write_batch(self, rows: List[Tuple[object, ...]]) -> None:
        """Rows that are no columns are written one by one, up to the one with a value that no cell takes."""
        if len(set(map(len, rows))) == 1 and rows[0]:
            given = [of_list(column) for column in zip(*rows)]
            columns = [column for column in given if column is not None]
            if len(columns) == len(given):
                self._write_columns(columns, len(rows))
                return
        for row in rows:
            self._write(0, row)

    def _write_columns(self, columns: Sequence[Values], rows: int) -> None:
        structs = (ColumnDataStruct * len(columns))(*[column.struct for column in columns])
        self._core.call_long(self._number, library.rows, structs, len(columns), rows)

    def _write_cells(self, given: Sequence[Optional[Values]], sequences: Sequence[Any], rows: int) -> None:
        """Where the values of a column have several types."""
        if any(isinstance(sequence, Values) for sequence in sequences):
            number = [column is None for column in given].index(True)
            raise TypeError(f"column {number} has values of several types, which cannot be beside Values")
        for row in zip(*sequences):
            self._write(0, row)

    def _write(self, header: int, values: Tuple[object, ...]) -> None:
        # All values are turned into calls first, so that a wrong one leaves no half row.
        calls = [cell_of(value) for value in values]
        core = self._core
        row = core.begin(self._number, library.begin_row, header)
        try:
            handle = core.handle
            for function, *arguments in calls:
                status = function(handle, *arguments)
                if status or core.callbacks.raised:
                    core.check(status)
        finally:
            status = core.end(row)
        if status or core.callbacks.raised:
            core.check(status)

    def _write_array(self, capsules: Any) -> None:
        if not isinstance(capsules, tuple) or len(capsules) != 2:
            raise TypeError("__arrow_c_array__ must return two capsules")
        schema = pointer_of(capsules[0], b"arrow_schema")
        array = pointer_of(capsules[1], b"arrow_array")
        self._core.call_long(self._number, library.rows_arrow, schema, array)

    def _write_stream(self, capsule: Any) -> None:
        self._core.call_long(self._number, library.rows_arrow_stream, pointer_of(capsule, b"arrow_array_stream"))
