"""Saving: in one step, with permissions and links as they were, and what the library reports meanwhile."""

from __future__ import annotations

import ctypes
import errno
import logging
import os
import stat
from pathlib import Path
from typing import Any

import pytest

import veloxd
from veloxd import _replacing
from veloxd._native.log import Capture

posix = pytest.mark.skipif(os.name != "posix", reason="needs permissions and links")


def leftovers(folder: Path) -> list[Path]:
    return list(folder.glob(".oxd-*"))


def renamed(path: Path, name: str = "Renamed", **options: Any) -> None:
    with veloxd.open(path, mode="r+") as file:
        file[0].name = name
        file.save(**options)


def test_leaving_without_saving_changes_nothing(scan: Path) -> None:
    before = scan.read_bytes()
    with veloxd.open(scan, mode="r+") as file:
        file[0].name = "Renamed"
        file[0][0].values = 0.0
    assert scan.read_bytes() == before


def test_saving_elsewhere_leaves_the_file_and_its_name(scan: Path, tmp_path: Path) -> None:
    before = scan.read_bytes()
    with veloxd.open(scan, mode="r+") as file:
        file[0].name = "Renamed"
        report = file.save(tmp_path / "ä copy.oxd")
        assert report.path == str(tmp_path / "ä copy.oxd")
        assert file.path == str(scan)
        assert scan.read_bytes() == before
        file.save()
    assert scan.read_bytes() == (tmp_path / "ä copy.oxd").read_bytes()
    with veloxd.open(scan) as file:
        assert (list(file), file.version) == (["Renamed"], 2)


@posix
def test_permissions_and_links_stay(scan: Path, tmp_path: Path) -> None:
    scan.chmod(0o640)
    link = tmp_path / "link.oxd"
    link.symlink_to("scan.oxd")
    renamed(link)
    assert link.is_symlink()
    assert stat.S_IMODE(scan.stat().st_mode) == 0o640
    with veloxd.open(scan) as file:
        assert list(file) == ["Renamed"]
    mask = os.umask(0o027)
    try:
        with veloxd.open(scan) as file:
            file.save("new.oxd")
    finally:
        os.umask(mask)
    assert stat.S_IMODE(Path("new.oxd").stat().st_mode) == 0o640
    assert not leftovers(tmp_path)


@pytest.mark.parametrize("step", ["os.fsync", "os.replace", "_finish", "call"])
def test_a_save_that_fails_leaves_the_old_file_and_nothing_else(
    scan: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch, step: str
) -> None:
    before = scan.read_bytes()
    with veloxd.open(scan, mode="r+") as file:
        file[0].name = "Renamed"

        def fail(*arguments: Any, **_: Any) -> None:
            raise KeyboardInterrupt if step == "_finish" else OSError(28, "full")

        with monkeypatch.context() as patch:
            patch.setattr(
                {"_finish": "veloxd._replacing._finish", "call": "veloxd._saving._inexact_samples"}.get(step, step),
                fail,
            )
            with pytest.raises((OSError, KeyboardInterrupt)):
                file.save()
        assert scan.read_bytes() == before
        assert not leftovers(tmp_path)
        file.save()
    with veloxd.open(scan) as file:
        assert list(file) == ["Renamed"]


@posix
def test_the_library_writes_no_further_than_the_disk_has_room(scan: Path, tmp_path: Path) -> None:
    import resource

    before = scan.read_bytes()
    limits = resource.getrlimit(resource.RLIMIT_FSIZE)
    import signal

    usual = signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (700, limits[1]))
    try:
        with pytest.raises(OSError, match="disk full") as caught, veloxd.open(scan, mode="r+") as file:
            file.save()
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, limits)
        signal.signal(signal.SIGXFSZ, usual)
    assert (type(caught.value), caught.value.filename) == (veloxd.FileSystemError, str(scan))
    assert scan.read_bytes() == before
    assert not leftovers(tmp_path)


def test_files_that_may_not_be_replaced_are_not(scan: Path, tmp_path: Path) -> None:
    before = scan.read_bytes()
    with pytest.raises(FileExistsError):
        veloxd.create(scan)
    with veloxd.open(scan) as file, pytest.raises(veloxd.ReadOnlyError):
        file.save()
    with veloxd.open(scan) as file, pytest.raises(FileExistsError):
        file.save("late.oxd", overwrite=not file.save("late.oxd"))
    Path("late.oxd").unlink()
    with veloxd.create("late.oxd") as late, pytest.raises(FileExistsError):
        Path("late.oxd").write_text("somebody else's")
        late.save()
    assert Path("late.oxd").read_text() == "somebody else's"
    with veloxd.open("w.oxd", mode="x") as file:
        assert file.save(overwrite=False).clipped == 0
        file.save()
    with veloxd.open("w.oxd", mode="w") as file:
        file.save()
    for target, kind in ((tmp_path, OSError), (tmp_path / "no" / "folder.oxd", FileNotFoundError)):
        with veloxd.open(scan) as file, pytest.raises(kind):
            file.save(target)
    scan.chmod(0o444)
    with pytest.raises(PermissionError) as caught:
        renamed(scan)
    assert (caught.value.filename, type(caught.value)) == (str(scan), veloxd.FileAccessError)
    assert scan.read_bytes() == before
    assert not leftovers(tmp_path)


@posix
def test_file_systems_without_links_or_flushing_take_new_files_as_well(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    def fail(number: int) -> Any:
        def refuse(*_: Any) -> None:
            raise OSError(number, os.strerror(number))

        return refuse

    for number in (errno.EPERM, errno.ENOTSUP):
        monkeypatch.setattr(os, "link", fail(number))
        monkeypatch.setattr(os, "fsync", fail(errno.EINVAL))
        with veloxd.create(f"new {number}.oxd") as file:
            with monkeypatch.context() as patch, pytest.raises(OSError, match="space"):
                patch.setattr(os, "replace", fail(errno.ENOSPC))
                file.save()
            assert not Path(file.path).exists()
            file.save()
        with veloxd.open(f"new {number}.oxd"):
            pass
        Path("temporary").touch()
        Path("theirs").write_text("somebody else's")
        with pytest.raises(FileExistsError):
            _replacing._move("temporary", "theirs", overwrite=False)
        assert Path("theirs").read_text() == "somebody else's"
    assert not leftovers(tmp_path)


@posix
def test_whoever_loses_the_group_of_a_file_gives_others_no_more_rights(
    scan: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    def refuse(*_: Any) -> None:
        raise PermissionError

    scan.chmod(0o664)
    monkeypatch.setattr(_replacing.os, "fchown", refuse)
    renamed(scan)
    assert stat.S_IMODE(scan.stat().st_mode) == 0o644


def test_the_log_goes_to_the_logger(scan: Path, tmp_path: Path, caplog: Any, capfd: Any) -> None:
    odd = scan.read_bytes().replace(b"Points=16", b"Points=1x", 1)
    (tmp_path / "odd.oxd").write_bytes(odd)
    with caplog.at_level(logging.WARNING, "veloxd"):
        veloxd.open(tmp_path / "odd.oxd", salvage=True).close()
    assert [(record.name, record.levelname) for record in caplog.records] == [("veloxd", "WARNING")]
    assert "lexical cast" in caplog.records[0].getMessage()
    with Capture() as capture:
        ctypes.CDLL(None).puts(b"another thread's")
    capture.publish()
    ctypes.CDLL(None).puts(b"still printed")
    ctypes.CDLL(None).fflush(None)
    assert capfd.readouterr().out == "another thread's\nstill printed\n"
