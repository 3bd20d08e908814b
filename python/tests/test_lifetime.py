"""What outlives what: closed and deleted things, handles given out again, threads, forks and pickles."""

from __future__ import annotations

import contextlib
import copy
import errno
import gc
import os
import pickle
import shutil
import subprocess
import sys
import threading
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any, Callable

import numpy as np
import pytest

import veloxd
from veloxd._native.library import library

USES: list[Callable[[Any], Any]] = [
    lambda things: things["file"].groups,
    lambda things: things["file"].info,
    lambda things: things["file"].save("other.oxd"),
    lambda things: things["file"].version,
    lambda things: things["file"].__enter__(),
    lambda things: things["group"].name,
    lambda things: things["group"]["Topography"],
    lambda things: things["group"].create_channel("C", [1.0]),
    lambda things: things["channel"].shape,
    lambda things: things["channel"][0],
    lambda things: things["channel"].valid,
    lambda things: things["channel"].write(0.0),
    lambda things: setattr(things["axis"], "unit", "V"),
    lambda things: things["axis"].as_dict(),
    lambda things: list(things["info"]),
    lambda things: things["info"]["Scan"],
    lambda things: things["info"].update({"Scan": {}}),
    lambda things: pickle.dumps(things["channel"]),
]


def things_of(path: Path, mode: str = "r+") -> dict[str, Any]:
    file = veloxd.open(path, mode=mode)
    channel = file["ForwardScan"]["Topography"]
    return {"file": file, "group": file[0], "channel": channel, "axis": channel.x, "info": file.info}


def test_nothing_of_a_closed_file_reaches_the_file_that_gets_its_handle(scan: Path) -> None:
    things = things_of(scan)
    number = things["file"]._handle.number
    things["file"].close()
    things["file"].close()
    with veloxd.open(scan, mode="r+") as other:
        assert other._handle.number == number, "the test needs the number to be given out again"
        before = other[0]["Topography"].raw, other.info.to_dict()
        for use in USES:
            with pytest.raises(veloxd.ClosedError):
                use(things)
        np.testing.assert_array_equal(other[0]["Topography"].raw, before[0])
        assert other.info.to_dict() == before[1]
    assert not Path("other.oxd").exists()
    assert things["file"].closed
    for thing in things.values():
        assert isinstance(repr(thing), str) if thing is not things["axis"] and thing is not things["info"] else True


def test_nothing_of_a_deleted_group_reaches_the_one_that_takes_its_id(scan: Path) -> None:
    with veloxd.open(scan, mode="r+") as file:
        group, channel = file[0], file[0]["Topography"]
        scan_info = file.info["Scan"]
        del file["ForwardScan"]
        file.create_group("New", slots=1).create_channel("Topography", [1.0])
        file.info = {"Scan": {"Image size": "2 µm"}}
        for use in (lambda: group.name, lambda: channel[0], lambda: channel.x.unit, lambda: len(group)):
            with pytest.raises(veloxd.DeletedError):
                use()
        with pytest.raises(veloxd.DeletedError):
            scan_info["Image size"]
        assert "deleted" in repr(channel)


def test_a_file_lives_as_long_as_what_is_in_it(scan: Path) -> None:
    channel = veloxd.open(scan)["ForwardScan"]["Topography"]
    gc.collect()
    assert channel.shape == (8, 16)
    number = channel._handle.number
    del channel
    gc.collect()
    other = veloxd.open(scan)
    assert other._handle.number <= number, "the handle was given back"


def test_opening_many_files_and_failing_leaks_no_handles(scan: Path, tmp_path: Path) -> None:
    (tmp_path / "bad.oxd").write_bytes(scan.read_bytes()[:-1])
    first = veloxd.create()._handle.number
    for _ in range(20):
        veloxd.open(scan)
        for name, options in (("bad.oxd", {}), ("none.oxd", {}), ("bad.oxd", {"salvage": True})):
            with contextlib.suppress(veloxd.Error):
                veloxd.open(tmp_path / name, **options)
    gc.collect()
    assert veloxd.create()._handle.number <= first + 1


def test_one_object_stands_for_one_thing(scan: Path) -> None:
    with veloxd.open(scan) as file:
        assert file["ForwardScan"] is file.groups[0]
        assert file[0]["Phase"] is file[0][-1]


def test_threads_that_read_write_open_and_fail_do_not_disturb_each_other(scan: Path, tmp_path: Path) -> None:
    with veloxd.open(scan) as file:
        expected = file[0]["Topography"].values

    def work(number: int) -> None:
        for turn in range(15):
            with veloxd.open(scan, mode="r+") as own:
                np.testing.assert_array_equal(own[0]["Topography"].values, expected)
                own[0]["Topography"].raw = number
                own.info["Scan"]["Turn"] = str(turn)
                with pytest.raises(KeyError):
                    own["Missing"]
                with pytest.raises(FileNotFoundError):
                    veloxd.open(tmp_path / f"missing {number}")
                assert (shared[0]["Phase"][number % 8] == phase[number % 8]).all()
                assert (own[0]["Topography"].raw == number).all()
                own.save(tmp_path / f"{number}.oxd")

    with veloxd.open(scan) as shared:
        phase = shared[0]["Phase"].values
        with ThreadPoolExecutor(6) as pool:
            list(pool.map(work, range(6)))
    for number in range(6):
        with veloxd.open(tmp_path / f"{number}.oxd") as own:
            assert (own[0]["Topography"].raw == number).all()
            assert own.info["Scan"]["Turn"] == "14"


def test_threads_share_a_file_that_opens_when_it_is_first_used(scan: Path) -> None:
    with veloxd.open(scan) as file:
        channel = pickle.loads(pickle.dumps(file[0]["Topography"]))
        expected = file[0]["Topography"].values
    barrier = threading.Barrier(4)

    def read(_: int) -> Any:
        barrier.wait()
        return channel.values

    with ThreadPoolExecutor(4) as pool:
        for values in pool.map(read, range(4)):
            np.testing.assert_array_equal(values, expected)


def test_a_pickle_holds_the_path_and_the_place(scan: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    with veloxd.open("scan.oxd", mode="r+") as file:
        del file[0]["Topography"]
        file.create_group("Second")
        with pytest.raises(pickle.PicklingError, match="not saved"):
            pickle.dumps(file)
        file.save()
        pickled = pickle.dumps([file, file["Second"], file[0]["Phase"]])
        expected = file[0]["Phase"].values
        assert copy.deepcopy(file)["Second"].name == "Second"
    monkeypatch.chdir(scan.parent.parent)
    again, second, phase = pickle.loads(pickled)
    np.testing.assert_array_equal(phase.values, expected)
    assert (again.mode, second.name) == ("r", "Second")
    assert again["Second"] is second, "they share one data set"
    scan.unlink()
    lost = pickle.loads(pickled)[2]
    with pytest.raises(FileNotFoundError):
        lost.values
    assert "No such file" in repr(lost)


def test_failures_of_the_system_are_pickled_whole() -> None:
    with pytest.raises(veloxd.MissingFileError) as caught:
        veloxd.open("missing.oxd")
    again = pickle.loads(pickle.dumps(caught.value))
    assert type(again) is veloxd.MissingFileError
    assert (again.errno, again.filename, str(again)) == (errno.ENOENT, "missing.oxd", str(caught.value))
    assert again.details == caught.value.details != ""


@pytest.mark.skipif(not hasattr(os, "fork"), reason="needs fork")
def test_a_child_must_open_files_of_its_own(scan: Path) -> None:
    program = """
import os, sys, threading, warnings, veloxd
warnings.simplefilter("ignore")  # Python warns of forks with threads
file = veloxd.open(sys.argv[1])
phase = file[0]["Phase"]
stop = threading.Event()
def work():
    while not stop.is_set():
        phase.values
thread = threading.Thread(target=work)
thread.start()
for _ in range(8):
    child = os.fork()
    if child == 0:
        try:
            phase.values
        except veloxd.ForkError:
            with veloxd.open(sys.argv[1]) as own:
                os._exit(int((own[0]["Phase"].valid).all()) + 41)
        os._exit(1)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 42
stop.set()
thread.join()
print(phase.shape)
"""
    done = subprocess.run(
        [sys.executable, "-c", program, scan], capture_output=True, text=True, timeout=60, check=False
    )
    assert (done.stdout, done.returncode) == ("(8, 16)\n", 0), done.stderr


def test_failures_of_others_who_use_the_library_are_not_taken_for_our_own(scan: Path) -> None:
    library().GetGroupCount(10**9)
    assert library().VELHasLastError()
    with veloxd.open(scan) as file:
        library().GetGroupCount(10**9)
        assert file[0].name == "ForwardScan"
        library().GetGroupCount(10**9)
        assert file[0][0].values.shape == (8, 16)


def test_the_library_is_found_in_the_folder_of_the_package(tmp_path: Path) -> None:
    package = Path(shutil.copytree(Path(veloxd.__file__).parent, tmp_path / "veloxd"))
    loaded = Path(library()._name)
    for name in ("VELOxdDll", "VELOxdBlocks"):
        shutil.copy(loaded.with_name(loaded.name.replace("VELOxdDll", name)), package)
    environment = {**os.environ, "PYTHONPATH": os.pathsep.join([str(tmp_path), str(Path(np.__file__).parents[1])])}
    environment.pop("VELOXD_LIBRARY", None)
    program = "import veloxd, veloxd._native.library as used; print(used.library()._name, veloxd.__file__)"
    start = [sys.executable, "-S", "-c", program]  # without links to sources, which would come first
    done = subprocess.run(start, env=environment, capture_output=True, text=True, check=True)
    assert done.stdout.split() == [str(package / loaded.name), str(package / "__init__.py")]


@pytest.mark.parametrize("library_path", ["missing", "not a library"])
def test_a_library_that_cannot_be_loaded_is_an_import_error(tmp_path: Path, library_path: str) -> None:
    (tmp_path / "not a library").write_text("text")
    environment = {**os.environ, "VELOXD_LIBRARY": str(tmp_path / library_path)}
    program = "import veloxd\ntry: veloxd.create()\nexcept ImportError as error: print(error, bool(error.details))"
    done = subprocess.run([sys.executable, "-c", program], env=environment, capture_output=True, text=True, check=True)
    assert "VELOXD_LIBRARY" in done.stdout
    assert done.stdout.endswith("True\n")
