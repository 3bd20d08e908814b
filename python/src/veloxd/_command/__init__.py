"""The command ``veloxd``: archives of many files on the command line."""

from __future__ import annotations

import contextlib
import os
import signal
import sys

from ..errors import DamagedFileError, Error, LibraryError

_USAGE, _CANNOT_OPEN, _DAMAGED, _CANNOT_WRITE, _INTERNAL = 2, 3, 4, 5, 70
_INTERRUPTED = 130


def main(arguments: list[str] | None = None) -> int:
    """Runs the command with the arguments of this process; its exit code, which means what it does for ``oxd``."""
    with contextlib.suppress(ValueError, AttributeError):  # not in the main thread, or on Windows
        signal.signal(signal.SIGTERM, _end)
    try:
        code = _run(arguments)
        sys.stdout.flush()
    except BrokenPipeError:  # whoever read the results has seen enough
        os.dup2(os.open(os.devnull, os.O_WRONLY), 1)
        return 0
    except KeyboardInterrupt:
        return _INTERRUPTED
    except (Error, OSError, MemoryError) as failure:
        complain(_message(failure))
        return _code(failure)
    return code


def complain(message: str) -> None:
    """Writes a message to the standard error."""
    print(f"veloxd: {message}", file=sys.stderr, flush=True)


def _end(number: int, frame: object) -> None:
    raise SystemExit(128 + number)


def _run(arguments: list[str] | None) -> int:
    try:
        from .verbs import run
    except ImportError as missing:
        raise LibraryError(f'{missing.name} is not installed: pip install "veloxd[archive]"') from None
    return run(arguments)


def _message(failure: BaseException) -> str:
    if isinstance(failure, MemoryError):
        return "not enough memory"
    if isinstance(failure, OSError) and not isinstance(failure, Error) and failure.strerror:
        return f"{failure.filename}: {failure.strerror}" if failure.filename else failure.strerror
    return str(failure).rstrip(".")


def _code(failure: BaseException) -> int:
    if isinstance(failure, (LibraryError, MemoryError)):
        return _INTERNAL
    if isinstance(failure, DamagedFileError):
        return _DAMAGED
    if isinstance(failure, ValueError):
        return _USAGE
    is_missing = isinstance(failure, (FileNotFoundError, PermissionError, IsADirectoryError, NotADirectoryError))
    return _CANNOT_OPEN if is_missing else _CANNOT_WRITE
