"""The command ``oxd`` of a wheel: starts the program that the wheel brings, beside the package ``veloxd``.

It is no part of that package, whose import takes longer than most runs of the tool. For the same reason, it imports
only what it needs.
"""

from __future__ import annotations

import os
import sys

NAME = "oxd.exe" if sys.platform == "win32" else "oxd"
PROGRAM = os.path.join(os.path.dirname(os.path.abspath(__file__)), "veloxd", NAME)


def main() -> int:
    """Runs the tool with the arguments of this process, in its place where systems allow that.

    An installation without the tool passes on to the next command of this name.
    """
    program = PROGRAM if os.path.exists(PROGRAM) else _next_on_path()
    if program is None:
        print(f"oxd: this installation of veloxd has no tool: {PROGRAM} is missing", file=sys.stderr)
        return 70
    if sys.platform != "win32":
        os.execv(program, ["oxd", *sys.argv[1:]])
    import signal
    import subprocess

    signal.signal(signal.SIGINT, signal.SIG_IGN)  # Ctrl-C is for the tool, which gets it, too, and removes its files
    return subprocess.call([program, *sys.argv[1:]])


def _next_on_path() -> str | None:
    """The first such command in a folder of PATH that comes after all mentions of this command's own folder.

    Commands that pass on to each other get ever further, so that they come to an end.
    """
    own = os.path.realpath(os.path.dirname(os.path.abspath(sys.argv[0])))
    folders = [folder for folder in os.environ.get("PATH", "").split(os.pathsep) if folder]
    mentions = [position for position, folder in enumerate(folders) if os.path.realpath(folder) == own]
    for folder in folders[mentions[-1] + 1 if mentions else 0 :]:
        program = os.path.join(folder, NAME)
        if os.path.isfile(program) and os.access(program, os.X_OK):
            return program
    return None
