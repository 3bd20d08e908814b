"""Replaces files in one step, when the new one is whole and on the disk."""

from __future__ import annotations

import contextlib
import errno
import os
import secrets
import stat
from collections.abc import Iterator

from ._native.failure import system_failure

# What file systems say that cannot flush, or have no hard links.
_CANNOT_FLUSH = (errno.EINVAL, errno.ENOTSUP)
_HAS_NO_LINKS = (errno.EPERM, errno.ENOTSUP, errno.EOPNOTSUPP, errno.ENOSYS)

_PERMISSIONS = stat.S_IRWXU | stat.S_IRWXG | stat.S_IRWXO
_ANYBODY_MAY_WRITE = stat.S_IWUSR | stat.S_IWGRP | stat.S_IWOTH


@contextlib.contextmanager
def replacement(path: str, overwrite: bool) -> Iterator[str]:
    """The name of an empty file beside ``path`` to fill, which takes its place when the block ends without a failure.

    Links are followed. The new file has the permissions of the old one, and its owner and group where the system allows
    that. If anything fails, or the process is interrupted, the old file stays and the new one is removed.

    Raises
    ------
    FileSystemError
        or one of its kinds, if the system refuses a step, or the file exists and ``overwrite`` is false.
    """
    try:
        target = os.path.realpath(path)
        old = _check_target(target, overwrite)
        temporary = _create(target, old)
    except OSError as refused:
        raise _failure(refused, path) from None
    try:
        yield temporary
        try:
            _finish(temporary, target, old, overwrite)
        except OSError as refused:
            raise _failure(refused, path) from None
    finally:
        with contextlib.suppress(OSError):
            os.unlink(temporary)


def check_new(path: str) -> None:
    """Raises the failure that replacing ``path`` without ``overwrite`` would have, if something is there."""
    if os.path.lexists(path):
        raise system_failure(errno.EEXIST, path)


def _failure(refused: OSError, path: str) -> OSError:
    return system_failure(refused.errno or errno.EIO, path)


def _check_target(target: str, overwrite: bool) -> os.stat_result | None:
    """What is known of the file to replace. One that nobody may write is not replaced, although it could be."""
    try:
        old = os.lstat(target)
    except FileNotFoundError:
        return None
    if stat.S_ISDIR(old.st_mode):
        raise IsADirectoryError(errno.EISDIR, target)
    if not overwrite:
        raise FileExistsError(errno.EEXIST, target)
    if not stat.S_ISREG(old.st_mode):
        raise OSError(errno.EINVAL, target)
    if not old.st_mode & _ANYBODY_MAY_WRITE or not os.access(target, os.W_OK):
        raise PermissionError(errno.EACCES, target)
    return old


def _create(target: str, old: os.stat_result | None) -> str:
    temporary = os.path.join(os.path.dirname(target), f".oxd-{secrets.token_hex(10)}.tmp")
    mode = 0o666 if old is None else 0o600
    os.close(os.open(temporary, os.O_WRONLY | os.O_CREAT | os.O_EXCL, mode))
    return temporary


def _finish(temporary: str, target: str, old: os.stat_result | None, overwrite: bool) -> None:
    descriptor = os.open(temporary, os.O_RDWR)
    try:
        if old is not None and hasattr(os, "fchown"):
            _keep_rights(descriptor, old)
        _flush(descriptor)
    finally:
        os.close(descriptor)
    _move(temporary, target, overwrite)
    if hasattr(os, "O_DIRECTORY"):
        _flush_folder(os.path.dirname(target))


def _keep_rights(descriptor: int, old: os.stat_result) -> None:
    mode = old.st_mode & _PERMISSIONS
    if not _has_owner(descriptor, old.st_uid, old.st_gid) and not _has_owner(descriptor, -1, old.st_gid):
        # Members of the old group count among the others now, and the other way round.
        both = (mode >> 3) & mode & stat.S_IRWXO
        mode = (mode & stat.S_IRWXU) | both << 3 | both
    with contextlib.suppress(OSError):
        os.fchmod(descriptor, mode)


def _has_owner(descriptor: int, user: int, group: int) -> bool:
    try:
        os.fchown(descriptor, user, group)
    except OSError:
        return False
    return True


def _flush(descriptor: int) -> None:
    """Forces a file to the disk, on file systems that can do that."""
    try:
        os.fsync(descriptor)
    except OSError as refused:
        if refused.errno not in _CANNOT_FLUSH:
            raise


def _move(temporary: str, target: str, overwrite: bool) -> None:
    if overwrite:
        os.replace(temporary, target)
    elif os.name == "nt":
        os.rename(temporary, target)  # refuses a target that exists
    else:
        _move_to_new(temporary, target)


def _move_to_new(temporary: str, target: str) -> None:
    try:
        os.link(temporary, target)  # refuses a target that exists; the other name is removed in any case
    except OSError as refused:
        if refused.errno not in _HAS_NO_LINKS:
            raise
        _replace_reserved(temporary, target)


def _replace_reserved(temporary: str, target: str) -> None:
    """Takes the name with an empty file, which nobody else can have made, and puts the whole one in its place."""
    os.close(os.open(target, os.O_WRONLY | os.O_CREAT | os.O_EXCL))
    try:
        os.replace(temporary, target)
    except BaseException:
        os.unlink(target)
        raise


def _flush_folder(folder: str) -> None:
    """Makes the new name last. A folder that may be written but not read, or cannot be flushed, is left alone."""
    with contextlib.suppress(OSError):
        descriptor = os.open(folder, os.O_RDONLY | os.O_DIRECTORY)
        try:
            os.fsync(descriptor)
        finally:
            os.close(descriptor)
