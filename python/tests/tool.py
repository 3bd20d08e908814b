"""The program ``oxd``, which makes the sample that the documents are about."""

from __future__ import annotations

import shutil
import subprocess
from pathlib import Path

import veloxd
from veloxd._native.library import library


def make_sample(path: Path) -> None:
    """Makes the sample with the program of this installation, of the build of the library, or of the system."""
    build = Path(library()._name).resolve().parents[2]
    programs = [Path(veloxd.__file__).with_name("oxd"), build / "tools" / "oxd" / "oxd"]
    found = [program for program in programs if program.is_file()]
    subprocess.run([found[0] if found else shutil.which("oxd") or "oxd", "make-sample", path], check=True)
