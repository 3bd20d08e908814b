"""The program ``oxd``, which makes the sample that the documents are about."""

from __future__ import annotations

import shutil
import subprocess
from pathlib import Path

import veloxd
from veloxd._native.library import library


def run_tool(*arguments: str | Path) -> str:
    """What the program of this installation, of the build of the library, or of the system prints."""
    build = Path(library()._name).resolve().parents[2]
    programs = [Path(veloxd.__file__).with_name("oxd"), build / "tools" / "oxd" / "oxd"]
    found = [program for program in programs if program.is_file()]
    command = [found[0] if found else shutil.which("oxd") or "oxd", *arguments]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout


def make_sample(path: Path) -> None:
    """Makes the sample that the documents are about."""
    run_tool("make-sample", path)
