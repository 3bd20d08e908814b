"""Finds shared libraries and loads them, and calls the one of files.

A library is the one in the folder that the environment variable ``VELOXD_LIBRARY`` names, or in that of the file that
it names, otherwise the one beside this package, otherwise the one that the system finds.

The library of files has one error text and no lock, so one lock, :data:`LOCK`, guards every call. Whoever makes several
calls that belong together holds it meanwhile. It is reentrant, because the garbage collector may run finalizers
anywhere.
"""

from __future__ import annotations

import contextlib
import ctypes
import functools
import os
import re
import sys
import threading
from collections.abc import Iterator
from pathlib import Path
from typing import Any

from ..errors import LibraryError
from .declarations import DESCRIPTIONS, FUNCTIONS
from .failure import failure

LOCK = threading.RLock()

_MAIN = "VELOxdDll"
_WINDOWS = sys.platform == "win32"
_TEXT = ctypes.create_string_buffer(256)  # for most texts, while the lock is held
_NEEDED = re.compile(r"Minimum buffer size: (\d+)")


@functools.cache
def library() -> ctypes.CDLL:
    """The library of files with the types of all its functions, loaded once; raises what :func:`load` does.

    It is asked for its log if what it prints can be caught.
    """
    with _environment("VELOXD_LOG", "python") if prints_with_gnu() else contextlib.nullcontext():
        return load(_MAIN, FUNCTIONS, DESCRIPTIONS)


def prints_with_gnu() -> bool:
    """Whether libraries print with GNU's C run-time, which lets the stream ``stdout`` be replaced."""
    return sys.platform == "linux" and hasattr(ctypes.CDLL(None), "gnu_get_libc_version")


@contextlib.contextmanager
def _environment(name: str, value: str) -> Iterator[None]:
    """Sets the variable ``name``, unless it is set, for the time of the block, so that no child inherits it."""
    if os.environ.get(name):
        yield
        return
    os.environ[name] = value
    try:
        yield
    finally:
        del os.environ[name]


def load(name: str, functions: dict[str, tuple[Any, tuple[Any, ...]]], descriptions: dict[str, str]) -> ctypes.CDLL:
    """The library ``name`` with the types of its functions and what its header says of them.

    Raises
    ------
    LibraryError
        if it is not found or lacks a function.
    """
    loaded = _find(name)
    try:
        for function_name, (result, arguments) in functions.items():
            function = getattr(loaded, function_name)
            function.restype = result
            function.argtypes = arguments
            function.__doc__ = descriptions[function_name]
    except AttributeError as missing:
        raise LibraryError(f"{loaded._name} is no library of this package: {missing}.") from None
    return loaded


def _find(name: str) -> ctypes.CDLL:
    file_name = f"{name}.dll" if _WINDOWS else f"lib{name}.so"
    tried = []
    for candidate in _candidates(name, file_name):
        try:
            return ctypes.CDLL(candidate)
        except OSError as refused:
            tried.append(str(refused))
    raise LibraryError(
        f"The library {file_name} is not found: set VELOXD_LIBRARY to its file or folder.", "\n".join(tried)
    )


def _candidates(name: str, file_name: str) -> list[str]:
    chosen = os.environ.get("VELOXD_LIBRARY")
    if chosen:
        path = Path(chosen).absolute()
        if path.is_dir():
            return [str(path / file_name)]
        return [str(path if name == _MAIN else path.with_name(file_name))]
    beside = Path(__file__).absolute().parents[1] / file_name
    system = [file_name] if _WINDOWS else [file_name + ".0", file_name]
    return ([str(beside)] if beside.exists() else []) + system


def call(name: str, *arguments: Any, path: str = "") -> Any:
    """Calls the function ``name`` of the library and returns its result; raises what it stored if it failed."""
    loaded = library()
    with LOCK:
        begin(loaded)
        result = getattr(loaded, name)(*arguments)
        check(loaded, path)
    return result


def begin(loaded: ctypes.CDLL) -> None:
    """Forgets a failure of somebody else's call, before calls that :func:`check` will judge."""
    if loaded.VELHasLastError():
        loaded.VELGetLastError()


def check(loaded: ctypes.CDLL, path: str = "") -> None:
    """Raises the failure of the calls since :func:`begin`, if one of them failed."""
    if loaded.VELHasLastError():
        raise failure(loaded.VELGetLastError().decode("utf-8", "replace"), path)


def text(name: str, *arguments: Any) -> str:
    """The text that the function ``name`` copies to a buffer, which is made as long as the text needs."""
    loaded = library()
    with LOCK:
        buffer = _TEXT
        while True:
            begin(loaded)
            getattr(loaded, name)(*arguments, buffer, len(buffer))
            if not loaded.VELHasLastError():
                return buffer.value.decode("utf-8", "replace")
            details = loaded.VELGetLastError().decode("utf-8", "replace")
            needed = _NEEDED.search(details)
            if not needed:
                raise failure(details)
            buffer = ctypes.create_string_buffer(int(needed.group(1)))


def encode(value: str, what: str) -> bytes:
    """``value`` as the library takes texts, if a file can keep it as it is; ``what`` names it in messages.

    Raises
    ------
    TypeError
        if it is no text.
    ValueError
        if a file would change it: it has line breaks, zero bytes, ``#!``, blanks at its end or half characters.
    """
    if not isinstance(value, str):
        raise TypeError(f"{what} must be a text, not {type(value).__name__}.")
    for part, meaning in (("\0", "a zero byte"), ("\n", "a line break"), ("\r", "a line break"), ("#!", "'#!'")):
        if part in value:
            raise ValueError(f"{what} contains {meaning}, which files cannot keep: {value!r}.")
    if value != value.rstrip():
        raise ValueError(f"{what} ends with a blank, which files do not keep: {value!r}.")
    return value.encode("utf-8")


def encode_name(value: str, what: str) -> bytes:
    """As :func:`encode`, for a text that may not be empty, because files give empty ones another name."""
    if value == "":
        raise ValueError(f"{what} is empty, which files do not keep.")
    return encode(value, what)
