"""The command ``oxd`` of an installation: it stands for the program beside the package."""

from __future__ import annotations

import shutil
import subprocess
import sys
from pathlib import Path

import pytest

import _veloxd_tool


@pytest.mark.skipif(sys.platform == "win32", reason="The program stands in a shell script.")
def test_arguments_and_exit_code_pass_through(tmp_path: Path) -> None:
    launcher = shutil.copy(_veloxd_tool.__file__, tmp_path)
    program = tmp_path / "veloxd" / "oxd"
    start = [sys.executable, "-S", "-c", "import sys, _veloxd_tool; sys.exit(_veloxd_tool.main())", "info", "a b", "ä*"]

    def run() -> subprocess.CompletedProcess[str]:
        return subprocess.run(start, cwd=Path(launcher).parent, capture_output=True, encoding="utf-8", check=False)

    absent = run()
    assert absent.returncode == 70
    assert str(program) in absent.stderr
    program.parent.mkdir()
    program.write_text("#!/bin/sh\nprintf '<%s>' \"$@\"\nexit 4\n")
    program.chmod(0o755)
    present = run()
    assert (present.stdout, present.returncode) == ("<info><a b><ä*>", 4)
