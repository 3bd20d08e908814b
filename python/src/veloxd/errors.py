"""What can go wrong: every error of this package is a :class:`Error`.

Where Python has an exception of its own for a fault, the error is one of those as well, so that ``except
FileNotFoundError`` and ``except KeyError`` work as they do elsewhere.
"""

from __future__ import annotations

from typing import Any

__all__ = [
    "ClosedError",
    "DamagedFileError",
    "DeletedError",
    "Error",
    "ExistingFileError",
    "FileAccessError",
    "FileSystemError",
    "ForkError",
    "LibraryError",
    "MissingFileError",
    "NameNotFoundError",
    "OutOfMemoryError",
    "ReadOnlyError",
]


class Error(Exception):
    """A failure, in one short sentence.

    Attributes
    ----------
    details : str
        The full text of the library, with the place in its source code. Empty if the library was not involved.
    """

    def __init__(self, message: str, details: str = "") -> None:
        super().__init__(message)
        self.details = details

    def __str__(self) -> str:
        return str(self.args[0])


class LibraryError(Error, ImportError):
    """The shared library cannot be found or loaded."""


class FileSystemError(Error, OSError):
    """The system does not read or write a file; :attr:`errno` and :attr:`filename` are set as in any ``OSError``."""

    def __init__(self, message: str, details: str = "", number: int = 0, path: str = "") -> None:
        super().__init__(message, details)
        self.errno = number
        self.filename = path

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (str(self), self.details, self.errno, self.filename), self.__dict__


class MissingFileError(FileSystemError, FileNotFoundError):
    """There is no such file or folder."""


class ExistingFileError(FileSystemError, FileExistsError):
    """There is a file already, and it may not be replaced."""


class FileAccessError(FileSystemError, PermissionError):
    """The file may not be read or written."""


class DamagedFileError(Error, ValueError):
    """The file is no .oxd file, is damaged or cut short, or is of an unknown version."""


class ClosedError(Error, ValueError):
    """The file that an object belongs to was closed."""


class DeletedError(Error, LookupError):
    """The group, the channel or the information that an object stands for was deleted."""


class ReadOnlyError(Error, TypeError):
    """The file was opened with mode ``"r"``."""


class ForkError(Error, RuntimeError):
    """The file was opened by the parent of this process; a child opens files of its own."""


class NameNotFoundError(Error, KeyError):
    """There is no group, channel or information of this name."""


class OutOfMemoryError(Error, MemoryError):
    """The library could not get the memory that it needs."""
