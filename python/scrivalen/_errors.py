"""What can go wrong, and what a format could not hold."""

from __future__ import annotations

from typing import Any, Dict, Optional, Tuple, Type


class Error(Exception):
    """A call that the library refused, or an output that failed.

    The text is one line, with the file that it is about.
    """

    def __init__(self, reason: str, output: Optional[str] = None) -> None:
        super().__init__(reason)
        #: Why, in one line.
        self.reason = reason
        #: The output that failed, as it was given: its path, or the type of its stream. None: the error is about none.
        self.output = output

    def __reduce__(self) -> Tuple[Any, ...]:  # so that an error crosses from one process to another
        return type(self), (self.reason, self.output)


class FileError(Error, OSError):
    """An output cannot be created, or was not written whole."""


class TemplateNotFound(Error):
    """The template of an output cannot be read."""


class OutOfMemory(Error, MemoryError):
    """Memory ran out; nothing was delivered."""


class MisuseError(Error, RuntimeError):
    """A call out of order or out of range. It did nothing, and the document goes on."""


class UnknownFormat(Error, ValueError):
    """No format of the library has this name or extension."""


class UnknownSetting(Error, ValueError):
    """No setting has this name, or the setting does not take the value."""


class Cancelled(Error):
    """The function of set_progress returned False."""


class InputError(Error):
    """The data of an Arrow stream failed in the middle; what came before it is kept."""


_BY_STATUS: Dict[int, Type[Error]] = {
    1: FileError,
    2: TemplateNotFound,
    3: OutOfMemory,
    4: MisuseError,
    5: UnknownFormat,
    6: UnknownSetting,
    7: Cancelled,
    8: InputError,
}


def error_of(status: int, reason: str, output: Optional[str]) -> Error:
    return _BY_STATUS.get(status, Error)(reason, output)


class DocumentWarning(UserWarning):
    """Something that could not be written as given. Document.close passes each to the module warnings."""

    def __init__(self, message: str, output: Optional[str], code: int, count: int) -> None:
        super().__init__(message, output, code, count)
        #: One line, for a person.
        self.message = message
        #: The output, as it was given; None for a warning about the input.
        self.output = output
        #: 1 characters replaced, 2 text cut, 3 cells dropped, 4 something left out, 5 input mended.
        self.code = code
        #: How often.
        self.count = count

    def __str__(self) -> str:
        text = f"{self.message} ({self.count})"
        return text if self.output is None else f"{self.output}: {text}"
