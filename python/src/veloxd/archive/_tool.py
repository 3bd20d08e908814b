"""Reads headers of files with the command-line tool, which reads nothing else, by several threads."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import sys
import tempfile
from collections.abc import Iterator, Sequence
from pathlib import Path
from typing import Any

from ..errors import LibraryError

_NAME = "oxd.exe" if sys.platform == "win32" else "oxd"


def program() -> str:
    """The tool: the one that ``VELOXD_TOOL`` names, else the one beside this package, else the first on ``PATH``.

    Raises
    ------
    LibraryError
        if there is none.
    """
    chosen = os.environ.get("VELOXD_TOOL")
    beside = Path(__file__).parents[1] / _NAME
    found = chosen or (str(beside) if beside.is_file() else shutil.which(_NAME))
    if not found:
        raise LibraryError("The tool oxd is not found: set VELOXD_TOOL to its file.")
    return found


def scan(paths: Sequence[str]) -> Iterator[tuple[str, dict[str, Any]]]:
    """The record of each file, in order, as ``oxd scan`` prints it; a line break in a name is an error of its own.

    Raises
    ------
    LibraryError
        if the tool cannot be started, does not know the command, or fails.
    """
    yield from _records([path for path in paths if not _has_break(path)])
    for path in filter(_has_break, paths):
        yield path, {"path": path, "size": None, "modified": None, "error": "has a line break in its name"}


def _has_break(path: str) -> bool:
    return "\n" in path or "\r" in path


def _records(paths: Sequence[str]) -> Iterator[tuple[str, dict[str, Any]]]:
    if not paths:
        return
    with tempfile.TemporaryFile() as listed, tempfile.TemporaryFile() as messages:
        listed.writelines(os.fsencode(path) + b"\n" for path in paths)
        listed.seek(0)
        with _start(listed, messages) as process:
            assert process.stdout is not None
            try:
                for path, line in zip(paths, process.stdout):
                    yield path, json.loads(line)
            except GeneratorExit:
                process.terminate()
                raise
        _check(process.returncode, messages)


def _start(listed: Any, messages: Any) -> subprocess.Popen[bytes]:
    command = [program(), "scan", "--files-from", "-"]
    try:
        return subprocess.Popen(command, stdin=listed, stdout=subprocess.PIPE, stderr=messages)
    except OSError as refused:
        raise LibraryError(f"{command[0]} cannot be started: {refused.strerror}.") from None


def _check(code: int, messages: Any) -> None:
    if code == 0:
        return
    messages.seek(0)
    said = messages.read().decode("utf-8", "replace").strip()
    what = "is older than this package: it has no scan" if code == 2 else "failed"
    raise LibraryError(f"The tool {program()} {what}.", said)
