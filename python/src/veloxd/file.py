"""Files: opening, making, editing and saving them."""

from __future__ import annotations

import os
from types import TracebackType
from typing import TYPE_CHECKING, Any, Union

from . import _replacing, _saving
from ._names import Named
from ._native import blocks
from ._native.handle import Handle
from ._native.library import LOCK, encode_name
from ._saving import SaveReport
from .errors import Error, ReadOnlyError
from .group import Group, _group_of
from .information import Information, root_of

if TYPE_CHECKING:
    import xarray

__all__ = ["File", "create", "open"]

# A path as Python's own open takes it.
Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


class File(Named[Group]):
    """An .oxd file, a mapping from names to groups. Made by `open` and `create`.

    Positions find groups, too: ``file[0]``, ``file[-1]``. ``del file["BackwardScan"]`` deletes a group.

    The whole data set is in memory: nothing on disk changes before :meth:`save`, and the file may be replaced or
    deleted meanwhile. Leaving the ``with`` block, or :meth:`close`, drops all changes that were not saved. Afterwards
    the file, its groups and its channels raise `ClosedError`.

    A file may be used by several threads. A child made by ``fork`` cannot use it (`ForkError`). A file without changes
    can be pickled, and so can its groups and channels; the pickle holds the path, and opens the file for reading when
    it is first used.

    Examples
    --------
    >>> with veloxd.open("scan.oxd") as file:
    ...     list(file), file["ForwardScan"]["Topography"].shape
    (['ForwardScan'], (8, 16))
    """

    __slots__ = ("__weakref__", "_handle")

    _what = "group"

    def __init__(self, handle: Handle) -> None:
        self._handle = handle

    @property
    def path(self) -> str:
        """The absolute path of the file that :meth:`save` writes to by default. Empty if there is none yet."""
        return self._handle.path

    @property
    def mode(self) -> str:
        """``"r"`` if the file can only be read, otherwise ``"r+"``."""
        return "r+" if self._handle.writable else "r"

    @property
    def closed(self) -> bool:
        """Whether the file was closed."""
        return self._handle.is_closed

    @property
    def damage(self) -> Error | None:
        """What is wrong with a file that was opened with ``salvage``; None if nothing is."""
        return self._handle.damage

    @property
    def version(self) -> int | None:
        """The version of the file's layout as last opened or saved; None if it was never saved or has no header."""
        with LOCK:
            self._handle.number  # noqa: B018, raises if the file cannot be used
            try:
                return int(self._handle.get("GetOxdVersion"))
            except Error:
                return None

    @property
    def groups(self) -> tuple[Group, ...]:
        """All groups in order, including those that share a name."""
        return self._all()

    def _listed(self) -> tuple[list[int], list[str]]:
        with LOCK:
            return blocks.groups(self._handle.number)

    def _with_number(self, number: int) -> Group:
        return _group_of(self._handle, number)

    @property
    def info(self) -> Information:
        """The measurement information. Assigning a mapping replaces all of it."""
        with LOCK:
            self._handle.number  # noqa: B018, raises if the file cannot be used
            return root_of(self._handle)

    @info.setter
    def info(self, content: Any) -> None:
        with LOCK:
            info = self.info
            checked = {name: info._checked(name, value) for name, value in dict(content).items()}
            self._handle.require_writable()
            info._replace(checked)

    def create_group(self, name: str, bits: int = 32, slots: int = 0) -> Group:
        """Adds a group without channels.

        Parameters
        ----------
        name
            Its name; there may be several groups of the same name.
        bits
            In how many bits, 8, 16 or 32, the file stores each sample. 32 keep every sample exactly.
        slots
            How many channels there is to be room for. Adding more is possible, but copies those that there are.
        """
        if bits not in (8, 16, 32):
            raise ValueError(f"Samples are stored in 8, 16 or 32 bits, not {bits}.")
        if slots < 0:
            raise ValueError(f"A group has room for 0 or more channels, not {slots}.")
        encoded = encode_name(name, "The name of a group")
        with LOCK:
            number = self._handle.change("CreateGroup", bits)
            try:
                self._handle.change("SetGroupName", number, encoded)
                self._handle.change("SetChannelCount", number, slots)
            except BaseException:
                self._handle.change("DeleteGroup", number)
                raise
            return _group_of(self._handle, number)

    def __delitem__(self, key: str | int) -> None:
        """Deletes a group with its channels: ``del file["BackwardScan"]``."""
        with LOCK:
            group = self[key]
            group._change("DeleteGroup")
            self._handle.forget(group._place)

    def save(self, path: Path | None = None, *, overwrite: bool = True) -> SaveReport:
        """Saves the file, under its own name or another, in one step.

        The new file is written beside the old one, forced to the disk, and takes its place when it is whole. If that
        fails, the old one stays as it was. Links are followed; permissions are kept.

        Saving drops views and processors, which are settings of the acquiring application. Samples of channels that
        were read from 8 bits are stored in 16, others as they were.

        Parameters
        ----------
        path
            Where to save; the file's own name if it is not given.
        overwrite
            Whether a file at ``path`` may be replaced.

        Returns
        -------
        SaveReport
            How many samples were clipped, or are stored inexactly.

        Raises
        ------
        ReadOnlyError
            if the file was opened with mode ``"r"`` and is to be saved under its own name.
        FileSystemError
            or one of its kinds, if the file cannot be written, or exists and may not be replaced.

        Examples
        --------
        >>> with veloxd.open("scan.oxd", mode="r+") as file:
        ...     file["ForwardScan"].name = "Scan at 25 °C"
        ...     file.save("warm.oxd")
        SaveReport(path='warm.oxd', clipped=0, inexact=0)
        """
        with LOCK:
            self._handle.number  # noqa: B018, raises if the file cannot be used
            target = self.path if path is None else os.fsdecode(path)
            if not target:
                raise ValueError("The file has no name yet: give the path to save it to.")
            if not self._handle.writable and _is_same(target, self.path):
                raise ReadOnlyError(f'{target}: opened for reading only; open it with mode "r+" to replace it.')
            is_own = not self.path or _is_same(target, self.path)
            report = _saving.save(self, target, overwrite and (self._handle.may_replace or not is_own))
            if is_own:
                self._handle.name_file(target)
                self._handle.may_replace = True
                self._handle.changes.anything = False
            return report

    def close(self) -> None:
        """Closes the file and drops changes that were not saved. Closing it again does nothing."""
        self._handle.close()

    def to_xarray(self) -> xarray.DataTree:
        """All groups as an ``xarray.DataTree`` with coordinates, units and information, in memory."""
        from .xarray import file_to_xarray

        return file_to_xarray(self)

    def __enter__(self) -> File:
        with LOCK:
            self._handle.number  # noqa: B018, raises if the file cannot be used
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        from ._show.display import file_repr

        return file_repr(self)

    def _repr_html_(self) -> str:
        from ._show.display import file_html

        return file_html(self)

    def __reduce__(self) -> tuple[Any, ...]:
        return File, (self._handle,)


def open(path: Path, mode: str = "r", *, salvage: bool = False) -> File:
    """Opens an .oxd file.

    Parameters
    ----------
    path
        The file.
    mode
        ``"r"`` to read, ``"r+"`` to change it as well, ``"x"`` or ``"w"`` to make one as `create` does; ``"w"`` may
        replace a file when it is saved.
    salvage
        Whether to open a damaged file as far as it can be read. `File.damage` says what is wrong with it then. What
        is missing at its end is as if never acquired.

    Raises
    ------
    MissingFileError
        if there is no such file (``FileNotFoundError``).
    FileAccessError
        if it may not be read (``PermissionError``).
    DamagedFileError
        if it is damaged or no .oxd file.

    Examples
    --------
    >>> with veloxd.open("scan.oxd") as file:
    ...     topography = file["ForwardScan"]["Topography"].values
    >>> topography.shape
    (8, 16)
    """
    if mode in ("w", "x"):
        return create(path, overwrite=mode == "w")
    if mode not in ("r", "r+"):
        raise ValueError(f"There is no mode {mode!r}; there are 'r', 'r+', 'w' and 'x'.")
    handle = Handle(os.fsdecode(path), writable=mode == "r+", salvage=salvage)
    handle.open()
    return File(handle)


def create(path: Path | None = None, *, overwrite: bool = False) -> File:
    """Makes an empty data set. Nothing is written before `File.save`.

    Parameters
    ----------
    path
        Where `File.save` is to write; it may also be told then.
    overwrite
        Whether the file may exist. Otherwise that is an error here, and again when it is saved.

    Raises
    ------
    FileSystemError
        if the file exists (``FileExistsError``).

    Examples
    --------
    >>> with veloxd.create() as file:
    ...     group = file.create_group("Scan")
    ...     channel = group.create_channel("Height", [[0, 1], [2, 3]], unit="m")
    ...     file.save("new.oxd")
    SaveReport(path='new.oxd', clipped=0, inexact=0)
    """
    name = "" if path is None else os.fsdecode(path)
    if name and not overwrite:
        _replacing.check_new(name)
    handle = Handle(name, writable=True)
    handle.may_replace = overwrite or not name
    handle.create()
    return File(handle)


def _is_same(first: str, second: str) -> bool:
    return bool(second) and os.path.realpath(first) == os.path.realpath(second)
