"""Names of files that the library cannot take, as on Windows, whose code page lacks most characters."""

from __future__ import annotations

import errno
import shutil
from pathlib import Path
from typing import Any

import pytest

import veloxd
from veloxd import _saving
from veloxd._native import file_names, handle

NAME = "日本 Ω.oxd"


@pytest.fixture
def code_page(monkeypatch: pytest.MonkeyPatch) -> None:
    """Lets the library take names of ASCII only."""

    def file_name(path: str) -> bytes | None:
        return path.encode() if path.isascii() else None

    for module in (file_names, handle, _saving):
        monkeypatch.setattr(module, "file_name", file_name)
    monkeypatch.setattr(file_names, "label", lambda path: path.encode("ascii", "replace"))
    monkeypatch.setattr(handle, "label", file_names.label)
    monkeypatch.setattr(_saving, "label", file_names.label)


@pytest.mark.usefixtures("code_page")
def test_any_name_is_read_and_written(scan: Path, tmp_path: Path) -> None:
    folder = tmp_path / "測定"
    folder.mkdir()
    with veloxd.open(scan) as file:
        file.save(folder / NAME)
    assert (folder / NAME).read_bytes() == scan.read_bytes()
    with veloxd.open(folder / NAME, mode="r+") as file:
        assert file.path == str(folder / NAME)
        file[0].name = "Changed"
        file.save()
    with veloxd.open(folder / NAME) as file:
        assert list(file) == ["Changed"]
    with veloxd.create(folder / f"new {NAME}") as file:
        file.create_group("G").create_channel("C", [1.0])
        file.save()
    assert sorted(path.name for path in folder.iterdir()) == sorted([NAME, f"new {NAME}"])


@pytest.mark.usefixtures("code_page")
def test_failures_name_the_file(scan: Path, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    with pytest.raises(veloxd.MissingFileError, match=NAME):
        veloxd.open(NAME)
    path = tmp_path / "測定" / NAME
    path.parent.mkdir()
    path.write_bytes(scan.read_bytes()[:-5])
    with pytest.raises(veloxd.DamagedFileError, match=NAME):
        veloxd.open(path)
    before = path.read_bytes()

    def full(*_: Any) -> None:
        raise OSError(errno.ENOSPC, "full")

    with veloxd.open(scan) as file:
        monkeypatch.setattr(shutil, "copyfile", full)
        with pytest.raises(veloxd.FileSystemError, match=NAME) as refused:
            file.save(path)
    assert refused.value.errno == errno.ENOSPC
    assert path.read_bytes() == before
    assert list(path.parent.iterdir()) == [path]
