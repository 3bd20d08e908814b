"""Makes exceptions of the texts that the library stores for failures."""

from __future__ import annotations

import errno
import os
import re

from ..errors import (
    DamagedFileError,
    Error,
    ExistingFileError,
    FileAccessError,
    FileSystemError,
    MissingFileError,
    OutOfMemoryError,
)

_WHAT = re.compile(r"std::exception::what: (.*)")
_ERRNO = re.compile(r"errinfo_errno_\*\] = (\d+)")
_PLACE = re.compile(r"tag_section\*\] = (?P<section>.*)(?:.|\n)*tag_key\*\] = (?P<key>.*)")
_VERSION = re.compile(r"unknown version.*Version: *(\S*)")


def reason(details: str) -> str:
    """The line of the library's text that says what failed."""
    found = _WHAT.search(details)
    return found.group(1) if found else details.strip().partition("\n")[0]


def system_failure(number: int, path: str, details: str = "") -> FileSystemError:
    """The exception for the error ``number`` of the system, of the class that Python has for it."""
    kinds = {
        errno.ENOENT: MissingFileError,
        errno.ENOTDIR: MissingFileError,
        errno.EEXIST: ExistingFileError,
        errno.EACCES: FileAccessError,
        errno.EPERM: FileAccessError,
        errno.EROFS: FileAccessError,
    }
    kind = kinds.get(number, FileSystemError)
    return kind(f"{path}: {os.strerror(number)}.", details, number, path)


def failure(details: str, path: str = "") -> Error:
    """The exception for a text of the library; ``path`` is the file that was opened, if one was."""
    what = reason(details)
    number = _ERRNO.search(details)
    if number and path:
        return system_failure(int(number.group(1)), path, details)
    if what in ("std::bad_alloc", "Cannot allocate memory"):
        return OutOfMemoryError("There is not enough memory.", details)
    if path:
        return DamagedFileError(f"{path}: {_damage(what, details)}.", details)
    return Error(what.rstrip(".") + ".", details)


def save_failure(details: str, path: str) -> Error:
    """The exception for a text of the library when it saved the file ``path``."""
    if reason(details).startswith("basic_ios::clear"):
        return FileSystemError(f"{path}: the file cannot be written; is the disk full?", details, errno.EIO, path)
    number = _ERRNO.search(details)
    return system_failure(int(number.group(1)), path, details) if number else failure(details)


def _damage(what: str, details: str) -> str:
    version = _VERSION.search(what)
    if version:
        return f"the file is of an unknown version, {version.group(1)}"
    place = _PLACE.search(details)
    if place:
        return f"the file is damaged in section {place['section']}, key {place['key']}"
    if what.startswith("basic_ios"):
        return "the file is damaged or cut short: it ends before its samples do"
    return f"the file is damaged: {what.partition(' Filename: ')[0].rstrip('.')}"
