"""The program ``oxd``, which makes the sample that the documents are about."""

from __future__ import annotations

import shutil
import subprocess
import sys
from pathlib import Path

from veloxd._native.library import library


def make_sample(path: Path) -> None:
    """Makes the sample with the program of this environment, of the build of the library, or of the system."""
    build = Path(library()._name).resolve().parents[2]
    folders = [Path(sys.executable).parent, build / "tools" / "oxd"]
    found = [folder / "oxd" for folder in folders if (folder / "oxd").is_file()]
    subprocess.run([found[0] if found else shutil.which("oxd") or "oxd", "make-sample", path], check=True)
