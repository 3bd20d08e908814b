"""The engine ``veloxd`` of xarray, which opens files lazily."""

from __future__ import annotations

import os
from collections.abc import Iterable
from typing import Any, Callable, Union

import xarray as xr
from xarray.backends import BackendArray, BackendEntrypoint, CachingFileManager
from xarray.core import indexing

from .. import file as oxd
from .._native.library import LOCK
from ..channel import Channel
from ..errors import ClosedError, ForkError
from .attributes import flatten
from .reading import file_datasets, group_dataset

_MOST_TRIES = 100

Path = Union[str, "os.PathLike[str]"]


class ChannelArray(BackendArray):
    """The values of a channel, read when they are indexed.

    It keeps the path and the place of its channel, not an open file, so that it can be pickled. xarray keeps the files
    that were used last open, and closes others.
    """

    def __init__(self, channel: Channel, manager: CachingFileManager[oxd.File]) -> None:
        self.shape = channel.shape
        self.dtype = channel.dtype
        self._manager = manager
        self._group = [group._place for group in _groups(channel)].index(channel.group._place)
        self._slot = channel._place[1]

    def __getitem__(self, key: indexing.ExplicitIndexer) -> Any:
        return indexing.explicit_indexing_adapter(key, self.shape, indexing.IndexingSupport.BASIC, self._read)

    def _read(self, key: tuple[Any, ...]) -> Any:
        return _use(self._manager, lambda file: file.groups[self._group]._channel(self._slot)[key])


def _groups(channel: Channel) -> tuple[Any, ...]:
    return oxd.File(channel._handle).groups


class VeloxdBackend(BackendEntrypoint):
    """Opens .oxd files: ``xarray.open_dataset(path, engine="veloxd", group="ForwardScan")``."""

    description = "Open .oxd files of scanning probe microscopes"
    open_dataset_parameters = ("filename_or_obj", "drop_variables", "group")

    def open_dataset(
        self,
        filename_or_obj: Any,
        *,
        drop_variables: str | Iterable[str] | None = None,
        group: str | int | None = None,
    ) -> xr.Dataset:
        """The channels of one group, by its name or position; it need not be named if the file has only one."""

        def build(file: oxd.File, values: Callable[[Channel], Any]) -> xr.Dataset:
            dataset = group_dataset(file[_chosen(file, group)], values)
            dataset.attrs.update(flatten(file.info))
            return dataset

        dataset: xr.Dataset = _opened(filename_or_obj, build)
        return _without(dataset, drop_variables)

    def open_groups_as_dict(
        self, filename_or_obj: Any, *, drop_variables: str | Iterable[str] | None = None
    ) -> dict[str, xr.Dataset]:
        """All groups by their paths, the information as attributes of the root."""
        datasets = _opened(filename_or_obj, file_datasets)
        return {path: _without(dataset, drop_variables) for path, dataset in datasets.items()}

    def open_datatree(self, filename_or_obj: Any, **options: Any) -> xr.DataTree:
        """The file as a tree with a node for each group."""
        tree: xr.DataTree = xr.DataTree.from_dict(self.open_groups_as_dict(filename_or_obj, **options))
        return tree

    def guess_can_open(self, filename_or_obj: Any) -> bool:
        """Whether the name ends with ``.oxd``."""
        return isinstance(filename_or_obj, (str, os.PathLike)) and os.fspath(filename_or_obj).lower().endswith(".oxd")


def _opened(path: Path, build: Callable[[oxd.File, Callable[[Channel], Any]], Any]) -> Any:
    """What ``build`` makes of a file and of arrays that read its channels when they are needed."""
    absolute = os.path.abspath(os.fspath(path))
    manager: CachingFileManager[oxd.File] = CachingFileManager(oxd.open, absolute, mode="r")

    def lazily(channel: Channel) -> Any:
        return indexing.LazilyIndexedArray(ChannelArray(channel, manager))

    built = _use(manager, lambda file: build(file, lazily))
    for dataset in built.values() if isinstance(built, dict) else [built]:
        dataset.set_close(manager.close)
    return built


def _use(manager: CachingFileManager[oxd.File], use: Callable[[oxd.File], Any]) -> Any:
    """What ``use`` makes of the manager's file.

    The manager may close the file for another thread, which opens one file too many, or have that of a parent process.
    Its locks are never taken while the library's is held, because it holds them when it opens and closes.
    """
    for _ in range(_MOST_TRIES):
        file = manager.acquire()
        try:
            with LOCK:
                return use(file)
        except ClosedError:
            continue
        except ForkError:
            manager.close(needs_lock=False)
    raise ClosedError("The file is closed as soon as it is opened: allow xarray more open files by file_cache_maxsize.")


def _without(dataset: xr.Dataset, names: str | Iterable[str] | None) -> xr.Dataset:
    left: xr.Dataset = dataset.drop_vars([names] if isinstance(names, str) else list(names or []), errors="ignore")
    left.set_close(dataset._close)
    return left


def _chosen(file: oxd.File, group: str | int | None) -> str | int:
    if group is None and len(file.groups) != 1:
        raise ValueError(f"Choose one of the groups by group=...: there are {', '.join(map(repr, file)) or 'none'}.")
    return 0 if group is None else group
