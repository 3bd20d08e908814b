"""What the tests and the doctests share: a small scan, and folders of their own."""

from __future__ import annotations

import os
from pathlib import Path
from typing import Any

import hypothesis
import numpy as np
import pytest
from samples import make_scan

import veloxd
from veloxd._native.library import library

BUILD = Path(__file__).parents[1] / "build" / "python"
os.environ.setdefault("HYPOTHESIS_STORAGE_DIRECTORY", str(BUILD / "hypothesis"))

# The tool of the same build as the library.
_TOOL = Path(library()._name).resolve().parents[2] / "tools" / "oxd" / "oxd"
if _TOOL.is_file():
    os.environ.setdefault("VELOXD_TOOL", str(_TOOL))

# A busy machine is no fault of the code, and a run of all checks is to give the same result each time.
hypothesis.settings.register_profile(
    "veloxd",
    deadline=None,
    derandomize="CI" in os.environ,
    suppress_health_check=[hypothesis.HealthCheck.too_slow, hypothesis.HealthCheck.data_too_large],
)
hypothesis.settings.load_profile("veloxd")


@pytest.fixture
def scan(tmp_path: Path) -> Path:
    path = tmp_path / "scan.oxd"
    make_scan(path)
    return path


@pytest.fixture(autouse=True)
def in_folder_of_its_own(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch, doctest_namespace: dict[str, Any], request: pytest.FixtureRequest
) -> None:
    """Doctests read and write files by short names."""
    monkeypatch.chdir(tmp_path)
    if type(request.node).__name__ == "DoctestItem":
        make_scan(tmp_path / "scan.oxd")
        doctest_namespace.update(veloxd=veloxd, np=np)
