"""The shared library: where it is, and its functions as ctypes has them."""

from __future__ import annotations

import ctypes
import ctypes.util
import os
import sys
from ctypes import POINTER, Structure, c_char_p, c_double, c_int, c_int32, c_int64, c_size_t, c_uint64, c_void_p
from typing import Any, Dict, List, Optional

ALL_OUTPUTS = c_size_t(-1).value


class Sized(Structure):
    """A struct that begins with its size."""

    def __init__(self, **fields: object) -> None:
        super().__init__(size=ctypes.sizeof(self), **fields)


class ParagraphStyle(Sized):
    _fields_ = [("size", c_size_t), ("align", c_int)]


class ColumnStruct(Sized):
    _fields_ = [("size", c_size_t), ("name", c_char_p), ("type", c_int), ("align", c_int), ("width", c_double),
                ("decimals", c_int), ("format", c_char_p)]


class CellStyle(Sized):
    _fields_ = [("size", c_size_t), ("header", c_int), ("align", c_int), ("span", c_int), ("color", c_char_p),
                ("background", c_char_p)]


class ColumnDataStruct(Sized):
    _fields_ = [("size", c_size_t), ("type", c_int), ("values", c_void_p), ("offsets", c_void_p),
                ("validity", c_void_p), ("offset", c_size_t)]


class WarningStruct(Sized):
    _fields_ = [("size", c_size_t), ("output", c_size_t), ("code", c_int), ("count", c_uint64), ("message", c_char_p)]


WriteFunction = ctypes.CFUNCTYPE(c_int, c_void_p, c_void_p, c_size_t)
ProgressFunction = ctypes.CFUNCTYPE(c_int, c_void_p, c_uint64, c_uint64)

# The arguments after the document of each function that returns a status.
_CALLS: Dict[str, List[Any]] = {
    "add_file": [c_char_p, c_char_p],
    "add_stream": [c_char_p, WriteFunction, c_void_p],
    "set": [c_char_p, c_char_p],
    "set_progress": [ProgressFunction, c_void_p],
    "open": [],
    "begin_section": [c_char_p, c_char_p],
    "begin_heading": [c_int, c_char_p, POINTER(ParagraphStyle)],
    "begin_paragraph": [POINTER(ParagraphStyle)],
    "begin_quote": [],
    "begin_list": [c_int, c_int, c_int],
    "begin_item": [c_int],
    "begin_code": [c_char_p],
    "begin_table": [POINTER(ColumnStruct), c_size_t, c_char_p],
    "begin_row": [c_int],
    "begin_cell": [POINTER(CellStyle)],
    "begin_span": [c_int],
    "begin_colored": [c_char_p, c_char_p],
    "begin_sized": [c_double],
    "begin_link": [c_char_p, c_char_p],
    "begin_language": [c_char_p],
    "begin_contents": [],
    "end": [],
    "text": [c_char_p, c_size_t],
    "line_break": [],
    "page_break": [],
    "rule": [],
    "anchor": [c_char_p],
    "contents_item": [c_int, c_char_p, c_char_p, c_size_t],
    "raw": [c_char_p, c_char_p, c_size_t],
    "cell": [c_char_p, c_size_t],
    "cell_number": [c_double],
    "cell_integer": [c_int64],
    "cell_date": [c_int32],
    "cell_time": [c_int64],
    "cell_boolean": [c_int],
    "result": [],
    "output_result": [c_size_t],
}
# Those that may take long. They let other threads run.
_LONG_CALLS: Dict[str, List[Any]] = {
    "image": [c_char_p, c_size_t, c_char_p, c_double],
    "image_file": [c_char_p, c_char_p, c_double],
    "rows": [POINTER(ColumnDataStruct), c_size_t, c_size_t],
    "rows_arrow": [c_void_p, c_void_p],
    "rows_arrow_stream": [c_void_p],
    "close": [],
}


class Library:
    """The functions of the library, by their names without the prefix.

    Most calls are shorter than giving up the interpreter's lock and taking it again, so they keep it. It also keeps two
    threads from being in one document at once.
    """

    def __init__(self, path: str) -> None:
        quick = ctypes.PyDLL(path)
        slow = ctypes.CDLL(path)
        for library, calls in ((quick, _CALLS), (slow, _LONG_CALLS)):
            for name, arguments in calls.items():
                self._declare(library, name, [c_void_p, *arguments], c_int)
        self._declare(quick, "version", [], c_char_p)
        self._declare(quick, "format", [c_size_t], c_char_p)
        self._declare(quick, "new", [], c_void_p)
        self._declare(quick, "free", [c_void_p], None)
        self._declare(quick, "error", [c_void_p], c_char_p)
        self._declare(quick, "output_error", [c_void_p, c_size_t], c_char_p)
        self._declare(quick, "output_count", [c_void_p], c_size_t)
        self._declare(quick, "next_warning", [c_void_p, POINTER(WarningStruct)], c_int)

    def _declare(self, library: ctypes.CDLL, name: str, arguments: List[object], result: object) -> None:
        function = getattr(library, "scrivalen_" + name)
        function.argtypes = arguments
        function.restype = result
        setattr(self, name, function)

    def __getattr__(self, name: str) -> Any:  # says that there are more attributes than are written here
        raise AttributeError(name)


def _file_name() -> str:
    return "Scrivalen.dll" if sys.platform == "win32" else "libscrivalen.so"


def _find() -> str:
    beside = os.path.join(os.path.dirname(os.path.abspath(__file__)), "lib", _file_name())
    if os.path.isfile(beside):
        return beside
    given: Optional[str] = os.environ.get("SCRIVALEN_LIBRARY")
    if given:
        return given
    return ctypes.util.find_library("scrivalen") or ("libscrivalen.so.1" if sys.platform != "win32" else _file_name())


def _load() -> Library:
    path = _find()
    try:
        return Library(path)
    except (OSError, AttributeError) as error:
        raise ImportError(f"scrivalen: the library {path!r} cannot be used: {error}; "
                          "SCRIVALEN_LIBRARY may name another file") from error


library = _load()
