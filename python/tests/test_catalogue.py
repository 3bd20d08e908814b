"""Catalogues: what is read when, what queries find, and what readers see while one is written."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
from pathlib import Path

import numpy as np
import pytest
from samples import make_scan

import veloxd
from veloxd import archive
from veloxd._command import main
from veloxd.archive import _store, _update


@pytest.fixture
def tree(tmp_path: Path) -> Path:
    """Three scans with setpoints in several units, a damaged file, and a foreign one."""
    root = tmp_path / "tree"
    for name, setpoint, operator in (("a", "5 nN", "Ann"), ("b/µm 測", "0.02 µN", "Bob"), ("b/c", "1 V", "ann")):
        path = root / f"{name}.oxd"
        path.parent.mkdir(parents=True, exist_ok=True)
        make_scan(path)
        with veloxd.open(path, "r+") as file:
            file.info = {"Feedback": {"Setpoint": setpoint}, "Who": {"Operator": operator, "Room no": "5"}}
            file.save()
    (root / "cut.oxd").write_bytes((root / "a.oxd").read_bytes()[:700])
    (root / "notes.txt").write_text("no scan")
    for number, path in enumerate(sorted(root.rglob("*.oxd"))):
        os.utime(path, (1_777_593_600 + 86_400 * number,) * 2)  # from 2026-05-01
    return root


@pytest.fixture
def catalogue(tree: Path) -> archive.Catalogue:
    return archive.index("catalogue", tree)


def names(found: archive.Found) -> list[str]:
    return [Path(path).stem for path in found.paths]


def report() -> tuple[int, ...]:
    return tuple(archive.index("catalogue").report or ())


def test_tables_have_what_the_headers_have(catalogue: archive.Catalogue, tree: Path) -> None:
    assert catalogue.report == (4, 4, 0, 0, 1)
    assert names(catalogue.find()) == ["a", "c", "µm 測"]
    assert catalogue.sql("select error from files where error is not null").iloc[0, 0]
    row = catalogue.sql("select * from channels where channel = ? order by file limit 1", ["Topography"]).iloc[0]
    assert (row["group"], row["points"], row["lines"], row["x_unit"], row["x_range"]) == (
        "ForwardScan",
        16,
        8,
        "m",
        1e-6,
    )
    items = catalogue.sql("select path, value, number, unit from items where name = 'Setpoint' order by number")
    assert items.values.tolist()[1:] == [
        ["Feedback/Setpoint", "0.02 µN", 2e-8, "N"],
        ["Feedback/Setpoint", "1 V", 1.0, "V"],
    ]
    found = catalogue.find("Operator = 'Ann'")
    with found[0] as file:
        assert Path(file.path) == tree / "a.oxd"
    assert [file.close() for file in found] == [None]
    assert len(catalogue.find()[1:]) == 2
    assert repr(found) == "<veloxd.archive.Found: 1 files>"
    assert "catalogue" in repr(catalogue)


@pytest.mark.parametrize(
    ("query", "expected"),
    [
        ("Setpoint < 10 nN", "a"),
        ("Setpoint <= 0.005 µN", "a"),
        ("feedback/setpoint > 10 nN and channel = 'Topography'", "µm 測"),
        ("Setpoint = 20 nN or Setpoint = 1000 mV", "c,µm 測"),
        ("not Setpoint < 1 N", "c"),
        ("Operator in ('Ann', 'Bob')", "a,µm 測"),
        ("Operator ~ 'AN'", "a,c"),
        ("\"Room no\" = 5 and (path ~ '/b/' or size < 1)", "c,µm 測"),
        ("date > 2026-05-02", "µm 測"),
        ("date = 2026-05-02 or date = 2026-06", "c"),
        ("date = 2026-05-03 or date < 2026-05-01T00:00:01", "a,µm 測"),
        ("date != 2026-05", ""),
        ("width >= 1000 nm and points = 16 and unit = '°'", "a,c,µm 測"),
        ("width < 0.9 µm", ""),
        ("error ~ 'header'", "cut"),
        ("errors > 0", ""),
    ],
)
def test_queries_find(catalogue: archive.Catalogue, query: str, expected: str) -> None:
    assert sorted(names(catalogue.find(query))) == sorted(filter(None, expected.split(",")))


@pytest.mark.parametrize(
    ("query", "column", "reason"),
    [
        ("Setpont < 10 nN", 0, "No item is named 'Setpont', did you mean Setpoint?"),
        ("Setpoint < 10", 11, "Setpoint has the unit N or the unit V: give it with the number"),
        ("Setpoint < 10 m", 11, "Setpoint has the unit N or the unit V, not m"),
        ("Operator > 5 nN", 11, "Operator is a text"),
        ("Setpoint 10 nN", 9, "Expected one of"),
        ("channel = Topography", 10, "Expected a number, a text"),
        ("channel = 'Topo", 10, "This quotation has no end"),
        ("date > 2026-13", 7, "There is no such date"),
        ("date > 5", 7, "Expected a date"),
        ("size > 'x'", 7, "Expected a number"),
        ("size > 5 m", 7, "size has no unit"),
        ("size ~ 5", 7, "~ looks for a text"),
        ("channel = 5", 10, "Expected a text"),
        ("(size > 5", 9, "Expected )"),
        ("size > 5 'x'", 9, "Expected and, or, or the end"),
        ("size in 5", 8, "Expected ("),
        ("size in (5", 10, "Expected , or )"),
        ("size > 5 and", 12, "Expected a name, not 'the end'"),
        ("size ; 5", 5, "This means nothing here"),
        ("(" * 60, 50, "nested too deeply"),
    ],
)
def test_wrong_queries_are_shown_their_place(
    catalogue: archive.Catalogue, query: str, column: int, reason: str
) -> None:
    with pytest.raises(archive.QueryError) as failure:
        catalogue.find(query)
    assert failure.value.column == column
    assert reason in failure.value.reason
    assert str(failure.value).endswith(f"\n  {query}\n  {' ' * column}^")


def test_an_update_reads_what_changed_and_knows_what_moved(catalogue: archive.Catalogue, tree: Path) -> None:
    assert report() == (4, 0, 0, 0, 1)
    number = catalogue.sql("select file from items where value = '5 nN'").iloc[0, 0]
    (tree / "a.oxd").rename(tree / "b" / "moved.oxd")
    assert report() == (4, 1, 1, 0, 1)
    moved = archive.Catalogue("catalogue")
    assert names(moved.find("Setpoint = 5 nN")) == ["moved"]
    assert moved.sql("select file from items where value = '5 nN'").iloc[0, 0] == number

    with veloxd.open(tree / "b" / "c.oxd", "r+") as file:
        file.info = {"Feedback": {"Setpoint": "7 nN"}}
        file.save()
    (tree / "cut.oxd").unlink()
    shutil.copy(tree / "b" / "moved.oxd", tree / "copy.oxd")
    assert report() == (4, 2, 0, 1, 0)
    now = archive.Catalogue("catalogue")
    assert names(now.find("Setpoint < 10 nN")) == ["c", "moved", "copy"]
    assert now.sql("select count(*) from items where value = '1 V'").iloc[0, 0] == 0
    assert names(moved.find("Setpoint = 1 V")) == ["c"]  # what was opened before is as it was


def test_other_folders_are_added_and_those_inside_others_are_not(catalogue: archive.Catalogue, tree: Path) -> None:
    other = tree.parent / "other"
    other.mkdir()
    make_scan(other / "x")
    assert archive.index("catalogue", tree / "b", other / "x").report == (5, 1, 0, 0, 1)
    shutil.rmtree(tree)
    assert report() == (1, 0, 0, 4, 0)
    with pytest.raises(FileNotFoundError):
        archive.index("catalogue", tree)
    assert len(archive.Catalogue("catalogue").find()) == 1


def test_many_updates_leave_few_parts(
    catalogue: archive.Catalogue, tree: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(_update, "_MOST_PARTS", 3)
    for count in range(1, 9):
        with veloxd.open(tree / "a.oxd", "r+") as file:
            file.info = {"Feedback": {"Setpoint": f"{count} pN"}}
            file.save()
        archive.index("catalogue")
    now = archive.Catalogue("catalogue")
    assert names(now.find("Setpoint = 8 pN")) == ["a"]
    assert now.sql("select count(*) from items where name = 'Setpoint'").iloc[0, 0] == 3
    assert len(list(Path("catalogue").glob("*.parquet"))) < 12


def test_an_update_that_fails_leaves_the_catalogue(
    catalogue: archive.Catalogue, tree: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    make_scan(tree / "new.oxd")
    with _store.locked(Path("catalogue")), pytest.raises(BlockingIOError, match="updated by another process"):
        archive.index("catalogue")
    # A wheel has a tool of its own, which PATH does not matter to.
    for name in ("VELOXD_TOOL", "PATH") if "VELOXD_TOOL" in os.environ else ("VELOXD_TOOL",):
        with monkeypatch.context() as patch:
            patch.setenv(name, "/missing")
            patch.delenv("VELOXD_TOOL") if name == "PATH" else None
            with pytest.raises(veloxd.LibraryError):
                archive.index("catalogue")
    old = tree.parent / "old"
    old.write_text("#!/bin/sh\necho 'oxd: \"scan\": no such command' >&2\nexit 2\n")
    old.chmod(0o755)
    with monkeypatch.context() as patch:
        patch.setenv("VELOXD_TOOL", str(old))
        with pytest.raises(veloxd.LibraryError, match="older than this package"):
            archive.index("catalogue")
    assert names(archive.Catalogue("catalogue").find()) == ["a", "c", "µm 測"]
    assert report() == (5, 1, 0, 0, 1)
    assert len(list(Path("catalogue").glob("*.parquet"))) <= 6


def test_what_is_no_catalogue_is_refused(tmp_path: Path) -> None:
    with pytest.raises(FileNotFoundError, match="there is no catalogue"):
        archive.Catalogue(tmp_path)
    for text in ("{", "{}", "[]", '{"format": 99}'):
        (tmp_path / "catalogue.json").write_text(text)
        with pytest.raises(veloxd.DamagedFileError):
            archive.Catalogue(tmp_path)


def test_an_archive_of_nothing_is_a_catalogue(tmp_path: Path) -> None:
    (tmp_path / "empty").mkdir()
    catalogue = archive.index("catalogue", tmp_path / "empty")
    assert catalogue.find("size > 5 and channel = 'x'").paths == []
    assert catalogue.names() == []
    assert catalogue.sql("select * from channels").columns[0] == "file"


@pytest.mark.skipif(os.name == "nt", reason="Names have no line breaks there.")
def test_odd_names_are_files_like_others(tmp_path: Path) -> None:
    (tmp_path / "odd").mkdir()
    make_scan(tmp_path / "odd" / "plain.oxd")
    shutil.copy(tmp_path / "odd" / "plain.oxd", os.fsencode(tmp_path / "odd") + b"/\xff.oxd")
    shutil.copy(tmp_path / "odd" / "plain.oxd", tmp_path / "odd" / "a\nb.oxd")
    (tmp_path / "odd" / "gone.oxd").symlink_to("nowhere")
    catalogue = archive.index("catalogue", tmp_path / "odd")
    assert catalogue.report == (4, 4, 0, 0, 2)
    assert names(catalogue.find()) == ["plain", "\ufffd"]


def test_command_lines(tree: Path, capfd: pytest.CaptureFixture[str], monkeypatch: pytest.MonkeyPatch) -> None:
    def run(*arguments: str) -> tuple[int, str, str]:
        code = main(list(arguments))
        return (code, *capfd.readouterr())

    assert run("index")[:2] == (2, "")
    assert run("find", "size > 0")[0] == 3
    assert run("index", str(tree)) == (0, "4 files: 4 read, 0 moved, 0 removed, 1 cannot be read\n", "")
    monkeypatch.setenv("VELOXD_CATALOGUE", "veloxd-catalogue")
    assert run("find", "Setpoint < 10 nN", "--paths") == (0, f"{tree / 'a.oxd'}\n", "")
    shown = json.loads(run("find", "Setpoint < 10 nN", "--json")[1])
    assert (shown["path"], shown["modified"][:10]) == (str(tree / "a.oxd"), "2026-05-01")
    assert run("find", "Setpoint < 10 nN")[1].startswith("2026-05-01 00:00 ")
    assert run("find", "size < 0", "--json") == (1, "", "")
    code, results, messages = run("find", "Setpont < 10 nN")
    assert (code, results) == (2, "")
    assert messages.startswith("veloxd: No item is named 'Setpont'")
    assert run("index", "missing")[0] == 3
    Path("veloxd-catalogue/catalogue.json").write_text("{")
    assert run("find", "size > 0")[0] == 4
    monkeypatch.setenv("VELOXD_TOOL", "/missing")
    Path("veloxd-catalogue/catalogue.json").unlink()
    assert run("index", str(tree))[0] == 70


def test_readers_that_leave_and_interruptions_end_the_command_quietly(
    catalogue: archive.Catalogue, monkeypatch: pytest.MonkeyPatch, capfd: pytest.CaptureFixture[str]
) -> None:
    def interrupted(*arguments: object) -> None:
        raise KeyboardInterrupt

    monkeypatch.setattr(archive, "Catalogue", interrupted)
    assert main(["find", ""]) == 130
    command = "import sys, veloxd._command; sys.exit(veloxd._command.main())"
    line = f'"$0" -c "{command}" find -C catalogue "" | true; exit ${{PIPESTATUS[0]}}'
    done = subprocess.run(["bash", "-c", line, os.sys.executable], capture_output=True, check=False)  # type: ignore[attr-defined]
    assert (done.returncode, done.stderr) == (0, b"")


def test_numbers_are_those_of_the_library(catalogue: archive.Catalogue, tree: Path) -> None:
    axes = catalogue.sql("select signal_min, signal_range from channels where channel = 'Topography'")
    with veloxd.open(tree / "a.oxd") as file:
        signal = file["ForwardScan"]["Topography"].signal
        assert np.array_equal(axes.iloc[0], [signal.minimum, signal.range])
