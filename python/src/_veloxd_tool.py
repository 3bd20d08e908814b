"""The command ``oxd`` of a wheel: starts the program that the wheel brings, beside the package ``veloxd``.

It is no part of that package, whose import takes longer than most runs of the tool. For the same reason, it imports
only what it needs.
"""

from __future__ import annotations

import os
import sys

PROGRAM = os.path.join(os.path.dirname(os.path.abspath(__file__)), "veloxd", "oxd")
if sys.platform == "win32":
    PROGRAM += ".exe"


def main() -> int:
    """Runs the tool with the arguments of this process, in its place where systems allow that."""
    if not os.path.exists(PROGRAM):
        print(f"oxd: this installation of veloxd has no tool: {PROGRAM} is missing", file=sys.stderr)
        return 70
    if sys.platform != "win32":
        os.execv(PROGRAM, ["oxd", *sys.argv[1:]])
    import signal
    import subprocess

    signal.signal(signal.SIGINT, signal.SIG_IGN)  # Ctrl-C is for the tool, which gets it, too, and removes its files
    return subprocess.call([PROGRAM, *sys.argv[1:]])
