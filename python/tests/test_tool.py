"""The command ``oxd`` of an installation: it stands for the program beside the package."""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
from pathlib import Path

import pytest

import _veloxd_tool


@pytest.mark.skipif(sys.platform == "win32", reason="The program stands in a shell script.")
def test_arguments_and_exit_code_pass_through(tmp_path: Path) -> None:
    environments = [tmp_path / "first", tmp_path / "second"]
    launchers = [make_launcher(environment) for environment in environments]
    program = environments[0] / "veloxd" / "oxd"
    path = os.pathsep.join(map(str, [*environments, tmp_path / "system", *environments[:1]]))

    def run(launcher: Path) -> subprocess.CompletedProcess[str]:
        command = [launcher, "info", "a b", "ä*"]
        environment = {**os.environ, "PATH": path}
        return subprocess.run(command, env=environment, capture_output=True, encoding="utf-8", check=False, timeout=60)

    absent = [run(launcher) for launcher in launchers]
    assert [run.returncode for run in absent] == [70, 70]
    assert str(program) in absent[0].stderr
    for place in (tmp_path / "system" / "oxd", program):
        write_script(place, f"#!/bin/sh\nprintf '<%s>' {place.parent.name} \"$@\"\nexit 4\n")
        passed_on = run(launchers[1])
        assert (passed_on.stdout, passed_on.returncode) == ("<system><info><a b><ä*>", 4)
    present = run(launchers[0])
    assert (present.stdout, present.returncode) == ("<veloxd><info><a b><ä*>", 4)


def make_launcher(environment: Path) -> Path:
    """The command of an environment of its own, which has no tool."""
    environment.mkdir()
    shutil.copy(_veloxd_tool.__file__, environment)
    start = "import sys, _veloxd_tool\nsys.exit(_veloxd_tool.main())\n"
    return write_script(environment / "oxd", f"#!{sys.executable} -S\n{start}")


def write_script(path: Path, text: str) -> Path:
    path.parent.mkdir(exist_ok=True)
    path.write_text(text)
    path.chmod(0o755)
    return path
