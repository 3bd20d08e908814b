"""Batches: what is computed, and what is left when files fail and processes are killed."""

from __future__ import annotations

import json
import math
import os
import signal
import struct
import subprocess
import sys
import time
from pathlib import Path
from typing import Any

import numpy as np
import pandas as pd
import pytest
import xarray as xr
from samples import make_scan

import veloxd
from veloxd import archive
from veloxd._command import main

FILES = 8


@pytest.fixture
def tree(tmp_path: Path) -> Path:
    root = tmp_path / "tree"
    (root / "b").mkdir(parents=True)
    for number in range(FILES):
        make_scan(root / ("b" if number % 2 else "") / f"{number} µ.oxd")
    (root / "zcut.oxd").write_bytes(b"no scan")
    return root


def paths_in(root: Path) -> list[Path]:
    return sorted(root.rglob("*.oxd"))


def content(folder: Path) -> dict[str, bytes]:
    return {
        str(path.relative_to(folder)): path.read_bytes()
        for path in folder.rglob("*")
        if path.is_file() and path.name != "journal.jsonl"
    }


@pytest.mark.parametrize("offset", [0.0, 1e3])
def test_heights_are_those_computed_by_hand(offset: float) -> None:
    n, amplitude = 1000, 3e-9
    ramp = amplitude * (np.arange(n) - (n - 1) / 2)  # n equal steps around 0
    sine = amplitude * np.sin(2 * np.pi * np.arange(n) / n)
    step = amplitude * np.repeat([0.0, 1.0], [n // 4, 3 * n // 4])
    root = math.sqrt((n**2 - 1) / 12)
    expected = {
        "ramp": (n / 4, root, 0, 3 * (3 * n**2 - 7) / (5 * (n**2 - 1)), n - 1),
        "sine": (2 / n / math.tan(math.pi / n), math.sqrt(0.5), 0, 1.5, 2),
        "step": (3 / 8, math.sqrt(3) / 4, -2 / math.sqrt(3), 7 / 3, 1),
    }
    for name, values in (("ramp", ramp), ("sine", sine), ("step", step)):
        surface = np.tile(values, (4, 1)) + offset * amplitude
        Sa, Sq, Ssk, Sku, Sz = archive.heights(surface)  # noqa: N806
        tolerance = 1e-12 * max(1.0, offset)
        assert np.allclose(
            [Sa / amplitude, Sq / amplitude, Ssk, Sku, Sz / amplitude], expected[name], rtol=tolerance, atol=tolerance
        )
    assert archive.heights([[5.0, np.nan]])[:2] == (0, 0)
    assert math.isnan(archive.heights([np.nan]).Sa)


def test_channels_are_levelled_and_exported(tree: Path, capfd: pytest.CaptureFixture[str]) -> None:
    stem = "0 µ.oxd-0-0-ForwardScan-Topography"
    for form, suffix in (("png", "png"), ("tiff", "tif"), ("netcdf", "nc")):
        out = f"out-{form}"
        assert main(["batch", "level", "--export", form, "-c", "Topography", str(tree), "-o", out, "--jobs", "1"]) == 1
        told = capfd.readouterr().err
        assert "zcut.oxd: DamagedFileError: " in told
        assert "Traceback" not in told
        assert len(list(Path(out).rglob(f"*.{suffix}"))) == FILES
        assert (Path(out) / "b" / f"{stem.replace('0 µ', '1 µ')}.{suffix}").is_file()
        table = pd.read_parquet(f"{out}/results.parquet")
        assert list(table["path"]) == sorted(map(str, paths_in(tree)), key=os.fsencode) or len(table) == FILES + 1
        assert table["error"].notna().sum() == 1
    with veloxd.open(tree / "0 µ.oxd") as file:
        expected = file["ForwardScan"]["Topography"].level("line")
    with xr.open_dataarray(f"out-netcdf/{stem}.nc") as array:
        assert np.array_equal(array.values, expected)
        assert array.attrs["units"] == "m"
    tiff = Path(f"out-tiff/{stem}.tif").read_bytes()
    assert np.array_equal(
        np.frombuffer(tiff, "<f4", expected.size, 8).reshape(expected.shape), expected[::-1].astype("f4")
    )
    (directory,) = struct.unpack_from("<I", tiff, 4)
    assert b'"unit": "m"' in tiff[directory:]
    from matplotlib import image

    assert image.imread(f"out-png/{stem}.png").shape == (*expected.shape, 4)


def test_statistics_state_their_filter(tree: Path, capfd: pytest.CaptureFixture[str]) -> None:
    (tree / "zcut.oxd").unlink()
    assert main(["stats", "--op", "line", "--json", str(tree), "--jobs", "2", "-o", "out"]) == 0
    rows = [json.loads(line) for line in capfd.readouterr().out.splitlines()]
    assert len(rows) == 2 * FILES
    assert rows[0]["filter"] == "F-operation: each line by line; S-filter: none; L-filter: none"
    with veloxd.open(rows[0]["path"]) as file:
        exact = archive.heights(file["ForwardScan"][rows[0]["channel"]].level("line"))
    assert rows[0]["unit"] == "m"
    assert pd.read_parquet("out/results.parquet")["Sq"][0] == exact.Sq
    assert main(["stats", "-c", "missing", str(tree / "0 µ.oxd"), "--jobs", "1"]) == 1
    assert "There is no such channel" in capfd.readouterr().err
    assert main(["stats"]) == 1
    assert "there are no such files" in capfd.readouterr().err


class Flaky:
    """Fails the first time for each file, and for one file always; counts in files, as each call may be elsewhere."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder

    def __repr__(self) -> str:
        return "Flaky"

    def __call__(self, path: str) -> dict[str, Any]:
        tries = self.folder / f"{Path(path).name}.tries"
        with open(tries, "a") as file:
            file.write("x")
        count = len(tries.read_text())
        if count == 1 or Path(path).name.startswith("zcut"):
            raise ValueError(f"try {count}")
        return {"tries": np.int64(count), "third": 1 / 3}


def test_a_task_is_tried_twice_and_a_batch_goes_on(tree: Path, tmp_path: Path) -> None:
    tries = tmp_path / "tries"
    tries.mkdir()
    done = archive.map(Flaky(tries), paths_in(tree), "out", workers=2)
    failed = done[done["error"].notna()]
    assert failed["error"].tolist() == ["ValueError: try 2"]
    assert set(done["tries"].dropna()) == {2}
    assert set(done["third"].dropna()) == {1 / 3}
    before = {path.name: path.read_text() for path in tries.iterdir()}

    with pytest.raises(veloxd.ExistingFileError):
        archive.map(Flaky(tries), paths_in(tree), "out", workers=1)
    with pytest.raises(veloxd.Error, match="another batch"):
        archive.map(archive.Statistics(), paths_in(tree), "out", resume=True, workers=1)
    with pytest.raises(veloxd.Error, match="in the folder to write to"):
        archive.map(Flaky(tries), paths_in(tree), tree.parent, workers=1)

    # What a kill leaves: half a line, and a file that was being written.
    journal = Path("out/journal.jsonl")
    lines = journal.read_bytes().splitlines(keepends=True)
    journal.write_bytes(b"".join(lines[:4]) + lines[4][:10])
    Path("out/.oxd-0123.tmp").write_bytes(b"half")
    again = archive.map(Flaky(tries), paths_in(tree), "out", resume=True, workers=1)
    pd.testing.assert_frame_equal(again.drop(columns=["tries", "error"]), done.drop(columns=["tries", "error"]))
    assert not list(Path("out").rglob(".oxd-*"))
    after = {path.name: path.read_text() for path in tries.iterdir()}
    assert sum(after[name] == before[name] for name in before) >= 2
    assert archive.map(Flaky(tries), []).empty


class Killer:
    """Kills its own process the first time that it comes to a certain file."""

    def __init__(self, marker: Path) -> None:
        self.marker = marker

    def __call__(self, path: str) -> dict[str, str]:
        if Path(path).name.startswith("3") and not self.marker.exists():
            self.marker.touch()
            os.kill(os.getpid(), signal.SIGKILL)
        return {"name": Path(path).name}


@pytest.mark.skipif(os.name == "nt", reason="There are no such signals.")
def test_a_killed_worker_costs_no_result(tree: Path, tmp_path: Path) -> None:
    done = archive.map(Killer(tmp_path / "marker"), paths_in(tree), "out", workers=2)
    assert (tmp_path / "marker").exists()
    assert done["error"].isna().all()
    assert done["name"].tolist() == [path.name for path in paths_in(tree)]


@pytest.mark.skipif(os.name == "nt", reason="There are no such signals.")
def test_a_killed_client_resumes_to_the_same_bytes(tree: Path, tmp_path: Path) -> None:
    for number in range(40):
        make_scan(tree / f"more {number}.oxd")
    command = [
        sys.executable,
        "-c",
        "import sys, veloxd._command as c; sys.exit(c.main())",
        "batch",
        "level",
        str(tree),
    ]
    command += ["--jobs", "2", "-o"]
    (tree / "zcut.oxd").unlink()
    subprocess.run([*command, "whole"], check=True)
    with subprocess.Popen([*command, "killed"], stderr=subprocess.DEVNULL, start_new_session=True) as client:
        journal = Path("killed/journal.jsonl")
        while not journal.exists() or journal.read_bytes().count(b"\n") < 4:
            time.sleep(0.01)
            assert client.poll() is None
        client.kill()
    done = journal.read_bytes().count(b"\n") - 1
    assert done < FILES + 40
    subprocess.run([*command, "killed", "--resume"], check=True)
    assert content(Path("killed")) == content(Path("whole"))
    assert journal.read_bytes().count(b"\n") - 1 == FILES + 40  # none of those that were done again


def test_a_cluster_is_reached_by_its_address(tree: Path) -> None:
    from distributed import LocalCluster

    with LocalCluster(n_workers=1, threads_per_worker=1, dashboard_address=None) as cluster:
        done = archive.map(archive.Statistics(), paths_in(tree)[:2], scheduler=cluster.scheduler_address)
    assert done["error"].isna().all()
    assert len(done) == 4
