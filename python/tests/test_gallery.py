"""Galleries in a browser."""

from __future__ import annotations

import html
import json
import re
import shutil
import subprocess
from pathlib import Path

import pytest
from samples import make_scan, ragged_file

import veloxd
from veloxd import archive
from veloxd._command import main

CHROMIUM = shutil.which("chromium")
needs_browser = pytest.mark.skipif(CHROMIUM is None, reason="There is no Chromium.")


def content_of(page: Path, script: str = "") -> str:
    """The page as Chromium has it when its scripts, and one of the test, have run."""
    if script:
        page = page.with_name("tested.html")
        page.write_text(page.with_name("index.html").read_text() + f"<script>{script}</script>")
    assert CHROMIUM is not None
    quiet = ["--no-sandbox", "--disable-gpu", "--virtual-time-budget=3000", "--window-size=1000,800"]
    command = [
        CHROMIUM,
        "--headless",
        *quiet,
        f"--user-data-dir={page.parent / 'profile'}",
        "--dump-dom",
        page.as_uri(),
    ]
    return subprocess.run(command, capture_output=True, check=True, timeout=300, encoding="utf-8").stdout


def names_in(content: str) -> list[str]:
    return [html.unescape(name) for name in re.findall(r"<span>([^<]*)</span>", content)]


@pytest.fixture
def pages(tmp_path: Path) -> Path:
    for name, setpoint in (("a <b>", "5 nN"), ("b", "0.02 µN"), ("c", "10 nN")):
        path = tmp_path / "tree" / f"{name}.oxd"
        path.parent.mkdir(exist_ok=True)
        make_scan(path)
        with veloxd.open(path, "r+") as file:
            file.info = {"Feedback": {"Setpoint": setpoint}}
            file.save()
    ragged_file(tmp_path / "tree" / "curves.oxd", [6, 3])
    assert main(["gallery", str(tmp_path / "tree"), "-o", "pages", "--jobs", "1"]) == 0
    return tmp_path / "pages"


@needs_browser
def test_files_are_sorted_filtered_and_lead_to_their_pages(pages: Path) -> None:
    shown = content_of(pages / "index.html")
    assert names_in(shown) == ["a <b>.oxd", "b.oxd", "c.oxd", "curves.oxd"]
    assert "4 of 4 files" in shown
    for link in re.findall(r'<a class="tile" href="([^"]*)"', shown):
        page = pages / link
        pictures = re.findall(r'<img src="([^"]*)"', page.read_text())
        assert pictures
        assert all((page.parent / picture).stat().st_size for picture in pictures)
    assert len(re.findall("<figure>", content_of(next((pages / "pages").rglob("*.html"))))) in (1, 2)
    arranged = content_of(
        pages / "index.html",
        'controls.sort.value = "Feedback/Setpoint"; controls.descending.checked = true;'
        'controls.property.value = "Feedback/Setpoint"; controls.filter.value = "< 15 nN"; arrange();',
    )
    assert names_in(arranged) == ["c.oxd", "a <b>.oxd"]
    assert "2 of 4 files" in arranged


@needs_browser
def test_ten_thousand_files_are_as_few_elements(pages: Path) -> None:
    (tile,) = json.loads((pages / "files.js").read_text().split("=", 1)[1].rstrip(";\n"))[:1]
    tiles = [{**tile, "name": f"{number}.oxd"} for number in range(10_000)]
    (pages / "files.js").write_text(f"const files = {json.dumps(tiles)};\n")
    names = names_in(content_of(pages / "index.html", "view.scrollTop = 1e9; draw();"))
    assert 5 < len(names) < 100
    assert names[-1] == "9999.oxd"


def test_a_query_and_nothing_become_galleries(pages: Path, tmp_path: Path) -> None:
    catalogue = archive.index("catalogue", tmp_path / "tree")
    done = archive.gallery(catalogue.find("Setpoint < 10 nN"), "found", workers=1)
    assert len(done) == 1
    assert (Path("found") / "index.html").is_file()
    archive.gallery([], "none")
    assert (Path("none") / "files.js").read_text() == "const files = [];\n"
