"""Read, edit and write .oxd measurement files of scanning probe microscopes.

>>> import veloxd
>>> with veloxd.open("scan.oxd") as file:
...     topography = file["ForwardScan"]["Topography"].level("line")

Groups and channels are mappings, channels read like arrays, and `File.save` replaces a file in one step. See `open`,
`create`, `File`, `Group`, `Channel`, `Axis` and `Information`; all errors are kinds of `Error`.
"""

from typing import TYPE_CHECKING, Any

from ._reading import RAW_MISSING
from ._saving import SaveReport
from .axis import Axis, PointAxis
from .channel import Channel
from .errors import (
    ClosedError,
    DamagedFileError,
    DeletedError,
    Error,
    ExistingFileError,
    FileAccessError,
    FileSystemError,
    ForkError,
    LibraryError,
    MissingFileError,
    NameNotFoundError,
    OutOfMemoryError,
    ReadOnlyError,
)
from .file import File, create, open
from .group import Group
from .information import Information
from .quantity import Quantity

__all__ = [
    "RAW_MISSING",
    "Axis",
    "Channel",
    "ClosedError",
    "DamagedFileError",
    "DeletedError",
    "Error",
    "ExistingFileError",
    "File",
    "FileAccessError",
    "FileSystemError",
    "ForkError",
    "Group",
    "Information",
    "LibraryError",
    "MissingFileError",
    "NameNotFoundError",
    "OutOfMemoryError",
    "PointAxis",
    "Quantity",
    "ReadOnlyError",
    "SaveReport",
    "create",
    "from_xarray",
    "open",
]

__version__ = "0.1.0"

if TYPE_CHECKING:
    from .xarray import from_xarray


def __getattr__(name: str) -> Any:
    # Importing xarray takes long, and not everybody has it.
    if name == "from_xarray":
        from .xarray import from_xarray

        return from_xarray
    raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
