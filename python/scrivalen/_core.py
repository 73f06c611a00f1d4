"""What a document and its parts share: the library's document, the open parts, and what callbacks raised."""

from __future__ import annotations

import ctypes
import errno
import io
import os
import warnings
from typing import Any, Callable, List, Optional

from ._errors import DocumentWarning, MisuseError, error_of
from ._library import ALL_OUTPUTS, ProgressFunction, WarningStruct, WriteFunction, library

_MISUSE = 4


def utf8(text: object, what: str) -> bytes:
    """The bytes of a text. A lone surrogate becomes bytes that the library replaces and counts."""
    if not isinstance(text, str):
        raise TypeError(f"{what} must be str, not {type(text).__name__}")
    return text.encode("utf-8", "surrogatepass")


def name_of(text: object, what: str) -> bytes:
    """The bytes of a name, an id, an address and the like, which end at a NUL in C."""
    name = utf8(text, what)
    if b"\0" in name:
        raise ValueError(f"{what} must not contain a NUL")
    return name


def optional_name(text: Optional[object], what: str) -> Optional[bytes]:
    return None if text is None else name_of(text, what)


def path_of(path: object) -> bytes:
    """The bytes of a path: UTF-8 on Windows, elsewhere those of the system."""
    name = os.fsencode(path)  # type: ignore[arg-type]
    if b"\0" in name:
        raise ValueError("a path must not contain a NUL")
    return name


def int32(value: Any, what: str) -> int:
    """An int that C takes. Without this ctypes would cut it."""
    try:
        number = value.__index__()
    except AttributeError:
        raise TypeError(f"{what} must be int, not {type(value).__name__}") from None
    if not -2**31 <= number < 2**31:
        raise ValueError(f"{what} is out of range: {number}")
    return int(number)


def double(value: Any, what: str) -> float:
    """A float that C takes; unlike float() this reads no texts."""
    if not hasattr(value, "__float__") and not hasattr(value, "__index__"):
        raise TypeError(f"{what} must be float, not {type(value).__name__}")
    return float(value)


class Callbacks:
    """Keeps what a callback raised until the call that led to it can raise it again."""

    def __init__(self) -> None:
        self.raised: Optional[BaseException] = None
        self.is_running = False
        self._kept: List[object] = []

    def keep(self, callback: object) -> None:
        """Holds a callback as long as the document may call it."""
        self._kept.append(callback)

    def stream(self, write: Callable[[bytes], Any]) -> Any:
        def write_all(_user: object, data: int, size: int) -> int:
            self.is_running = True
            try:
                rest = memoryview(ctypes.string_at(data, size))
                while rest:
                    taken = write(rest.tobytes())
                    if taken is None and isinstance(getattr(write, "__self__", None), io.RawIOBase):
                        raise BlockingIOError(errno.EAGAIN, "the stream takes no more bytes now")
                    # A raw file may take a part; what is no file returns anything or nothing.
                    if not isinstance(taken, int) or isinstance(taken, bool):
                        break
                    if not 0 < taken <= len(rest):
                        raise OSError(errno.EIO, f"write() returned {taken} for {len(rest)} bytes")
                    rest = rest[taken:]
                return 0
            except BaseException as raised:  # nothing may pass through the library
                self._raise_later(raised)
                return (raised.errno if isinstance(raised, OSError) else None) or errno.EIO
            finally:
                self.is_running = False

        return WriteFunction(write_all)

    def progress(self, function: Callable[[int, int], Any]) -> Any:
        def ask(_user: object, rows: int, bytes_: int) -> int:
            self.is_running = True
            try:
                return 1 if function(rows, bytes_) is False else 0
            except BaseException as raised:
                self._raise_later(raised)
                return 1
            finally:
                self.is_running = False

        return ProgressFunction(ask)

    def _raise_later(self, raised: BaseException) -> None:
        if self.raised is None:
            self.raised = raised


class Core:
    """Serial numbers tell a part that is open from one that has ended; the document's is 0."""

    def __init__(self) -> None:
        self.handle: Optional[int] = None
        self.callbacks = Callbacks()
        self.open: List[int] = [0]
        self.outputs: List[str] = []
        self.warnings: List[DocumentWarning] = []
        self.failures: List[Optional[str]] = []
        self.is_opened = False
        self._last = 0
        self._is_busy = False
        self._process = os.getpid()
        self.handle = library.new()
        if not self.handle:
            raise MemoryError("there is not enough memory for a document")

    def __del__(self) -> None:
        if getattr(self, "handle", None):
            if self.outputs and os.getpid() == self._process:
                warnings.warn(f"a document for {self.outputs[0]!r} was not closed, and is abandoned", ResourceWarning,
                              source=self)
            self.free()

    def __reduce__(self) -> str:
        raise TypeError("a document can be neither copied nor pickled")

    def free(self) -> None:
        """Abandons the document, unless it was closed. A forked process leaves it to its parent."""
        if self.handle:
            self.require_handle()
        handle, self.handle = self.handle, None
        self.open = [0]
        if handle and os.getpid() == self._process:
            library.free(handle)

    def check(self, status: int) -> None:
        """Raises unless the call that returned the status was taken."""
        raised = self.callbacks.raised
        if raised is not None:
            self.callbacks.raised = None
            raise raised
        if status:
            raise self._failure(status)

    def _failure(self, status: int) -> BaseException:
        if not self.handle:
            return MisuseError("the document is closed")
        reason = library.error(self.handle).decode("utf-8", "replace") or "the library gave no reason"
        output = None
        if status != _MISUSE:
            for number, name in enumerate(self.outputs):
                if library.output_result(self.handle, number) == status:
                    output = name
                    break
        return error_of(status, reason, output)

    def require_handle(self) -> None:
        if not self.handle:
            raise MisuseError("the document is closed")
        if self._is_busy or self.callbacks.is_running:
            raise MisuseError("the document is in a call, perhaps of another thread, or in a callback")

    def set_up(self, function: Callable[..., int], *arguments: object) -> None:
        """A call before the first content."""
        self.require_handle()
        self.check(function(self.handle, *arguments))

    def ready(self, part: int) -> None:
        """Raises unless the part is the innermost one. The first content opens the document by a call of its own, so
        that a begin that is refused has begun nothing."""
        self.require_handle()
        if not self.is_opened and self.outputs:
            self.is_opened = True
            self.check(library.open(self.handle))
        if self.open[-1] != part:
            raise MisuseError("the part has ended, or another part is open in it")

    def call(self, part: int, function: Callable[..., int], *arguments: object) -> None:
        self.ready(part)
        status = function(self.handle, *arguments)
        if status or self.callbacks.raised:
            self.check(status)

    def call_long(self, part: int, function: Callable[..., int], *arguments: object) -> None:
        """A call during which other threads run."""
        self.ready(part)
        self.check(self._run_long(function, *arguments))

    def _run_long(self, function: Callable[..., int], *arguments: object) -> int:
        self._is_busy = True
        try:
            return function(self.handle, *arguments)
        finally:
            self._is_busy = False

    def begin(self, part: int, function: Callable[..., int], *arguments: object) -> int:
        """Begins a part in another and returns its number."""
        self.ready(part)
        status = function(self.handle, *arguments)
        if status == 0:
            self._last += 1
            self.open.append(self._last)
        if status or self.callbacks.raised:
            if status == 0:
                self.end(self._last)
            self.check(status)
        return self._last

    def end(self, part: int) -> int:
        """Ends a part, if it is open, after the parts inside it. Returns the first status that is not 0."""
        status = 0
        if part and part in self.open and self.handle:
            self.require_handle()
            while self.open.pop() != part:
                status = status or library.end(self.handle)
            status = status or library.end(self.handle)
        return status

    def close(self) -> None:
        self.require_handle()
        if os.getpid() != self._process:
            raise MisuseError("the document belongs to another process")
        if not self.outputs:
            raise MisuseError("the document has no outputs")
        status = self._run_long(library.close)
        self._take_results()
        try:
            self.check(status)
        finally:
            self.free()

    def _take_results(self) -> None:
        self.failures = [self._output_error(number) for number in range(len(self.outputs))]
        warning = WarningStruct()
        while library.next_warning(self.handle, ctypes.byref(warning)):
            output = None if warning.output == ALL_OUTPUTS else self.outputs[warning.output]
            message = warning.message.decode("utf-8", "replace")
            self.warnings.append(DocumentWarning(message, output, warning.code, warning.count))

    def _output_error(self, number: int) -> Optional[str]:
        if library.output_result(self.handle, number) == 0:
            return None
        return str(library.output_error(self.handle, number).decode("utf-8", "replace"))
