"""The documents are true: their programs run as printed, one after the other, and what is made is up to date."""

from __future__ import annotations

import os
import re
import subprocess
import sys
from pathlib import Path

import nbformat
import pytest
from nbclient import NotebookClient
from tool import make_sample

import veloxd
from veloxd._native import blocks, curves, library

ROOT = Path(__file__).parents[2]
DOCUMENTS = ROOT / "docs" / "python"
PAGES = [ROOT / "README.md", ROOT / "python" / "README.md", *sorted(DOCUMENTS.glob("*.md"))]
NOTEBOOKS = sorted((DOCUMENTS / "notebooks").glob("*.ipynb"))

SHELL = re.compile(r"^```sh\n(.*?)^```$", re.MULTILINE | re.DOTALL)
PROGRAM = re.compile(r"^```python\n(.*?)^```$", re.MULTILINE | re.DOTALL)


@pytest.fixture
def sample(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    make_sample(tmp_path / "scan.oxd")
    monkeypatch.setenv("MPLBACKEND", "Agg")
    return tmp_path


@pytest.mark.parametrize("page", PAGES, ids=lambda page: f"{page.parent.name}-{page.stem}")
def test_programs_run(sample: Path, page: Path) -> None:
    programs = PROGRAM.findall(page.read_text(encoding="utf-8"))
    assert programs or page.stem == "reference"
    (sample / "page.py").write_text("\n".join(programs), encoding="utf-8")
    done = subprocess.run([sys.executable, "page.py"], cwd=sample, capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stderr
    for made in sample.glob("*.oxd"):
        veloxd.open(made, salvage=made.name == "cut.oxd").close()


@pytest.mark.skipif(sys.platform == "win32", reason="Its commands are those of a shell.")
def test_the_page_on_archives_runs(tmp_path: Path) -> None:
    page = (ROOT / "docs" / "archive.md").read_text(encoding="utf-8")
    (tmp_path / "page.sh").write_text("".join(SHELL.findall(page)), encoding="utf-8")
    (tmp_path / "page.py").write_text("".join(PROGRAM.findall(page)), encoding="utf-8")
    folders = [Path(os.environ.get("VELOXD_TOOL", sys.executable)).parent, Path(sys.executable).parent]
    path = os.pathsep.join([*map(str, folders), os.environ["PATH"]])
    for command in (["bash", "-e", "page.sh"], [sys.executable, "page.py"]):
        run = {"cwd": tmp_path, "env": {**os.environ, "PATH": path}, "capture_output": True, "text": True}
        done = subprocess.run(command, check=False, **run)
        assert done.returncode == 0, done.stderr
        assert "second.oxd" in done.stdout
    assert (tmp_path / "gallery" / "index.html").is_file()
    assert len(list((tmp_path / "pictures").rglob("*.png"))) > 2


@pytest.mark.parametrize("path", NOTEBOOKS, ids=lambda path: path.stem)
def test_notebooks_give_the_results_that_they_show(sample: Path, path: Path) -> None:
    notebook = nbformat.read(path, as_version=4)
    shown = printed(notebook)
    assert any(shown), "a notebook without results is not run before it is committed"
    NotebookClient(notebook, resources={"metadata": {"path": os.fspath(sample)}}).execute()
    assert printed(notebook) == shown


def printed(notebook: nbformat.NotebookNode) -> list[str]:
    """What each cell prints; pictures and tables depend on versions of other packages."""
    return [
        "".join("".join(output["text"]) for output in cell.get("outputs", []) if output.output_type == "stream")
        for cell in notebook.cells
    ]


def test_the_reference_is_made_of_the_docstrings() -> None:
    made = subprocess.run([sys.executable, ROOT / "python" / "reference.py"], capture_output=True, check=True).stdout
    assert (DOCUMENTS / "reference.md").read_bytes() == made, "scripts/python docs makes it anew"


def test_functions_of_the_libraries_say_what_their_headers_say() -> None:
    assert "Result: the number of groups." in (library.library().GetGroupCount.__doc__ or "")
    assert "VELBlockOpen(const char* filename, uint64_t* file);" in (blocks._blocks().VELBlockOpen.__doc__ or "")
    assert "`forces` is laid out as `indentations`" in (curves.library().VELCurveForces.__doc__ or "")


def test_the_version_is_that_of_the_library() -> None:
    assert f"VERSION {veloxd.__version__}\n" in (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
