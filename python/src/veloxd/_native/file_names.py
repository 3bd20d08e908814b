"""Names of files as the library takes them: in the system's code page on Windows, as bytes elsewhere.

Most code pages lack most characters. A file whose name has such is opened as a copy and saved by way of one, in a
folder for temporary files.
"""

from __future__ import annotations

import contextlib
import errno
import os
import shutil
import sys
import tempfile
from collections.abc import Iterator

from .failure import system_failure


def file_name(path: str) -> bytes | None:
    """``path`` as the library takes it, or None if the code page lacks one of its characters.

    Raises
    ------
    ValueError
        if the name contains a zero byte.
    """
    if "\0" in path:
        raise ValueError("The name of a file contains a zero byte.")
    if sys.platform != "win32":
        return os.fsencode(path)
    try:
        return path.encode("mbcs")
    except UnicodeEncodeError:
        return None


def label(path: str) -> bytes:
    """``path`` for a data set that is not read from it or written to it.

    What the code page lacks is a question mark, which no name of a file on Windows has.
    """
    encoded = file_name(path)
    return path.encode("mbcs", "replace") if encoded is None else encoded


@contextlib.contextmanager
def copy_to_read(path: str, shown: str) -> Iterator[str]:
    """A copy of a file, by a name that the library takes, for as long as the block lasts.

    Raises
    ------
    FileSystemError
        or one of its kinds, if the file cannot be copied; ``shown`` is its name in messages.
    """
    with _temporary_name(shown) as copy:
        _copy(path, copy, shown)
        yield copy


@contextlib.contextmanager
def name_to_write(path: str, shown: str) -> Iterator[str]:
    """The name that the library is to write the file ``path`` by, which has the content when the block ends.

    Raises what :func:`copy_to_read` does.
    """
    if file_name(path) is not None:
        yield path
        return
    with _temporary_name(shown) as copy:
        yield copy
        _copy(copy, path, shown)


def _copy(source: str, target: str, shown: str) -> None:
    try:
        shutil.copyfile(source, target)
    except OSError as refused:
        raise system_failure(refused.errno or errno.EIO, shown) from None


@contextlib.contextmanager
def _temporary_name(shown: str) -> Iterator[str]:
    with tempfile.TemporaryDirectory(prefix="oxd-") as folder:
        name = os.path.join(_short(folder), "copy.oxd")
        if file_name(name) is None:
            raise system_failure(errno.EINVAL, shown, f"The code page lacks characters of {name}, too.")
        yield name


def _short(folder: str) -> str:
    """The name of a folder, or the short one (8.3) that Windows gives it if the code page lacks characters of it."""
    if sys.platform != "win32" or file_name(folder) is not None:
        return folder
    import ctypes

    short = ctypes.create_unicode_buffer(32768)
    ctypes.windll.kernel32.GetShortPathNameW(folder, short, len(short))
    return short.value or folder
