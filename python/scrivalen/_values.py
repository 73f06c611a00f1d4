"""Cells from values: the function of the library, and its arguments, by the type of a value."""

from __future__ import annotations

import datetime
import decimal
from typing import Any, Callable, Dict, Tuple

from ._core import utf8
from ._library import library

Call = Tuple[Any, ...]

_EPOCH_DAY = datetime.date(1970, 1, 1).toordinal()
_LARGEST = 2**63 - 1
_SMALLEST = -2**63
_MOST_DIGITS = 60  # of a Decimal without an exponent
_EMPTY: Call = (library.cell, b"", 0)


def days_of(value: datetime.date) -> int:
    return value.toordinal() - _EPOCH_DAY


def seconds_of(value: datetime.datetime) -> int:
    """Since 1970 as the clock shows it; a time with a zone in UTC. Fractions are cut."""
    if value.tzinfo is not None and value.utcoffset() is not None:
        value = value.astimezone(datetime.timezone.utc)
    return (days_of(value) * 24 + value.hour) * 3600 + value.minute * 60 + value.second


def text_of_decimal(value: decimal.Decimal) -> str:
    """All digits, without an exponent unless that would be very long."""
    return format(value, "f") if abs(value.adjusted()) < _MOST_DIGITS else str(value)


def _text(value: str) -> Call:
    text = utf8(value, "a cell")
    return library.cell, text, len(text)


def _integer(value: int) -> Call:
    return (library.cell_integer, value) if _SMALLEST <= value <= _LARGEST else _text(str(value))


def _decimal(value: decimal.Decimal) -> Call:
    return _text(text_of_decimal(value)) if value.is_finite() else (library.cell_number, float("nan"))


_BY_TYPE: Dict[type, Callable[[Any], Call]] = {
    str: _text,
    float: lambda value: (library.cell_number, value),
    int: _integer,
    type(None): lambda _value: _EMPTY,
    bool: lambda value: (library.cell_boolean, value),
    datetime.date: lambda value: (library.cell_date, days_of(value)),
    datetime.datetime: lambda value: (library.cell_time, seconds_of(value)),
    decimal.Decimal: _decimal,
}


def _array_time(value: Any) -> Call:
    """A date where its unit is a day or longer, else a time. None is what is no time."""
    plain = value.item()
    if not isinstance(plain, datetime.date) or isinstance(plain, datetime.datetime):
        plain = value.astype("datetime64[s]").item()  # a plain time has no nanoseconds
    if isinstance(plain, int):
        raise ValueError(f"a cell takes dates of the years 1 to 9999, not {value}")
    return cell_of(plain)


def _refuse(value: Any) -> Call:
    raise TypeError("a cell takes str, int, float, bool, date, datetime, Decimal or None, not "
                    f"{type(value).__name__}")


# Single values of arrays, by the kind of their type; the other kinds have __index__ or __float__.
_BY_KIND: Dict[str, Callable[[Any], Call]] = {
    "b": lambda value: (library.cell_boolean, bool(value)),
    "M": _array_time,
    "c": _refuse,
    "m": _refuse,
}
# For classes that are derived from these: the more special first.
_BY_BASE = (str, bool, int, float, datetime.datetime, datetime.date, decimal.Decimal)


def cell_of(value: object) -> Call:
    """The call that writes a value as a cell."""
    convert = _BY_TYPE.get(type(value))
    return convert(value) if convert else _other_cell(value)


def _other_cell(value: Any) -> Call:
    for base in _BY_BASE:
        if isinstance(value, base):
            # The "not a time" of data frames is derived from datetime and is not equal to itself.
            return _BY_TYPE[base](value) if value == value else _EMPTY
    convert = _BY_KIND.get(getattr(getattr(value, "dtype", None), "kind", ""))
    if convert:
        return convert(value)
    if hasattr(value, "__index__"):
        return _integer(value.__index__())
    if hasattr(value, "__float__"):
        return library.cell_number, float(value)
    return _refuse(value)
