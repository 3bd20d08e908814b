"""The command ``oxd`` of a wheel: starts the program that the wheel brings, beside the package ``veloxd``.

It is no part of that package, because importing it would import NumPy, which takes longer than most runs of the tool.
"""

from __future__ import annotations

import os
import signal
import subprocess
import sys
from pathlib import Path

PROGRAM = Path(__file__).absolute().parent / "veloxd" / ("oxd.exe" if sys.platform == "win32" else "oxd")


def main() -> int:
    """Runs the tool with the arguments of this process, in its place where systems allow that."""
    if not PROGRAM.exists():
        print(f"oxd: this installation of veloxd has no tool: {PROGRAM} is missing", file=sys.stderr)
        return 70
    if sys.platform != "win32":
        os.execv(PROGRAM, ["oxd", *sys.argv[1:]])
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # Ctrl-C is for the tool, which gets it, too, and removes its files
    return subprocess.call([PROGRAM, *sys.argv[1:]])
