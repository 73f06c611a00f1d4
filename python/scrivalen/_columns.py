"""Columns of values: from buffers, from sequences, and from producers of Arrow's C interfaces."""

from __future__ import annotations

import array
import ctypes
import datetime
import decimal
import itertools
import struct
import sys
from typing import Any, List, Mapping, Optional, Sequence, Tuple

from ._core import utf8
from ._library import ColumnDataStruct
from ._values import days_of, seconds_of, text_of_decimal

TYPES = {"auto": 0, "text": 1, "number": 2, "integer": 3, "date": 4, "time": 5, "boolean": 6}
# The code of array.array for the library's values, of 8 bytes, but 4 for dates.
_CODES = {"number": "d", "integer": "q", "date": "i", "time": "q"}
_INTEGERS = "bBhHiIlLqQnN"
_FLOATS = "efd"


class Values:
    """A column whose type is said: of dates, times and bits, which a buffer cannot say, or of texts in one buffer.

    :param values: a buffer. ``"number"``: floats; ``"integer"``: ints; ``"date"``: days since 1970-01-01; ``"time"``:
        seconds since 1970-01-01 00:00; ``"boolean"``: bits, least first; ``"text"``: the bytes of UTF-8, one text after
        another. It is not copied where it has the library's types (double, int64, and int32 for dates), so do not
        change it before the rows are written.
    :param offsets: of texts: a buffer of int64, where each text begins, and after them where the last one ends.
    :param validity: a buffer of bits, least first, 0 for an empty cell. None: all are there.
    :param rows: how many rows there are. Needed for booleans only.
    """

    def __init__(self, values: Any, type: str, *, offsets: Any = None, validity: Any = None,
                 rows: Optional[int] = None) -> None:
        if type not in TYPES or type == "auto":
            raise ValueError(f"the type of a column is one of {', '.join(list(TYPES)[1:])}, not {type!r}")
        self._kept: List[object] = []
        self.struct = ColumnDataStruct(type=TYPES[type])
        if type == "text":
            self.rows = self._take_texts(values, offsets)
        elif type == "boolean":
            self.rows = self._take_bits(values, rows)
        else:
            self.rows = self._take_numbers(values, _CODES[type])
        if rows is not None and rows != self.rows:
            raise ValueError(f"a column has {self.rows} rows, not {rows}")
        if validity is not None:
            bits = _flat(validity)
            _require_bits(bits, self.rows)
            self.struct.validity = self._address(bits)

    def _take_texts(self, values: Any, offsets: Any) -> int:
        if offsets is None:
            raise TypeError("a column of texts needs offsets")
        ends = _numbers_of(offsets, "q")
        size = _flat(values).nbytes
        if len(ends) == 0:
            raise ValueError("the offsets of a column of texts are one more than its rows")
        if not 0 <= ends[0] <= ends[-1] <= size:
            raise ValueError("the offsets of a column of texts lead out of its bytes")
        self.struct.values = self._address(_flat(values))
        self.struct.offsets = self._address(ends)
        return len(ends) - 1

    def _take_bits(self, values: Any, rows: Optional[int]) -> int:
        if rows is None:
            raise TypeError("a column of booleans needs the number of its rows")
        if not isinstance(rows, int) or rows < 0:
            raise ValueError("the number of rows is an int that is not negative")
        bits = _flat(values)
        _require_bits(bits, rows)
        self.struct.values = self._address(bits)
        return rows

    def _take_numbers(self, values: Any, code: str) -> int:
        numbers = _numbers_of(values, code)
        self.struct.values = self._address(numbers)
        return len(numbers)

    def _address(self, values: memoryview) -> Optional[int]:
        """The address of a buffer, which stays where it is as long as this object."""
        if values.nbytes == 0:
            values = memoryview(bytes(8))
        self._kept.append(values)
        return _address_of(values)


class _Buffer(ctypes.Structure):
    """Py_buffer, as far as its address; the rest is as large in every version."""

    _fields_ = [("buf", ctypes.c_void_p), ("obj", ctypes.c_void_p), ("rest", ctypes.c_byte * 256)]


def _address_of(values: memoryview) -> int:
    """The address of a buffer, also of one that cannot be written, which ctypes itself refuses."""
    buffer = _Buffer()
    ctypes.pythonapi.PyObject_GetBuffer(ctypes.py_object(values), ctypes.byref(buffer), 0)
    address = buffer.buf
    ctypes.pythonapi.PyBuffer_Release(ctypes.byref(buffer))
    return address or 0


def _flat(values: Any) -> memoryview:
    """A buffer as bytes without gaps."""
    view = memoryview(values)
    return view.cast("B") if view.c_contiguous else memoryview(view.tobytes())


def _require_bits(bits: memoryview, rows: int) -> None:
    if bits.nbytes * 8 < rows:
        raise ValueError(f"a column of {rows} rows has only {bits.nbytes * 8} bits")


def _numbers_of(values: Any, code: str) -> memoryview:
    """A buffer of the library's type, copied unless it has that type already."""
    view = memoryview(values)
    if view.ndim != 1:
        raise TypeError(f"a column has one dimension, not {view.ndim}")
    native = view.format.lstrip("@=" + ("<" if sys.byteorder == "little" else ">"))
    is_same = native == code or (native in _INTEGERS and code in "iq" and native.islower() and
                                 view.itemsize == struct.calcsize(code))
    if is_same and view.c_contiguous:
        return view if view.format == code else view.cast("B").cast(code)  # what has a sign in front cannot be indexed
    return memoryview(array.array(code, _elements_of(view)))


def _elements_of(view: memoryview) -> List[Any]:
    if view.format.lstrip("@=<>!") not in (*_INTEGERS, *_FLOATS, "?"):
        raise TypeError(f"a column of the format {view.format!r} has no numbers")
    return [value for (value,) in struct.iter_unpack(view.format, view.tobytes())]


def _of_buffer(view: memoryview) -> Optional[Values]:
    """A column from a buffer of numbers, or None where an integer is too large for it."""
    kind = view.format[-1:]
    if kind in _FLOATS:
        return Values(view, "number")
    if kind == "?":
        return of_list(_elements_of(view))
    try:
        return Values(view, "integer")
    except OverflowError:
        return None


def _buffer_of(values: Any) -> Optional[memoryview]:
    """The buffer of an object that has numbers in it; None for any other object."""
    try:
        view = memoryview(values)
    except (TypeError, ValueError, BufferError):
        return None
    if view.ndim != 1:
        raise TypeError(f"a column has one dimension, not {view.ndim}")
    return view if view.format.lstrip("@=<>!") in (*_INTEGERS, *_FLOATS, "?") else None


def _bits_of(values: Sequence[Any]) -> bytes:
    """A bit for each value that is true, least first."""
    digits = "".join(["1" if value else "0" for value in reversed(values)])
    return int(digits or "0", 2).to_bytes((len(values) + 7) // 8, "little")


def _texts_of(texts: List[bytes], validity: Optional[bytes]) -> Values:
    offsets = array.array("q", itertools.accumulate(map(len, texts), initial=0))
    return Values(b"".join(texts), "text", offsets=offsets, validity=validity)


def of_list(values: Sequence[Any]) -> Optional[Values]:
    """A column from values of one type and None; None where they are of several, or too large."""
    types = set(map(type, values))
    validity = None
    if type(None) in types:
        types.discard(type(None))
        validity = _bits_of([value is not None for value in values])
    kind = types.pop() if types else str
    if types:
        return None
    if kind is str:
        return _texts_of([b"" if value is None else utf8(value, "a cell") for value in values], validity)
    if kind is decimal.Decimal:
        if not all(value is None or value.is_finite() for value in values):
            return None
        return _texts_of([b"" if value is None else text_of_decimal(value).encode() for value in values], validity)
    if kind is bool:
        return Values(_bits_of(values), "boolean", rows=len(values), validity=validity)
    return _of_numbers(kind, values, validity)


def _of_numbers(kind: type, values: Sequence[Any], validity: Optional[bytes]) -> Optional[Values]:
    if kind is float:
        return Values(array.array("d", [0.0 if value is None else value for value in values]), "number",
                      validity=validity)
    if kind is int:
        try:
            return Values(array.array("q", [0 if value is None else value for value in values]), "integer",
                          validity=validity)
        except OverflowError:
            return None
    if kind is datetime.date:
        return Values(array.array("i", [0 if value is None else days_of(value) for value in values]), "date",
                      validity=validity)
    if kind is datetime.datetime:
        return Values(array.array("q", [0 if value is None else seconds_of(value) for value in values]), "time",
                      validity=validity)
    return None


def columns_of(given: Sequence[Any]) -> Tuple[List[Optional[Values]], List[Any], int]:
    """Columns for the library, None for one that only cells can write; the sequences; and the number of rows."""
    columns: List[Optional[Values]] = []
    sequences: List[Any] = []
    lengths = set()
    for values in given:
        if isinstance(values, Values):
            column: Optional[Values] = values
            sequence: Any = values
            lengths.add(values.rows)
        else:
            sequence, column = _column_of(values)
            lengths.add(len(sequence))
        columns.append(column)
        sequences.append(sequence)
    if len(lengths) > 1:
        raise ValueError(f"the columns have different numbers of rows: {', '.join(map(str, sorted(lengths)))}")
    return columns, sequences, lengths.pop() if lengths else 0


def _column_of(values: Any) -> Tuple[Any, Optional[Values]]:
    if isinstance(values, (str, bytes, bytearray, Mapping)):
        raise TypeError(f"a column is a buffer or a sequence, not {type(values).__name__}")
    if hasattr(values, "mask") and hasattr(values, "tolist"):
        values = values.tolist()  # its buffer has a number in every cell; the list has None where it is masked
    view = _buffer_of(values)
    if view is None:
        sequence = values if isinstance(values, (list, tuple)) else list(values)
        return sequence, of_list(sequence)
    column = _of_buffer(view)
    return (_elements_of(view) if column is None else view), column


def pointer_of(capsule: object, name: bytes) -> int:
    """The pointer in a capsule of Arrow. Raises ValueError if that is not its name."""
    api = ctypes.pythonapi
    api.PyCapsule_IsValid.argtypes = [ctypes.py_object, ctypes.c_char_p]
    api.PyCapsule_GetPointer.argtypes = [ctypes.py_object, ctypes.c_char_p]
    api.PyCapsule_GetPointer.restype = ctypes.c_void_p
    if not api.PyCapsule_IsValid(capsule, name):
        raise TypeError(f"{type(capsule).__name__} is not a capsule named {name.decode()!r}")
    return int(api.PyCapsule_GetPointer(capsule, name))
