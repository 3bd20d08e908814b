"""The programs of the documents run as printed, one after the other."""

from __future__ import annotations

import re
from pathlib import Path
from typing import Any

import matplotlib as mpl
import matplotlib.pyplot as plt
import pytest

import veloxd

mpl.use("Agg")

ROOT = Path(__file__).parents[2]
PAGES = [ROOT / "python" / "README.md", *sorted((ROOT / "docs" / "python").glob("*.md"))]


@pytest.mark.parametrize("page", PAGES, ids=lambda page: f"{page.parent.name}-{page.stem}")
def test_programs_run(scan: Path, page: Path) -> None:
    programs = re.findall(r"^```python\n(.*?)^```$", page.read_text(encoding="utf-8"), re.MULTILINE | re.DOTALL)
    assert programs
    names: dict[str, Any] = {}
    for program in programs:
        exec(compile(program, str(page), "exec"), names)
    plt.close("all")
    for made in Path().glob("*.oxd"):
        veloxd.open(made).close()


def test_the_version_is_that_of_the_library() -> None:
    assert f"VERSION {veloxd.__version__}\n" in (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
