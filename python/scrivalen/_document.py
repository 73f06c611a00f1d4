"""The document."""

from __future__ import annotations

import datetime
import os
import warnings
from typing import Any, Callable, List, NamedTuple, Optional, Union

from ._core import Core, name_of, optional_name, path_of
from ._errors import DocumentWarning, MisuseError
from ._library import ProgressFunction, library
from ._parts import Blocks, Section


class Output(NamedTuple):
    """An output of a document."""

    #: Its path as it was given, or the type of its stream.
    name: str
    #: Why it failed; None if it did not.
    error: Optional[str]


def _setting(value: object) -> str:
    if isinstance(value, str):
        return value
    if isinstance(value, bool):
        return "yes" if value else "no"
    if isinstance(value, (int, float)):
        return str(value)
    if isinstance(value, datetime.datetime):
        if value.tzinfo is not None:
            value = value.astimezone(datetime.timezone.utc)
        return value.strftime("%Y-%m-%d %H:%M:%S").rjust(19, "0")
    if isinstance(value, datetime.date):
        return value.isoformat()
    if isinstance(value, os.PathLike):
        return os.fsdecode(value)
    raise TypeError(f"a setting takes str, bool, int, float, date, datetime or a path, not {type(value).__name__}")


class Document(Blocks):
    """A document that is written once, into all of its outputs::

        with scrivalen.Document("ledger.html", "ledger.txt", title="Ledger") as doc:
            doc.heading(1, "Ledger")

    The end of the ``with`` block delivers the files. An exception that leaves the block abandons the document: earlier
    files stay as they were. A document that is not closed is abandoned too.

    :param outputs: paths, whose extensions name the formats; or pairs of a path, or an object with ``write``, and the
        name of a format.
    :param settings: by their names with ``_`` for ``-``, as in ``header_image``. Others are set by set().
    """

    def __init__(self, *outputs: Any, **settings: object) -> None:
        super().__init__(Core(), 0)
        for output in outputs:
            if isinstance(output, tuple):
                if len(output) != 2:
                    raise TypeError("an output is a path, or a path or stream with a format")
                self._add(*output)
            else:
                self._add(output, None)
        for name, value in settings.items():
            self.set(name.replace("_", "-"), value)

    def __enter__(self) -> Document:
        self._core.require_handle()
        return self

    def __exit__(self, kind: object, error: object, trace: object) -> None:
        if kind is None:
            self._close(stacklevel=3)
        else:
            self.abandon()

    def _add(self, output: Any, format: Optional[str]) -> None:
        if isinstance(output, (str, bytes, os.PathLike)):
            self.add_file(output, format)
        elif format is None:
            if hasattr(output, "write"):
                raise TypeError("a stream needs a format: (stream, \"html\")")
            raise TypeError(f"an output is a path or has write(), unlike {type(output).__name__}")
        else:
            self.add_stream(output, format)

    def add_file(self, path: Union[str, bytes, os.PathLike[str]], format: Optional[str] = None) -> None:
        """Adds a file, which replaces its target when the document closes well. Without a format its extension names
        it."""
        self._core.set_up(library.add_file, path_of(path), optional_name(format, "a format"))
        self._core.outputs.append(os.fsdecode(path))

    def add_stream(self, stream: Any, format: str) -> None:
        """Adds an object with ``write``, which gets bytes. What it got stays written. It is not closed."""
        write = getattr(stream, "write", None)
        if not callable(write):
            raise TypeError(f"a stream has write(), unlike {type(stream).__name__}")
        function = self._core.callbacks.stream(write)
        self._core.set_up(library.add_stream, name_of(format, "a format"), function, None)
        self._core.callbacks.keep(function)
        self._core.outputs.append(type(stream).__name__)

    def set(self, name: str, value: object) -> None:
        """Sets a setting, for all formats or for one alone, as in ``doc.set("text.width", 100)``."""
        self._core.set_up(library.set, name_of(name, "the name of a setting"),
                          name_of(_setting(value), "the value of a setting"))

    def set_progress(self, function: Optional[Callable[[int, int], object]]) -> None:
        """Sets a function that gets the rows and bytes so far, at least every 64 KiB. If it returns False, or raises,
        the document is cancelled."""
        if function is None:
            self._core.set_up(library.set_progress, ProgressFunction(0), None)
            return
        if not callable(function):
            raise TypeError(f"progress is a function, not {type(function).__name__}")
        asked = self._core.callbacks.progress(function)
        self._core.set_up(library.set_progress, asked, None)
        self._core.callbacks.keep(asked)

    def open(self) -> None:
        """Creates every output now; the first content does it otherwise. Raises the first failure, and the document
        goes on all the same if an output lives."""
        self._core.require_handle()
        if self._core.is_opened:
            raise MisuseError("the document is open already")
        if not self._core.outputs:
            raise MisuseError("the document has no outputs")
        self._core.is_opened = True
        self._core.check(library.open(self._core.handle))

    def section(self, name: Optional[str] = None, id: Optional[str] = None) -> Section:
        """Begins a new sheet, topic or page."""
        return self._begin(Section, library.begin_section, optional_name(name, "a name"), optional_name(id, "an id"))

    def close(self) -> None:
        """Ends what is open, finishes the document and delivers the outputs that did not fail. Raises the first failure
        after that, and gives the warnings to the module warnings. Does nothing when the document is closed."""
        self._close(stacklevel=3)

    def _close(self, stacklevel: int) -> None:
        if not self._core.handle:
            return
        try:
            self._core.close()
        finally:
            for warning in self._core.warnings:
                warnings.warn(warning, stacklevel=stacklevel)

    def abandon(self) -> None:
        """Ends the document without delivering it. Does nothing when it is closed."""
        self._core.free()

    @property
    def warnings(self) -> List[DocumentWarning]:
        """What could not be written as given; empty until the document is closed."""
        return [*self._core.warnings]

    @property
    def outputs(self) -> List[Output]:
        """The outputs in the order in which they were added, and why they failed."""
        core = self._core
        errors = core.failures or [core._output_error(number) if core.handle else None
                                   for number in range(len(core.outputs))]
        return [Output(name, error) for name, error in zip(core.outputs, errors)]
